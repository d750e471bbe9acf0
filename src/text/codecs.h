#pragma once

#include <QByteArray>
#include <QString>

class QTextCodec;

/// The toolkit's codec for a charset name as it stands in mail (RFC 2045, RFC 2047), or null for an unknown or
/// empty name. "ks_c_5601-1987" is read as code page 949, which mailers mean by it.
QTextCodec *codecOfCharset(const QString &charset);

/// Bytes up to the first zero byte, read as UTF-8.
QString utf8UpToZero(const QByteArray &bytes);

/// Bytes up to the first zero byte, read as Latin-1.
QString latin1UpToZero(const QByteArray &bytes);

/// All of the bytes, read by the codec, or as UTF-8 without one; zero bytes do not end them.
QString textOf(const QByteArray &bytes, QTextCodec *codec);
