#pragma once

#include "platform/ahead_queue.h"
#include "save/olm_composer.h"

#include <optional>
#include <string>
#include <vector>

/// A stretch of a message that was composed for a mailbox.
struct ComposedPiece {
    std::string bytes;
    std::optional<ComposedMessage> end; ///< where it ends the message
};

/// Appends messages of an .olm file to mailboxes. A thread composes them ahead of what is written.
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
