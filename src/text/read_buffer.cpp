#include "text/read_buffer.h"

#include <algorithm>

std::string_view ReadBuffer::from(qint64 position, size_t atLeast)
{
    const qint64 end = m_start + static_cast<qint64>(m_filled);
    const bool goesOn = position >= m_start && position <= end;
    if (!goesOn || end - position < static_cast<qint64>(atLeast)) {
        m_blockBytes = goesOn ? std::min(2 * m_blockBytes, largestBlock) : smallestBlock;
        const size_t wanted = std::max(std::min(atLeast, largestBlock), m_blockBytes);
        if (m_block.size() < wanted)
            m_block.resize(wanted);
        m_start = position;
        m_filled = static_cast<size_t>(m_source->read(position, m_block.data(), static_cast<qint64>(wanted)));
    }
    const auto skipped = static_cast<size_t>(position - m_start);
    return {m_block.data() + skipped, m_filled - skipped};
}
