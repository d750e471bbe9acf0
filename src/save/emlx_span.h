#pragma once

#include "platform/byte_source.h"

#include <QDateTime>

#include <optional>

/// Where the message stands in a .emlx file, bytes. The file is a line with the message's byte count, the message, and a
/// property list.
struct EmlxSpan {
    qint64 start = 0;
    qint64 end = 0;
    bool isShort = false; ///< the file ends before the byte count does, and has no property list: it is cut
};

/// A first line that is no number belongs to the message. Where the count is 0, negative or more than the file has, the
/// message reaches to the last line that starts with an XML declaration, or to the end of the file.
EmlxSpan emlxSpan(ByteSource *source);

/// The property list's "date-received", in UTC; nothing where it has none.
std::optional<QDateTime> emlxDateReceived(ByteSource *source, const EmlxSpan &span);
