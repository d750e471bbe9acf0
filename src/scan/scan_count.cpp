#include "scan/scan_count.h"

#include "app/olm_records.h"
#include "app/records.h"
#include "app/shared_state.h"

namespace
{
qint64 messagesOf(qint64 folderId)
{
    if (bOlmFileFound)
        return static_cast<qint64>(olmRecordsOfFolder(folderId).size());
    const auto &items = mailItemsOfFolder(folderId);
    if (!bMboxFileFound)
        return static_cast<qint64>(items.size());
    qint64 messages = 0;
    for (const MailItemNode *item : items)
        messages += static_cast<qint64>(messagesOfPath(item->path).size());
    return messages;
}
} // namespace

ScanCount countScan()
{
    ScanCount count;
    // The map, as the folder records come with the tree, after the scan has said that it is done.
    for (auto folder = objMapFID_PID.constBegin(); folder != objMapFID_PID.constEnd(); ++folder) {
        const qint64 messages = messagesOf(folder.key());
        count.messages += messages;
        count.folders += messages > 0 ? 1 : 0;
    }
    return count;
}
