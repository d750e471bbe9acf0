#include "text/transfer_encoding.h"

#include "text/base64.h"

#include <algorithm>

namespace
{
constexpr size_t lineBytes = 57; // 76 characters of base64
constexpr size_t linesAtOnce = 4 * 1024;
constexpr int longestLine = 75;      // a "=" may follow
constexpr int textBytes = 64 * 1024; // given at once
constexpr char hexDigits[] = "0123456789ABCDEF";

bool isPlain(char byte)
{
    return byte > ' ' && byte < 0x7F && byte != '=';
}
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
        for (size_t at = 0; at < bytes.size();) {
            at += takePlainRun(bytes.substr(at));
            if (at < bytes.size())
                takeQuotedByte(bytes[at++]);
        }
        if (m_text.size() >= textBytes)
            giveText();
    }
}

void TransferEncoder::end()
{
    if (m_form == Form::Base64) {
        giveBase64Lines({m_held.constData(), static_cast<size_t>(m_held.size())});
        return;
    }
    if (m_heldBlank != 0)
        putQuoted(m_heldBlank, false);
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
    }
    const size_t whole = bytes.size() / lineBytes * lineBytes;
    for (size_t at = 0; at < whole; at += linesAtOnce * lineBytes)
        giveBase64Lines(bytes.substr(at, std::min(linesAtOnce * lineBytes, whole - at)));
    bytes.remove_prefix(whole);
    m_held = QByteArray(bytes.data(), static_cast<int>(bytes.size()));
}

void TransferEncoder::giveBase64Lines(std::string_view bytes)
{
    const size_t lines = (bytes.size() + lineBytes - 1) / lineBytes;
    m_text.resize(static_cast<int>(lines + base64Length(bytes.size())));
    char *out = m_text.data();
    while (!bytes.empty()) {
        const std::string_view line = bytes.substr(0, lineBytes);
        if (m_anyLine)
            *out++ = '\n';
        encodeBase64(line.data(), line.size(), out);
        out += base64Length(line.size());
        m_anyLine = true;
        bytes.remove_prefix(line.size());
    }
    if (out != m_text.constData())
        m_give({m_text.constData(), static_cast<size_t>(out - m_text.constData())});
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

// Takes bytes that stand for themselves, as far as they fit on the line: most of a text, and faster than one by one.
// Gives how many.
size_t TransferEncoder::takePlainRun(std::string_view bytes)
{
    if (m_heldBlank != 0 || m_column == 0)
        return 0;
    bytes = bytes.substr(0, static_cast<size_t>(longestLine - m_column));
    const auto *end =
        std::find_if_not(bytes.begin(), bytes.end(), [](char byte) { return isPlain(byte) || byte == ' '; });
    while (end != bytes.begin() && end[-1] == ' ') // which may end the line
        --end;
    const auto count = static_cast<int>(end - bytes.begin());
    m_text.append(bytes.data(), count);
    m_column += count;
    return static_cast<size_t>(count);
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
        putQuoted(byte, isPlain(byte) && !(byte == 'F' && m_column == 0));
    }
}
