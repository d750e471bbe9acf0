#include "scan/folder_ids.h"

#include "app/shared_state.h"

namespace
{
// Finds or makes the folder `name` below `parent`; true if it was made. llParentIdRunning is its id.
bool enterFolder(const QString &name, qint64 parent)
{
    if (GetParentId(name, parent, &llParentIdRunning))
        return false;
    ++PID;
    objMapName_FID.insert(name, PID);
    objMapFID_PID.insert(PID, parent);
    objMapFID_Name.insert(PID, name);
    folderByPlace.insert({parent, name}, PID);
    llParentIdRunning = PID;
    return true;
}

// Walks the segments of a tree path; `made(i, segment)` is called for each folder that had to be made.
template <typename Made>
void enterPath(const QString &treePath, Made made)
{
    if (treePath.isEmpty())
        return;
    const QStringList segments = treePath.split(QLatin1Char('/'));
    for (int i = 0; i < segments.size(); ++i)
        if (enterFolder(segments.at(i), i == 0 ? llRootId : llParentIdRunning))
            made(i, segments.at(i));
}

// The file's directories before the first component that equals `segment` in any case, each behind a "/";
// nothing if no component does.
bool findStart(const QString &filePath, const QString &segment, QString *start)
{
    const QStringList components = filePath.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (int i = 0; i < components.size(); ++i) {
        if (components.at(i).compare(segment, Qt::CaseInsensitive) == 0) {
            *start = QLatin1Char('/') + components.mid(0, i).join(QLatin1Char('/'));
            return true;
        }
    }
    return false;
}
} // namespace

bool GetParentId(const QString &name, qint64 parent, qint64 *id)
{
    const auto found = folderByPlace.constFind({parent, name});
    if (found == folderByPlace.constEnd())
        return false;
    *id = *found;
    return true;
}

void treeCreator(const QString &treePath, const QString &filePath)
{
    QString path;
    bool started = false;
    enterPath(treePath, [&](int i, const QString &segment) {
        if (i == 0)
            return;
        if (!started)
            started = findStart(filePath, segment, &path);
        if (started)
            path += QLatin1Char('/') + segment;
        MapLeftTreePath.insert(llParentIdRunning, path);
    });
}

void treeCreatorforOlm(const QString &treePath)
{
    enterPath(treePath, [](int, const QString &) {});
}

void treeCreatorOperaMail(const QString &treePath, const QString &filePath)
{
    enterPath(treePath, [&](int, const QString &) { MapLeftTreePath.insert(llParentIdRunning, filePath); });
}
