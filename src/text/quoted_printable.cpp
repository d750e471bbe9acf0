#include "text/quoted_printable.h"

namespace
{
// Values of the characters "0" to "F"; the seven between "9" and "A" count as 0.
constexpr int hexVal[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 0, 0, 0, 0, 0, 0, 10, 11, 12, 13, 14, 15};

int digit(const QString &text, int at)
{
    if (at >= text.size())
        return 0;
    const int index = text.at(at).toUpper().unicode() - '0';
    return index >= 0 && index < static_cast<int>(std::size(hexVal)) ? hexVal[index] : 0;
}
} // namespace

QByteArray QDecode(const QString &text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char('=')) {
            bytes += static_cast<char>(digit(text, i + 1) * 16 + digit(text, i + 2));
            i += 2;
        } else {
            bytes += text.at(i).unicode() < 256 ? static_cast<char>(text.at(i).unicode()) : '\0';
        }
    }
    return bytes;
}
