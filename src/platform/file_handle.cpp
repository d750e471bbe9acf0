#include "platform/file_handle.h"

#include <cerrno>
#include <utility>

#include <unistd.h>

FileHandle &FileHandle::operator=(FileHandle &&other) noexcept
{
    std::swap(m_file, other.m_file);
    return *this;
}

void FileHandle::close()
{
    if (m_file >= 0)
        ::close(m_file);
    m_file = -1;
}

ssize_t readAt(int file, char *to, size_t bytes, off_t position)
{
    ssize_t got = 0;
    do {
        got = ::pread(file, to, bytes, position);
    } while (got < 0 && errno == EINTR);
    return got;
}
