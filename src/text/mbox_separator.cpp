#include "text/mbox_separator.h"

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
