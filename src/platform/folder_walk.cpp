#include "platform/folder_walk.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QStringList>

namespace
{
using Visit = std::function<void(const QString &, bool)>;

bool leadsBack(const QFileInfo &folder, const QStringList &above)
{
    return folder.isSymLink() && above.contains(folder.canonicalFilePath());
}

void walk(const QString &folder, QStringList *above, const Visit &visit)
{
    above->append(QFileInfo(folder).canonicalFilePath());
    QDirIterator entries(folder,
                         QDir::Dirs | QDir::Files | QDir::Drives | QDir::Hidden | QDir::NoDotAndDotDot);
    while (entries.hasNext()) {
        entries.next();
        const QFileInfo info = entries.fileInfo();
        const bool isFolder = info.isDir();
        visit(info.absoluteFilePath(), isFolder);
        if (isFolder && !leadsBack(info, *above))
            walk(info.absoluteFilePath(), above, visit);
    }
    above->removeLast();
}
} // namespace

bool walkFolder(const QString &folder, const Visit &visit)
{
    if (folder.isEmpty() || !QDir(folder).exists())
        return false;
    QStringList above;
    walk(folder, &above, visit);
    return true;
}
