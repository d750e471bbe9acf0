#include "save/emlx_span.h"

#include <QByteArray>
#include <QXmlStreamReader>

#include <algorithm>

namespace
{
constexpr qint64 firstLineBytes = 64;
constexpr qint64 blockBytes = 64 * 1024;
constexpr qint64 longestList = 1024 * 1024; // of a property list
const QByteArray declaration = "<?xml version=\"1.0\"";

QByteArray bytesAt(ByteSource *source, qint64 start, qint64 count)
{
    QByteArray bytes(static_cast<int>(std::max<qint64>(0, std::min(count, source->size() - start))),
                     Qt::Uninitialized);
    bytes.truncate(static_cast<int>(source->read(start, bytes.data(), bytes.size())));
    return bytes;
}

// The number in a line: digits with a sign before them, blanks around.
std::optional<qint64> numberIn(const QByteArray &line)
{
    const QByteArray text = line.trimmed();
    const QByteArray digits = text.startsWith('-') || text.startsWith('+') ? text.mid(1) : text;
    if (digits.isEmpty() ||
        !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return std::nullopt;
    bool fits = false;
    const qint64 number = text.toLongLong(&fits);
    return fits ? number : std::numeric_limits<qint64>::max();
}

// The last line at or behind `start` that starts with an XML declaration; the end of the file where there is none.
qint64 lastDeclaration(ByteSource *source, qint64 start)
{
    for (qint64 end = source->size(); end > start;) {
        const qint64 from = std::max(start, end - blockBytes);
        const qint64 before = from > start ? 1 : 0; // shows whether a line starts at `from`
        const QByteArray block = bytesAt(source, from - before, end - from + before + declaration.size());
        for (int at = block.lastIndexOf(declaration); at >= 0;
             at = at > 0 ? block.lastIndexOf(declaration, at - 1) : -1)
            if (at == 0 ? before == 0 : block.at(at - 1) == '\n')
                return from - before + at;
        end = from;
    }
    return source->size();
}
} // namespace

EmlxSpan emlxSpan(ByteSource *source)
{
    const QByteArray start = bytesAt(source, 0, firstLineBytes);
    const int feed = start.indexOf('\n');
    const std::optional<qint64> count =
        feed >= 0 || start.size() == source->size() ? numberIn(start.left(feed)) : std::nullopt;
    if (!count)
        return {0, lastDeclaration(source, 0), false};
    const qint64 first = feed < 0 ? source->size() : feed + 1;
    const qint64 there = source->size() - first;
    if (*count > 0 && *count <= there)
        return {first, first + *count, false};
    const qint64 end = lastDeclaration(source, first);
    return {first, end, *count > there && end == source->size()};
}

std::optional<QDateTime> emlxDateReceived(ByteSource *source, const EmlxSpan &span)
{
    QXmlStreamReader xml(bytesAt(source, span.end, longestList));
    QString key;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() == QLatin1String("plist") ||
            xml.name() == QLatin1String("dict"))
            continue;
        const bool isKey = xml.name() == QLatin1String("key");
        const QString text = xml.readElementText(QXmlStreamReader::SkipChildElements);
        bool isNumber = false;
        const double seconds = text.trimmed().toDouble(&isNumber);
        constexpr double latest = 253402300799.0; // the end of the year 9999
        if (!isKey && isNumber && key == QLatin1String("date-received") && seconds >= 0 && seconds <= latest)
            return QDateTime::fromSecsSinceEpoch(static_cast<qint64>(seconds), Qt::UTC);
        key = isKey ? text : QString();
    }
    return std::nullopt;
}
