#pragma once

#include <QByteArray>
#include <QString>

/// Quoted-printable text (RFC 2045, 6.7; RFC 2047's Q form) to bytes. A "=" takes the two characters behind it
/// as hexadecimal digits in either case; anything else gives one byte, 0 for a character above U+00FF. "_" stays
/// "_", and soft line breaks are the caller's. A pair that is no hexadecimal number, or is cut off by the end,
/// still gives one byte.
QByteArray QDecode(const QString &text);
/// The same for text that is Latin-1 already, as latin1OrZero gives it. Bytes that nobody shares are decoded in place.
QByteArray QDecode(QByteArray latin1);
/// A text's characters as bytes, 0 for one above U+00FF.
QByteArray latin1OrZero(const QString &text);
