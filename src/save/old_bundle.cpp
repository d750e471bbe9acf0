#include "save/old_bundle.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

bool removeOldBundle(const QString &path)
{
    const QFileInfo info(path);
    if (info.isSymLink() || info.isFile())
        return QFile::remove(path);
    return !info.exists() || QDir(path).removeRecursively();
}
