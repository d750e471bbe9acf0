#include "text/quoted_printable.h"

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

QByteArray QDecode(const QByteArray &latin1)
{
    QByteArray bytes(latin1.size(), Qt::Uninitialized);
    char *out = bytes.data();
    const char *at = latin1.constData();
    const char *const end = at + latin1.size();
    while (at < end) {
        const void *found = std::memchr(at, '=', static_cast<size_t>(end - at));
        const char *mark = found ? static_cast<const char *>(found) : end;
        std::memcpy(out, at, static_cast<size_t>(mark - at));
        out += mark - at;
        if (mark < end)
            *out++ = static_cast<char>(digit(mark + 1, end) * 16 + digit(mark + 2, end));
        at = end - mark > 3 ? mark + 3 : end;
    }
    bytes.truncate(static_cast<int>(out - bytes.constData()));
    return bytes;
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
