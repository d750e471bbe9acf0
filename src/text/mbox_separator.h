#pragma once

#include <string_view>

/// True for a line that begins a message of a mailbox (mbox, RFC 4155) behind the first one: it starts with "From " and
/// holds the name of a weekday between blanks, before any zero byte. A byte order mark at its front does not count.
bool isMboxSeparator(std::string_view line);
