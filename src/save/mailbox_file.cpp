#include "save/mailbox_file.h"

#include "app/problem_log.h"
#include "platform/file_handle.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr size_t bufferBytes = 512 * 1024;
constexpr qint64 moveBytes = 256 * 1024;
constexpr mode_t newFileMode = 0666;
} // namespace

void MailboxFile::open(const QString &path, const FinderCodes &codes)
{
    close();
    m_path = path;
    m_size = 0;
    QDir().mkpath(QFileInfo(path).path());
    const QByteArray name = QFile::encodeName(path);
    m_file = ::open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, newFileMode);
    if (m_file >= 0)
        setFinderInfo(path, codes);
    else if (errno == EEXIST)
        m_file = ::open(name.constData(), O_RDWR | O_CLOEXEC);
    struct stat info = {};
    if (m_file < 0)
        fail(errno);
    else if (::fstat(m_file, &info) == 0)
        m_size = info.st_size;
}

void MailboxFile::append(std::string_view bytes)
{
    if (bytes.size() < bufferBytes) {
        std::copy(bytes.begin(), bytes.end(), room(bytes.size()));
        take(bytes.size());
        return;
    }
    flush();
    write(bytes.data(), bytes.size(), m_size);
    m_size += static_cast<qint64>(bytes.size());
}

char *MailboxFile::room(size_t bytes)
{
    if (m_filled > 0 && m_filled + bytes > static_cast<size_t>(m_buffer.size()))
        flush();
    if (bytes > static_cast<size_t>(m_buffer.size()))
        m_buffer.resize(static_cast<int>(std::max(bytes, bufferBytes)));
    return m_buffer.data() + m_filled;
}

void MailboxFile::take(size_t bytes)
{
    m_filled += bytes;
    m_size += static_cast<qint64>(bytes);
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
    write(m_buffer.constData(), m_filled, m_size - static_cast<qint64>(m_filled));
    m_filled = 0;
}

void MailboxFile::write(const char *bytes, size_t count, qint64 position)
{
    while (m_file >= 0 && count > 0) {
        const ssize_t written = ::pwrite(m_file, bytes, count, position);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0) {
            fail(errno);
            return;
        }
        bytes += written;
        position += written;
        count -= static_cast<size_t>(written);
    }
}

// Moves bytes of the file to a place that they may overlap.
void MailboxFile::move(qint64 from, qint64 to, qint64 count)
{
    std::vector<char> block(static_cast<size_t>(std::min(moveBytes, count)));
    while (m_file >= 0 && count > 0) {
        const qint64 length = std::min(moveBytes, count);
        const qint64 at = to > from ? count - length : 0;
        const auto bytes = static_cast<size_t>(length);
        const ssize_t got = readAt(m_file, block.data(), bytes, from + at);
        if (got != length)
            return fail(got < 0 ? errno : EIO);
        write(block.data(), bytes, to + at);
        count -= length;
        if (to < from) {
            from += length;
            to += length;
        }
    }
}

void MailboxFile::insertLineFeeds(const std::vector<qint64> &places)
{
    flush();
    qint64 end = m_size;
    auto behind = static_cast<qint64>(places.size());
    m_size += behind;
    for (auto place = places.crbegin(); place != places.crend(); ++place, --behind) {
        move(*place, *place + behind, end - *place);
        write("\n", 1, *place + behind - 1);
        end = *place;
    }
}

void MailboxFile::removeBytes(const std::vector<qint64> &places)
{
    flush();
    qint64 removed = 0;
    for (size_t i = 0; i < places.size(); ++i, ++removed) {
        const qint64 end = i + 1 < places.size() ? places[i + 1] : m_size;
        move(places[i] + 1, places[i] - removed, end - places[i] - 1);
    }
    truncate(m_size - removed);
}

void MailboxFile::fail(int error)
{
    reportUnwritten(QStringLiteral("can't be written: %1: %2").arg(m_path, qt_error_string(error)));
    if (m_file >= 0)
        ::close(m_file);
    m_file = -1;
}
