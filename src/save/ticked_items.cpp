#include "save/ticked_items.h"

#include "app/olm_records.h"
#include "app/problem_log.h"
#include "app/shared_state.h"

#include <QFileInfo>

#include <cerrno>

quint64 countTickedItems()
{
    quint64 count = 0;
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next)
        if (folder->state == stateTicked)
            count += mailItemsOfFolder(folder->folderId).size();
    return count;
}

QStringList tickedPaths()
{
    QStringList paths;
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next)
        if (folder->state == stateTicked)
            for (const MailItemNode *item : mailItemsOfFolder(folder->folderId))
                paths.append(item->path);
    return paths;
}

quint64 countTickedMessages()
{
    quint64 count = 0;
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next)
        if (folder->state == stateTicked)
            count += olmRecordsOfFolder(folder->folderId).size();
    return count;
}

qint64 tickedBytes()
{
    qint64 bytes = 0;
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next)
        if (folder->state == stateTicked)
            for (const MailItemNode *item : mailItemsOfFolder(folder->folderId))
                bytes += QFileInfo(item->path).size();
    return bOlmFileFound ? QFileInfo(m_selectedFile).size() : bytes;
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

void leaveOutRecords(quint64 first, LeftOutReason reason, const QString &text)
{
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next) {
        const quint64 records =
            folder->state == stateTicked ? olmRecordsOfFolder(folder->folderId).size() : 0;
        const quint64 passed = qMin(first, records);
        first -= passed;
        if (records == passed)
            continue;
        const auto left = static_cast<qint64>(records - passed);
        saveLedger.enterFolder(folder->folderId);
        saveLedger.addFound(left);
        saveLedger.addLeftOut({m_selectedFile, 0, left, reason, text});
    }
}

bool isScannedArchive(const ByteSource &archive)
{
    return archive.isOpen() && archive.stamp() == scannedArchive;
}

void leaveOutArchive(const ByteSource &archive)
{
    const QString problem =
        archive.isOpen()
            ? Problem::tr("another file than the one that was scanned, nothing of it was saved: ") +
                  archive.path()
            : Problem::tr("can't be opened: ") + archive.errorString();
    const bool gone = archive.isOpen() || archive.errorNumber() == ENOENT;
    leaveOutRecords(0, gone ? LeftOutReason::Vanished : LeftOutReason::Unreadable, problem);
    reportUnread(problem);
}
