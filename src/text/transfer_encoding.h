#pragma once

#include <QByteArray>

#include <functional>
#include <string_view>

/// Takes pieces of text as they come.
using TakeBytes = std::function<void(std::string_view bytes)>;

/// Encodes bytes that come in pieces for mail (RFC 2045, 6): as base64 in lines of 76 characters, as quoted-printable,
/// or not at all. No line feed stands behind the last line but one that the bytes have.
class TransferEncoder
{
public:
    enum class Form {
        AsItIs,
        Base64,
        /// A line feed is a line's end, a CR is encoded; no line is longer than 76 characters or starts with "F", so that
        /// none passes for a mailbox's separator.
        QuotedPrintable
    };

    TransferEncoder(Form form, TakeBytes give) : m_form(form), m_give(std::move(give)) {}

    /// The next bytes. `give` may get what becomes of them later.
    void take(std::string_view bytes);
    /// Gives what is held back at the end.
    void end();

private:
    void takeBase64(std::string_view bytes);
    void giveBase64Lines(std::string_view bytes);
    void putQuoted(char byte, bool plain);
    size_t takePlainRun(std::string_view bytes);
    void takeQuotedByte(char byte);
    void giveText();

    Form m_form;
    TakeBytes m_give;
    QByteArray m_held;      ///< base64: bytes that make no whole line yet
    QByteArray m_text;      ///< encoded and not yet given
    bool m_anyLine = false; ///< base64: a line stands before the next one
    int m_column = 0;
    char m_heldBlank = 0; ///< quoted-printable: a blank or tab that may end the line
};

/// The form that a Content-Transfer-Encoding in lower case names.
TransferEncoder::Form encodingForm(const QByteArray &encoding);
