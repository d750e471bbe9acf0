#include "cli/json_writer.h"

namespace
{
constexpr int flushBytes = 64 * 1024;
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

void JsonWriter::writeText(const QString &text)
{
    static const char hex[] = "0123456789abcdef";
    const QByteArray bytes = text.toUtf8();
    m_buffer += '"';
    for (const char byte : bytes) {
        if (byte == '"' || byte == '\\')
            m_buffer.append('\\').append(byte);
        else if (byte == '\n')
            m_buffer += "\\n";
        else if (static_cast<unsigned char>(byte) < 0x20)
            m_buffer.append("\\u00").append(hex[byte >> 4]).append(hex[byte & 15]);
        else
            m_buffer += byte;
    }
    m_buffer += '"';
}

void JsonWriter::flushIfLarge()
{
    if (m_buffer.size() < flushBytes)
        return;
    std::fwrite(m_buffer.constData(), 1, static_cast<size_t>(m_buffer.size()), m_stream);
    m_buffer.clear();
}
