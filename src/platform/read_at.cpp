#include "platform/read_at.h"

#include <cerrno>

#include <unistd.h>

ssize_t readAt(int file, char *to, size_t bytes, off_t position)
{
    ssize_t got = 0;
    do {
        got = ::pread(file, to, bytes, position);
    } while (got < 0 && errno == EINTR);
    return got;
}
