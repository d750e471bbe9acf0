#pragma once

#include "platform/byte_source.h"

#include <string_view>

/// True for a line that begins a message of a mailbox (mbox, RFC 4155) behind the first one: it starts with "From " and
/// holds the name of a weekday between blanks, before any zero byte. A byte order mark at its front does not count.
bool isMboxSeparator(std::string_view line);
/// The same for a line of which only the start is known; it goes on at `next` in the source, in bytes, and is read in
/// pieces up to its end or to the weekday. What can't be read of it does not count.
bool isMboxSeparator(std::string_view lineStart, ByteSource *source, qint64 next);
