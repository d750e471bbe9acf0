#include "text/byte_search.h"

#include "text/vector_search.h"

#include <algorithm>

namespace
{
// Counts the bytes that comparisons hold for, without a branch for each.
class HitCount
{
public:
    template <typename Mask>
    void add(const Mask &mask)
    {
        m_lanes -= reinterpret_cast<Lanes>(mask);
        if (++m_rounds == 255) // the most that a lane of a byte can hold
            empty();
    }
    size_t total()
    {
        empty();
        return m_total;
    }

private:
    using Lanes = unsigned char __attribute__((vector_size(vectorBytes)));

    void empty()
    {
        for (ptrdiff_t i = 0; i < vectorBytes; ++i)
            m_total += m_lanes[i];
        m_lanes = Lanes{};
        m_rounds = 0;
    }

    Lanes m_lanes = {};
    int m_rounds = 0;
    size_t m_total = 0;
};

// The place behind the n-th line feed of a text that has that many.
template <typename Char>
Char *behindLineFeed(Char *begin, Char *end, size_t n)
{
    for (; n > 0; --n)
        begin = static_cast<Char *>(std::memchr(begin, '\n', static_cast<size_t>(end - begin))) + 1;
    return begin;
}

// The two bytes of a character from U+0080 to U+00FF in UTF-8 (RFC 3629).
bool isLatin1Pair(const char *byte)
{
    return (byte[0] & 0xFE) == 0xC2 && (byte[1] & 0xC0) == 0x80;
}

char latin1OfPair(const char *byte)
{
    return static_cast<char>(static_cast<unsigned>(byte[0]) << 6 | (static_cast<unsigned>(byte[1]) & 0x3F));
}

// `Stop` tells by a byte and the one behind it where a copy stops besides odd bytes.
template <typename Stop>
class PlainCopy
{
public:
    PlainCopy(const char *begin, const char *end, char *out, Stop stop)
        : m_end(end), m_stop(stop), m_copied{begin, out, 0, 0}
    {
    }

    CopiedText run()
    {
        do {
            copyVectors();
            while (m_copied.in < m_end && !mayStop())
                *m_copied.out++ = *m_copied.in++;
        } while (m_copied.in < m_end && changeByte());
        m_copied.feeds += m_feeds.total();
        return m_copied;
    }

private:
    // Copies as far as whole vectors can be read, up to a byte that may stop the copy.
    void copyVectors()
    {
        constexpr ByteVector places = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
        const char *in = m_copied.in;
        char *out = m_copied.out;
        // One byte more than a vector is read, for the byte behind its last one.
        for (; m_end - in > vectorBytes; in += vectorBytes, out += vectorBytes) {
            const ByteVector here = vectorAt(in);
            std::memcpy(out, &here, sizeof(here));
            const ptrdiff_t kept = firstHit(isOdd(here) | m_stop(here, vectorAt(in + 1)));
            if (kept < vectorBytes) {
                m_feeds.add((here == '\n') & (places < static_cast<char>(kept)));
                in += kept;
                out += kept;
                break;
            }
            m_feeds.add(here == '\n');
        }
        m_copied.in = in;
        m_copied.out = out;
    }

    template <typename Bytes>
    static auto isOdd(const Bytes &bytes)
    {
        return (bytes < '\0') | (bytes == '\r');
    }
    bool followed() const { return m_copied.in + 1 < m_end; }
    bool mayStop()
    {
        const char *in = m_copied.in;
        if (isOdd(*in) || (followed() && m_stop(in[0], in[1])))
            return true;
        m_copied.feeds += *in == '\n' ? 1 : 0;
        return false;
    }

    // Deals with the byte that may stop the copy; false if it does.
    bool changeByte()
    {
        const char *in = m_copied.in;
        if (*in == '\n') {
            *m_copied.out++ = *m_copied.in++;
            ++m_copied.feeds;
            return false;
        }
        if (followed() && in[0] == '\r' && in[1] == '\n') {
            ++m_copied.in;
            return true;
        }
        if (followed() && isLatin1Pair(in)) {
            *m_copied.out++ = latin1OfPair(in);
            m_copied.in += 2;
            ++m_copied.high;
            return true;
        }
        return false;
    }

    const char *m_end;
    Stop m_stop;
    CopiedText m_copied;
    HitCount m_feeds;
};
} // namespace

const char *findLineStart(const char *begin, const char *end, LineStarts starts)
{
    const auto isFrom = [](auto here, auto behind) {
        return (here == '\n') & ((behind < '\0') | (behind == 'F'));
    };
    const auto isFromOrSubject = [](auto here, auto behind) {
        return (here == '\n') & ((behind < '\0') | ((behind | ' ') == 'f') | ((behind | ' ') == 's'));
    };
    const char *feed =
        starts == LineStarts::From ? findPair(begin, end, isFrom) : findPair(begin, end, isFromOrSubject);
    return feed == end ? end : feed + 1;
}

size_t findText(std::string_view text, std::string_view wanted, size_t from)
{
    const auto startsWanted = [first = wanted[0], second = wanted[1]](auto here, auto behind) {
        return (here == first) & (behind == second);
    };
    const char *end = text.data() + text.size();
    for (; from < text.size(); ++from) {
        const char *found = findPair(text.data() + from, end, startsWanted);
        from = static_cast<size_t>(found - text.data());
        if (wanted.size() <= text.size() - from && text.compare(from, wanted.size(), wanted) == 0)
            return from;
    }
    return std::string_view::npos;
}

CopiedText copyPlainText(const char *begin, const char *end, char *out)
{
    const auto stop = [](auto here, auto behind) { return (here == '\n') & (behind == 'F'); };
    return PlainCopy(begin, end, out, stop).run();
}

CopiedText copyPlainHeaders(const char *begin, const char *end, char *out)
{
    const auto stop = [](auto here, auto behind) {
        return (here == '\n') & ((behind == 'C') | (behind == 'F'));
    };
    return PlainCopy(begin, end, out, stop).run();
}

CopiedText copyFilteredText(const char *begin, const char *end, char *out)
{
    const auto stop = [](auto here, auto behind) {
        return ((here == '\n') & ((behind == 'F') | (behind == 'R'))) | ((here == '<') & (behind == '?'));
    };
    return PlainCopy(begin, end, out, stop).run();
}

CopiedText cutBehindLine(const CopiedText &copied, const char *begin, char *out, size_t n)
{
    const char *in = behindLineFeed(begin, copied.in, n);
    char *end = behindLineFeed(out, copied.out, n);
    // The copy's other bytes are ASCII.
    const auto high = std::count_if(out, end, [](char byte) { return byte < '\0'; });
    return {in, end, n, static_cast<size_t>(high)};
}
