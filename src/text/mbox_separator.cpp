#include "text/mbox_separator.h"

#include "text/line_bytes.h"
#include "text/line_reader.h"
#include "text/vector_search.h"

#include <algorithm>

namespace
{
constexpr std::string_view start = "From ";
constexpr std::string_view days = "Mon Tue Wed Thu Fri Sat Sun ";
constexpr size_t dayBytes = 4; // a blank included

bool holdsWeekday(std::string_view text)
{
    const auto mayBeDay = [](auto here, auto behind) {
        return (here == ' ') &
               ((behind == 'M') | (behind == 'T') | (behind == 'W') | (behind == 'F') | (behind == 'S'));
    };
    const char *end = text.data() + text.size();
    for (const char *at = findPair(text.data(), end, mayBeDay); at < end;
         at = findPair(at + 1, end, mayBeDay)) {
        const std::string_view rest(at, static_cast<size_t>(end - at));
        if (rest.size() > dayBytes && rest[dayBytes] == ' ' &&
            days.find(rest.substr(1, dayBytes)) % dayBytes == 0)
            return true;
    }
    return false;
}
} // namespace

bool startsAsSeparator(std::string_view line)
{
    return startsWith(withoutMark(line), start);
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
    m_hasWeekday = m_hasWeekday || holdsWeekday(piece);
    if (!m_seam.empty())
        m_hasWeekday = m_hasWeekday || holdsWeekday(m_seam.append(piece.substr(0, dayBytes)));
    if (!m_ended && piece.size() > dayBytes)
        m_seam = piece.substr(piece.size() - dayBytes);
    // Only at the front of the line is a mark dropped.
    const bool keepsMark = m_units > 0 && startsWith(piece, byteOrderMark);
    m_units += wholeLineText(piece).size() + (keepsMark ? 1 : 0);
}
