#include "text/mbox_separator.h"

#include <algorithm>
#include <string>

namespace
{
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view start = "From ";
constexpr std::string_view days = "Mon Tue Wed Thu Fri Sat Sun ";
} // namespace

bool isMboxSeparator(std::string_view line)
{
    line = line.substr(0, line.find('\0'));
    if (line.substr(0, byteOrderMark.size()) == byteOrderMark)
        line.remove_prefix(byteOrderMark.size());
    if (line.substr(0, start.size()) != start)
        return false;
    constexpr size_t dayBytes = 4; // its blank included
    for (size_t at = start.size() - 1; at + dayBytes < line.size(); ++at)
        if (line[at] == ' ' && line[at + dayBytes] == ' ' &&
            days.find(line.substr(at + 1, dayBytes)) % dayBytes == 0)
            return true;
    return false;
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
