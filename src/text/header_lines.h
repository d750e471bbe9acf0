#pragma once

#include "text/header_rules.h"
#include "text/line_reader.h"

#include <QString>

#include <optional>

/// The headers that an index or a list shows, as it looks for them: at the start of any line, in any case.
enum class HeaderStart { From, Subject, Other };

/// What a line starts with. `line` are its first lineStartBytes bytes, fewer only where there are no more.
HeaderStart headerStart(std::string_view line);
constexpr size_t lineStartBytes = 12; // "Subject:" behind a byte order mark, and one byte more

/// How much of a header is kept, in bytes with its folded lines. What stands behind is passed over: it is far beyond
/// what any record holds or any row can show, and a file may have gigabytes of it.
constexpr size_t keptHeaderBytes = size_t{1} << 20;

/// lineText or wholeLineText.
using LineText = QString (*)(std::string_view);

/// Reads the header From, or Subject, that the reader has come to, with its folded lines (RFC 5322, 2.2.3), and decodes
/// it.
QString readSender(LineReader *reader, const HeaderDialect &dialect, LineText text);
QString readSubject(LineReader *reader, const HeaderDialect &dialect, LineText text);
/// Reads a line; keptHeaderBytes of it are kept as well.
QString readLineStart(LineReader *reader, LineText text);

/// The first sender and the first subject from a place in a file on.
struct SenderAndSubject {
    std::optional<QString> sender;
    std::optional<QString> subject;
    qint64 senderBegin = 0; ///< bytes: where the sender's first line begins
    qint64 senderEnd = 0;   ///< the first byte behind its folded lines
};
/// Reads on until both are found or the file ends.
SenderAndSubject readSenderAndSubject(LineReader *reader, const HeaderDialect &dialect);
