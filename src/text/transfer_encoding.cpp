#include "text/transfer_encoding.h"

#include "text/base64.h"

#include <algorithm>

namespace
{
constexpr size_t lineBytes = 57; // 76 characters of base64
constexpr size_t linesAtOnce = 512;
constexpr int longestLine = 75;      // a "=" may follow
constexpr int textBytes = 64 * 1024; // given at once
constexpr char hexDigits[] = "0123456789ABCDEF";
} // namespace

TransferEncoder::Form encodingForm(const QByteArray &encoding)
{
    if (encoding == "base64")
        return TransferEncoder::Form::Base64;
    return encoding == "quoted-printable" ? TransferEncoder::Form::QuotedPrintable
                                          : TransferEncoder::Form::AsItIs;
}

void TransferEncoder::take(std::string_view bytes)
{
    if (m_form == Form::AsItIs) {
        m_give(bytes);
    } else if (m_form == Form::Base64) {
        takeBase64(bytes);
    } else {
        for (const char byte : bytes)
            takeQuotedByte(byte);
        if (m_text.size() >= textBytes)
            giveText();
    }
}

void TransferEncoder::end()
{
    if (m_form == Form::Base64)
        giveBase64Lines({m_held.constData(), static_cast<size_t>(m_held.size())});
    if (m_heldBlank != 0)
        putQuoted(m_heldBlank, false);
    m_heldBlank = 0;
    m_held.clear();
    giveText();
}

void TransferEncoder::giveText()
{
    if (!m_text.isEmpty())
        m_give({m_text.constData(), static_cast<size_t>(m_text.size())});
    m_text.resize(0);
}

void TransferEncoder::takeBase64(std::string_view bytes)
{
    if (!m_held.isEmpty()) {
        const size_t missing = std::min(lineBytes - static_cast<size_t>(m_held.size()), bytes.size());
        m_held.append(bytes.data(), static_cast<int>(missing));
        bytes.remove_prefix(missing);
        if (static_cast<size_t>(m_held.size()) < lineBytes)
            return;
        giveBase64Lines({m_held.constData(), lineBytes});
        m_held.resize(0);
    }
    const size_t whole = bytes.size() / lineBytes * lineBytes;
    for (size_t at = 0; at < whole; at += linesAtOnce * lineBytes)
        giveBase64Lines(bytes.substr(at, std::min(linesAtOnce * lineBytes, whole - at)));
    bytes.remove_prefix(whole);
    m_held = QByteArray(bytes.data(), static_cast<int>(bytes.size()));
}

void TransferEncoder::giveBase64Lines(std::string_view bytes)
{
    while (!bytes.empty()) {
        const std::string_view line = bytes.substr(0, lineBytes);
        if (m_anyLine)
            m_text += '\n';
        const int start = m_text.size();
        m_text.resize(start + static_cast<int>(base64Length(line.size())));
        encodeBase64(line.data(), line.size(), m_text.data() + start);
        m_anyLine = true;
        bytes.remove_prefix(line.size());
    }
    giveText();
}

void TransferEncoder::putQuoted(char byte, bool plain)
{
    if (m_column + (plain ? 1 : 3) > longestLine) {
        m_text += "=\n";
        m_column = 0;
        plain = plain && byte != 'F';
    }
    if (plain) {
        m_text += byte;
        ++m_column;
        return;
    }
    const auto value = static_cast<unsigned char>(byte);
    m_text += '=';
    m_text += hexDigits[value >> 4];
    m_text += hexDigits[value & 0xF];
    m_column += 3;
}

void TransferEncoder::takeQuotedByte(char byte)
{
    if (m_heldBlank != 0)
        putQuoted(m_heldBlank, byte != '\n');
    m_heldBlank = 0;
    if (byte == '\n') {
        m_text += '\n';
        m_column = 0;
    } else if (byte == ' ' || byte == '\t') {
        m_heldBlank = byte;
    } else {
        putQuoted(byte, byte > ' ' && byte < 0x7F && byte != '=' && !(byte == 'F' && m_column == 0));
    }
}
