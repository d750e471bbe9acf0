#pragma once

#include "platform/byte_source.h"

#include <QByteArray>

#include <vector>

/// A part of a partial message whose content lies in a file of its own: its header block has "X-Apple-Content-Length:".
/// Places are bytes in the message's file.
struct TakenOutPart {
    QByteArray section;       ///< the part's number as IMAP counts (RFC 3501, 6.4.5): "2.1"
    QByteArray encoding;      ///< Content-Transfer-Encoding in lower case, "" where there is none
    qint64 headerStart = 0;   ///< of the X-Apple header
    qint64 headerEnd = 0;     ///< behind its last line
    qint64 contentPlace = -1; ///< behind the empty line that ends the part's headers; -1: there is none
};

/// Finds these parts in the bytes from `start` to `end` of a file, in their order (MIME, RFC 2046). The message is read
/// once and never held; parts nested deeper than any real message has them are not looked at. A failed read ends the
/// list, and the source tells.
std::vector<TakenOutPart> takenOutParts(ByteSource *source, qint64 start, qint64 end);
