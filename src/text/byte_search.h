#pragma once

#include <cstddef>

/// Which line starts are looked for: F, f, S and s, or only F; in either case also a byte above 0x7F, because a
/// byte order mark at the start of a line is dropped when it is read as text.
enum class LineStarts { FromOrSubject, From };

/// True if a line that starts with this byte is looked for.
inline bool isLineStart(char byte, LineStarts starts)
{
    const char lower = static_cast<char>(byte | 0x20);
    return byte < 0 || byte == 'F' || (starts == LineStarts::FromOrSubject && (lower == 'f' || lower == 's'));
}

/// The first byte in (begin, end) that stands behind a line feed at or after `begin` and is looked for; `end` if
/// there is none.
const char *findLineStart(const char *begin, const char *end, LineStarts starts);

/// Line feeds in [begin, end).
size_t countLineFeeds(const char *begin, const char *end);

/// Copies bytes of mail that need no second look to `out`, which has room for all of [begin, end) and 16 bytes
/// more. Stops at the first byte above 0x7F, at the first CR, or behind a line feed that the byte `lineStart`
/// follows; gives that place, `end` if there is none, and adds the line feeds copied to `feeds`.
const char *copyPlainBytes(const char *begin, const char *end, char *out, char lineStart, size_t *feeds);
/// The same for a message whose lines are filtered: stops behind a line feed that F or R follows, and at "<?".
const char *copyFilteredBytes(const char *begin, const char *end, char *out);
