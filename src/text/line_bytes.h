#pragma once

#include <string_view>

// Looks at the ends of lines and other pieces of bytes.

/// What UTF-8 text may begin with; the toolkit drops it at the front of what it reads.
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// True if the text begins, or ends, with these bytes.
constexpr bool startsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

constexpr bool endsWith(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// The line without a byte order mark at its front.
constexpr std::string_view withoutMark(std::string_view line)
{
    return startsWith(line, byteOrderMark) ? line.substr(byteOrderMark.size()) : line;
}
