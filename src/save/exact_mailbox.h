#pragma once

#include "platform/byte_source.h"
#include "save/mailbox_file.h"

#include <functional>

/// How an exact copy ended.
enum class ExactEnd {
    Whole,
    NoMailbox, ///< its first line starts with "From " no more
    Unreadable,
    Unwritable,
    Stopped
};

/// What an exact copy of a mailbox has done. Of a copy that is not whole only whole messages stay in the target.
struct ExactMailboxCopy {
    ExactEnd end = ExactEnd::Whole;
    qint64 found = 0;     ///< messages, as the scan counts them
    qint64 written = 0;   ///< of these, whole
    qint64 strays = 0;    ///< lines that start with "From " and begin no message
    qint64 cutOffset = 0; ///< where the first message that was not written stands in the source, bytes
};

/// Looks whether a file is a mailbox with a message: `found` is 1 then, `end` tells where it is none or can't be read. A
/// file of one line is a mailbox without a message.
ExactMailboxCopy probeMailbox(ByteSource *source);

/// Appends a mailbox file (mbox, RFC 4155) as it stands, but for three things: CR LF becomes LF, a line feed comes
/// behind a last line without one, a byte order mark before the first "From " goes. The file is one
/// that probeMailbox has found a message in. `goOn` gets the bytes read so far, often; false stops the copy.
ExactMailboxCopy copyMailboxExactly(ByteSource *source, MailboxFile *target,
                                    const std::function<bool(qint64 done)> &goOn);
