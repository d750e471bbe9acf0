#pragma once

#include <QString>
#include <QStringList>

// The rules that turn a header's lines into the text shown. They are fixed procedures for one encoded word of a
// value (RFC 2047 gives the form), not a general decoder; what they make of an unexpected value is kept, because
// it is what the user sees. One implementation; a row for each user (`headerDialects` in the source).

struct HeaderDialect;

extern const HeaderDialect singleFileHeaders;   ///< preview of a whole file
extern const HeaderDialect mailboxHeaders;      ///< preview of a message in a mailbox
extern const HeaderDialect listHeaders;         ///< list of file-per-message stores
extern const HeaderDialect mailboxIndexHeaders; ///< index of mbox files
extern const HeaderDialect operaIndexHeaders;   ///< index of .mbs files

/// True if a line belongs to the header before it: it starts with a blank or a tab (RFC 5322, 2.2.3).
bool isFold(const QString &line);

/// The sender. `line` is the header's first line, name and newline included; `folds` are the folded lines behind
/// it. Lines as text mode delivers them. Gives the text to show or store.
QString decodeSender(const QString &line, const QStringList &folds, const HeaderDialect &dialect);
/// The subject, likewise. A subject without an encoded word keeps its newlines.
QString decodeSubject(const QString &line, const QStringList &folds, const HeaderDialect &dialect);
/// To, Cc and CC in the previews. `line` is what is to be shown of an undecoded header, name first; `label` is
/// "To: ", "Cc: " or "CC: ".
QString decodeRecipients(const QString &line, const QString &label);
