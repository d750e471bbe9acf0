#pragma once

#include <QByteArray>
#include <QString>

#include <string_view>

/// How many characters of a text were changed on its way to Latin-1.
struct Latin1Counts {
    qint64 lost = 0;   ///< became "?": a character above U+00FF, also above U+FFFF, or an invalid byte
    qint64 single = 0; ///< U+0080 to U+00FF: now one byte each

    Latin1Counts &operator+=(const Latin1Counts &other)
    {
        lost += other.lost;
        single += other.single;
        return *this;
    }
};

/// What is changed of a text on its way to Latin-1.
Latin1Counts latin1Counts(const QString &text);

/// Appends a line of UTF-8 to `out` as Latin-1, as if it were read into a text and written again by the toolkit:
/// a character above U+00FF becomes "?", one above U+FFFF "??", an invalid byte "?". `startsLine`: a byte order
/// mark at the front goes. Zero bytes pass. Gives what was changed.
Latin1Counts appendAsLatin1(std::string_view line, bool startsLine, QByteArray *out);

/// What the character at the front of UTF-8 text becomes in Latin-1.
struct Latin1Character {
    size_t taken = 0; ///< bytes of UTF-8; 0: not well-formed, or unusual, so that the toolkit decides
    size_t given = 0; ///< bytes of Latin-1
    char bytes[2] = {};
    Latin1Counts counts; ///< what it adds to them
};
/// `text` is not empty and starts with a byte above 0x7F.
Latin1Character latin1Character(std::string_view text);
