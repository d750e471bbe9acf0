#pragma once

#include <cstddef>
#include <string_view>

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

/// The place of the first `wanted` (two bytes or more) in the text at or behind `from`; npos if there is none.
size_t findText(std::string_view text, std::string_view wanted, size_t from = 0);

/// How far a copy has come.
struct CopiedText {
    const char *in; ///< the first source byte not copied
    char *out;      ///< the place behind the copy
    size_t feeds;   ///< line feeds in the copy
    size_t high;    ///< characters U+0080 to U+00FF in it
};
/// Copies UTF-8 text as Latin-1 with CR LF as LF to `out`, which has room for all of [begin, end) and 16 bytes more.
/// Stops where a second look is needed: at a character above U+00FF, a byte that is no UTF-8, a CR without a line
/// feed, or behind a line feed that F follows.
CopiedText copyPlainText(const char *begin, const char *end, char *out);
/// The same, and behind a line feed that C follows.
CopiedText copyPlainHeaders(const char *begin, const char *end, char *out);
/// The same for a message whose lines are filtered: stops behind a line feed that F or R follows, and at "<?".
CopiedText copyFilteredText(const char *begin, const char *end, char *out);
/// Such a copy from `begin` to `out`, cut behind its n-th line feed; it has that many.
CopiedText cutBehindLine(const CopiedText &copied, const char *begin, char *out, size_t n);
