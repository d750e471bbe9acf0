#include "save/mailbox_tally.h"

#include <algorithm>

void MailboxTally::takeFromLine(qint64 offset, bool separates, bool quoted)
{
    if (separates) {
        endMessage();
        ++m_found;
        m_running.offset = offset;
        m_running.isOpen = true;
        m_running.stands = !quoted;
    } else if (quoted) {
        ++m_running.quoted;
    } else {
        addStray(offset);
    }
}

void MailboxTally::addStray(qint64 offset)
{
    if (m_strays++ == 0)
        m_firstStray = offset;
}

void MailboxTally::endMessage()
{
    if (!m_running.isOpen)
        return;
    if (!m_running.stands && m_joined == 0)
        m_firstJoined = m_running.offset;
    ++(m_running.stands ? m_written : m_joined);
    const qint64 counts[] = {m_running.latin1.lost, m_running.latin1.single, m_running.quoted};
    m_changed += std::any_of(std::begin(counts), std::end(counts), [](qint64 n) { return n > 0; }) ? 1 : 0;
    for (size_t i = 0; i < std::size(kinds); ++i) {
        if (counts[i] == 0)
            continue;
        ChangeCount &change = m_changes[i];
        if (change.messages++ == 0)
            change.offset = m_running.offset;
        change.count += counts[i];
    }
    m_running = {};
}

void MailboxTally::cutMessage()
{
    if (m_running.isOpen && m_running.stands)
        addStray(m_running.offset);
    m_running.isOpen = false;
}

void MailboxTally::dropOnlyLine()
{
    cutMessage();
    m_found = 0;
}

void MailboxTally::tell(const QString &path, SaveLedger *ledger) const
{
    ledger->addFound(m_found);
    ledger->addWritten(m_written);
    ledger->addJoined(m_joined, {path, m_firstJoined});
    ledger->addStrays(m_strays, {path, m_firstStray});
    ledger->addChanged(m_changed);
    for (size_t i = 0; i < std::size(kinds); ++i) {
        ChangeCount change = m_changes[i];
        change.path = path;
        ledger->addChanges(kinds[i], change);
    }
}
