#pragma once

#include "save/mailbox_file.h"
#include "save/save_ledger.h"

#include <vector>

/// Messages that were appended to a target mailbox and may still be lost there: what is told of them reaches the ledger
/// when they stand in the file. All of them belong to one folder and one target.
class MessageBatch
{
public:
    /// `ledger` is told of what is settled.
    explicit MessageBatch(SaveLedger *ledger) : m_ledger(ledger) {}

    /// A message that is whole; `joined`: without a separator of its own.
    void add(const MessagePlace &place, bool joined = false);
    /// It was changed. All that is told of one message comes together.
    void addChange(ChangeKind kind, qint64 count, const MessagePlace &place);
    /// Lines in it start with "From ".
    void addStrays(qint64 lines, const MessagePlace &place);

    /// Settles the target and tells the ledger what stands there now, and what could not be written.
    void settle(MailboxFile *target);
    /// The same where much has been appended since.
    void settleMuch(MailboxFile *target);

private:
    struct Change {
        ChangeKind kind;
        ChangeCount count;
    };

    void tell(const QString &mailbox) const;

    SaveLedger *m_ledger;
    std::vector<MessagePlace> m_messages;
    std::vector<Change> m_changes;
    qint64 m_changed = 0; ///< messages that have a change
    qint64 m_joined = 0;
    MessagePlace m_firstJoined;
    qint64 m_strays = 0;
    MessagePlace m_firstStray;
};
