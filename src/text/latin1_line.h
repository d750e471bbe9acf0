#pragma once

#include <QByteArray>

#include <string_view>

/// Appends a line of UTF-8 to `out` as Latin-1, as if it were read into a text and written again by the toolkit:
/// a character above U+00FF becomes "?", one above U+FFFF "??", an invalid byte "?". `startsLine`: a byte order
/// mark at the front goes. Zero bytes pass.
void appendAsLatin1(std::string_view line, bool startsLine, QByteArray *out);
