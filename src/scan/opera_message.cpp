#include "scan/opera_message.h"

#include "app/problem_log.h"
#include "app/records.h"
#include "text/header_lines.h"
#include "text/opera_location.h"

namespace
{
constexpr size_t blockBytes = 16 * 1024; // most messages
// UTF-16 units: no file system takes more, and each level becomes a folder of the tree.
constexpr int longestFolder = 4096;

// The folder goes by the line without white space at its ends, the label by the line as it stands; a line that was
// read as a fold of the sender has no say in the label.
void readLocations(LineReader *reader, const SenderAndSubject &headers, OperaMessage *message)
{
    while (reader->skipToLineWith(operaLocationMark)) {
        const qint64 start = reader->position();
        const bool isSenderFold = start > headers.senderBegin && start < headers.senderEnd;
        const QString line = readLineStart(reader, wholeLineText);
        if (const std::optional<QString> location = operaLocationAround(line.trimmed()))
            message->folder = operaFolderOf(*location).left(longestFolder);
        if (!isSenderFold)
            message->label = operaLabelOf(operaLocationAround(line).value_or(QString()));
    }
    if (message->label.isEmpty())
        message->label = QStringLiteral("Mails");
    message->label = cutField(message->label, operaFieldLimit);
}
} // namespace

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
