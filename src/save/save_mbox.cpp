#include "save/mail_saving.h"

#include "app/problem_log.h"
#include "app/run_step.h"
#include "app/shared_state.h"
#include "save/bundle_place.h"
#include "save/mailbox_copy.h"
#include "save/mbox_target.h"
#include "save/outlook_bundle.h"
#include "save/save_ledger.h"
#include "save/ticked_items.h"
#include "text/mbox_names.h"

#include <QElapsedTimer>
#include <QFileInfo>

#include <cerrno>
#include <optional>

namespace
{
// Counts the messages of mailboxes that a save has not copied: as the scan did or, where that did not look into the
// files, by reading them, but no longer than a user who stops a save will wait.
class MessageCounter
{
public:
    MessageCounter() { m_timer.start(); }

    // Nothing where the number is not known.
    std::optional<qint64> operator()(const QString &path) const
    {
        if (const size_t messages = messagesOfPath(path).size(); messages > 0)
            return static_cast<qint64>(messages);
        MailboxCopy copy;
        if (m_timer.elapsed() > longestWait || (!copy.open(path.trimmed()) && !copy.startsWithMark()))
            return std::nullopt;
        MailboxFile none(SaveMode::CountOnly);
        none.open(path, appleMailbox);
        const CopyEnd end =
            copy.copyTo(&none, [&](qint64, qint64) { return m_timer.elapsed() <= longestWait; });
        return end == CopyEnd::Whole ? std::make_optional(copy.tally().found()) : std::nullopt;
    }

private:
    static constexpr qint64 longestWait = 100; // milliseconds, that a stop is kept waiting
    QElapsedTimer m_timer;
};

// A mailbox that can't be opened as one any more.
void tellPassedOver(const QString &path, MailboxCopy *copy)
{
    LeftOutItem item;
    item.path = path;
    item.text = copy->errorString();
    item.reason = LeftOutReason::Vanished;
    if (!copy->source().isOpen() && copy->source().errorNumber() != ENOENT)
        item.reason = LeftOutReason::Unreadable;
    else if (copy->startsWithMark())
        item.reason = LeftOutReason::OrderMark;
    item.messages = MessageCounter()(path);
    saveLedger.addFound(item.messages.value_or(0));
    saveLedger.addLeftOut(item);
}

// Why a copy left messages out; where it is whole they are those that the scan saw and it no longer finds.
LeftOutItem leftOutBy(CopyEnd end, const MailboxCopy &copy, const QString &writeError)
{
    LeftOutItem item;
    item.offset = copy.tally().offset();
    item.text = copy.errorString();
    switch (end) {
    case CopyEnd::Whole:
        item.reason = LeftOutReason::Vanished;
        break;
    case CopyEnd::Stopped:
        item.reason = LeftOutReason::Stopped;
        item.text = Problem::tr("the copy of this mailbox was stopped, it is not whole");
        break;
    case CopyEnd::Unreadable:
        item.reason = LeftOutReason::Unreadable;
        break;
    case CopyEnd::Unwritable:
        item.reason = LeftOutReason::Unwritable;
        item.text = writeError;
        break;
    }
    return item;
}

// What the copy of a mailbox left out, of all the messages that are known to be in it.
void tellLeftOut(const QString &path, const MailboxCopy &copy, CopyEnd end, const QString &writeError)
{
    LeftOutItem item = leftOutBy(end, copy, writeError);
    item.path = path;
    std::optional<qint64> all = static_cast<qint64>(messagesOfPath(path).size());
    if (end == CopyEnd::Stopped)
        all = MessageCounter()(path);
    const qint64 unseen = qMax<qint64>(0, all.value_or(0) - copy.tally().found());
    if (end == CopyEnd::Whole && unseen == 0)
        return;
    saveLedger.addFound(unseen);
    if (all || copy.tally().found() > 0)
        item.messages = copy.tally().leftOut() + unseen;
    saveLedger.addLeftOut(item);
}

void tellCopied(const QString &path, const MailboxCopy &copy, CopyEnd end, MailboxFile *target)
{
    const MailboxTally &tally = copy.tally();
    saveLedger.enterTarget(target->path());
    if (tally.written() + tally.joined() + tally.strays() > 0 && tally.found() > 0)
        saveLedger.addTarget(target->path());
    tally.tell(path, &saveLedger);
    tellLeftOut(path, copy, end, target->errorString());
    target->close();
    saveLedger.addBytes(target->takeAddedBytes());
}

// Opens the target of the mailbox in GetAllFilePathInStrList; the first one of a save lays out the bundle.
void openTarget(MailboxFile *target, SaveMode mode, bool *prepared)
{
    const QString &path = GetAllFilePathInStrList;
    const bool apple = bForAppleMail;
    const MailboxTarget place =
        (apple ? appleTargetOfMailbox : outlookTargetOfMailbox)(path, m_selectedFile, saveDir);
    if (mode == SaveMode::Write)
        bundlePlace.makeFolder(place.folder);
    target->open(place.file, apple ? appleMailbox : outlookMailbox);
    if (mode == SaveMode::Write && !apple && !*prepared)
        prepareOutlookBundle(saveDir + QStringLiteral("/Main Identity.rge"));
    *prepared = true;
}
} // namespace

void QMailSaving::PostBoxFileSearch()
{
    nextItr = 0;
    emit OnShowProgressDlg();
    emit OnIndivisibleProgressvalue(0);
    ulCount = countTickedItems();
    bool prepared = false;
    quint64 done = 0;
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next) {
        if (folder->state == stateTicked)
            for (const MailItemNode *item : mailItemsOfFolder(folder->folderId)) {
                if (bStopFlag)
                    break;
                saveLedger.enterFolder(folder->folderId);
                setRunStep({QFileInfo(item->path).fileName(), static_cast<qint64>(done) + 1,
                            static_cast<qint64>(ulCount)});
                copyMailbox(item->path, &prepared);
                ++nextItr;
                ++done;
            }
        if (static_cast<quint64>(nextItr) == ulCount) {
            emit OnIndivisibleProgressvalue(100);
            emitFinished();
            return;
        }
    }
    leaveOutFiles(done, LeftOutReason::Stopped, MessageCounter());
}

void QMailSaving::copyMailbox(const QString &path, bool *prepared)
{
    GetAllFilePathInStrList = path;
    MailboxCopy copy;
    if (!mayBeMailbox(path) || !copy.open(path.trimmed())) {
        reportUnread(Problem::tr("passed over, it can't be read as a mailbox any more: ") +
                     (copy.errorString().isEmpty() ? path : copy.errorString()));
        tellPassedOver(path, &copy);
        return;
    }
    FileSavingIdentification = true;
    if (!listOfPathOfOnlyForTree.contains(path)) {
        saveLedger.addLeftOut({path, 0, std::nullopt, LeftOutReason::NotTaken, QString()});
        return;
    }
    MailboxFile target(m_mode);
    openTarget(&target, m_mode, prepared);
    int shown = -1;
    const CopyEnd end = copy.copyTo(&target, [&](qint64 done, qint64 size) {
        const int percent = static_cast<int>(done * 100 / qMax<qint64>(1, size));
        if (percent != shown)
            emit OnIndivisibleProgressvalue(percent);
        shown = percent;
        return !bStopFlag;
    });
    tellCopied(path, copy, end, &target);
}
