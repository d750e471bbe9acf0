#pragma once

#include <cstddef>

/// Zero-filled memory for many small records that live and go together: large blocks straight from the system,
/// in huge pages where it has them (filling them page by page would cost more than reading the mail). Never
/// null; a system without memory ends the program, as with any other allocation here.
class ZeroMemory
{
public:
    ZeroMemory() = default;
    ~ZeroMemory() { release(); }
    ZeroMemory(const ZeroMemory &) = delete;
    ZeroMemory &operator=(const ZeroMemory &) = delete;

    /// `bytes` zero bytes, aligned for any record; at most a block (16 MiB).
    void *take(size_t bytes);
    /// Gives everything back.
    void release();

private:
    struct Block {
        Block *previous;
        void *mapping;
        size_t size;
    };
    void addBlock();

    Block *m_last = nullptr;
    char *m_next = nullptr;
    size_t m_left = 0;
};
