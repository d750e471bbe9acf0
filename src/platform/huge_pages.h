#pragma once

#include <cstddef>

/// Asks the system to fill a buffer of `bytes` bytes with huge pages when it is first written to, where it has them.
/// Page by page, filling a large one costs more than what is then done with it. A small buffer is left alone.
void useHugePages(const void *start, size_t bytes);
