#include "text/base64.h"

#include <array>
#include <cstdint>
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

constexpr uint32_t noDigit = 1U << 31;
constexpr unsigned digitBits = 6;

/// Each byte's value as a digit of base64, moved left by `shift` bits; noDigit for one outside the alphabet.
using Digits = std::array<uint32_t, 256>;

constexpr Digits makeDigits(unsigned shift)
{
    Digits digits = {};
    for (uint32_t &digit : digits)
        digit = noDigit;
    for (uint32_t value = 0; value < 1U << digitBits; ++value)
        digits[static_cast<unsigned char>(alphabet[value])] = value << shift;
    return digits;
}
constexpr Digits digits[] = {makeDigits(3 * digitBits), makeDigits(2 * digitBits), makeDigits(digitBits),
                             makeDigits(0)};

// Decodes whole groups of four digits as long as nothing else stands between them.
char *decodeGroups(const char **at, const char *end, char *out)
{
    for (; end - *at >= 4; *at += 4, out += 3) {
        const uint32_t group = digits[0][byteAt(*at, 0)] | digits[1][byteAt(*at, 1)] |
                               digits[2][byteAt(*at, 2)] | digits[3][byteAt(*at, 3)];
        if (group & noDigit)
            break;
        out[0] = static_cast<char>(group >> 16);
        out[1] = static_cast<char>(group >> 8);
        out[2] = static_cast<char>(group);
    }
    return out;
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

QByteArray decodeBase64(std::string_view text)
{
    QByteArray bytes(static_cast<int>(text.size() / 4 * 3 + 3), Qt::Uninitialized);
    char *out = bytes.data();
    const char *at = text.data();
    const char *const end = at + text.size();
    unsigned taken = 0; // digits of a byte that is not complete
    unsigned bits = 0;  // how many
    while (at < end) {
        if (bits == 0)
            out = decodeGroups(&at, end, out);
        const uint32_t digit = at < end ? digits[3][byteAt(at++, 0)] : noDigit;
        if (digit & noDigit)
            continue;
        taken = (taken << digitBits | digit) & 0xFFF;
        bits += digitBits;
        if (bits >= 8) {
            bits -= 8;
            *out++ = static_cast<char>(taken >> bits);
        }
    }
    bytes.truncate(static_cast<int>(out - bytes.constData()));
    return bytes;
}
