#include "save/ticked_items.h"

#include "app/records.h"

quint64 countTickedItems()
{
    quint64 count = 0;
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next)
        if (folder->state == stateTicked)
            count += mailItemsOfFolder(folder->folderId).size();
    return count;
}
