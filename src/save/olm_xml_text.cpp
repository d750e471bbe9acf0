#include "save/olm_xml_text.h"

#include "text/line_bytes.h"
#include "text/vector_search.h"

#include <QString>

#include <algorithm>

namespace
{
constexpr ptrdiff_t longestReference = 10;            // "&#1114111;"
constexpr ptrdiff_t lookAhead = 2 * longestReference; // "&#13;&#10;" is one line's end
constexpr char ofPlaneEnd = '\xEF';                   // U+FFFE and U+FFFF begin with it
constexpr std::string_view planeEnds[] = {"\xEF\xBF\xBE", "\xEF\xBF\xBF"};

/// "&lt;" or "&#233;" at the start of a text.
struct Reference {
    size_t length = 0;  ///< bytes; 0: there is none
    uint character = 0; ///< 0: one that XML does not allow
};

struct KnownReference {
    std::string_view text;
    uint character;
};
constexpr KnownReference knownReferences[] = {
    {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&apos;", '\''}, {"&nbsp;", QChar::Nbsp},
};

bool isAllowed(uint character)
{
    if (character < ' ')
        return character == '\t' || character == '\n' || character == '\r';
    return !QChar::isSurrogate(character) && !QChar::isNonCharacter(character) &&
           character <= QChar::LastValidCodePoint;
}

Reference referenceAt(std::string_view text)
{
    for (const KnownReference &known : knownReferences)
        if (startsWith(text, known.text))
            return {known.text.size(), known.character};
    const size_t length = text.substr(0, longestReference).find(';') + 1;
    const bool isHex = startsWith(text, "&#x");
    const size_t start = isHex ? 3 : 2;
    if (!startsWith(text, "&#") || length <= start + 1)
        return {};
    const QByteArray digits(text.data() + start, static_cast<int>(length - start - 1));
    const auto isDigit = [isHex](char c) {
        return (c >= '0' && c <= '9') || (isHex && ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')));
    };
    if (!std::all_of(digits.begin(), digits.end(), isDigit))
        return {};
    const uint character = digits.toUInt(nullptr, isHex ? 16 : 10); // seven digits at most
    return {length, isAllowed(character) ? character : 0};
}

bool startsWithFeed(std::string_view text)
{
    return startsWith(text, "\n") || startsWith(text, "\r") || referenceAt(text).character == '\n';
}

void appendCharacter(uint character, QByteArray *out)
{
    if (character < 0x80)
        *out += static_cast<char>(character);
    else
        *out += QString::fromUcs4(&character, 1).toUtf8();
}

// Also true for some bytes that stay.
constexpr auto needsLook = [](auto byte) {
    return (byte == '&') | (byte == ofPlaneEnd) |
           ((byte >= '\0') & (byte < ' ') & (byte != '\t') & (byte != '\n'));
};
} // namespace

QByteArray OlmXmlText::take(const QByteArray &piece, bool isWhole)
{
    m_held += piece;
    QByteArray out;
    out.reserve(m_held.size());
    const char *at = m_held.constData();
    const char *end = at + m_held.size();
    while (at < end) {
        const char *start = at;
        at = findByte(at, end, needsLook);
        out.append(start, static_cast<int>(at - start));
        if (at == end || (!isWhole && end - at < lookAhead))
            break;
        at += takeCharacter({at, static_cast<size_t>(end - at)}, &out);
    }
    m_held.remove(0, static_cast<int>(at - m_held.constData()));
    return out;
}

// Takes a character or a reference from the start of the text. Gives how many bytes it was.
size_t OlmXmlText::takeCharacter(std::string_view text, QByteArray *out) const
{
    const char first = text[0];
    if (first == ofPlaneEnd) {
        const bool isPlaneEnd = startsWith(text, planeEnds[0]) || startsWith(text, planeEnds[1]);
        out->append(text.data(), isPlaneEnd ? 0 : 1);
        return isPlaneEnd ? planeEnds[0].size() : 1;
    }
    if (first != '&') {
        if (first == '\r' && !startsWith(text, "\r\n"))
            *out += '\n';
        return 1;
    }
    const Reference reference = referenceAt(text);
    if (reference.length == 0) {
        *out += m_form == Form::Xml ? "&amp;" : "&";
        return 1;
    }
    if (reference.character == 0)
        return reference.length;
    if (m_form == Form::Xml && reference.character != QChar::Nbsp)
        out->append(text.data(), static_cast<int>(reference.length));
    else if (reference.character != '\r' || !startsWithFeed(text.substr(reference.length)))
        appendCharacter(reference.character, out);
    return reference.length;
}
