#include "text/base64.h"

#include <array>
#include <cstring>

namespace
{
constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr unsigned pairBits = 12;

/// The two characters of each value of twelve bits.
using Pairs = std::array<char, 2 << pairBits>;

constexpr Pairs makePairs()
{
    Pairs pairs = {};
    for (unsigned value = 0; value < 1U << pairBits; ++value) {
        pairs[2 * value] = alphabet[value >> 6];
        pairs[2 * value + 1] = alphabet[value & 0x3F];
    }
    return pairs;
}
constexpr Pairs pairs = makePairs();

void putGroup(unsigned group, char *out)
{
    std::memcpy(out, &pairs[2 * (group >> pairBits)], 2);
    std::memcpy(out + 2, &pairs[2 * (group & ((1U << pairBits) - 1))], 2);
}

unsigned byteAt(const char *bytes, size_t i)
{
    return static_cast<unsigned char>(bytes[i]);
}
} // namespace

void encodeBase64(const char *bytes, size_t count, char *out)
{
    for (; count >= 3; count -= 3, bytes += 3, out += 4)
        putGroup(byteAt(bytes, 0) << 16 | byteAt(bytes, 1) << 8 | byteAt(bytes, 2), out);
    if (count == 0)
        return;
    putGroup(byteAt(bytes, 0) << 16 | (count == 2 ? byteAt(bytes, 1) << 8 : 0), out);
    std::memset(out + count + 1, '=', 3 - count);
}
