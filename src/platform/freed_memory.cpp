#include "platform/freed_memory.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

void keepFreedMemory()
{
#ifdef __GLIBC__
    constexpr int kept = 16 * 1024 * 1024;
    constexpr int largestFromHeap =
        4 * 1024 * 1024; // a block above it has pages of its own, and gives them back
    ::mallopt(M_TRIM_THRESHOLD, kept);
    ::mallopt(M_MMAP_THRESHOLD, largestFromHeap);
#endif
}
