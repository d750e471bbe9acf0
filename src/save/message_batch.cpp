#include "save/message_batch.h"

namespace
{
constexpr qint64 muchBytes = 256 * 1024;
} // namespace

void MessageBatch::add(const MessagePlace &place, bool joined)
{
    m_messages.push_back(place);
    if (joined && m_joined++ == 0)
        m_firstJoined = place;
}

void MessageBatch::addChange(ChangeKind kind, qint64 count, const MessagePlace &place)
{
    if (count <= 0)
        return;
    const bool isOfLast = !m_changes.empty() && m_changes.back().count.offset == place.offset &&
                          m_changes.back().count.path == place.path;
    m_changed += isOfLast ? 0 : 1;
    m_changes.push_back({kind, {1, count, place.path, place.offset}});
}

void MessageBatch::addStrays(qint64 lines, const MessagePlace &place)
{
    if (m_strays == 0)
        m_firstStray = place;
    m_strays += lines;
}

void MessageBatch::settleMuch(MailboxFile *target)
{
    if (!target->isOpen() || target->unsettledBytes() >= muchBytes)
        settle(target);
}

void MessageBatch::settle(MailboxFile *target)
{
    if (target->settle())
        tell(target->path());
    else
        for (const MessagePlace &message : m_messages)
            m_ledger->addLeftOut(
                {message.path, message.offset, 1, LeftOutReason::Unwritable, target->errorString()});
    m_messages.clear();
    m_changes.clear();
    m_joined = m_strays = m_changed = 0;
}

void MessageBatch::tell(const QString &mailbox) const
{
    if (m_messages.empty() && m_strays == 0)
        return;
    m_ledger->addTarget(mailbox);
    m_ledger->addWritten(static_cast<qint64>(m_messages.size()) - m_joined);
    m_ledger->addJoined(m_joined, m_firstJoined);
    m_ledger->addStrays(m_strays, m_firstStray);
    m_ledger->addChanged(m_changed);
    for (const Change &change : m_changes)
        m_ledger->addChanges(change.kind, change.count);
}
