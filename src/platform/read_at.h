#pragma once

#include <sys/types.h>

#include <cstddef>

/// Reads up to that many bytes at a place of an open file, begun anew where a signal interrupts it. Gives the bytes
/// read, 0 at the end of the file, -1 after an error (errno tells which).
ssize_t readAt(int file, char *to, size_t bytes, off_t position);
