#include "browse/preview.h"

#include "app/problem_log.h"
#include "browse/body_text.h"
#include "platform/byte_source.h"
#include "text/header_rules.h"
#include "text/line_reader.h"

#include <algorithm>
#include <limits>

namespace
{
// What the toolkit's texts can hold, with room for a header's label.
constexpr qint64 messageBytesLimit = std::numeric_limits<int>::max() / 2 - 4096;

// The bytes from `offset` on, at most `length` of them. What can't be read is told; an offset outside the file gives
// none.
QByteArray readBytes(const QString &path, qint64 offset, qint64 length)
{
    ByteSource file = ByteSource::ofFile(path);
    const qint64 bytes = offset < 0 ? 0 : std::min(length, file.size() - offset);
    if (bytes > messageBytesLimit) {
        reportUnread(Problem::tr("can't be shown, a message in it is too large: ") + path);
        return {};
    }
    QByteArray message(static_cast<int>(std::max<qint64>(0, bytes)), Qt::Uninitialized);
    message.truncate(static_cast<int>(file.read(offset, message.data(), bytes)));
    if (!file.errorString().isEmpty())
        reportUnread(Problem::tr("can't be shown: ") + file.errorString());
    return message;
}

// The subject goes through the rules line by line, as text mode delivers the lines.
QString subjectText(std::string_view value, const HeaderDialect &dialect)
{
    QStringList lines;
    for (std::string_view rest = value.substr(0, value.find('\0')); !rest.empty();) {
        const size_t feed = rest.find('\n');
        QByteArray line(rest.data(), static_cast<int>(std::min(feed, rest.size() - 1) + 1));
        rest.remove_prefix(static_cast<size_t>(line.size()));
        if (line.endsWith("\r\n"))
            line.remove(line.size() - 2, 1);
        lines.append(QString::fromUtf8(line));
    }
    if (lines.isEmpty())
        return {};
    const QString first = QStringLiteral("Subject:") + lines.takeFirst();
    return decodeSubject(first, lines, dialect);
}

// What stands behind the colon up to the second character is not looked at: it is the blank.
QString dateText(std::string_view value, ZoneNames zones)
{
    const QString date = lineText(value).mid(1);
    return date.isEmpty() ? QString() : QStringLiteral("Date: ") + displayDate(date, zones);
}

// "Cc: a@example.com, b@example.com"
QString recipientsText(std::string_view value, const char *shown, const char *label)
{
    return decodeRecipients(QLatin1String(shown) + lineText(value), QLatin1String(label));
}

std::vector<HeaderLine> headerLines(const WalkedMessage &message, const PreviewDialect &dialect)
{
    std::vector<HeaderLine> lines;
    if (const auto &value = message.FromFieldValue)
        lines.push_back(
            {decodeSender(QStringLiteral("From:") + lineText(*value), {}, dialect.headers), true});
    if (const auto &value = message.ToFieldValue)
        lines.push_back({recipientsText(*value, "To:", "To: ")});
    if (const auto &value = message.CcFieldValue)
        lines.push_back({recipientsText(*value, "Cc: ", "Cc: ")});
    if (const auto &value = message.CCFieldValue)
        lines.push_back({recipientsText(*value, "CC: ", "CC: ")});
    if (const auto &value = message.SubjectFieldValue)
        lines.push_back({subjectText(*value, dialect.headers)});
    if (const auto &value = message.DateFieldValue)
        lines.push_back({dateText(*value, dialect.zones)});
    if (const auto &value = message.BccFieldValue)
        lines.push_back({QStringLiteral("\nBcc: ") + lineText(*value)});
    const QString names = QStringLiteral("\nAttachments: ") + message.names.join(dialect.nameSeparator);
    for (const bool isShown : {message.FilenameValue, message.FilenameValue1})
        if (isShown)
            lines.push_back({names});
    return lines;
}
} // namespace

PreviewText previewOfBytes(std::string_view bytes, const PreviewDialect &dialect)
{
    const WalkedMessage message = walkMessage(bytes, dialect);
    PreviewText preview;
    preview.header = headerLines(message, dialect);
    if (message.body)
        preview.html = bodyText(message, dialect);
    return preview;
}

PreviewText previewOfFile(const QString &path)
{
    const QByteArray bytes = readBytes(path, 0, std::numeric_limits<qint64>::max());
    return previewOfBytes({bytes.constData(), static_cast<size_t>(bytes.size())}, filePreview);
}

PreviewText previewOfMailboxMessage(const QString &path, const QString &offset, const QString &length)
{
    const QByteArray bytes = readBytes(path, offset.toLongLong(), length.toLongLong());
    return previewOfBytes({bytes.constData(), static_cast<size_t>(bytes.size())}, mailboxPreview);
}
