#include "text/encoded_word.h"

#include "text/codecs.h"
#include "text/quoted_printable.h"

#include <QTextCodec>

namespace
{
QString takeUpToMark(QString *text)
{
    const int mark = text->indexOf(QLatin1Char('?'));
    const QString piece = text->left(mark);
    *text = mark < 0 ? QString() : text->mid(mark + 1);
    return piece;
}
} // namespace

WordStart takeWordStart(QString *text)
{
    WordStart word;
    word.charset = takeUpToMark(text);
    word.encoding = takeUpToMark(text);
    return word;
}

QString decodeQ(const QString &text, const QString &charset)
{
    const QByteArray bytes = QDecode(text);
    const QTextCodec *codec = codecOfCharset(charset);
    return codec ? codec->toUnicode(bytes) : utf8UpToZero(bytes);
}

QString decodeB(const QString &text)
{
    return utf8UpToZero(QByteArray::fromBase64(text.toUtf8()));
}

bool decodeWord(QString *text, const WordStart &word)
{
    if (word.encoding == QLatin1String("Q"))
        *text = decodeQ(*text, word.charset);
    else if (word.encoding == QLatin1String("B"))
        *text = decodeB(*text);
    else
        return false;
    return true;
}
