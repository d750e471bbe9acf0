#include "browse/mime_walk.h"

#include "text/line_reader.h"
#include "text/vector_search.h"

#include <algorithm>

namespace
{
constexpr size_t npos = std::string_view::npos;
constexpr std::string_view encodingHeader = "Content-Transfer-Encoding:";
constexpr std::string_view quotedPrintableHeader = "Content-Transfer-Encoding: QUOTED-PRINTABLE";
constexpr std::string_view applicationPart = "Content-Type: application/";
constexpr std::string_view charsetMark = "charset";
constexpr std::string_view nameMark = "filename=";

// The walk leaves off before this many last bytes of a message.
constexpr size_t unwalkedBytes = 23;
// Names of attachments beyond this many bytes are left out: one message could hold millions of them.
constexpr size_t nameBytesLimit = 1024 * 1024;

// Whether a pattern can start with a byte, by the byte behind it.
constexpr auto startsInWalk = [](auto here, auto behind) {
    return ((here == 'c') & (behind == 'h')) | ((here == 'C') & (behind == 'o')) |
           ((here == 'f') & (behind == 'i')) | ((here == '\n') & (behind >= 'B') & (behind <= 'T'));
};
constexpr auto startsInSection = [](auto here, auto behind) {
    return ((here == 'c') & ((behind == 'h') | (behind == 'o'))) | ((here == 'C') & (behind == 'o')) |
           ((here == '\n') & ((behind == '\n') | ((behind >= 'B') & (behind <= 'T')))) |
           ((here == '\r') & (behind == '\n'));
};
constexpr auto startsName = [](auto here, auto behind) { return (here == 'f') & (behind == 'i'); };

// The first place in [from, to) where a pattern can start, else `to`. The byte behind it may be at `to`.
template <typename Starts>
size_t nextStart(std::string_view text, size_t from, size_t to, Starts starts)
{
    if (from >= to)
        return to;
    const char *end = text.data() + std::min(to + 1, text.size());
    const char *found = findPair(text.data() + from, end, starts);
    return std::min(static_cast<size_t>(found - text.data()), to);
}

// Finds the next place of a byte: in "a=b;c" NextByte(text, '=')(0) is 1. What is found is kept until the positions that are
// asked for, which must not fall, have passed it: a message is searched once however many patterns stand on one line.
class NextByte
{
public:
    NextByte(std::string_view text, char byte) : m_text(text), m_byte(byte) {}
    // `first`: where the first such byte of the text is, or the text's size.
    NextByte(std::string_view text, char byte, size_t first)
        : m_text(text), m_byte(byte), m_at(first), m_searched(true)
    {
    }
    // At or behind `from`; the text's size if there is none.
    size_t operator()(size_t from)
    {
        if (!m_searched || m_at < from) {
            m_at = std::min(m_text.find(m_byte, from), m_text.size());
            m_searched = true;
        }
        return m_at;
    }

private:
    std::string_view m_text;
    char m_byte;
    size_t m_at = 0;
    bool m_searched = false;
};

class MessageWalk
{
    using Encoding = PreviewDialect::Encoding;
    using Names = PreviewDialect::Names;

public:
    MessageWalk(std::string_view source, const PreviewDialect &dialect)
        : m_source(source), m_measured(source.substr(0, source.find('\0'))), m_dialect(dialect)
    {
    }

    WalkedMessage run()
    {
        walk();
        if (m_dialect.endsAtText)
            takeRemainingNames();
        if (m_charsetAt != npos)
            m_walked.charset = charsetText(lineAt(m_source, m_charsetAt));
        if (m_encodingAt != npos)
            m_walked.Base = lineText(secondPiece(lineAt(m_source, m_encodingAt), ":"));
        return std::move(m_walked);
    }

private:
    // A pattern has two bytes or more. Most that could stand here differ in the second one.
    bool isAt(std::string_view pattern) const
    {
        return pattern.size() <= m_source.size() - m_at && m_source[m_at + 1] == pattern[1] &&
               m_source.compare(m_at, pattern.size(), pattern) == 0;
    }

    void walk()
    {
        const size_t end = m_source.size() - std::min(m_source.size(), unwalkedBytes);
        while (m_at < end) {
            m_at = nextStart(m_source, m_at, end, startsInWalk);
            if (m_at >= end || !testPosition())
                return;
            ++m_at;
        }
    }

    // False if the walk ends here.
    bool testPosition()
    {
        switch (m_source[m_at]) {
        case 'c':
            if (m_dialect.charsetAnywhere && isAt(charsetMark))
                takeCharset();
            return true;
        case 'C':
            takeEncoding();
            return testSectionStart();
        case '\n':
            for (const FieldPattern &pattern : m_dialect.fields)
                takeField(pattern);
            return true;
        default:
            if (isAt(nameMark))
                m_dialect.names == Names::InHeader ? takeNameInHeader() : takeNameQuotedOrNot();
            return true;
        }
    }

    // An encoding outside the text sections.
    void takeEncoding()
    {
        if (!isAt(encodingHeader))
            return;
        if (m_dialect.outerEncoding == Encoding::UntilPlainText ? !m_plainEncoding : !m_inSections)
            m_encodingAt = m_at;
        if (m_dialect.capitalsCount && BaseFieldValue == npos && isAt(quotedPrintableHeader))
            m_encodingAt = BaseFieldValue = m_at;
    }

    bool testSectionStart()
    {
        for (const SectionPattern &pattern : m_dialect.sections)
            if (isAt(pattern.text) && !(pattern.beforeHtmlOnly && m_walked.bHtmlFileFound))
                return takeSection(pattern.section);
        if (!m_dialect.endsAtText || !isAt(applicationPart))
            return true;
        m_walked.bHtmlFileFound = true;
        return false;
    }

    bool takeSection(Section section)
    {
        const bool isSecondPlain = section == Section::Plain && bPlainFileFound && m_dialect.endsAtText;
        if (section == Section::Html || isSecondPlain)
            m_walked.bHtmlFileFound = true;
        if (isSecondPlain)
            return false;
        m_inSections = true;
        bPlainFileFound = bPlainFileFound || section == Section::Plain;
        scanSection(section);
        return section == Section::Plain || !m_dialect.endsAtText;
    }

    // From the section's first line to its blank line, or to the end of the message.
    void scanSection(Section section)
    {
        const size_t end = m_source.size();
        for (;; ++m_at) {
            m_at = nextStart(m_source, m_at, end, startsInSection);
            if (m_at >= end)
                return;
            if (isAt(charsetMark))
                takeCharset();
            takeSectionEncoding(section);
            for (const FieldPattern &pattern : m_dialect.fields)
                if (pattern.inSection)
                    takeField(pattern);
            if (isAt("\n\n") || isAt("\r\n\r\n")) {
                m_walked.body = m_source.substr(m_at);
                return;
            }
        }
    }

    void takeSectionEncoding(Section section)
    {
        const bool isHtml = section == Section::Html;
        const std::string_view other = isHtml ? m_dialect.htmlEncoding : m_dialect.plainEncoding;
        const bool isFirstSpelling = isAt(encodingHeader);
        if (!isFirstSpelling && (other.empty() || !isAt(other)))
            return;
        const bool onlyFirst = !isFirstSpelling || (isHtml && m_dialect.keepsFirstEncoding);
        if (onlyFirst && m_htmlEncoding)
            return;
        (isHtml ? m_htmlEncoding : m_plainEncoding) = true;
        if (m_colon(m_at) < lineEnd())
            m_encodingAt = m_at;
    }

    // A word "charset" with neither a value nor quotation marks on its line leaves the charset as it is.
    void takeCharset()
    {
        if (std::min(m_quote(m_at), m_equals(m_at)) < lineEnd())
            m_charsetAt = m_at;
    }

    // Only of several "CC:" the last one counts.
    void takeField(const FieldPattern &pattern)
    {
        WalkedMessage::Value &value = m_walked.*pattern.value;
        if (!isAt(pattern.name) || (value && &value != &m_walked.CCFieldValue))
            return;
        const size_t length = FieldValueInEmlFile(m_at);
        const size_t name = pattern.name.size() - 1;
        value = length > name ? m_source.substr(m_at + 1 + name, length - name) : std::string_view();
    }

    // The length of the header that begins behind the line feed at a position, folded lines included. Headers are
    // measured on the bytes up to the message's first zero byte; behind it nothing is read.
    size_t FieldValueInEmlFile(size_t feedBefore) const
    {
        const size_t start = feedBefore + 1;
        size_t end = start;
        while (end < m_measured.size()) {
            const size_t feed = m_measured.find('\n', end);
            end = feed == npos ? m_measured.size() : feed + 1;
            if (end == m_measured.size() || (m_measured[end] != ' ' && m_measured[end] != '\t'))
                break;
        }
        return end - start;
    }

    // The end of the line at the position, as text: behind its line feed, or at a zero byte before it.
    size_t lineEnd() { return std::min({m_feed(m_at) + 1, m_zero(m_at), m_source.size()}); }

    void takeRemainingNames()
    {
        for (;; ++m_at) {
            m_at = nextStart(m_source, m_at, m_source.size(), startsName);
            if (m_at >= m_source.size())
                return;
            if (isAt(nameMark))
                takeNameInHeader();
        }
    }

    // The text between quotation marks on the header line and its folds, measured from the byte behind the
    // position; else what the line holds up to a further "filename=".
    void takeNameInHeader()
    {
        m_walked.FilenameValue = true;
        if (m_at + 1 >= m_foldedEnd)
            m_foldedEnd = m_at + 1 + FieldValueInEmlFile(m_at);
        const size_t open = m_quote(m_at + 1);
        if (open < m_foldedEnd) {
            const size_t close = std::min(m_secondQuote(open + 1), m_foldedEnd);
            appendName(open + 1, close, EmptyName::LeftOut);
        } else {
            const size_t start = m_at + nameMark.size();
            const std::string_view line = m_source.substr(0, lineEnd());
            appendName(start, std::min(line.find(nameMark, start), line.size()), EmptyName::LeftOut);
        }
    }

    // A quotation mark directly behind "filename=" is closed by the next one, on whatever line; without it the
    // name goes up to a further "=". The two forms have a line of the header pane each.
    void takeNameQuotedOrNot()
    {
        const size_t start = m_at + nameMark.size();
        const bool isQuoted = m_source[start] == '"';
        (isQuoted ? m_walked.FilenameValue : m_walked.FilenameValue1) = true;
        if (isQuoted)
            appendName(start + 1, std::min(m_secondQuote(start + 1), m_zero(start)), EmptyName::Kept);
        else
            appendName(start, std::min(m_equals(start), lineEnd()), EmptyName::Kept);
    }

    enum class EmptyName { LeftOut, Kept };

    void appendName(size_t start, size_t end, EmptyName empty)
    {
        const size_t bytes = end > start ? end - start : 0;
        if ((bytes == 0 && empty == EmptyName::LeftOut) || m_nameBytes + bytes >= nameBytesLimit)
            return;
        m_nameBytes += bytes + 1;
        m_walked.names.append(lineText(bytes > 0 ? m_source.substr(start, bytes) : std::string_view()));
    }

    static std::string_view lineAt(std::string_view source, size_t at)
    {
        const std::string_view rest = source.substr(at);
        const size_t feed = rest.find('\n');
        return rest.substr(0, feed == npos ? npos : feed + 1);
    }

    // The second of the pieces that a text is cut into at each `mark`; "" if there is none.
    static std::string_view secondPiece(std::string_view text, std::string_view mark)
    {
        text = text.substr(0, text.find('\0'));
        const size_t first = text.find(mark);
        if (first == npos)
            return {};
        const std::string_view rest = text.substr(first + mark.size());
        return rest.substr(0, rest.find(mark));
    }

    static QString charsetText(std::string_view line)
    {
        const bool isQuoted = line.substr(0, line.find('\0')).find('"') != npos;
        return lineText(secondPiece(line, isQuoted ? "\"" : "="));
    }

    std::string_view m_source;
    std::string_view m_measured; ///< up to the first zero byte
    const PreviewDialect &m_dialect;
    WalkedMessage m_walked;
    size_t m_at = 0;

    size_t m_charsetAt = npos;  ///< where the charset in force stands
    size_t m_encodingAt = npos; ///< likewise the encoding
    bool m_inSections = false;
    bool bPlainFileFound = false; ///< a plain section has been found
    bool m_plainEncoding = false; ///< a plain section has taken an encoding
    bool m_htmlEncoding = false;  ///< likewise an HTML section
    size_t BaseFieldValue = npos; ///< where the encoding in capitals stands
    size_t m_nameBytes = 0;
    size_t m_foldedEnd = 0; ///< end of the folded header that the last name was found in

    NextByte m_feed{m_source, '\n'};
    NextByte m_zero{m_source, '\0', m_measured.size()};
    NextByte m_colon{m_source, ':'};
    NextByte m_equals{m_source, '='};
    NextByte m_quote{m_source, '"'};
    NextByte m_secondQuote{m_source, '"'};
};
} // namespace

WalkedMessage walkMessage(std::string_view source, const PreviewDialect &dialect)
{
    return MessageWalk(source, dialect).run();
}
