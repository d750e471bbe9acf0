#pragma once

#include "text/transfer_encoding.h"

#include <QtGlobal>

#include <string_view>

/// Gives the bytes of one message for a mailbox, CR LF as LF and with a line feed at its end; nothing else changes.
/// The bytes come in pieces of any size and are never gathered.
class ExactText
{
public:
    enum class Quoting {
        None,
        Mboxrd ///< a line that matches "^>*From " gets one more ">", which readers of that form take off again
    };

    ExactText(TakeBytes give, Quoting quoting) : m_give(std::move(give)), m_quotes(quoting == Quoting::Mboxrd)
    {
    }

    /// The next bytes of the message.
    void take(std::string_view bytes);
    /// The same for bytes that have no CR and no line that starts with ">" or "From ", such as base64.
    void takePlain(std::string_view bytes);
    /// The end of the message: a line feed where its last line has none, also where it has no byte.
    void end();
    /// Lines that got a ">".
    qint64 quotedLines() const { return m_quotedLines; }

private:
    size_t takePlainLines(std::string_view bytes);
    size_t takeLineStart(std::string_view bytes);
    void takeRest(std::string_view bytes);
    void give(std::string_view bytes);
    void releaseCr();

    TakeBytes m_give;
    bool m_quotes;
    bool m_atLineStart = true; ///< nothing of the line but ">"s and a part of "From " has come
    size_t m_matched = 0;      ///< bytes of "From " that are held back
    bool m_heldCr = false;     ///< a CR that a line feed may follow
    bool m_endsLine = false;   ///< what was given last is a line feed
    qint64 m_quotedLines = 0;
};
