#include "browse/body_text.h"

#include "text/base64.h"
#include "text/byte_search.h"
#include "text/codecs.h"
#include "text/line_bytes.h"
#include "text/line_reader.h"
#include "text/quoted_printable.h"
#include "text/vector_search.h"

#include <algorithm>

namespace
{
constexpr std::string_view declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";

// A line as text mode delivers it.
struct TextLine {
    std::string_view text; ///< up to the first zero byte, without the line end
    bool hasFeed = false;  ///< the line end is part of it
    size_t bytes = 0;      ///< what it takes in the body, line end included
};

// The line at the front of `rest`, which is not empty.
TextLine firstLine(std::string_view rest)
{
    TextLine line;
    const size_t feed = rest.find('\n');
    line.hasFeed = feed != std::string_view::npos;
    line.bytes = line.hasFeed ? feed + 1 : rest.size();
    line.text = rest.substr(0, line.hasFeed ? feed : line.bytes);
    if (line.hasFeed && !line.text.empty() && line.text.back() == '\r')
        line.text.remove_suffix(1);
    const size_t zero = line.text.find('\0');
    line.hasFeed = line.hasFeed && zero == std::string_view::npos;
    line.text = line.text.substr(0, zero);
    return line;
}

bool contains(std::string_view text, std::string_view piece)
{
    return text.find(piece) != std::string_view::npos;
}

// The header line of a part that is no text.
bool endsText(const TextLine &line, const PreviewDialect &dialect)
{
    constexpr std::string_view type = "Content-Type: ";
    constexpr std::string_view disposition = "Content-Disposition: ";
    if (startsWith(line.text, type)) {
        const std::string_view value = line.text.substr(type.size());
        return startsWith(value, "text/x-vcard;") || startsWith(value, "application/") ||
               contains(value, "name=\"") || contains(value, "image/") ||
               (dialect.endsAtMessage && contains(value, "message/"));
    }
    if (startsWith(line.text, disposition)) {
        const QString value = lineText(line.text.substr(disposition.size()));
        return line.hasFeed && (value.compare(QLatin1String("attachment;"), Qt::CaseInsensitive) == 0 ||
                                value.compare(QLatin1String("inline;"), Qt::CaseInsensitive) == 0);
    }
    return startsWith(line.text, "content-type: ") && contains(line.text, "text/placeholder;");
}

// The first line that is the header line of a part that is no text; the body's size if there is none.
size_t startOfPart(std::string_view body, const PreviewDialect &dialect)
{
    const auto startsLine = [](auto here, auto behind) {
        return (here == '\n') & ((behind == 'C') | (behind == 'c'));
    };
    for (size_t line = 0; line < body.size();) {
        const std::string_view rest = body.substr(line);
        if ((startsWith(rest, "Content-") || startsWith(rest, "content-")) &&
            endsText(firstLine(rest), dialect))
            return line;
        const char *end = rest.data() + rest.size();
        const char *feed = findPair(rest.data(), end, startsLine);
        line = feed < end ? static_cast<size_t>(feed - body.data()) + 1 : body.size();
    }
    return body.size();
}

// The end of the first line that holds the declaration of a property list.
std::optional<size_t> endOfDeclaration(std::string_view body)
{
    for (size_t at = findText(body, declaration); at < body.size(); at = findText(body, declaration, at)) {
        const size_t start = body.rfind('\n', at) + 1; // none: npos + 1 is 0
        const TextLine line = firstLine(body.substr(start));
        at = start + line.bytes;
        if (contains(line.text, declaration))
            return at;
    }
    return std::nullopt;
}

// The last offset in [lowest, from] where one of the marks stands inside the text; npos if there is none. Each
// mark's first line feed is its first or second byte, with one of three bytes behind it.
size_t lastMark(std::string_view text, size_t from, size_t lowest, const std::vector<std::string_view> &marks)
{
    const auto standsInMark = [](auto here, auto behind) {
        return (here == '\n') & ((behind == '\n') | (behind == '\r') | (behind == '-'));
    };
    const char *end = text.data() + std::min(text.size(), from + 3);
    for (;;) {
        const char *found = findLastPair(text.data(), end, standsInMark);
        if (found == end)
            return std::string_view::npos;
        const auto feed = static_cast<size_t>(found - text.data());
        for (const std::string_view mark : marks) {
            const size_t before = mark.find('\n');
            if (feed >= before + lowest && feed - before <= from &&
                startsWith(text.substr(feed - before), mark))
                return feed - before;
        }
        end = found + 1;
    }
}

bool containsAny(const QString &text, const std::vector<QString> &pieces)
{
    return std::any_of(pieces.begin(), pieces.end(),
                       [&text](const QString &piece) { return text.contains(piece); });
}

QString withoutFeeds(const QString &text)
{
    return QString(text).remove(QLatin1Char('\n'));
}

QString withoutBlanks(const QString &text)
{
    return withoutFeeds(text).simplified().remove(QLatin1Char(' '));
}

QByteArray bytesOf(std::string_view text)
{
    return QByteArray::fromRawData(text.data(), static_cast<int>(text.size()));
}

QString fromBase64(std::string_view text, bool isUtf8)
{
    const QByteArray decoded = decodeBase64(text);
    return isUtf8 ? textOf(decoded, nullptr) : latin1UpToZero(decoded);
}

bool isAscii(std::string_view text)
{
    const char *end = text.data() + text.size();
    return findByte(text.data(), end, [](auto byte) { return (byte & '\x80') != 0; }) == end;
}

// Lines joined without their ends, soft and hard ones alike, as bytes for QDecode, until `characters` UTF-16
// units have been read; a last line without an end loses its last character.
QByteArray joinedLines(std::string_view body, size_t characters)
{
    QByteArray joined;
    joined.reserve(static_cast<int>(std::min(characters, body.size())));
    for (size_t read = 0; !body.empty() && read < characters;) {
        const TextLine line = firstLine(body);
        body.remove_prefix(line.bytes);
        const QByteArray text = isAscii(line.text) ? bytesOf(line.text) : latin1OrZero(lineText(line.text));
        read += static_cast<size_t>(text.size()) + (line.hasFeed ? 1 : 0);
        const bool dropsLast = !line.hasFeed || text.endsWith('=');
        joined.append(text.constData(), std::max(0, text.size() - (dropsLast ? 1 : 0)));
    }
    return joined;
}

QString fromQuotedPrintable(std::string_view body, size_t characters, const QString &charset)
{
    return textOf(QDecode(joinedLines(body, characters)), codecOfCharset(charset));
}

QString htmlText(const WalkedMessage &message, size_t ulCurrentFileSize, const PreviewDialect &dialect)
{
    const std::string_view body = *message.body;
    const std::string_view text = body.substr(0, ulCurrentFileSize);
    const QString utf8 = QStringLiteral("utf-8");
    // The blank line that opens the body is no mark.
    const size_t iCounter = std::min(lastMark(text, text.size(), 1, dialect.cuts), text.size());
    if (containsAny(message.Base, dialect.base64)) {
        if (!dialect.cutsBase64Again)
            return fromBase64(body.substr(0, iCounter), message.charset == utf8);
        const QString charset =
            message.charset.endsWith(QLatin1Char('\n')) ? withoutFeeds(message.charset) : message.charset;
        const size_t boundary = lastMark(text, iCounter, 2, {"\n\n--", "\r\n--"});
        return fromBase64(body.substr(0, std::min(boundary, text.size())),
                          charset == utf8 || charset == QLatin1String("UTF-8"));
    }
    if (containsAny(message.Base, dialect.quotedPrintable)) {
        const bool hasFeed = message.charset.contains(QLatin1Char('\n'));
        return fromQuotedPrintable(body, iCounter,
                                   hasFeed ? withoutBlanks(message.charset) : message.charset);
    }
    return latin1UpToZero(bytesOf(body.substr(0, iCounter)));
}

// Plain text is not cut at a boundary.
QString plainText(const WalkedMessage &message, size_t ulCurrentFileSize, const PreviewDialect &dialect)
{
    const std::string_view text = message.body->substr(0, ulCurrentFileSize);
    if (containsAny(message.Base, dialect.base64)) {
        const bool hasFeed = message.charset.endsWith(QLatin1Char('\n'));
        const QString charset = hasFeed ? withoutBlanks(message.charset) : message.charset;
        return fromBase64(text, charset == QLatin1String("utf-8"));
    }
    if (containsAny(message.Base, dialect.quotedPrintable))
        return fromQuotedPrintable(*message.body, ulCurrentFileSize, message.charset);
    return latin1UpToZero(bytesOf(text));
}
} // namespace

size_t endOfText(std::string_view body, const PreviewDialect &dialect)
{
    const size_t part = startOfPart(body, dialect);
    if (!dialect.endsAtPropertyList)
        return part;
    const size_t lineEnd = part + (part < body.size() ? firstLine(body.substr(part)).bytes : 0);
    return endOfDeclaration(body.substr(0, lineEnd)).value_or(part);
}

QString bodyText(const WalkedMessage &message, const PreviewDialect &dialect)
{
    if (!message.body)
        return {};
    const size_t ulCurrentFileSize = endOfText(*message.body, dialect);
    return message.bHtmlFileFound ? htmlText(message, ulCurrentFileSize, dialect)
                                  : plainText(message, ulCurrentFileSize, dialect);
}
