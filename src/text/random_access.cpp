#include "text/random_access.h"

#include "platform/opened_file.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

qint64 MemoryBytes::read(qint64 position, char *to, qint64 count)
{
    if (position < 0 || position >= size() || count <= 0)
        return 0;
    const qint64 taken = qMin(count, size() - position);
    std::memcpy(to, m_bytes.data() + position, static_cast<size_t>(taken));
    return taken;
}

FileBytes::~FileBytes()
{
    if (m_file >= 0)
        ::close(m_file);
}

bool FileBytes::open(const QString &path)
{
    // Not blocking: a pipe in the file's place must not hang the program.
    m_file = ::open(path.toUtf8().constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (m_file < 0)
        m_error = QStringLiteral("can't be opened: %1: %2").arg(path, qt_error_string(errno));
    m_size = m_file < 0 ? 0 : QFileInfo(path).size();
    return m_file >= 0;
}

qint64 FileBytes::read(qint64 position, char *to, qint64 count)
{
    qint64 done = 0;
    while (position >= 0 && done < count) {
        const ssize_t taken = readAt(m_file, to + done, static_cast<size_t>(count - done), position + done);
        if (taken <= 0)
            break;
        done += taken;
    }
    return done;
}

std::string_view ReadBuffer::from(qint64 position, size_t atLeast)
{
    const qint64 end = m_start + static_cast<qint64>(m_filled);
    const bool goesOn = position >= m_start && position <= end;
    if (!goesOn || end - position < static_cast<qint64>(atLeast)) {
        m_blockBytes = goesOn ? std::min(2 * m_blockBytes, largestBlock) : smallestBlock;
        const size_t wanted = std::max(std::min(atLeast, largestBlock), m_blockBytes);
        if (m_block.size() < wanted)
            m_block.resize(wanted);
        m_start = position;
        m_filled = static_cast<size_t>(m_source->read(position, m_block.data(), static_cast<qint64>(wanted)));
    }
    const auto skipped = static_cast<size_t>(position - m_start);
    return {m_block.data() + skipped, m_filled - skipped};
}
