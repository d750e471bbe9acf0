#pragma once

#include <QString>
#include <QStringList>

/// The rules that turn a header's lines into the text shown. They are fixed procedures for one encoded word of
/// a value (RFC 2047 gives the form), not a general decoder; what they make of an unexpected value is kept.
/// One implementation; a constant for each user.
struct HeaderDialect;

extern const HeaderDialect singleFileHeaders;   ///< preview of a whole file
extern const HeaderDialect mailboxHeaders;      ///< preview of a message in a mailbox
extern const HeaderDialect listHeaders;         ///< list of file-per-message stores
extern const HeaderDialect mailboxIndexHeaders; ///< index of mbox files
extern const HeaderDialect operaIndexHeaders;   ///< index of .mbs files

/// The sender. `line` is the header's first line, name and newline included; `folds` are the lines behind it
/// that start with a blank or a tab. Lines as text mode delivers them. Gives the text to show or store.
QString decodeSender(const QString &line, const QStringList &folds, const HeaderDialect &dialect);
/// The subject, likewise. A subject without an encoded word keeps its newlines.
QString decodeSubject(const QString &line, const QStringList &folds, const HeaderDialect &dialect);
