#include "save/exact_target.h"

#include "app/shared_state.h"
#include "browse/folder_tree.h"
#include "save/safe_path.h"

#include <QStringList>

namespace
{
const QString slash = QStringLiteral("/");
const QString mboxSuffix = QStringLiteral(".mbox");
const QString top = QStringLiteral("Mail");

QString keyOf(const QString &path)
{
    return path.normalized(QString::NormalizationForm_D)
        .toCaseFolded()
        .normalized(QString::NormalizationForm_C);
}

QString harmlessName(const QString &name)
{
    return name.isEmpty() ? QString(QChar(0x2423)) : harmlessPath(name); // an open box
}

// Raw names from the top down to a folder.
QStringList rawNames(qint64 folderId)
{
    QStringList names;
    for (auto folder = objMapFID_Name.constFind(folderId); folder != objMapFID_Name.constEnd();
         folder = objMapFID_Name.constFind(objMapFID_PID.value(folder.key())))
        names.prepend(*folder);
    return names;
}

// An exported mailbox is a folder "X.mbox" with a file "mbox"; where it was chosen itself, only "mbox" is in the tree.
bool endsInExportLeaf(const QStringList &names)
{
    if (names.size() < 2 || names.last() != QLatin1String("mbox"))
        return false;
    return names.at(names.size() - 2).endsWith(mboxSuffix) ||
           (names.size() == 2 && m_selectedFile.endsWith(mboxSuffix));
}

// Names below the bundle's "Mail".
QStringList shownNames(qint64 folderId)
{
    QStringList names = rawNames(folderId);
    if (endsInExportLeaf(names))
        names.removeLast();
    for (QString &name : names)
        name = displayName(name);
    if (!names.isEmpty() && names.first() == top)
        names.removeFirst();
    for (QString &name : names)
        name = harmlessName(name);
    return names;
}
} // namespace

ExactTargets::ExactTargets(const QString &bundle) : m_mail(bundle + slash + top) {}

bool ExactTargets::isFree(const QString &folder, const QString &file) const
{
    return !m_taken.contains(keyOf(folder)) && !m_taken.contains(keyOf(file)) &&
           !m_above.contains(keyOf(file));
}

// A folder on the way to others: "A" or, where a mailbox has that path, "A (2)".
QString ExactTargets::folderAbove(const QString &parent, const QString &name)
{
    QString path = parent + slash + name;
    for (int number = 2; m_files.contains(keyOf(path)); ++number)
        path = parent + slash + name + QStringLiteral(" (%1)").arg(number);
    m_above.insert(keyOf(path));
    return path;
}

MailboxTarget ExactTargets::targetOf(qint64 folderId)
{
    QStringList names = shownNames(folderId);
    const bool isTop = names.isEmpty();
    const QString name = isTop ? top : names.takeLast();
    QString parent = isTop ? m_mail.left(m_mail.lastIndexOf(slash)) : m_mail;
    for (const QString &above : names)
        parent = folderAbove(parent, above);
    QString numbered = name;
    const auto place = [&] { return parent + slash + numbered; };
    const auto file = [&] { return place() + slash + numbered + mboxSuffix; };
    for (int number = 2; !isFree(place(), file()); ++number)
        numbered = name + QStringLiteral(" (%1)").arg(number);
    m_taken.insert(keyOf(place()));
    m_taken.insert(keyOf(file()));
    m_files.insert(keyOf(file()));
    return {place() + slash, file()};
}
