#pragma once

#include "platform/file_handle.h"

#include <QString>

#include <memory>
#include <string_view>

/// Tells a file, and its state, from another: one that was exchanged, written or cut has another stamp.
struct FileStamp {
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;    ///< bytes
    qint64 changed = 0; ///< nanoseconds since 1970

    bool operator==(const FileStamp &other) const
    {
        return device == other.device && inode == other.inode && size == other.size &&
               changed == other.changed;
    }
};

/// Foreign bytes that are read and never written: a regular file, bytes in memory, or, for tests, bytes that fail
/// from a place on. Everything that this program reads of a store goes through here. Positions and sizes are bytes.
class ByteSource
{
public:
    /// Nothing to read, and no error.
    ByteSource() = default;

    /// Opens a regular file read-only, through links. A folder, pipe, socket or device is refused and never waited
    /// for. As much of its start as `startBytes` allows is read at once; where that is all of it, the file does not
    /// stay open. A failure leaves a source without bytes whose errorString() tells why.
    static ByteSource ofFile(const QString &path, size_t startBytes = 0);
    /// Bytes in memory, which the caller keeps; `path` is what errors would name.
    static ByteSource ofBytes(std::string_view bytes, const QString &path = QString());
    /// The same, but what stands at `failsAt` or behind it can't be read.
    static ByteSource failing(std::string_view bytes, qint64 failsAt, const QString &path = QString());

    /// False where opening failed.
    bool isOpen() const { return m_isOpen; }
    /// The path given.
    const QString &path() const { return m_path; }
    /// The size when the source was opened; nothing is read behind it.
    qint64 size() const { return m_size; }

    /// How many bytes have been asked for and given so far: what a reader costs, for tests.
    qint64 bytesRead() const { return m_bytesRead; }
    /// The open file's descriptor, -1 without one.
    int descriptor() const { return m_file.descriptor(); }
    /// Which file this is and how it stood when it was opened; all zero for bytes in memory.
    const FileStamp &stamp() const { return m_stamp; }

    /// Reads up to `count` bytes at `position` and gives how many there were: fewer only at the end, or where
    /// reading failed, which errorString() then tells. A position outside the source has none.
    qint64 read(qint64 position, char *to, qint64 count);

    /// The first thing that went wrong, as "PATH: REASON"; empty where nothing did. A file that has become shorter
    /// than it was is such a thing, where the missing bytes were asked for.
    const QString &errorString() const { return m_error; }
    /// The system's number of that error (errno), 0 without one or where the system had none to tell.
    int errorNumber() const { return m_errorNumber; }

private:
    qint64 readBytes(qint64 position, char *to, qint64 count);
    qint64 readFile(qint64 position, char *to, qint64 count);
    void fail(int number, const QString &reason);

    QString m_path;
    QString m_error;
    int m_errorNumber = 0;
    bool m_isOpen = false;
    qint64 m_size = 0;
    FileHandle m_file;
    FileStamp m_stamp;
    std::unique_ptr<char[]> m_start; ///< the file's first bytes
    std::string_view m_bytes;        ///< what is in memory: the whole source, or a file's start
    qint64 m_bytesRead = 0;
    qint64 m_failsAt = -1; ///< for tests; -1: nowhere
};
