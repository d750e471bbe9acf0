#include "browse/folder_tree.h"

#include "app/shared_state.h"

namespace
{
// What the children's states make of their parent, seen from a child that has just changed.
quint8 stateFromChildren(const FolderAttribNode &parent, quint8 childState)
{
    const quint8 whole = childState == stateNotTicked ? stateNotTicked : stateTicked;
    for (const FolderAttribNode *child : childFolders(parent.folderId))
        if (child->state != whole)
            return statePartlyTicked;
    return whole;
}

void setBelow(const FolderAttribNode &folder, quint8 state)
{
    std::vector<const FolderAttribNode *> open = {&folder};
    for (size_t i = 0; i < open.size(); ++i) {
        for (FolderAttribNode *child : childFolders(open[i]->folderId)) {
            child->state = state;
            open.push_back(child);
        }
    }
}
} // namespace

QString displayName(const QString &name)
{
    for (const char *suffix : {".mailbox", ".imapmbox", ".mbox"}) {
        if (name.contains(QLatin1String(suffix)))
            return QString(name).remove(QLatin1String(suffix));
    }
    return name;
}

void addFolderRecord(qint64 folderId, qint64 parentId)
{
    if (!StartFldrAtrib)
        appendFolder(llRootId, 0);
    appendFolder(folderId, parentId);
}

std::vector<qint64> markFolder(qint64 folderId, quint8 state)
{
    if (folderId == llRootId) {
        for (FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next)
            folder->state = state;
        return {};
    }
    std::vector<qint64> changed;
    FolderAttribNode *folder = findFolder(folderId);
    if (!folder)
        return changed;
    folder->state = state;
    if (state != statePartlyTicked)
        setBelow(*folder, state);
    while (FolderAttribNode *parent = findFolder(folder->parentId)) {
        parent->state = stateFromChildren(*parent, folder->state);
        changed.push_back(parent->folderId);
        folder = parent;
    }
    return changed;
}

void unmarkAllFolders()
{
    for (FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next)
        folder->state = stateNotTicked;
}
