#pragma once

#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>
#include <string_view>

/// A folder in memory for what a reader opens by its path. It is gone when the target ends.
class ScratchFolder
{
public:
    /// "/dev/shm/velmora-fuzz-X/NAME"
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
    QTemporaryDir m_folder{QStringLiteral("/dev/shm/velmora-fuzz-XXXXXX")};
};
