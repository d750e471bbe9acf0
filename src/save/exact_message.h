#pragma once

#include "platform/byte_source.h"
#include "save/exact_mailbox.h"

/// What an exact copy of one message has done. Of one that is not whole nothing stays in the target.
struct ExactMessageCopy {
    ExactEnd end = ExactEnd::Whole;
    bool isShort = false;   ///< .emlx: the file ends before its own byte count; what there is was written
    qint64 quotedLines = 0; ///< that got a ">"
    qint64 emptyParts = 0;  ///< without their content
    QString partError;      ///< why a part of a partial message can't be read: path and reason
};

/// Appends the message of a file (.emlx, .eml, .mbs) to a mailbox in the form mboxrd: its own separator or one that is
/// made from its headers, its bytes with CR LF as LF, lines that would pass for separators quoted, an empty line.
/// A partial .emlx gets its parts back, from "ID.SECTION.emlxpart" beside it or from "Attachments/ID/SECTION/".
/// `goOn`: false stops the copy.
ExactMessageCopy copyMessageExactly(ByteSource *source, MailboxFile *target,
                                    const std::function<bool()> &goOn);
