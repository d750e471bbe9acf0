#pragma once

#include <cstddef>

/// Characters of base64 for `bytes` bytes, padding included.
constexpr size_t base64Length(size_t bytes)
{
    return (bytes + 2) / 3 * 4;
}

/// Writes bytes as base64 (RFC 4648, section 4) without line ends to `out`, which has room for base64Length(count).
/// The toolkit's encoder gives a new block of memory each time, which costs more than the encoding.
void encodeBase64(const char *bytes, size_t count, char *out);
