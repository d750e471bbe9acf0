#include "text/mbox_separator.h"

#include "text/line_reader.h"

#include <algorithm>
#include <string>

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

void SeparatorLine::take(std::string_view piece)
{
    if (m_ended)
        return;
    const size_t zero = piece.find('\0');
    m_ended = zero != std::string_view::npos;
    piece = piece.substr(0, zero);
    m_seam += piece.substr(0, dayBytes);
    m_hasWeekday = m_hasWeekday || holdsWeekday(piece) || holdsWeekday(m_seam);
    m_seam = piece.substr(piece.size() - std::min(piece.size(), dayBytes));
    // Only at the front of the line is a mark dropped.
    const bool keepsMark = m_units > 0 && hasOrderMark(piece);
    m_units += wholeLineText(piece).size() + (keepsMark ? 1 : 0);
}

bool isMboxSeparator(std::string_view lineStart, ByteSource *source, qint64 next)
{
    constexpr size_t seam = 4; // " Mon " may lie across two pieces
    constexpr qint64 pieceBytes = 64 * 1024;
    std::string text(lineStart);
    bool ended = false;
    while (!isMboxSeparator(text)) {
        if (ended || text.find('\0') != std::string::npos)
            return false;
        text.replace(0, text.size() - std::min(seam, text.size()), start);
        const size_t kept = text.size();
        text.resize(kept + static_cast<size_t>(pieceBytes));
        const qint64 got = source->read(next, text.data() + kept, pieceBytes);
        next += got;
        text.resize(kept + static_cast<size_t>(got));
        const size_t feed = text.find('\n');
        ended = got == 0 || feed != std::string::npos;
        text.resize(std::min(feed, text.size()));
    }
    return true;
}
