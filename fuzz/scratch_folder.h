#pragma once

#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>
#include <string_view>

/// A folder below TMPDIR for what a reader opens by its path. A target that crashes leaves it behind: `fuzz/run` gives
/// each a TMPDIR in memory and removes that.
class ScratchFolder
{
public:
    /// "/dev/shm/velmora-fuzz-X/fuzz_opera-Y/NAME"
    QString path(const QString &name) const { return m_folder.filePath(name); }
    /// Makes or overwrites a file and gives its path.
    QString write(const QString &name, std::string_view bytes) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) ||
            file.write(bytes.data(), static_cast<qint64>(bytes.size())) != static_cast<qint64>(bytes.size()))
            std::abort();
        return file.fileName();
    }
    /// All bytes of a file; none where there is no such file.
    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_folder;
};
