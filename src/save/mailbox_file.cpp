#include "save/mailbox_file.h"

#include "app/problem_log.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr int bufferBytes = 256 * 1024;
constexpr mode_t newFileMode = 0666;
} // namespace

void MailboxFile::open(const QString &path, const FinderCodes &codes)
{
    close();
    m_path = path;
    m_size = 0;
    QDir().mkpath(QFileInfo(path).path());
    const QByteArray name = QFile::encodeName(path);
    m_file = ::open(name.constData(), O_WRONLY | O_APPEND | O_CREAT | O_EXCL | O_CLOEXEC, newFileMode);
    if (m_file >= 0)
        setFinderInfo(path, codes);
    else if (errno == EEXIST)
        m_file = ::open(name.constData(), O_WRONLY | O_APPEND | O_CLOEXEC);
    struct stat info = {};
    if (m_file < 0)
        fail(errno);
    else if (::fstat(m_file, &info) == 0)
        m_size = info.st_size;
}

void MailboxFile::append(std::string_view bytes)
{
    if (m_file < 0)
        return;
    m_size += static_cast<qint64>(bytes.size());
    if (m_buffer.size() + static_cast<qint64>(bytes.size()) > bufferBytes)
        flush();
    if (bytes.size() >= bufferBytes)
        write(bytes.data(), bytes.size());
    else
        m_buffer.append(bytes.data(), static_cast<int>(bytes.size()));
}

void MailboxFile::truncate(qint64 size)
{
    flush();
    if (m_file < 0)
        return;
    if (::ftruncate(m_file, size) != 0)
        fail(errno);
    m_size = size;
}

void MailboxFile::close()
{
    flush();
    if (m_file >= 0 && ::close(m_file) != 0) {
        m_file = -1;
        fail(errno);
    }
    m_file = -1;
}

void MailboxFile::flush()
{
    if (!m_buffer.isEmpty())
        write(m_buffer.constData(), static_cast<size_t>(m_buffer.size()));
    m_buffer.resize(0);
    m_buffer.reserve(bufferBytes);
}

void MailboxFile::write(const char *bytes, size_t count)
{
    while (m_file >= 0 && count > 0) {
        const ssize_t written = ::write(m_file, bytes, count);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0) {
            fail(errno);
            return;
        }
        bytes += written;
        count -= static_cast<size_t>(written);
    }
}

void MailboxFile::fail(int error)
{
    reportUnwritten(QStringLiteral("can't be written: %1: %2").arg(m_path, qt_error_string(error)));
    if (m_file >= 0)
        ::close(m_file);
    m_file = -1;
}
