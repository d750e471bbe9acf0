#pragma once

#include <cstddef>

#include <sys/types.h>

/// An open file of the system, closed with its owner.
class FileHandle
{
public:
    /// Without a file; or the owner of an open one.
    FileHandle() = default;
    explicit FileHandle(int file) : m_file(file) {}
    FileHandle(FileHandle &&other) noexcept : m_file(other.m_file) { other.m_file = -1; }
    FileHandle &operator=(FileHandle &&other) noexcept;
    ~FileHandle() { close(); }

    bool isOpen() const { return m_file >= 0; }
    /// The descriptor, -1 while nothing is open.
    int descriptor() const { return m_file; }
    /// Closes what is open.
    void close();

private:
    int m_file = -1;
};

/// Reads up to that many bytes at a place of an open file, begun anew where a signal interrupts it. Gives the bytes
/// read, 0 at the end of the file, -1 after an error (errno tells which).
ssize_t readAt(int file, char *to, size_t bytes, off_t position);
