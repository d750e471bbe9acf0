#include "text/from_lines.h"

#include "text/byte_search.h"

namespace
{
constexpr std::string_view word = "From ";
constexpr std::string_view wordBehindFeed = "\nFrom ";
} // namespace

void FromLines::take(std::string_view text)
{
    for (; m_matched < word.size() && !text.empty(); text.remove_prefix(1)) {
        if (text[0] == '\n' && m_matched == 0)
            continue; // an empty line
        if (text[0] != word[m_matched])
            break;
        m_count += ++m_matched == word.size() ? 1 : 0;
    }
    if (text.empty())
        return;
    m_matched = word.size();
    size_t behind = 0;
    for (size_t at = findText(text, wordBehindFeed); at < text.size();
         at = findText(text, wordBehindFeed, behind)) {
        ++m_count;
        behind = at + wordBehindFeed.size();
    }
    // A line that the next piece may go on with.
    const size_t feed = text.rfind('\n');
    if (feed != std::string_view::npos && feed >= behind &&
        word.substr(0, text.size() - feed - 1) == text.substr(feed + 1))
        m_matched = text.size() - feed - 1;
}
