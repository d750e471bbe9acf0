#include "platform/byte_source.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

void ByteSource::fail(int number, const QString &reason)
{
    if (!m_error.isEmpty())
        return;
    m_errorNumber = number;
    m_error = m_path + QStringLiteral(": ") + reason;
}

ByteSource ByteSource::ofFile(const QString &path, size_t startBytes)
{
    ByteSource source;
    source.m_path = path;
    source.m_file =
        FileHandle(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    struct stat info = {};
    if (!source.m_file.isOpen() || ::fstat(source.m_file.descriptor(), &info) != 0) {
        const int number = errno;
        source.fail(number, qt_error_string(number));
        source.m_file.close();
        return source;
    }
    if (!S_ISREG(info.st_mode)) {
        source.fail(0, QCoreApplication::translate("Problem", "not a regular file"));
        source.m_file.close();
        return source;
    }
    source.m_isOpen = true;
    source.m_size = info.st_size;
    source.m_stamp = {info.st_dev, info.st_ino, info.st_size,
                      info.st_mtim.tv_sec * qint64{1000000000} + info.st_mtim.tv_nsec};
    const auto wanted = static_cast<size_t>(std::min<qint64>(static_cast<qint64>(startBytes), source.m_size));
    if (wanted == 0)
        return source;
    source.m_start.reset(new char[wanted]); // not cleared as a vector's bytes are
    // An error here shows again, and is told, when these bytes are asked for.
    const ssize_t got = readAt(source.m_file.descriptor(), source.m_start.get(), wanted, 0);
    source.m_bytes = {source.m_start.get(), got > 0 ? static_cast<size_t>(got) : 0};
    if (got == source.m_size)
        source.m_file.close();
    return source;
}

ByteSource ByteSource::ofBytes(std::string_view bytes, const QString &path)
{
    ByteSource source;
    source.m_path = path;
    source.m_isOpen = true;
    source.m_size = static_cast<qint64>(bytes.size());
    source.m_bytes = bytes;
    return source;
}

ByteSource ByteSource::failing(std::string_view bytes, qint64 failsAt, const QString &path)
{
    ByteSource source = ofBytes(bytes, path);
    source.m_failsAt = failsAt;
    return source;
}

qint64 ByteSource::read(qint64 position, char *to, qint64 count)
{
    if (position < 0 || position >= m_size || count <= 0)
        return 0;
    count = std::min(count, m_size - position);
    const bool inMemory = !m_file.isOpen() || position + count <= static_cast<qint64>(m_bytes.size());
    const qint64 got = inMemory ? readBytes(position, to, count) : readFile(position, to, count);
    m_bytesRead += got;
    return got;
}

qint64 ByteSource::readBytes(qint64 position, char *to, qint64 count)
{
    qint64 there = std::max<qint64>(0, std::min(count, static_cast<qint64>(m_bytes.size()) - position));
    if (m_failsAt >= 0 && position + there > m_failsAt) {
        there = std::max<qint64>(0, m_failsAt - position);
        fail(EIO, qt_error_string(EIO));
    }
    if (there > 0)
        std::memcpy(to, m_bytes.data() + position, static_cast<size_t>(there));
    return there;
}

qint64 ByteSource::readFile(qint64 position, char *to, qint64 count)
{
    qint64 done = 0;
    while (done < count) {
        const ssize_t got =
            readAt(m_file.descriptor(), to + done, static_cast<size_t>(count - done), position + done);
        if (got < 0) {
            const int number = errno;
            fail(number, qt_error_string(number));
        } else if (got == 0) {
            fail(0,
                 QCoreApplication::translate("Problem", "shorter than the %1 bytes that it had").arg(m_size));
        }
        if (got <= 0)
            break;
        done += got;
    }
    return done;
}
