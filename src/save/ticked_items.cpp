#include "save/ticked_items.h"

#include "app/olm_records.h"
#include "app/problem_log.h"
#include "app/shared_state.h"

#include <QFileInfo>

#include <cerrno>

namespace
{
template <typename Visit>
void forEachTicked(Visit visit)
{
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next)
        if (folder->state == stateTicked)
            visit(folder->folderId);
}
} // namespace

quint64 countTickedItems()
{
    quint64 count = 0;
    forEachTicked([&](qint64 folder) { count += mailItemsOfFolder(folder).size(); });
    return count;
}

QStringList tickedPaths()
{
    QStringList paths;
    forEachTicked([&](qint64 folder) {
        for (const MailItemNode *item : mailItemsOfFolder(folder))
            paths.append(item->path);
    });
    return paths;
}

quint64 countTickedMessages()
{
    quint64 count = 0;
    forEachTicked([&](qint64 folder) { count += olmRecordsOfFolder(folder).size(); });
    return count;
}

qint64 tickedBytes()
{
    if (bOlmFileFound)
        return QFileInfo(m_selectedFile).size();
    qint64 bytes = 0;
    for (const QString &path : tickedPaths())
        bytes += QFileInfo(path).size();
    return bytes;
}

void enterTickedFolders()
{
    forEachTicked([](qint64 folder) {
        if (!mailItemsOfFolder(folder).empty() || !olmRecordsOfFolder(folder).empty())
            saveLedger.enterFolder(folder);
    });
}

void leaveOutFiles(quint64 first, LeftOutReason reason,
                   const std::function<std::optional<qint64>(const QString &path)> &countOf)
{
    quint64 number = 0;
    forEachTicked([&](qint64 folder) {
        const auto &items = mailItemsOfFolder(folder);
        if (!items.empty())
            saveLedger.enterFolder(folder);
        for (const MailItemNode *item : items) {
            if (number++ < first)
                continue;
            const std::optional<qint64> messages = countOf(item->path);
            saveLedger.addFound(messages.value_or(0));
            saveLedger.addLeftOut({item->path, 0, messages, reason, QString()});
        }
    });
}

void leaveOutRecords(quint64 first, LeftOutReason reason, const QString &text)
{
    forEachTicked([&](qint64 folder) {
        const quint64 records = olmRecordsOfFolder(folder).size();
        const quint64 passed = qMin(first, records);
        first -= passed;
        if (records == passed)
            return;
        const auto left = static_cast<qint64>(records - passed);
        saveLedger.enterFolder(folder);
        saveLedger.addFound(left);
        saveLedger.addLeftOut({m_selectedFile, 0, left, reason, text});
    });
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
