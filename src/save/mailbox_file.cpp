#include "save/mailbox_file.h"

#include "app/problem_log.h"
#include "platform/file_handle.h"
#include "save/bundle_place.h"

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
constexpr size_t directBytes = 64 * 1024; // so many are written at once, and not gathered first
constexpr qint64 moveBytes = 256 * 1024;
constexpr mode_t newFileMode = 0666;
} // namespace

void MailboxFile::open(const QString &path, const FinderCodes &codes)
{
    close();
    m_path = QDir::cleanPath(path); // "Mail//Inbox.mbox" comes of a folder without a name
    m_error.clear();
    m_size = m_start = m_settled = 0;
    m_isOpen = true;
    if (m_mode == SaveMode::CountOnly)
        return;
    if (const int error = bundlePlace.makeFolder(QFileInfo(path).path()))
        return fail(error);
    const QByteArray name = QFile::encodeName(path);
    m_file = ::open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, newFileMode);
    if (m_file >= 0)
        setFinderInfo(path, codes);
    else if (errno == EEXIST)
        m_file = ::open(name.constData(), O_RDWR | O_CLOEXEC);
    struct stat info = {};
    if (m_file < 0 || ::fstat(m_file, &info) != 0)
        return fail(errno);
    m_size = m_start = m_settled = info.st_size;
}

void MailboxFile::append(std::string_view bytes)
{
    if (bytes.size() < directBytes) {
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
    if (!m_isOpen)
        return;
    if (m_file >= 0 && ::ftruncate(m_file, size) != 0)
        return fail(errno);
    m_size = size;
    m_settled = std::min(m_settled, size);
}

bool MailboxFile::settle()
{
    flush();
    // Closing a copy of the descriptor asks the system as closing the file does, while it can still be cut back.
    const int copy = m_file >= 0 && m_size > m_settled ? ::fcntl(m_file, F_DUPFD_CLOEXEC, 0) : -1;
    if (copy >= 0 && ::close(copy) != 0)
        fail(errno);
    if (m_isOpen)
        m_settled = m_size;
    return m_isOpen;
}

qint64 MailboxFile::takeAddedBytes()
{
    const qint64 added = m_settled - m_start;
    m_start = m_settled;
    return added;
}

void MailboxFile::close()
{
    settle();
    const int file = m_file;
    m_file = -1;
    if (file >= 0 && ::close(file) != 0)
        fail(errno);
    m_isOpen = false;
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

// Moves bytes of the file to a place further on, which they may overlap: from their end on.
void MailboxFile::moveBack(qint64 from, qint64 to, qint64 count)
{
    if (m_file < 0)
        return;
    std::vector<char> block(static_cast<size_t>(std::min(moveBytes, count)));
    while (m_file >= 0 && count > 0) {
        const qint64 length = std::min(moveBytes, count);
        count -= length;
        const auto bytes = static_cast<size_t>(length);
        const ssize_t got = readAt(m_file, block.data(), bytes, from + count);
        if (got != length)
            return fail(got < 0 ? errno : EIO);
        write(block.data(), bytes, to + count);
    }
}

void MailboxFile::insertLineFeeds(const std::vector<qint64> &places)
{
    flush();
    qint64 end = m_size;
    auto behind = static_cast<qint64>(places.size());
    m_size += behind;
    for (auto place = places.crbegin(); place != places.crend(); ++place, --behind) {
        moveBack(*place, *place + behind, end - *place);
        write("\n", 1, *place + behind - 1);
        end = *place;
    }
}

void MailboxFile::fail(int error)
{
    m_error = Problem::tr("can't be written: %1: %2").arg(m_path, qt_error_string(error));
    reportUnwritten(m_error);
    if (m_file >= 0 && ::ftruncate(m_file, m_settled) != 0)
        reportUnwritten(Problem::tr("ends within a message: %1").arg(m_path));
    if (m_file >= 0)
        ::close(m_file);
    m_file = -1;
    m_isOpen = false;
}
