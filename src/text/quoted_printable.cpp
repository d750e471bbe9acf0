#include "text/quoted_printable.h"

#include "text/vector_search.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace
{
// Values of the characters "0" to "F"; the seven between "9" and "A" count as 0.
constexpr int hexVal[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 0, 0, 0, 0, 0, 0, 10, 11, 12, 13, 14, 15};

int digit(const char *at, const char *end)
{
    if (at >= end)
        return 0;
    const char upper = *at >= 'a' && *at <= 'z' ? static_cast<char>(*at - 'a' + 'A') : *at;
    const int index = upper - '0';
    return index >= 0 && index < static_cast<int>(std::size(hexVal)) ? hexVal[index] : 0;
}
} // namespace

QByteArray QDecode(QByteArray latin1)
{
    // What comes out is never longer than what went in, so both stand in one buffer.
    char *out = latin1.data();
    const char *at = out;
    const char *const end = at + latin1.size();
    while (at < end) {
        if (*at != '=') {
            const char *mark = findByte(at, end, [](auto byte) { return byte == '='; });
            std::memmove(out, at, static_cast<size_t>(mark - at));
            out += mark - at;
            at = mark;
            continue;
        }
        *out++ = static_cast<char>(digit(at + 1, end) * 16 + digit(at + 2, end));
        at += std::min<ptrdiff_t>(3, end - at);
    }
    latin1.truncate(static_cast<int>(out - latin1.constData()));
    return latin1;
}

QByteArray QDecode(const QString &text)
{
    return QDecode(latin1OrZero(text));
}

QByteArray latin1OrZero(const QString &text)
{
    QByteArray bytes(text.size(), Qt::Uninitialized);
    char *out = bytes.data();
    for (const QChar character : text)
        *out++ = character.unicode() < 256 ? static_cast<char>(character.unicode()) : '\0';
    return bytes;
}
