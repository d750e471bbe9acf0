#include "save/olm_xml_text.h"

#include "text/line_bytes.h"
#include "text/vector_search.h"

#include <QString>

#include <algorithm>
#include <utility>

namespace
{
constexpr ptrdiff_t longestReference = 10; // "&#1114111;"
constexpr char ofPlaneEnd = '\xEF';        // U+FFFE and U+FFFF begin with it
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

QByteArray utf8Of(uint character)
{
    return character < 0x80 ? QByteArray(1, static_cast<char>(character))
                            : QString::fromUcs4(&character, 1).toUtf8();
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
    m_result.reserve(m_held.size());
    const char *at = m_held.constData();
    const char *end = at + m_held.size();
    while (at < end) {
        const char *start = at;
        at = findByte(at, end, needsLook);
        put({start, static_cast<size_t>(at - start)});
        if (at == end || (!isWhole && end - at < longestReference))
            break;
        at += takeCharacter({at, static_cast<size_t>(end - at)});
    }
    m_held.remove(0, static_cast<int>(at - m_held.constData()));
    if (isWhole)
        release(false);
    return std::exchange(m_result, QByteArray());
}

// Takes a character or a reference from the start of the text. Gives how many bytes it was.
size_t OlmXmlText::takeCharacter(std::string_view text)
{
    if (text[0] == '&')
        return takeReference(text);
    if (text[0] == '\r')
        putCr(false);
    if (text[0] != ofPlaneEnd)
        return 1;
    if (startsWith(text, planeEnds[0]) || startsWith(text, planeEnds[1]))
        return planeEnds[0].size();
    put(text.substr(0, 1));
    return 1;
}

size_t OlmXmlText::takeReference(std::string_view text)
{
    const Reference reference = referenceAt(text);
    if (reference.length == 0) {
        put(m_form == Form::Xml ? "&amp;" : "&");
        return 1;
    }
    if (reference.character != 0 && m_form == Form::Xml && reference.character != QChar::Nbsp)
        put(text.substr(0, reference.length));
    else if (reference.character == '\r')
        putCr(true);
    else if (reference.character != 0) {
        const QByteArray character = utf8Of(reference.character);
        put({character.constData(), static_cast<size_t>(character.size())}, true);
    }
    return reference.length;
}

void OlmXmlText::put(std::string_view text, bool isReference)
{
    if (text.empty())
        return;
    release(text[0] == '\n' && (m_heldCr == '\r' || !isReference));
    m_result.append(text.data(), static_cast<int>(text.size()));
}

// In the XML a CR and what follows stay as they are: its reader makes a line feed of them.
void OlmXmlText::putCr(bool isReference)
{
    if (m_form == Form::Xml)
        return put("\r");
    release(m_heldCr == '\r' && !isReference);
    m_heldCr = isReference ? '\r' : '\n';
}

// Lets go of a CR that was held; nothing of it stays where the line feed that follows swallows it.
void OlmXmlText::release(bool swallowed)
{
    if (m_heldCr != 0 && !swallowed)
        m_result += m_heldCr;
    m_heldCr = 0;
}
