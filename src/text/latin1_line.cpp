#include "text/latin1_line.h"

#include "text/line_bytes.h"

#include <QString>

namespace
{
bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// Bytes of the well-formed sequence at the front whose meaning in Latin-1 is plain; 0 where the toolkit is to be
// asked (anything invalid, surrogates, overlong forms, the last row of the basic plane).
size_t plainSequence(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text[0]);
    const size_t length = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF4 ? 4 : 0;
    if (length == 0 || text.size() < length)
        return 0;
    for (size_t i = 1; i < length; ++i)
        if (!isContinuation(text[i]))
            return 0;
    const auto second = static_cast<unsigned char>(text[1]);
    const bool unusual = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
                         (lead == 0xEF && second == 0xBF) || (lead == 0xF0 && second < 0x90);
    return unusual ? 0 : length;
}

Latin1Counts appendByToolkit(std::string_view line, bool startsLine, QByteArray *out)
{
    // The toolkit drops a byte order mark at the front of what it reads; in the middle of a line it is a character.
    Latin1Counts counts;
    if (!startsLine && startsWith(line, byteOrderMark)) {
        *out += '?';
        ++counts.lost;
        line.remove_prefix(byteOrderMark.size());
    }
    const QString text = QString::fromUtf8(line.data(), static_cast<int>(line.size()));
    *out += text.toLatin1();
    return counts += latin1Counts(text);
}
} // namespace

Latin1Counts latin1Counts(const QString &text)
{
    Latin1Counts counts;
    for (const QChar unit : text)
        if (unit.unicode() > 0xFF)
            counts.lost += unit.isLowSurrogate() ? 0 : 1; // its high one has been counted
        else if (unit.unicode() > 0x7F)
            ++counts.single;
    return counts;
}

Latin1Character latin1Character(std::string_view text)
{
    Latin1Character character;
    character.taken = plainSequence(text);
    if (character.taken == 0)
        return character;
    const int code = (static_cast<unsigned char>(text[0]) & 0x1F) << 6 | (text[1] & 0x3F);
    character.given = character.taken == 4 ? 2 : 1;
    character.bytes[0] = character.taken == 2 && code <= 0xFF ? static_cast<char>(code) : '?';
    character.bytes[1] = '?';
    (character.bytes[0] == '?' ? character.counts.lost : character.counts.single) = 1;
    return character;
}

Latin1Counts appendAsLatin1(std::string_view line, bool startsLine, QByteArray *out)
{
    Latin1Counts counts;
    const int before = out->size();
    std::string_view rest = startsLine ? withoutMark(line) : line;
    out->resize(before + static_cast<int>(rest.size()));
    char *to = out->data() + before;
    while (!rest.empty()) {
        if (rest[0] >= 0) {
            *to++ = rest[0];
            rest.remove_prefix(1);
            continue;
        }
        const Latin1Character character = latin1Character(rest);
        if (character.taken == 0) {
            out->resize(before);
            return appendByToolkit(line, startsLine, out);
        }
        for (size_t i = 0; i < character.given; ++i)
            *to++ = character.bytes[i];
        counts += character.counts;
        rest.remove_prefix(character.taken);
    }
    out->resize(static_cast<int>(to - out->data()));
    return counts;
}
