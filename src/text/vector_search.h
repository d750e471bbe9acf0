#pragma once

#include <cstddef>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

// Searches that look at sixteen bytes at a time. A test is a lambda that takes `auto` and is written with comparisons,
// `&` and `|` alone: it is called with one byte as well as with a vector of them.

/// Sixteen bytes, compared one by one.
using ByteVector = char __attribute__((vector_size(16)));
constexpr ptrdiff_t vectorBytes = sizeof(ByteVector);

/// The sixteen bytes at any address.
inline ByteVector vectorAt(const char *bytes)
{
    ByteVector vector;
    std::memcpy(&vector, bytes, sizeof(vector));
    return vector;
}

/// A bit for each of the bytes, set where a comparison holds; the first byte has the lowest bit.
template <typename Mask>
unsigned hitBits(const Mask &mask)
{
#ifdef __SSE2__
    return static_cast<unsigned>(_mm_movemask_epi8(reinterpret_cast<__m128i>(mask)));
#else
    unsigned bits = 0;
    for (ptrdiff_t i = 0; i < vectorBytes; ++i)
        bits |= static_cast<unsigned>(mask[i] & 1) << i;
    return bits;
#endif
}

/// The first of the bytes that a comparison holds for; vectorBytes if there is none.
template <typename Mask>
ptrdiff_t firstHit(const Mask &mask)
{
    const unsigned bits = hitBits(mask);
    return bits != 0 ? __builtin_ctz(bits) : vectorBytes;
}

/// The last of the bytes that a comparison holds for; -1 if there is none.
template <typename Mask>
ptrdiff_t lastHit(const Mask &mask)
{
    const unsigned bits = hitBits(mask);
    return bits != 0 ? 31 - __builtin_clz(bits) : -1;
}

/// The first byte in [begin, end) for which test(byte) holds, else `end`.
template <typename Test>
const char *findByte(const char *begin, const char *end, Test test)
{
    for (; end - begin >= vectorBytes; begin += vectorBytes) {
        const ptrdiff_t hit = firstHit(test(vectorAt(begin)));
        if (hit < vectorBytes)
            return begin + hit;
    }
    while (begin < end && !test(*begin))
        ++begin;
    return begin;
}

/// The first byte in [begin, end) for which test(byte, byte behind it) holds, else `end`. The last byte has none
/// behind it and is not tested.
template <typename Test>
const char *findPair(const char *begin, const char *end, Test test)
{
    for (; end - begin > vectorBytes; begin += vectorBytes) {
        const ptrdiff_t hit = firstHit(test(vectorAt(begin), vectorAt(begin + 1)));
        if (hit < vectorBytes)
            return begin + hit;
    }
    for (; end - begin > 1; ++begin)
        if (test(begin[0], begin[1]))
            return begin;
    return end;
}

/// The same from the end: the last such byte, else `end`.
template <typename Test>
const char *findLastPair(const char *begin, const char *end, Test test)
{
    const char *at = end - begin > 1 ? end - 1 : begin;
    for (; at - begin >= vectorBytes; at -= vectorBytes) {
        const char *first = at - vectorBytes;
        const ptrdiff_t hit = lastHit(test(vectorAt(first), vectorAt(first + 1)));
        if (hit >= 0)
            return first + hit;
    }
    while (at > begin) {
        --at;
        if (test(at[0], at[1]))
            return at;
    }
    return end;
}

/// Copies bytes from [*at, end) to `out` up to the first one for which test(byte) holds; `*at` goes there. `out` has
/// room for all of them and vectorBytes more. Gives the end of the copy.
template <typename Test>
char *copyUntil(const char **at, const char *end, char *out, Test test)
{
    for (; end - *at >= vectorBytes; *at += vectorBytes, out += vectorBytes) {
        const ByteVector bytes = vectorAt(*at);
        std::memcpy(out, &bytes, sizeof(bytes));
        const ptrdiff_t hit = firstHit(test(bytes));
        if (hit < vectorBytes) {
            *at += hit;
            return out + hit;
        }
    }
    while (*at < end && !test(**at))
        *out++ = *(*at)++;
    return out;
}
