#pragma once

#include <QString>

// The building blocks of the header rules: the pieces of an encoded word, "=?charset?encoding?text?="
// (RFC 2047), taken literally.

/// What an encoded word starts with: "UTF-8" and "Q" of "=?UTF-8?Q?text?=".
struct WordStart {
    QString charset;
    QString encoding;
};
/// Takes the start off a text, "charset?encoding?rest", which keeps the rest. Where a "?" is missing the piece is all
/// that is left.
WordStart takeWordStart(QString *text);

/// Quoted-printable text in a charset; an unknown or empty charset is read as UTF-8 up to the first zero byte.
QString decodeQ(const QString &text, const QString &charset);
/// Base64 text, read as UTF-8 up to the first zero byte whatever the charset; characters outside the alphabet
/// are passed over.
QString decodeB(const QString &text);
/// decodeQ for "Q", decodeB for "B"; false and no change for any other encoding (case counts).
bool decodeWord(QString *text, const WordStart &word);
