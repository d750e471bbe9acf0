#include "scan/opera_message.h"

#include "app/problem_log.h"
#include "text/header_rules.h"
#include "text/line_reader.h"

#include <QStringList>

namespace
{
constexpr size_t blockBytes = 16 * 1024; // most messages
constexpr std::string_view locationMark = "X-Opera-Location:";

// The sender and subject of a file, and where the sender's folded lines stand.
class OperaHeaders
{
public:
    void read(LineReader *reader, OperaMessage *message)
    {
        bool fromSeen = false;
        bool subjectSeen = false;
        while (!(fromSeen && subjectSeen) && reader->skipToLineStart(LineStarts::FromOrSubject)) {
            const QString line = wholeLineText(*reader->readLine());
            if (!fromSeen && line.startsWith(QLatin1String("From:"), Qt::CaseInsensitive)) {
                fromSeen = true;
                m_foldsBegin = reader->position();
                message->sender = decodeSender(line, readFolds(reader), operaIndexHeaders);
                m_foldsEnd = reader->position();
            } else if (!subjectSeen && line.startsWith(QLatin1String("Subject:"), Qt::CaseInsensitive)) {
                subjectSeen = true;
                message->subject = decodeSubject(line, readFolds(reader), operaIndexHeaders);
            }
        }
    }
    bool isSenderFold(qint64 position) const { return position >= m_foldsBegin && position < m_foldsEnd; }

private:
    static QStringList readFolds(LineReader *reader)
    {
        QStringList folds;
        while (reader->nextIsFold())
            folds.append(wholeLineText(*reader->readLine()));
        return folds;
    }

    qint64 m_foldsBegin = 0;
    qint64 m_foldsEnd = 0;
};

// The first piece of a line around the header's name, nothing if there is none.
std::optional<QString> locationInLine(const QString &line)
{
    const QStringList pieces =
        line.split(QLatin1String(locationMark.data(), int(locationMark.size())), Qt::SkipEmptyParts);
    return pieces.isEmpty() ? std::nullopt : std::make_optional(pieces.first().trimmed());
}

// The folder goes by the line without white space at its ends, the label by the line as it stands; a line that was
// read as a fold of the sender has no say in the label.
void readLocations(LineReader *reader, const OperaHeaders &headers, OperaMessage *message)
{
    while (reader->skipToLineWith(locationMark)) {
        const qint64 start = reader->position();
        const QString line = wholeLineText(*reader->readLine());
        if (const std::optional<QString> location = locationInLine(line.trimmed()))
            message->folder = operaFolderOf(*location);
        if (!headers.isSenderFold(start))
            message->label = operaLabelOf(locationInLine(line).value_or(QString()));
    }
    if (message->label.isEmpty())
        message->label = QStringLiteral("Mails");
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
    OperaHeaders headers;
    if (fields == OperaFields::All) {
        headers.read(&reader, &message);
        reader.seek(0);
    }
    readLocations(&reader, headers, &message);
    reportUnread(reader.errorString());
    return message;
}
