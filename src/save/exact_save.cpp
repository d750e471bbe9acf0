#include "save/exact_save.h"

#include "app/olm_records.h"
#include "app/problem_log.h"
#include "app/shared_state.h"
#include "save/bundle.h"
#include "save/exact_olm.h"
#include "save/message_counter.h"
#include "save/outlook_bundle.h"

#include <cerrno>

namespace
{
QString chosenBundle()
{
    return bundlePath(bForAppleMail ? appleBundle : outlookBundle, saveDir);
}

// Outlook's own mail keeps Outlook's codes in either bundle.
const FinderCodes &finderCodes()
{
    return bForAppleMail && !bOlmFileFound ? appleMailbox : outlookMailbox;
}

LeftOutReason reasonOf(const ByteSource &source)
{
    return source.errorNumber() == ENOENT ? LeftOutReason::Vanished : LeftOutReason::Unreadable;
}

// Why messages of a mailbox are left out; where the copy is whole they are those that the scan saw.
LeftOutReason reasonOf(ExactEnd end)
{
    switch (end) {
    case ExactEnd::Unwritable:
        return LeftOutReason::Unwritable;
    case ExactEnd::Stopped:
        return LeftOutReason::Stopped;
    case ExactEnd::Whole:
    case ExactEnd::NoMailbox:
        return LeftOutReason::Vanished;
    case ExactEnd::Unreadable:
        break;
    }
    return LeftOutReason::Unreadable;
}

// A file that can't be copied as a mailbox any more.
void tellPassedOver(const QString &path, ExactEnd end, const ByteSource &source)
{
    LeftOutItem item{path, 0, std::nullopt,
                     end == ExactEnd::NoMailbox ? LeftOutReason::Vanished : reasonOf(source),
                     source.errorString()};
    if (const auto known = static_cast<qint64>(messagesOfPath(path).size()); known > 0)
        item.messages = known;
    saveLedger.addFound(item.messages.value_or(0));
    saveLedger.addLeftOut(item);
    reportUnread(Problem::tr("passed over, it can't be read as a mailbox any more: ") +
                 (source.errorString().isEmpty() ? path : source.errorString()));
}
} // namespace

ExactSaving::ExactSaving(SaveMode mode, std::function<bool()> goOn)
    : m_mode(mode), m_goOn(std::move(goOn)), m_targets(chosenBundle()), m_target(mode)
{
}

void ExactSaving::enterFolder(qint64 folderId)
{
    if (folderId == m_folder)
        return;
    closeMailbox();
    m_folder = folderId;
    m_place = MailboxTarget();
    saveLedger.enterFolder(folderId);
}

// True if the folder's mailbox stands open. After a failure it is tried again for the next file, and goes on behind what
// was whole.
bool ExactSaving::openTarget()
{
    FileSavingIdentification = true;
    if (m_place.file.isEmpty())
        m_place = m_targets.targetOf(m_folder);
    if (!m_hasBundle && m_mode == SaveMode::Write && bForOutlookMail)
        prepareOutlookBundle(chosenBundle());
    m_hasBundle = true;
    if (!m_target.isOpen()) {
        closeMailbox();
        m_target.open(m_place.file, finderCodes());
        saveLedger.enterTarget(m_place.file);
    }
    return m_target.isOpen();
}

void ExactSaving::closeMailbox()
{
    m_batch.settle(&m_target);
    m_target.close();
    saveLedger.addBytes(m_target.takeAddedBytes());
}

void ExactSaving::saveMailbox(const MailItemNode &mailbox, const std::function<void(int)> &progress)
{
    ByteSource start = ByteSource::ofFile(mailbox.path);
    const ExactMailboxCopy probe = probeMailbox(&start);
    if (probe.end != ExactEnd::Whole)
        return tellPassedOver(mailbox.path, probe.end, start);
    if (probe.found == 0) // a file of one line
        return;
    // Opened anew: what went wrong behind the first line may not go wrong again.
    ByteSource source = ByteSource::ofFile(mailbox.path);
    openTarget();
    const ExactMailboxCopy copy = copyMailboxExactly(&source, &m_target, [&](qint64 done) {
        progress(static_cast<int>(done * 100 / source.size()));
        return m_goOn();
    });
    tellMailbox(mailbox, copy, source);
}

void ExactSaving::tellMailbox(const MailItemNode &mailbox, const ExactMailboxCopy &copy,
                              const ByteSource &source)
{
    std::optional<qint64> all = static_cast<qint64>(messagesOfPath(mailbox.path).size());
    if (copy.end == ExactEnd::Stopped)
        all = MessageCounter()(mailbox.path);
    // A copy to the end of the file that the scan saw has met all; the scan counts a separator behind a byte order mark
    // for itself, which stands within a message here.
    const bool metAll = copy.end == ExactEnd::Whole && source.size() >= mailbox.size;
    const qint64 unseen = metAll ? 0 : qMax<qint64>(0, all.value_or(0) - copy.found);
    saveLedger.addFound(copy.found + unseen);
    if (copy.written > 0 || copy.strays > 0)
        saveLedger.addTarget(m_place.file);
    saveLedger.addWritten(copy.written);
    saveLedger.addStrays(copy.strays, {mailbox.path, 0});
    if (copy.end != ExactEnd::Whole || unseen > 0) {
        const bool unwritable = copy.end == ExactEnd::Unwritable;
        LeftOutItem item{mailbox.path, copy.cutOffset, std::nullopt, reasonOf(copy.end),
                         unwritable ? m_target.errorString() : source.errorString()};
        if (all || copy.found > copy.written)
            item.messages = copy.found + unseen - copy.written;
        saveLedger.addLeftOut(item);
    } else {
        tellShrunk(mailbox, source);
    }
    reportUnread(source.errorString());
}

void ExactSaving::saveMessage(ByteSource source)
{
    saveLedger.addFound();
    const MessagePlace place{source.path(), 0};
    if (!source.isOpen()) {
        saveLedger.addLeftOut({place.path, 0, 1, reasonOf(source), source.errorString()});
        reportUnread(Problem::tr("left out: ") + source.errorString());
        return;
    }
    openTarget();
    const ExactMessageCopy copy = copyMessageExactly(&source, &m_target, m_goOn);
    tellMessage(copy, place, source.errorString());
}

void ExactSaving::saveOlmMessage(const MailMLRC &record, OlmMessages *messages)
{
    saveLedger.addFound();
    openTarget();
    const MessagePlace place{m_selectedFile, record.llXmlOffset};
    tellMessage(messages->appendNext(&m_target), place, QString());
}

void ExactSaving::tellMessage(const ExactMessageCopy &copy, const MessagePlace &place,
                              const QString &sourceError)
{
    const QString error = copy.partError.isEmpty() ? sourceError : copy.partError;
    if (copy.end == ExactEnd::Stopped) {
        saveLedger.addLeftOut({place.path, place.offset, 1, LeftOutReason::Stopped, QString()});
    } else if (copy.end != ExactEnd::Whole) {
        const bool part = sourceError.isEmpty() && !bOlmFileFound;
        saveLedger.addLeftOut(
            {place.path, place.offset, 1, part ? LeftOutReason::Part : LeftOutReason::Unreadable, error});
        reportUnread(Problem::tr("a message was left out, it can't be read: %1 (%2)").arg(place.path, error));
    } else if (copy.isShort) {
        const QString text = Problem::tr("shorter than its own byte count: ") + place.path;
        saveLedger.addLeftOut({place.path, place.offset, 1, LeftOutReason::Unreadable, text});
        m_batch.addStrays(1, place);
        reportUnread(text);
    } else {
        m_batch.add(place);
        m_batch.addChange(ChangeKind::Quoted, copy.quotedLines, place);
        m_batch.addChange(ChangeKind::EmptyParts, copy.emptyParts, place);
    }
    m_batch.settleMuch(&m_target);
}
