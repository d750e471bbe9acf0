#include "cli/json_writer.h"

#include "text/vector_search.h"

#include <algorithm>

namespace
{
constexpr int flushBytes = 64 * 1024;
constexpr int pieceCharacters = 16 * 1024;

// Writes the escape of a byte and gives the end of it.
char *escape(char byte, char *out)
{
    static const char hex[] = "0123456789abcdef";
    *out++ = '\\';
    if (byte == '"' || byte == '\\') {
        *out++ = byte;
    } else if (byte == '\n') {
        *out++ = 'n';
    } else {
        for (const char part : {'u', '0', '0', hex[byte >> 4], hex[byte & 15]})
            *out++ = part;
    }
    return out;
}
} // namespace

JsonWriter::JsonWriter(std::FILE *stream) : m_stream(stream)
{
    m_buffer.reserve(2 * flushBytes); // and kept when it is emptied
}

JsonWriter::~JsonWriter()
{
    m_buffer += '\n';
    std::fwrite(m_buffer.constData(), 1, static_cast<size_t>(m_buffer.size()), m_stream);
    std::fflush(m_stream);
}

void JsonWriter::separate()
{
    if (m_needsComma)
        m_buffer += ',';
    m_needsComma = true;
}

void JsonWriter::open(char bracket)
{
    separate();
    m_buffer += bracket;
    m_needsComma = false;
}

void JsonWriter::close(char bracket)
{
    m_buffer += bracket;
    m_needsComma = true;
    flushIfLarge();
}

JsonWriter &JsonWriter::key(const char *name)
{
    separate();
    m_buffer.append('"').append(name).append("\":");
    m_needsComma = false;
    return *this;
}

void JsonWriter::value(const QString &text)
{
    separate();
    writeText(text);
    flushIfLarge();
}

void JsonWriter::value(qint64 number)
{
    separate();
    m_buffer += QByteArray::number(number);
}

void JsonWriter::null()
{
    separate();
    m_buffer += "null";
}

// In pieces, so that a text of any size needs no second copy.
void JsonWriter::writeText(const QString &text)
{
    m_buffer += '"';
    for (int at = 0; at < text.size();) {
        int end = std::min(at + pieceCharacters, text.size());
        while (end < text.size() && text.at(end - 1).isHighSurrogate())
            ++end;
        putEscaped(text.midRef(at, end - at).toUtf8());
        flushIfLarge();
        at = end;
    }
    m_buffer += '"';
}

void JsonWriter::putEscaped(const QByteArray &utf8)
{
    constexpr int longestEscape = 6;
    const auto needsEscape = [](auto byte) {
        return (byte == '"') | (byte == '\\') | ((byte >= '\0') & (byte < ' '));
    };
    const int start = m_buffer.size();
    m_buffer.resize(start + longestEscape * utf8.size() + static_cast<int>(vectorBytes));
    char *out = m_buffer.data() + start;
    const char *at = utf8.constData();
    const char *const end = at + utf8.size();
    for (;;) {
        out = copyUntil(&at, end, out, needsEscape);
        if (at == end)
            break;
        out = escape(*at++, out);
    }
    m_buffer.truncate(static_cast<int>(out - m_buffer.constData()));
}

void JsonWriter::flushIfLarge()
{
    if (m_buffer.size() < flushBytes)
        return;
    std::fwrite(m_buffer.constData(), 1, static_cast<size_t>(m_buffer.size()), m_stream);
    m_buffer.resize(0);
}
