#include "save/exact_mailbox.h"

#include "save/exact_text.h"
#include "text/byte_search.h"
#include "text/mbox_separator.h"

#include <algorithm>
#include <vector>

namespace
{
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view separatorStart = "From ";
constexpr std::string_view separatorBehindFeed = "\nFrom ";
constexpr size_t blockBytes = 256 * 1024;
constexpr qint64 settleBytes = 1024 * 1024;

bool startsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

class Copy
{
public:
    Copy(ByteSource *source, MailboxFile *target)
        : m_source(source),
          m_target(target),
          m_text(target, ExactText::Quoting::None),
          m_block(blockBytes),
          m_messageStart(target->size())
    {
    }

    ExactMailboxCopy run(const std::function<bool(qint64)> &goOn)
    {
        fill();
        if (startsWith({m_block.data(), m_filled}, byteOrderMark))
            drop(byteOrderMark.size());
        while (m_result.end == ExactEnd::Whole && fill()) {
            if (!goOn(m_position))
                m_result.end = ExactEnd::Stopped;
            else
                takeBlock();
        }
        finish();
        return m_result;
    }

private:
    bool fill()
    {
        const qint64 at = m_position + static_cast<qint64>(m_filled);
        m_filled += static_cast<size_t>(
            m_source->read(at, m_block.data() + m_filled, static_cast<qint64>(m_block.size() - m_filled)));
        return m_filled > 0;
    }

    void drop(size_t bytes)
    {
        m_filled -= bytes;
        m_position += static_cast<qint64>(bytes);
        std::copy_n(m_block.data() + bytes, m_filled, m_block.data());
    }

    // Whole lines of the block; of a line longer than the block as much as there is.
    void takeBlock()
    {
        std::string_view block(m_block.data(), m_filled);
        const bool atEnd = m_position + static_cast<qint64>(m_filled) >= m_source->size();
        const size_t feed = block.rfind('\n');
        if (!atEnd && feed != std::string_view::npos && m_source->errorString().isEmpty())
            block = block.substr(0, feed + 1);
        size_t copied = 0;
        for (size_t at = m_atLineStart && startsWith(block, separatorStart) ? 0 : nextLine(block, 0);
             at < block.size(); at = nextLine(block, at)) {
            const std::string_view line = block.substr(at, block.find('\n', at) - at);
            m_text.take(block.substr(copied, at - copied));
            copied = at;
            takeFromLine(line, m_position + static_cast<qint64>(at));
        }
        m_text.take(block.substr(copied));
        m_atLineStart = block.back() == '\n';
        drop(block.size());
    }

    // The next line that starts with "From " behind the one at `at`.
    static size_t nextLine(std::string_view block, size_t at)
    {
        const size_t found = findText(block, separatorBehindFeed, at);
        return found == std::string_view::npos ? block.size() : found + 1;
    }

    void takeFromLine(std::string_view line, qint64 offset)
    {
        if (m_result.found > 0 && !isMboxSeparator(line)) {
            ++m_result.strays;
            return;
        }
        if (m_target->unsettledBytes() >= settleBytes && m_target->settle()) {
            m_settledMessages = m_result.found;
            m_settledStrays = m_result.strays;
        }
        ++m_result.found;
        m_messageStart = m_target->size();
        m_straysBefore = m_result.strays;
        m_result.cutOffset = offset;
    }

    // What is not whole goes: the message in work, with the strays in it.
    void finish()
    {
        if (m_result.end == ExactEnd::Whole && !m_source->errorString().isEmpty())
            m_result.end = ExactEnd::Unreadable;
        m_result.written = m_result.found;
        if (m_result.end == ExactEnd::Whole) {
            m_text.end();
        } else {
            m_target->truncate(m_messageStart);
            m_result.strays = m_straysBefore;
            m_result.written = std::max<qint64>(0, m_result.found - 1);
        }
        if (m_target->settle())
            return;
        // The file was cut back to where it was settled last; what came behind was only counted.
        m_result.end = ExactEnd::Unwritable;
        m_result.written = m_settledMessages;
        m_result.strays = m_settledStrays;
    }

    ByteSource *m_source;
    MailboxFile *m_target;
    ExactText m_text;
    std::vector<char> m_block;
    size_t m_filled = 0;
    qint64 m_position = 0; ///< of the block in the source
    bool m_atLineStart = true;
    qint64 m_messageStart; ///< of the message in work in the target, bytes
    qint64 m_straysBefore = 0;
    qint64 m_settledMessages = 0; ///< that no later failure can take away
    qint64 m_settledStrays = 0;
    ExactMailboxCopy m_result;
};
} // namespace

ExactMailboxCopy probeMailbox(ByteSource *source)
{
    ExactMailboxCopy probe;
    std::vector<char> block(blockBytes);
    bool isFirst = true;
    for (qint64 at = 0; at < source->size() && probe.found == 0;) {
        const qint64 got = source->read(at, block.data(), static_cast<qint64>(block.size()));
        const std::string_view bytes(block.data(), static_cast<size_t>(got));
        if (isFirst &&
            !startsWith(startsWith(bytes, byteOrderMark) ? bytes.substr(byteOrderMark.size()) : bytes,
                        separatorStart))
            break;
        isFirst = false;
        const size_t feed = bytes.find('\n');
        if (feed != std::string_view::npos) {
            probe.found = at + static_cast<qint64>(feed) + 1 < source->size() ? 1 : 0;
            break;
        }
        if (got == 0)
            break;
        at += got;
    }
    if (!source->errorString().isEmpty())
        probe.end = ExactEnd::Unreadable;
    else if (isFirst)
        probe.end = ExactEnd::NoMailbox;
    return probe;
}

ExactMailboxCopy copyMailboxExactly(ByteSource *source, MailboxFile *target,
                                    const std::function<bool(qint64)> &goOn)
{
    return Copy(source, target).run(goOn);
}
