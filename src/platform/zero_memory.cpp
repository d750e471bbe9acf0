#include "platform/zero_memory.h"

#include <QtGlobal>

#include <cstdint>

#include <sys/mman.h>

namespace
{
constexpr size_t blockBytes = size_t{16} << 20;
constexpr size_t hugePageBytes = size_t{2} << 20;

size_t roundedUp(size_t value, size_t step)
{
    return (value + step - 1) / step * step;
}
} // namespace

void ZeroMemory::addBlock()
{
    const size_t size = blockBytes + hugePageBytes;
    void *mapping = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    Q_CHECK_PTR(mapping == MAP_FAILED ? nullptr : mapping);
    auto *start = reinterpret_cast<char *>(roundedUp(reinterpret_cast<uintptr_t>(mapping), hugePageBytes));
#ifdef MADV_HUGEPAGE
    ::madvise(start, blockBytes, MADV_HUGEPAGE);
#endif
    auto *block = reinterpret_cast<Block *>(start);
    *block = {m_last, mapping, size};
    m_last = block;
    const size_t header = roundedUp(sizeof(Block), alignof(std::max_align_t));
    m_next = start + header;
    m_left = blockBytes - header;
}

void *ZeroMemory::take(size_t bytes)
{
    const size_t size = roundedUp(bytes, alignof(std::max_align_t));
    if (size > m_left)
        addBlock();
    void *taken = m_next;
    m_next += size;
    m_left -= size;
    return taken;
}

void ZeroMemory::release()
{
    while (m_last) {
        const Block block = *m_last;
        ::munmap(block.mapping, block.size);
        m_last = block.previous;
    }
    m_next = nullptr;
    m_left = 0;
}
