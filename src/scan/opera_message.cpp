#include "scan/opera_message.h"

#include "app/problem_log.h"
#include "app/records.h"
#include "text/header_lines.h"

#include <QStringList>

namespace
{
constexpr size_t blockBytes = 16 * 1024; // most messages
// UTF-16 units: no file system takes more, and each level becomes a folder of the tree.
constexpr int longestFolder = 4096;
constexpr std::string_view locationMark = "X-Opera-Location:";

// The first piece of a line around the header's name, nothing if there is none.
std::optional<QString> locationInLine(const QString &line)
{
    const QStringList pieces =
        line.split(QLatin1String(locationMark.data(), int(locationMark.size())), Qt::SkipEmptyParts);
    return pieces.isEmpty() ? std::nullopt : std::make_optional(pieces.first().trimmed());
}

// The folder goes by the line without white space at its ends, the label by the line as it stands; a line that was
// read as a fold of the sender has no say in the label.
void readLocations(LineReader *reader, const SenderAndSubject &headers, OperaMessage *message)
{
    while (reader->skipToLineWith(locationMark)) {
        const qint64 start = reader->position();
        const bool isSenderFold = start > headers.senderBegin && start < headers.senderEnd;
        const QString line = readLineStart(reader, wholeLineText);
        if (const std::optional<QString> location = locationInLine(line.trimmed()))
            message->folder = operaFolderOf(*location).left(longestFolder);
        if (!isSenderFold)
            message->label = operaLabelOf(locationInLine(line).value_or(QString()));
    }
    if (message->label.isEmpty())
        message->label = QStringLiteral("Mails");
    message->label = cutField(message->label, operaFieldLimit);
}
} // namespace

QString operaFolderOf(const QString &location)
{
    return location.left(location.lastIndexOf(QLatin1Char(':')));
}

QString operaLabelOf(const QString &location)
{
    if (!location.contains(QLatin1Char(':')))
        return location;
    const QStringList pieces = location.split(QLatin1Char(':'), Qt::SkipEmptyParts);
    const QStringList folders = pieces.value(pieces.size() - 2).split(QLatin1Char('/'), Qt::SkipEmptyParts);
    return folders.value(folders.size() - 1);
}

OperaMessage readOperaMessage(const QString &path, OperaFields fields)
{
    OperaMessage message;
    LineReader reader(LineReader::Mode::Text);
    reader.setBlockBytes(blockBytes);
    if (!reader.open(path)) {
        message.error = reader.errorString();
        return message;
    }
    SenderAndSubject headers;
    if (fields == OperaFields::All) {
        headers = readSenderAndSubject(&reader, operaIndexHeaders);
        message.sender = cutField(headers.sender.value_or(QString()), headerFieldLimit);
        message.subject = cutField(headers.subject.value_or(QString()), headerFieldLimit);
        reader.seek(0);
    }
    readLocations(&reader, headers, &message);
    reportUnread(reader.errorString());
    return message;
}
