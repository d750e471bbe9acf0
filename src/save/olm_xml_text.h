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

    /// What becomes of the next piece. `isWhole`: no reference goes on behind it.
    QByteArray take(const QByteArray &piece, bool isWhole);

private:
    size_t takeCharacter(std::string_view text, QByteArray *out) const;

    Form m_form;
    QByteArray m_held; ///< that has not been given yet
};
