#pragma once

#include <QString>

#include <memory>

#include <sys/types.h>

#include <cstddef>

/// An open file of the system, closed with its owner.
class FileHandle
{
public:
    FileHandle() = default;
    explicit FileHandle(int file) : m_file(file) {}
    FileHandle(FileHandle &&other) noexcept : m_file(other.m_file) { other.m_file = -1; }
    FileHandle &operator=(FileHandle &&other) noexcept;
    ~FileHandle() { close(); }

    bool isOpen() const { return m_file >= 0; }
    int descriptor() const { return m_file; }
    void close();

private:
    int m_file = -1;
};

/// A regular file opened read-only, with the bytes at its start that were read at the same time.
struct OpenedFile {
    QString path;
    QString error;                 ///< path and reason where it can't be opened, else empty
    FileHandle handle;             ///< closed where the start is the whole file
    qint64 size = 0;               ///< in bytes
    std::unique_ptr<char[]> start; ///< null where nothing was read
    size_t startBytes = 0;
};

/// Opens a file and reads as much of it as `startBytes` allows. A start that can't be read is left to the next read.
OpenedFile openFile(const QString &path, size_t startBytes);

/// Reads up to that many bytes at a place of an open file, begun anew where a signal interrupts it. Gives the bytes
/// read, 0 at the end of the file, -1 after an error (errno tells which).
ssize_t readAt(int file, char *to, size_t bytes, off_t position);
