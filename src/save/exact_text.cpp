#include "save/exact_text.h"

#include <algorithm>
#include <cstring>

namespace
{
constexpr std::string_view separatorStart = "From ";
}

void ExactText::give(std::string_view bytes)
{
    if (bytes.empty())
        return;
    m_give(bytes);
    m_endsLine = bytes.back() == '\n';
}

void ExactText::releaseCr()
{
    if (m_heldCr)
        give("\r");
    m_heldCr = false;
}

// Takes what decides whether a line gets a ">": its ">"s and "From ". Gives the bytes taken; the line's start is over
// where that is not all of them.
size_t ExactText::takeLineStart(std::string_view bytes)
{
    size_t at = 0;
    while (m_matched == 0 && at < bytes.size() && bytes[at] == '>')
        ++at;
    give(bytes.substr(0, at));
    while (at < bytes.size() && m_matched < separatorStart.size() && bytes[at] == separatorStart[m_matched]) {
        ++at;
        ++m_matched;
    }
    if (m_matched == separatorStart.size()) {
        give(">");
        ++m_quotedLines;
    } else if (at == bytes.size()) {
        return at; // more may come
    }
    give(separatorStart.substr(0, m_matched));
    m_matched = 0;
    m_atLineStart = false;
    return at;
}

// Takes whole lines that nothing changes. Gives the bytes taken.
size_t ExactText::takePlainLines(std::string_view bytes)
{
    size_t taken = 0;
    while (taken < bytes.size() && !(m_quotes && (bytes[taken] == 'F' || bytes[taken] == '>'))) {
        const auto *feed =
            static_cast<const char *>(std::memchr(bytes.data() + taken, '\n', bytes.size() - taken));
        const size_t end = feed ? static_cast<size_t>(feed - bytes.data()) : 0;
        if (!feed || (end > taken && bytes[end - 1] == '\r'))
            break;
        taken = end + 1;
    }
    give(bytes.substr(0, taken));
    return taken;
}

void ExactText::take(std::string_view bytes)
{
    while (!bytes.empty()) {
        if (m_heldCr && bytes[0] != '\n')
            releaseCr();
        m_heldCr = false;
        if (m_atLineStart && m_matched == 0)
            bytes.remove_prefix(takePlainLines(bytes));
        if (bytes.empty())
            return;
        if (m_quotes && m_atLineStart) {
            bytes.remove_prefix(takeLineStart(bytes));
            if (bytes.empty())
                return;
        }
        const void *feed = std::memchr(bytes.data(), '\n', bytes.size());
        const size_t length =
            feed ? static_cast<size_t>(static_cast<const char *>(feed) - bytes.data()) + 1 : bytes.size();
        takeRest(bytes.substr(0, length));
        bytes.remove_prefix(length);
    }
}

void ExactText::takePlain(std::string_view bytes)
{
    if (m_matched > 0 || m_heldCr || bytes.empty())
        return take(bytes);
    give(bytes);
    m_atLineStart = m_endsLine;
}

// A line's rest, or a piece of it.
void ExactText::takeRest(std::string_view bytes)
{
    const bool whole = bytes.back() == '\n';
    std::string_view text = bytes.substr(0, bytes.size() - (whole ? 1 : 0));
    if (!text.empty() && text.back() == '\r') {
        text.remove_suffix(1);
        m_heldCr = !whole;
    }
    give(text);
    if (whole)
        give("\n");
    m_atLineStart = whole;
}

void ExactText::end()
{
    give(separatorStart.substr(0, m_matched));
    releaseCr();
    if (!m_endsLine)
        give("\n");
}
