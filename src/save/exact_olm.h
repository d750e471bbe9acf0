#pragma once

#include "app/olm_records.h"
#include "platform/ahead_queue.h"
#include "platform/byte_source.h"
#include "save/exact_message.h"

#include <QStringList>

#include <functional>
#include <string>
#include <vector>

/// A stretch of a message that was composed for a mailbox.
struct ComposedPiece {
    std::string bytes;
    bool endsMessage = false;
    ExactMessageCopy result; ///< where it ends the message, as the next
    QStringList problems;    ///< sentences for the user
};

/// Appends messages of an .olm file to mailboxes, each composed from its XML: all of its subject, people, dates, ids and
/// body in UTF-8, its attachments wherever they stand in the archive (RFC 5322, RFC 2045 to 2047, RFC 2231). An
/// attachment that the archive doesn't have is left out, told, and counted among the empty parts. Attachments pass
/// through in pieces, bodies of more than 1 MiB too. A thread composes ahead of what is written.
class OlmMessages
{
public:
    /// The messages of these records, in this order. Nobody else may use the archive meanwhile. `goOn` is asked by both
    /// threads; where it gives false the copy stops, and no message comes behind it.
    OlmMessages(std::vector<const MailMLRC *> records, ByteSource *archive,
                const std::function<bool()> &goOn);

    /// Appends the next record's message, nothing where it is not whole.
    ExactMessageCopy appendNext(MailboxFile *target);

private:
    std::function<bool()> m_goOn;
    AheadQueue<ComposedPiece> m_pieces;
};
