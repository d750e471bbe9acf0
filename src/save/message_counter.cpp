#include "save/message_counter.h"

#include "app/problem_log.h"
#include "save/mailbox_copy.h"
#include "save/outlook_bundle.h"
#include "save/save_ledger.h"

namespace
{
constexpr qint64 longestWait = 100; // milliseconds
} // namespace

std::optional<qint64> MessageCounter::operator()(const QString &path) const
{
    if (const size_t messages = messagesOfPath(path).size(); messages > 0)
        return static_cast<qint64>(messages);
    MailboxCopy copy;
    if (m_timer.elapsed() > longestWait || (!copy.open(path.trimmed()) && !copy.startsWithMark()))
        return std::nullopt;
    MailboxFile none(SaveMode::CountOnly);
    none.open(path, appleMailbox);
    const CopyEnd end = copy.copyTo(&none, [&](qint64, qint64) { return m_timer.elapsed() <= longestWait; });
    return end == CopyEnd::Whole ? std::make_optional(copy.tally().found()) : std::nullopt;
}

void tellShrunk(const MailItemNode &mailbox, const ByteSource &source)
{
    if (source.size() >= mailbox.size || !messagesOfPath(mailbox.path).empty())
        return;
    const QString text = Problem::tr("shorter than at the scan, messages are gone: ") + mailbox.path;
    saveLedger.addLeftOut({mailbox.path, 0, std::nullopt, LeftOutReason::Vanished, text});
    reportUnread(text);
}
