#include "text/codecs.h"

#include <QTextCodec>

#include <algorithm>
#include <string_view>

namespace
{
int lengthUpToZero(const QByteArray &bytes)
{
    const std::string_view text(bytes.constData(), static_cast<size_t>(bytes.size()));
    return static_cast<int>(std::min(text.find('\0'), text.size()));
}

constexpr int utf8Mib = 106; // its number among the registered character sets

QString textWithRoom(int characters)
{
    QString text;
    text.reserve(characters);
    return text;
}

// Where a piece of UTF-8 from `from` on may end so that decoding piece by piece gives what decoding all at once gives:
// behind a byte of ASCII, and not before what could be taken for a byte order mark.
int pieceEnd(const QByteArray &bytes, int from)
{
    constexpr int smallest = 16 * 1024;
    if (bytes.size() - from <= smallest)
        return bytes.size();
    int end = from + smallest;
    while (end < bytes.size() && (bytes.at(end - 1) < 0 || bytes.at(end) == '\xEF'))
        ++end;
    return end;
}
} // namespace

QTextCodec *codecOfCharset(const QString &charset)
{
    // The toolkit knows code page 949 by this name, not by "cp949".
    if (charset == QLatin1String("ks_c_5601-1987") || charset == QLatin1String("cp949"))
        return QTextCodec::codecForName("CP949");
    return charset.isEmpty() ? nullptr : QTextCodec::codecForName(charset.toLatin1());
}

QString utf8UpToZero(const QByteArray &bytes)
{
    return QString::fromUtf8(bytes.constData(), lengthUpToZero(bytes));
}

QString latin1UpToZero(const QByteArray &bytes)
{
    const int length = lengthUpToZero(bytes);
    QString text = textWithRoom(length);
    text.append(QLatin1String(bytes.constData(), length));
    return text;
}

QString textOf(const QByteArray &bytes, QTextCodec *codec)
{
    if (codec && codec->mibEnum() != utf8Mib)
        return codec->toUnicode(bytes);
    // In pieces, because the toolkit would fill a text of its own for the whole, page by page.
    QString text = textWithRoom(bytes.size());
    for (int at = 0; at < bytes.size();) {
        const int end = pieceEnd(bytes, at);
        const char *piece = bytes.constData() + at;
        text += codec ? codec->toUnicode(piece, end - at) : QString::fromUtf8(piece, end - at);
        at = end;
    }
    return text;
}
