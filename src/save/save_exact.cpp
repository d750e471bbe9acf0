#include "save/mail_saving.h"

#include "app/olm_records.h"
#include "app/problem_log.h"
#include "app/shared_state.h"
#include "platform/read_ahead.h"
#include "save/exact_olm.h"
#include "save/exact_save.h"
#include "save/message_counter.h"
#include "save/ticked_items.h"

#include <memory>
#include <optional>

namespace
{
constexpr size_t startBytes = 64 * 1024; // most messages whole

std::vector<const MailMLRC *> tickedRecords()
{
    std::vector<const MailMLRC *> records;
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next) {
        if (folder->state != stateTicked)
            continue;
        const auto &ofFolder = olmRecordsOfFolder(folder->folderId);
        records.insert(records.end(), ofFolder.begin(), ofFolder.end());
    }
    return records;
}
} // namespace

// Goes through the ticked folders as the fixed forms do. After a stop there are no end signals.
void QMailSaving::saveExactCopies()
{
    emit OnShowProgressDlg();
    m_shownPercent = -1;
    showPercent(0);
    ulCount = bOlmFileFound ? countTickedMessages() : countTickedItems();
    noOfConvertedMessage = 0;
    const bool done = bOlmFileFound ? saveExactArchive() : saveExactFiles();
    if (!done)
        return;
    showPercent(100);
    emitFinished();
}

void QMailSaving::showPercent(int percent)
{
    if (percent != m_shownPercent)
        emit OnIndivisibleProgressvalue(percent);
    m_shownPercent = percent;
}

bool QMailSaving::saveExactFiles()
{
    std::unique_ptr<ReadAhead<ByteSource>> files;
    if (!bMboxFileFound)
        files = std::make_unique<ReadAhead<ByteSource>>(
            tickedPaths(), [](const QString &path) { return ByteSource::ofFile(path, startBytes); });
    ExactSaving saving(m_mode, [] { return !bStopFlag; });
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next) {
        if (folder->state != stateTicked)
            continue;
        for (const MailItemNode *item : mailItemsOfFolder(folder->folderId)) {
            if (bStopFlag)
                break;
            saving.enterFolder(folder->folderId);
            if (files)
                saving.saveMessage(files->next());
            else
                saving.saveMailbox(*item, [this](int percent) { showPercent(percent); });
            ++noOfConvertedMessage;
            if (files)
                showPercent(static_cast<int>(noOfConvertedMessage * 100 / ulCount));
        }
    }
    saving.closeMailbox();
    std::function<std::optional<qint64>(const QString &)> messagesIn = [](const QString &) { return 1; };
    if (bMboxFileFound)
        messagesIn = MessageCounter();
    if (noOfConvertedMessage < ulCount)
        leaveOutFiles(noOfConvertedMessage, LeftOutReason::Stopped, messagesIn);
    return !bStopFlag;
}

bool QMailSaving::saveExactArchive()
{
    ByteSource archive = ByteSource::ofFile(m_selectedFile);
    if (!isScannedArchive(archive)) {
        leaveOutArchive(archive);
        return true;
    }
    const auto goOn = [] { return !bStopFlag; };
    ExactSaving saving(m_mode, goOn);
    const std::vector<const MailMLRC *> records = tickedRecords();
    std::optional<OlmMessages> messages(std::in_place, records, &archive, goOn);
    for (const MailMLRC *record : records) {
        if (bStopFlag)
            break;
        saving.enterFolder(record->llParentId);
        saving.saveOlmMessage(*record, &*messages);
        ++noOfConvertedMessage;
        showPercent(static_cast<int>(noOfConvertedMessage * 100 / ulCount));
    }
    messages.reset();
    saving.closeMailbox();
    reportUnread(archive.errorString());
    leaveOutRecords(noOfConvertedMessage, LeftOutReason::Stopped, QString());
    return !bStopFlag;
}
