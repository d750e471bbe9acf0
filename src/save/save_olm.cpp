#include "save/mail_saving.h"

#include "app/olm_records.h"
#include "app/problem_log.h"
#include "app/shared_state.h"
#include "save/mailbox_file.h"
#include "save/olm_message.h"
#include "save/olm_target.h"

#include <QUuid>

#include <cstdlib>

namespace
{
quint64 countTickedMessages()
{
    quint64 count = 0;
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next)
        if (folder->state == stateTicked)
            count += olmRecordsOfFolder(folder->folderId).size();
    return count;
}

// The mailbox stays open as long as messages go to the same one.
void writeMessage(const MailMLRC &record, OlmComposer *composer, MailboxFile *target)
{
    const QString path = appleTargetOfOlmFolder(record.szFolderPath.text(), saveDir).file;
    if (target->path() != path)
        target->open(path, outlookMailbox);
    OlmMarks marks;
    marks.now = QDateTime::currentDateTime();
    marks.messageId = QUuid::createUuid().toString(QUuid::Id128).toUpper().toLatin1();
    marks.number = record.llBodySize > 0 ? std::rand() : 0;
    composer->compose(record, marks, [target](std::string_view bytes) { target->append(bytes); });
}
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
    if (!archive.isOpen() || !(archive.stamp() == scannedArchive)) {
        reportUnread(
            archive.isOpen()
                ? QStringLiteral("another file than the one that was scanned, nothing of it was saved: ") +
                      m_selectedFile
                : QStringLiteral("can't be opened: ") + archive.errorString());
        emitFinished();
        return;
    }
    OlmComposer composer(&archive);
    MailboxFile target;
    int shown = -1;
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next) {
        if (folder->state == stateTicked)
            for (const MailMLRC *record : olmRecordsOfFolder(folder->folderId)) {
                if (bStopFlag)
                    break;
                const auto percent = static_cast<int>((noOfConvertedMessage + 1) * 100 / ulCount);
                if (percent != shown)
                    emit OnIndivisibleProgressvalue(percent);
                shown = percent;
                writeMessage(*record, &composer, &target);
                ++noOfConvertedMessage;
            }
        if (noOfConvertedMessage == ulCount) {
            target.close();
            emitFinished();
        }
    }
    if (!archive.errorString().isEmpty())
        reportUnread(QStringLiteral("can't be read to its end: ") + archive.errorString());
    if (composer.incompleteMessages() > 0)
        reportUnread(QStringLiteral("shorter than its records say, %1 message(s) are not whole: %2")
                         .arg(composer.incompleteMessages())
                         .arg(m_selectedFile));
}
