#include "text/header_lines.h"

#include <algorithm>

namespace
{
struct HeaderLines {
    QString line;
    QStringList folds;
};

// The rest of a line; its start is kept as far as there is room.
QString takeLine(LineReader *reader, size_t *room, LineText text)
{
    const std::string_view start = reader->readLine(*room).value_or(std::string_view());
    *room -= std::min(*room, start.size());
    const QString taken = text(start);
    if (!start.empty() && start.back() != '\n')
        reader->skipLine();
    return taken;
}

HeaderLines readHeader(LineReader *reader, LineText text)
{
    size_t room = keptHeaderBytes;
    HeaderLines header{takeLine(reader, &room, text), {}};
    while (reader->nextIsFold()) {
        if (room >= LineReader::shortestPiece)
            header.folds.append(takeLine(reader, &room, text));
        else
            reader->skipLine();
    }
    return header;
}
} // namespace

HeaderStart headerStart(std::string_view line)
{
    if (line.find(':') == std::string_view::npos)
        return HeaderStart::Other;
    const QString text = wholeLineText(line);
    if (text.startsWith(QLatin1String("From:"), Qt::CaseInsensitive))
        return HeaderStart::From;
    const bool isSubject = text.startsWith(QLatin1String("Subject:"), Qt::CaseInsensitive);
    return isSubject ? HeaderStart::Subject : HeaderStart::Other;
}

QString readSender(LineReader *reader, const HeaderDialect &dialect, LineText text)
{
    const HeaderLines header = readHeader(reader, text);
    return decodeSender(header.line, header.folds, dialect);
}

QString readSubject(LineReader *reader, const HeaderDialect &dialect, LineText text)
{
    const HeaderLines header = readHeader(reader, text);
    return decodeSubject(header.line, header.folds, dialect);
}

QString readLineStart(LineReader *reader, LineText text)
{
    size_t room = keptHeaderBytes;
    return takeLine(reader, &room, text);
}

SenderAndSubject readSenderAndSubject(LineReader *reader, const HeaderDialect &dialect)
{
    SenderAndSubject found;
    while (!(found.sender && found.subject) && reader->skipToLineStart(LineStarts::FromOrSubject)) {
        const HeaderStart start = headerStart(reader->peek(lineStartBytes));
        if (start == HeaderStart::From && !found.sender) {
            found.senderBegin = reader->position();
            found.sender = readSender(reader, dialect, wholeLineText);
            found.senderEnd = reader->position();
        } else if (start == HeaderStart::Subject && !found.subject) {
            found.subject = readSubject(reader, dialect, wholeLineText);
        } else {
            reader->skipLine();
        }
    }
    return found;
}
