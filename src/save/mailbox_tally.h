#pragma once

#include "save/save_ledger.h"
#include "text/latin1_line.h"

#include <array>

/// Counts what the copy of a mailbox file makes of its messages, line by line; the words are those of SaveLedger. It is
/// a value, so that a copy that takes lines back goes back to the count that it had there.
class MailboxTally
{
public:
    /// A line of the source, at `offset`, that starts with "From ". `separates`: a message begins there; `quoted`: it
    /// got a ">" in the target.
    void takeFromLine(qint64 offset, bool separates, bool quoted);
    /// Characters of the message under way that were changed.
    void addCharacters(const Latin1Counts &counts) { m_running.latin1 += counts; }
    /// The message under way is whole in the target.
    void endMessage();
    /// It is not whole: its separator, if it stands, is a stray.
    void cutMessage();
    /// The mailbox has one line, and so no message.
    void dropOnlyLine();
    /// Messages that were seen in all, before lines were taken back.
    void setFound(qint64 found) { m_found = found; }

    // Messages so far.
    qint64 found() const { return m_found; }
    qint64 written() const { return m_written; }
    qint64 joined() const { return m_joined; }
    qint64 leftOut() const { return m_found - m_written - m_joined; }
    qint64 strays() const { return m_strays; }
    /// Where the message under way, or cut, begins in the source, in bytes.
    qint64 offset() const { return m_running.offset; }
    /// Tells the ledger all of it but what was left out; `path` is the source.
    void tell(const QString &path, SaveLedger *ledger) const;

private:
    struct Running {
        qint64 offset = 0;
        bool isOpen = false;
        bool stands = false; ///< its separator stands in the target
        Latin1Counts latin1;
        qint64 quoted = 0;
    };
    void addStray(qint64 offset);

    static constexpr ChangeKind kinds[] = {ChangeKind::LostCharacters, ChangeKind::Latin1,
                                           ChangeKind::Quoted};

    qint64 m_found = 0;
    qint64 m_written = 0;
    qint64 m_joined = 0;
    qint64 m_changed = 0; ///< messages
    qint64 m_strays = 0;
    qint64 m_firstStray = 0;  ///< offset of the line
    qint64 m_firstJoined = 0; ///< offset of the message
    Running m_running;
    std::array<ChangeCount, std::size(kinds)> m_changes;
};
