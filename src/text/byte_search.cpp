#include "text/byte_search.h"

#include <QtGlobal>

#include <algorithm>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace
{
const char *findByLine(const char *begin, const char *end, LineStarts starts)
{
    while (begin < end) {
        const auto *feed =
            static_cast<const char *>(std::memchr(begin, '\n', static_cast<size_t>(end - begin)));
        if (!feed || feed + 1 >= end)
            return end;
        if (isLineStart(feed[1], starts))
            return feed + 1;
        begin = feed + 1;
    }
    return end;
}

#ifdef __SSE2__
// Bit i is set where byte i is looked for.
template <LineStarts starts>
int candidates(__m128i bytes)
{
    const __m128i isCapitalF = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('F'));
    __m128i found = _mm_or_si128(bytes, isCapitalF); // the sign bit of a byte above 0x7F is set already
    if constexpr (starts == LineStarts::FromOrSubject) {
        const __m128i lower = _mm_or_si128(bytes, _mm_set1_epi8(0x20));
        found = _mm_or_si128(found, _mm_cmpeq_epi8(lower, _mm_set1_epi8('f')));
        found = _mm_or_si128(found, _mm_cmpeq_epi8(lower, _mm_set1_epi8('s')));
    }
    return _mm_movemask_epi8(found);
}

template <LineStarts starts>
const char *findByVector(const char *begin, const char *end)
{
    constexpr int width = sizeof(__m128i);
    const __m128i feed = _mm_set1_epi8('\n');
    // One byte more than a vector is read, for the byte behind a line feed in its last place.
    for (; end - begin > width; begin += width) {
        const __m128i here = _mm_loadu_si128(reinterpret_cast<const __m128i *>(begin));
        const int feeds = _mm_movemask_epi8(_mm_cmpeq_epi8(here, feed));
        if (feeds == 0)
            continue;
        const __m128i behind = _mm_loadu_si128(reinterpret_cast<const __m128i *>(begin + 1));
        if (const int found = feeds & candidates<starts>(behind))
            return begin + __builtin_ctz(static_cast<unsigned>(found)) + 1;
    }
    return findByLine(begin, end, starts);
}
#endif
} // namespace

const char *findLineStart(const char *begin, const char *end, LineStarts starts)
{
#ifdef __SSE2__
    return starts == LineStarts::From ? findByVector<LineStarts::From>(begin, end)
                                      : findByVector<LineStarts::FromOrSubject>(begin, end);
#else
    return findByLine(begin, end, starts);
#endif
}

namespace
{
#ifdef __SSE2__
// Counts the bytes that comparisons have found, without a branch for each.
class LaneCount
{
public:
    void add(__m128i found)
    {
        m_lanes = _mm_sub_epi8(m_lanes, found);
        if (++m_rounds == 255) // the most that a lane of a byte can hold
            empty();
    }
    size_t total()
    {
        empty();
        return m_total;
    }

private:
    void empty()
    {
        const __m128i sums = _mm_sad_epu8(m_lanes, _mm_setzero_si128());
        m_total += static_cast<size_t>(_mm_cvtsi128_si32(sums)) +
                   static_cast<size_t>(_mm_cvtsi128_si32(_mm_srli_si128(sums, 8)));
        m_lanes = _mm_setzero_si128();
        m_rounds = 0;
    }

    __m128i m_lanes = _mm_setzero_si128();
    int m_rounds = 0;
    size_t m_total = 0;
};
#endif

// Where a copy stops besides odd bytes: behind a line feed that a certain byte follows.
struct LineStartStop {
    char lineStart;

    bool at(const char *byte) const { return byte[0] == '\n' && byte[1] == lineStart; }
#ifdef __SSE2__
    __m128i at(__m128i here, __m128i behind, __m128i isFeed) const
    {
        Q_UNUSED(here)
        return _mm_and_si128(isFeed, _mm_cmpeq_epi8(behind, _mm_set1_epi8(lineStart)));
    }
#endif
};

// Behind a line feed that F or R follows, or at "<?".
struct FilterStop {
    bool at(const char *byte) const
    {
        return (byte[0] == '\n' && (byte[1] == 'F' || byte[1] == 'R')) || (byte[0] == '<' && byte[1] == '?');
    }
#ifdef __SSE2__
    __m128i at(__m128i here, __m128i behind, __m128i isFeed) const
    {
        const __m128i isStart = _mm_or_si128(_mm_cmpeq_epi8(behind, _mm_set1_epi8('F')),
                                             _mm_cmpeq_epi8(behind, _mm_set1_epi8('R')));
        const __m128i isDeclaration = _mm_and_si128(_mm_cmpeq_epi8(here, _mm_set1_epi8('<')),
                                                    _mm_cmpeq_epi8(behind, _mm_set1_epi8('?')));
        return _mm_or_si128(_mm_and_si128(isFeed, isStart), isDeclaration);
    }
#endif
};

// The two bytes of a character from U+0080 to U+00FF in UTF-8 (RFC 3629).
bool isLatin1Pair(const char *byte)
{
    return (byte[0] & 0xFE) == 0xC2 && (byte[1] & 0xC0) == 0x80;
}

template <typename Stop>
class PlainCopy
{
public:
    PlainCopy(const char *begin, const char *end, char *out, Stop stop)
        : m_end(end), m_stop(stop), m_copied{begin, out, 0}
    {
    }

    CopiedText run()
    {
        do {
            copyVectors();
            while (m_copied.in < m_end && !mayStop())
                *m_copied.out++ = *m_copied.in++;
        } while (m_copied.in < m_end && changeByte());
#ifdef __SSE2__
        m_copied.feeds += m_feeds.total();
#endif
        return m_copied;
    }

private:
    void copyVectors();
    bool followed() const
    {
        return m_copied.in + 1 < m_end;
    }
    bool mayStop()
    {
        const char byte = *m_copied.in;
        if (byte < 0 || byte == '\r' || (followed() && m_stop.at(m_copied.in)))
            return true;
        m_copied.feeds += byte == '\n' ? 1 : 0;
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
            *m_copied.out++ = static_cast<char>((in[0] << 6) | (in[1] & 0x3F));
            m_copied.in += 2;
            return true;
        }
        return false;
    }

    const char *m_end;
    Stop m_stop;
    CopiedText m_copied;
#ifdef __SSE2__
    LaneCount m_feeds;
#endif
};

// Copies as far as whole vectors can be read, up to a byte that may stop the copy.
template <typename Stop>
void PlainCopy<Stop>::copyVectors()
{
#ifdef __SSE2__
    constexpr int width = sizeof(__m128i);
    const __m128i feed = _mm_set1_epi8('\n');
    const __m128i carriageReturn = _mm_set1_epi8('\r');
    const __m128i places = _mm_setr_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
    const char *in = m_copied.in;
    char *out = m_copied.out;
    // One byte more than a vector is read, for the byte behind a line feed in its last place.
    for (; m_end - in > width; in += width, out += width) {
        const __m128i here = _mm_loadu_si128(reinterpret_cast<const __m128i *>(in));
        const __m128i behind = _mm_loadu_si128(reinterpret_cast<const __m128i *>(in + 1));
        const __m128i isFeed = _mm_cmpeq_epi8(here, feed);
        const __m128i mayStop = _mm_or_si128(_mm_or_si128(here, _mm_cmpeq_epi8(here, carriageReturn)),
                                             m_stop.at(here, behind, isFeed));
        _mm_storeu_si128(reinterpret_cast<__m128i *>(out), here);
        const auto stops = static_cast<unsigned>(_mm_movemask_epi8(mayStop));
        if (stops != 0) {
            const int kept = __builtin_ctz(stops);
            m_feeds.add(
                _mm_and_si128(isFeed, _mm_cmplt_epi8(places, _mm_set1_epi8(static_cast<char>(kept)))));
            in += kept;
            out += kept;
            break;
        }
        m_feeds.add(isFeed);
    }
    m_copied.in = in;
    m_copied.out = out;
#endif
}
} // namespace

CopiedText copyPlainText(const char *begin, const char *end, char *out, char lineStart)
{
    return PlainCopy<LineStartStop>(begin, end, out, LineStartStop{lineStart}).run();
}

CopiedText copyFilteredText(const char *begin, const char *end, char *out)
{
    return PlainCopy<FilterStop>(begin, end, out, FilterStop()).run();
}
