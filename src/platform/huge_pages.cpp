#include "platform/huge_pages.h"

#include <cstdint>

#include <sys/mman.h>
#include <unistd.h>

void useHugePages(const void *start, size_t bytes)
{
#ifdef MADV_HUGEPAGE
    constexpr size_t smallest = size_t{4} << 20;
    if (bytes < smallest)
        return;
    // Whole pages inside the buffer; a failure leaves the small ones.
    const auto page = static_cast<uintptr_t>(::sysconf(_SC_PAGESIZE));
    const uintptr_t first = (reinterpret_cast<uintptr_t>(start) + page - 1) / page * page;
    const uintptr_t end = (reinterpret_cast<uintptr_t>(start) + bytes) / page * page;
    ::madvise(reinterpret_cast<void *>(first), end - first, MADV_HUGEPAGE);
#else
    static_cast<void>(start);
    static_cast<void>(bytes);
#endif
}
