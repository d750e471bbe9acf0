#pragma once

#include <QByteArray>

#include <string_view>

/// Appends a line of UTF-8 to `out` as Latin-1, as if it were read into a text and written again by the toolkit:
/// a character above U+00FF becomes "?", one above U+FFFF "??", an invalid byte "?". `startsLine`: a byte order
/// mark at the front goes. Zero bytes pass.
void appendAsLatin1(std::string_view line, bool startsLine, QByteArray *out);

/// What the character at the front of UTF-8 text becomes in Latin-1.
struct Latin1Character {
    size_t taken =
        0; ///< bytes of UTF-8; 0 where they are not well-formed or unusual, so that the toolkit decides
    size_t given = 0; ///< bytes of Latin-1
    char bytes[2] = {};
};
/// `text` is not empty and starts with a byte above 0x7F.
Latin1Character latin1Character(std::string_view text);
