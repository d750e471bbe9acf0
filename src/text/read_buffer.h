#pragma once

#include "platform/byte_source.h"

#include <string_view>
#include <vector>

/// Looks at a source through one buffer. A jump reads little, going on from where the buffer ends reads more and
/// more at a time.
class ReadBuffer
{
public:
    /// `source` is kept by the caller.
    explicit ReadBuffer(ByteSource *source) : m_source(source) {}

    /// All the buffered bytes from `position` on: at least `atLeast` (up to largestBlock), fewer only where the
    /// source ends or fails. Valid until the next call.
    std::string_view from(qint64 position, size_t atLeast = 1);
    /// `count` bytes at `position`, fewer only where the source ends or fails. Valid until the next call.
    std::string_view at(qint64 position, size_t count) { return from(position, count).substr(0, count); }

    static constexpr size_t smallestBlock = 4 * 1024;
    static constexpr size_t largestBlock = 256 * 1024;

private:
    ByteSource *m_source;
    std::vector<char> m_block;
    qint64 m_start = 0;
    size_t m_filled = 0;
    size_t m_blockBytes = smallestBlock;
};
