#include "text/base64.h"

#include <array>
#include <cstdint>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

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

constexpr size_t vectorBytes = 24;
constexpr size_t vectorReads = 28; // two overlapping loads of 16 bytes
constexpr size_t vectorText = 32;

#if defined(__x86_64__)
bool hasVectors()
{
    static const bool has = __builtin_cpu_supports("avx2") != 0;
    return has;
}

// Encodes 24 bytes to 32 characters; reads 28. Three times as fast as the table, and an archive's attachments are base64
// for the most part.
__attribute__((target("avx2"))) void putVector(const char *bytes, char *out)
{
    const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i *>(bytes));
    const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i *>(bytes + vectorBytes / 2));
    // Each group of three bytes a, b, c as b a c b, so that its digits lie in two words of 16 bits.
    const __m256i spread = _mm256_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10, //
                                            1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10);
    const __m256i groups = _mm256_shuffle_epi8(_mm256_set_m128i(high, low), spread);
    const __m256i first = _mm256_and_si256(groups, _mm256_set1_epi32(0x0FC0FC00));
    const __m256i second = _mm256_and_si256(groups, _mm256_set1_epi32(0x003F03F0));
    const __m256i values = _mm256_or_si256(_mm256_mulhi_epu16(first, _mm256_set1_epi32(0x04000040)),
                                           _mm256_mullo_epi16(second, _mm256_set1_epi32(0x01000010)));
    // The distance from value to character: of "a" to "z" at 0, of the digits, "+" and "/" at 1 to 12, of "A" to "Z" at 13.
    const __m256i distances =
        _mm256_setr_epi8(71, -4, -4, -4, -4, -4, -4, -4, -4, -4, -4, -19, -16, 65, 0, 0, //
                         71, -4, -4, -4, -4, -4, -4, -4, -4, -4, -4, -19, -16, 65, 0, 0);
    const __m256i isUpper = _mm256_cmpgt_epi8(_mm256_set1_epi8(26), values);
    const __m256i range = _mm256_or_si256(_mm256_subs_epu8(values, _mm256_set1_epi8(51)),
                                          _mm256_and_si256(isUpper, _mm256_set1_epi8(13)));
    const __m256i text = _mm256_add_epi8(values, _mm256_shuffle_epi8(distances, range));
    _mm256_storeu_si256(reinterpret_cast<__m256i *>(out), text);
}
#else
constexpr bool hasVectors()
{
    return false;
}
void putVector(const char *, char *) {}
#endif

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
    const bool inVectors = hasVectors();
    for (; inVectors && count >= vectorReads; count -= vectorBytes, bytes += vectorBytes, out += vectorText)
        putVector(bytes, out);
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
