#include "save/exact_message.h"

#include "save/emlx_span.h"
#include "save/exact_parts.h"
#include "save/exact_text.h"
#include "save/mail_separator.h"
#include "text/mbox_separator.h"
#include "text/transfer_encoding.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <optional>

namespace
{
constexpr qint64 blockBytes = 256 * 1024;
constexpr qint64 longestSeparator = 4 * 1024;
const QString partialSuffix = QStringLiteral(".partial.emlx");

QByteArray bytesAt(ByteSource *source, qint64 start, qint64 end)
{
    QByteArray bytes(static_cast<int>(std::max<qint64>(0, end - start)), Qt::Uninitialized);
    bytes.truncate(static_cast<int>(source->read(start, bytes.data(), bytes.size())));
    return bytes;
}

std::string_view view(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<size_t>(bytes.size())};
}

/// Where a message stands in its file.
struct Span {
    qint64 start = 0;
    qint64 end = 0;
    bool isShort = false;
    QByteArray separator; ///< the file's own, line feed included; "" where it has none that will do
    std::optional<EmlxSpan> emlx;
};

bool holdsTime(const QByteArray &line)
{
    static const QRegularExpression time(QStringLiteral("\\d:\\d\\d"));
    return time.match(QString::fromLatin1(line)).hasMatch();
}

qint64 behindFirstLine(ByteSource *source)
{
    for (qint64 at = 0; at < source->size();) {
        const QByteArray block = bytesAt(source, at, std::min(at + blockBytes, source->size()));
        const int feed = block.indexOf('\n');
        if (block.isEmpty() || feed >= 0)
            return at + feed + 1;
        at += block.size();
    }
    return source->size();
}

// A .eml or .mbs file: its first line may be a separator.
Span spanOfMailFile(ByteSource *source)
{
    Span span;
    span.end = source->size();
    const QByteArray start = bytesAt(source, 0, std::min(longestSeparator, source->size()));
    if (!start.startsWith("From ") || start.startsWith("From :"))
        return span;
    span.start = behindFirstLine(source);
    QByteArray line = start.left(static_cast<int>(std::min<qint64>(span.start, start.size())));
    const bool isWhole = line.size() == span.start;
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    line += '\n';
    if (isWhole && isMboxSeparator(view(line)) && holdsTime(line))
        span.separator = line;
    return span;
}

Span spanOf(ByteSource *source)
{
    if (!source->path().endsWith(QLatin1String(".emlx")))
        return spanOfMailFile(source);
    const EmlxSpan emlx = emlxSpan(source);
    return {emlx.start, emlx.end, emlx.isShort, QByteArray(), emlx};
}

QByteArray separatorOf(ByteSource *source, const Span &span)
{
    if (!span.separator.isEmpty())
        return span.separator;
    const QByteArray headers = bytesAt(source, span.start, std::min(span.end, span.start + blockBytes));
    std::optional<QDateTime> date = mailDate(headerValue(view(headers), "Date").value_or(QByteArray()));
    if (!date && span.emlx)
        date = emlxDateReceived(source, *span.emlx);
    if (!date)
        date = QDateTime::fromMSecsSinceEpoch(source->stamp().changed / 1000000, Qt::UTC);
    return separatorLine(headerValue(view(headers), "From").value_or(QByteArray()), *date);
}

/// Where the content of a part lies.
struct PartContent {
    QString path; ///< "" where there is none, or more than one
    TransferEncoder::Form form = TransferEncoder::Form::AsItIs;
};

PartContent contentOf(const QString &messagePath, const TakenOutPart &part)
{
    const QFileInfo message(messagePath);
    const QString id = message.fileName().section(partialSuffix, 0, 0);
    const QString section = QString::fromLatin1(part.section);
    const QString beside = message.path() + QStringLiteral("/%1.%2.emlxpart").arg(id, section);
    if (QFileInfo::exists(beside))
        return {beside, TransferEncoder::Form::AsItIs};
    const QDir attachments(QFileInfo(message.path()).path() +
                           QStringLiteral("/Attachments/%1/%2").arg(id, section));
    QStringList files = attachments.entryList(QDir::Files | QDir::Hidden | QDir::System);
    files.removeAll(QStringLiteral(".DS_Store"));
    if (section.isEmpty() || files.size() != 1)
        return {};
    return {attachments.filePath(files.first()), encodingForm(part.encoding)};
}

class MessageCopy
{
public:
    MessageCopy(ByteSource *source, MailboxFile *target, const std::function<bool()> &goOn)
        : m_source(source),
          m_target(target),
          m_goOn(goOn),
          m_text([target](std::string_view bytes) { target->append(bytes); }, ExactText::Quoting::Mboxrd)
    {
    }

    ExactMessageCopy run()
    {
        const qint64 before = m_target->size();
        const Span span = spanOf(m_source);
        m_result.isShort = span.isShort;
        m_target->append(view(separatorOf(m_source, span)));
        if (m_source->path().endsWith(partialSuffix))
            copyPartial(span);
        else
            copy(m_source, span.start, span.end, [this](std::string_view bytes) { m_text.take(bytes); });
        m_text.end();
        m_target->append('\n');
        m_result.quotedLines = m_text.quotedLines();
        if (m_result.end == ExactEnd::Whole && !m_source->errorString().isEmpty())
            m_result.end = ExactEnd::Unreadable;
        if (m_result.end != ExactEnd::Whole)
            m_target->truncate(before);
        return m_result;
    }

private:
    bool copy(ByteSource *source, qint64 start, qint64 end, const TakeBytes &give)
    {
        while (start < end && m_result.end == ExactEnd::Whole) {
            const QByteArray block = bytesAt(source, start, std::min(end, start + blockBytes));
            if (block.isEmpty())
                return false;
            if (!m_goOn())
                m_result.end = ExactEnd::Stopped;
            give(view(block));
            start += block.size();
        }
        return source->errorString().isEmpty();
    }

    // The message's own bytes, with each part's content behind its headers in place of the header that stands for it.
    void copyPartial(const Span &span)
    {
        const TakeBytes give = [this](std::string_view bytes) { m_text.take(bytes); };
        qint64 copied = span.start;
        for (const TakenOutPart &part : takenOutParts(m_source, span.start, span.end)) {
            const PartContent content =
                part.contentPlace < 0 ? PartContent() : contentOf(m_source->path(), part);
            if (content.path.isEmpty()) {
                ++m_result.emptyParts;
                continue;
            }
            copy(m_source, copied, part.headerStart, give);
            copy(m_source, part.headerEnd, part.contentPlace, give);
            copied = part.contentPlace;
            copyContent(content);
        }
        copy(m_source, copied, span.end, give);
    }

    void copyContent(const PartContent &content)
    {
        ByteSource part = ByteSource::ofFile(content.path);
        TransferEncoder encoder(content.form, [this](std::string_view bytes) { m_text.take(bytes); });
        copy(&part, 0, part.size(), [&](std::string_view bytes) { encoder.take(bytes); });
        encoder.end();
        if (part.errorString().isEmpty())
            return;
        m_result.partError = part.errorString();
        m_result.end = ExactEnd::Unreadable;
    }

    ByteSource *m_source;
    MailboxFile *m_target;
    const std::function<bool()> &m_goOn;
    ExactText m_text;
    ExactMessageCopy m_result;
};
} // namespace

ExactMessageCopy copyMessageExactly(ByteSource *source, MailboxFile *target,
                                    const std::function<bool()> &goOn)
{
    return MessageCopy(source, target, goOn).run();
}
