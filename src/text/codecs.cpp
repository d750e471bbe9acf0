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
    return QString::fromLatin1(bytes.constData(), lengthUpToZero(bytes));
}
