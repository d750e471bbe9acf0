#include "text/find_line_start.h"

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
