#pragma once

#include <QByteArray>

#include <cstddef>
#include <string_view>

/// Characters of base64 for `bytes` bytes, padding included.
constexpr size_t base64Length(size_t bytes)
{
    return (bytes + 2) / 3 * 4;
}

/// Writes bytes as base64 (RFC 4648, section 4) without line ends to `out`, which has room for base64Length(count).
/// The toolkit's encoder gives a new block of memory each time, which costs more than the encoding.
void encodeBase64(const char *bytes, size_t count, char *out);

/// The bytes of base64 text (RFC 4648, section 4), as QByteArray::fromBase64 gives them but several times as fast:
/// characters outside the alphabet are passed over, "=" too, and bits that make no whole byte at the end are dropped.
QByteArray decodeBase64(std::string_view text);
