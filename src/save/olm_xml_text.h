#pragma once

#include <QByteArray>

#include <string_view>

/// Takes UTF-8 as the XML of an .olm file has it, in pieces, and bears what XML does not allow (XML 1.0, 2.2 and 4.1):
/// control characters go, a "&" that starts no reference stands for itself, "&nbsp;" is known.
class OlmXmlText
{
public:
    enum class Form {
        Xml,  ///< for a strict reader, references left in it
        Plain ///< the text of an element: references undone once, lines end with a line feed
    };

    explicit OlmXmlText(Form form) : m_form(form) {}

    /// What becomes of the next piece. `isWhole`: nothing goes on behind it.
    QByteArray take(const QByteArray &piece, bool isWhole);

private:
    size_t takeCharacter(std::string_view text);
    size_t takeReference(std::string_view text);
    void put(std::string_view text, bool isReference = false);
    void putCr(bool isReference);
    void release(bool swallowed);

    Form m_form;
    QByteArray m_held; ///< of the pieces, that has not been looked at
    char m_heldCr = 0; ///< what a CR becomes if no line feed follows: a line feed or, of a reference, itself
    QByteArray m_result; ///< that has not been given
};
