#include "save/mail_saving.h"

#include "app/olm_records.h"
#include "app/problem_log.h"
#include "app/shared_state.h"
#include "save/mailbox_file.h"
#include "save/message_batch.h"
#include "save/olm_dates.h"
#include "save/olm_message.h"
#include "save/ticked_items.h"
#include "save/writers.h"
#include "text/from_lines.h"

#include <QUuid>

#include <cstdlib>

namespace
{
// Writes messages into the mailboxes of their folders. A mailbox stays open as long as messages go to it.
class OlmSaving
{
public:
    OlmSaving(ByteSource *archive, SaveMode mode) : m_archive(archive), m_composer(archive), m_target(mode) {}

    void save(const MailMLRC &record)
    {
        saveLedger.addFound();
        openMailbox(writeOlmMail.target(record.szFolderPath.text(), m_selectedFile, saveDir).file);
        OlmMarks marks;
        marks.now = QDateTime::currentDateTime();
        marks.messageId = QUuid::createUuid().toString(QUuid::Id128).toUpper().toLatin1();
        marks.number = record.llBodySize > 0 ? std::rand() : 0;
        FromLines lines;
        const bool whole = m_composer.compose(record, marks, [&](std::string_view bytes) {
            m_target.append(bytes);
            lines.take(bytes);
        });
        tell(record, whole, lines.count());
    }

    // Messages of another folder come behind.
    void closeMailbox()
    {
        m_batch.settle(&m_target);
        m_target.close();
        saveLedger.addBytes(m_target.takeAddedBytes());
    }

    qint64 incompleteMessages() const { return m_incomplete; }

private:
    void openMailbox(const QString &path)
    {
        if (m_target.isOpen() && m_target.path() == path)
            return;
        closeMailbox();
        m_target.open(path, *writeOlmMail.codes);
    }

    void tell(const MailMLRC &record, bool whole, qint64 fromLines)
    {
        const MessagePlace place{m_selectedFile, qMax<qint64>(0, record.llBodyOffset)};
        const OlmDates dates = datesOfOlmRecord(record);
        m_batch.addStrays(fromLines - (whole && dates.written ? 1 : 0), place);
        if (whole) {
            m_batch.add(place, !dates.written);
            m_batch.addChange(ChangeKind::NewDate, dates.written && dates.header.isEmpty() ? 1 : 0, place);
            tellChanges(record, place);
        } else {
            ++m_incomplete;
            saveLedger.addLeftOut(
                {place.path, place.offset, 1, LeftOutReason::Unreadable, m_archive->errorString()});
        }
        m_batch.settleMuch(&m_target);
    }

    void tellChanges(const MailMLRC &record, const MessagePlace &place)
    {
        const OlmLosses &losses = record.losses;
        m_batch.addChange(ChangeKind::LostCharacters, losses.lostCharacters, place);
        m_batch.addChange(ChangeKind::Latin1, losses.highCharacters, place);
        m_batch.addChange(ChangeKind::NewMessageId, losses.hasSourceId ? 1 : 0, place);
        m_batch.addChange(ChangeKind::LostField, losses.fields, place);
        m_batch.addChange(ChangeKind::LostAttachments, losses.attachments, place);
        m_batch.addChange(ChangeKind::LostRecipients, emptyRecipientHeaders(record), place);
        m_batch.addChange(ChangeKind::UnreachableParts, unreachableAttachments(record), place);
    }

    ByteSource *m_archive;
    OlmComposer m_composer;
    MailboxFile m_target;
    MessageBatch m_batch{&saveLedger};
    qint64 m_incomplete = 0;
};
} // namespace

// After a stop there are no end signals; what was written is whole messages.
void QMailSaving::OnMailSaving()
{
    FileSavingIdentification = true;
    emit OnShowProgressDlg();
    ulCount = countTickedMessages();
    noOfConvertedMessage = 0;
    emit ShowProgressLabel();
    ByteSource archive = ByteSource::ofFile(m_selectedFile);
    if (!isScannedArchive(archive)) {
        leaveOutArchive(archive);
        emitFinished();
        return;
    }
    OlmSaving saving(&archive, m_mode);
    int shown = -1;
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next) {
        if (folder->state == stateTicked)
            for (const MailMLRC *record : olmRecordsOfFolder(folder->folderId)) {
                if (bStopFlag)
                    break;
                saveLedger.enterFolder(folder->folderId);
                const auto percent = static_cast<int>((noOfConvertedMessage + 1) * 100 / ulCount);
                if (percent != shown)
                    emit OnIndivisibleProgressvalue(percent);
                shown = percent;
                saving.save(*record);
                ++noOfConvertedMessage;
            }
        saving.closeMailbox();
        if (noOfConvertedMessage == ulCount)
            emitFinished();
    }
    leaveOutRecords(noOfConvertedMessage, LeftOutReason::Stopped, QString());
    if (!archive.errorString().isEmpty())
        reportUnread(Problem::tr("can't be read to its end: ") + archive.errorString());
    if (saving.incompleteMessages() > 0)
        reportUnread(Problem::tr("shorter than its records say, %1 message(s) are not whole: %2")
                         .arg(saving.incompleteMessages())
                         .arg(m_selectedFile));
}
