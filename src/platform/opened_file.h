#pragma once

#include "platform/file_handle.h"

#include <QString>

#include <cstddef>
#include <memory>

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
