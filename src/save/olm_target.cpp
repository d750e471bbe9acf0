#include "save/olm_target.h"

#include <QStringList>

namespace
{
// The names given are outside Latin-1, folder paths of records are Latin-1.
QString harmlessName(const QString &component)
{
    if (component.isEmpty())
        return QString(QChar(0x2423)); // an open box
    if (component == QLatin1String("."))
        return QString(QChar(0x2024)); // one dot leader
    if (component == QLatin1String(".."))
        return QString(QChar(0x2025)); // two dot leader
    return component;
}
} // namespace

MailboxTarget appleTargetOfOlmFolder(const QString &folderPath, const QString &saveFolder)
{
    QStringList components =
        (folderPath.isEmpty() ? QStringLiteral("Folder1") : folderPath).split(QLatin1Char('/'));
    for (QString &component : components)
        component = harmlessName(component);
    const QString folder = saveFolder + QStringLiteral("/Main Identity.mbox/Mail/") +
                           components.join(QLatin1Char('/')) + QLatin1Char('/');
    return {folder, folder + components.last() + QStringLiteral(".mbox")};
}
