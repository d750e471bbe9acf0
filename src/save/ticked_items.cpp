#include "save/ticked_items.h"

#include "app/olm_records.h"
#include "app/records.h"

quint64 countTickedItems()
{
    quint64 count = 0;
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next)
        if (folder->state == stateTicked)
            count += mailItemsOfFolder(folder->folderId).size();
    return count;
}

void enterTickedFolders()
{
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next)
        if (folder->state == stateTicked &&
            (!mailItemsOfFolder(folder->folderId).empty() || !olmRecordsOfFolder(folder->folderId).empty()))
            saveLedger.enterFolder(folder->folderId);
}

void leaveOutFiles(quint64 first, LeftOutReason reason,
                   const std::function<std::optional<qint64>(const QString &path)> &countOf)
{
    quint64 number = 0;
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next) {
        if (folder->state != stateTicked)
            continue;
        const auto &items = mailItemsOfFolder(folder->folderId);
        if (!items.empty())
            saveLedger.enterFolder(folder->folderId);
        for (const MailItemNode *item : items) {
            if (number++ < first)
                continue;
            LeftOutItem leftOut;
            leftOut.path = item->path;
            leftOut.messages = countOf(leftOut.path);
            leftOut.reason = reason;
            saveLedger.addFound(leftOut.messages.value_or(0));
            saveLedger.addLeftOut(leftOut);
        }
    }
}
