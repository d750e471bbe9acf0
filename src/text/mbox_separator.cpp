#include "text/mbox_separator.h"

#include "text/line_reader.h"

#include <algorithm>

namespace
{
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view start = "From ";
constexpr std::string_view days = "Mon Tue Wed Thu Fri Sat Sun ";
constexpr size_t dayBytes = 4; // a blank included

bool hasOrderMark(std::string_view text)
{
    return text.substr(0, byteOrderMark.size()) == byteOrderMark;
}

bool holdsWeekday(std::string_view text)
{
    for (size_t at = text.find(' '); at < text.size() && at + dayBytes < text.size();
         at = text.find(' ', at + 1))
        if (text[at + dayBytes] == ' ' && days.find(text.substr(at + 1, dayBytes)) % dayBytes == 0)
            return true;
    return false;
}
} // namespace

bool startsAsSeparator(std::string_view line)
{
    return line.substr(hasOrderMark(line) ? byteOrderMark.size() : 0, start.size()) == start;
}

bool isMboxSeparator(std::string_view line)
{
    return startsAsSeparator(line) && holdsWeekday(line.substr(0, line.find('\0')));
}

bool isMboxSeparator(std::string_view lineStart, ByteSource *source, qint64 next)
{
    if (!startsAsSeparator(lineStart))
        return false;
    SeparatorLine line;
    line.take(lineStart);
    std::string piece(64 * 1024, '\0');
    while (!line.isSeparator() && !line.hasEnded()) {
        const qint64 got = source->read(next, piece.data(), static_cast<qint64>(piece.size()));
        if (got == 0)
            return false;
        line.take(std::string_view(piece).substr(0, static_cast<size_t>(got)));
        next += got;
    }
    return line.isSeparator();
}

void SeparatorLine::take(std::string_view piece)
{
    if (m_ended)
        return;
    const size_t behindFeed = piece.find('\n') + 1; // none: npos + 1 is 0
    if (behindFeed > 0)
        piece = piece.substr(0, behindFeed);
    const size_t zero = piece.find('\0');
    m_ended = behindFeed > 0 || zero < piece.size();
    piece = piece.substr(0, zero);
    m_seam += piece.substr(0, dayBytes);
    m_hasWeekday = m_hasWeekday || holdsWeekday(piece) || holdsWeekday(m_seam);
    if (piece.size() > dayBytes)
        m_seam = piece.substr(piece.size() - dayBytes);
    // Only at the front of the line is a mark dropped.
    const bool keepsMark = m_units > 0 && hasOrderMark(piece);
    m_units += wholeLineText(piece).size() + (keepsMark ? 1 : 0);
}
