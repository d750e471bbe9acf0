#include "cli/say.h"

#include <cstdio>

namespace
{
// Controls, and the marks that turn the direction of what follows them.
bool actsOnTerminal(QChar character)
{
    const ushort code = character.unicode();
    return character.category() == QChar::Other_Control || (code >= 0x202A && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}

bool isLineEnd(const QString &text, int at)
{
    return text.at(at) == QLatin1Char('\n') ||
           (text.at(at) == QLatin1Char('\r') && at + 1 < text.size() && text.at(at + 1) == QLatin1Char('\n'));
}
} // namespace

QString visible(const QString &text, bool lines)
{
    QString shown;
    shown.reserve(text.size());
    for (int at = 0; at < text.size(); ++at) {
        const QChar character = text.at(at);
        if (!actsOnTerminal(character) || character == QLatin1Char('\t') || (lines && isLineEnd(text, at)))
            shown += character;
        else if (character.unicode() < 0x100)
            shown += QStringLiteral("\\x%1").arg(character.unicode(), 2, 16, QLatin1Char('0'));
        else
            shown += QStringLiteral("\\u%1").arg(character.unicode(), 4, 16, QLatin1Char('0'));
    }
    return shown;
}

void say(const QString &sentence)
{
    std::fprintf(stderr, "velmora-convert: %s\n", visible(sentence).toUtf8().constData());
}
