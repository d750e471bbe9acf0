#include "text/line_reader.h"

#include "text/byte_search.h"

#include <algorithm>
#include <cstring>
#include <utility>

bool LineReader::open(ByteSource source)
{
    m_source = std::move(source);
    m_blockStart = 0;
    m_filled = m_next = m_lostCr = 0;
    return m_source.isOpen();
}

void LineReader::enlargeBlock(size_t bytes)
{
    std::unique_ptr<char[]> block(new char[bytes]); // not cleared as a vector's bytes are
    std::copy_n(m_block.get(), m_filled, block.get());
    m_block = std::move(block);
    m_capacity = bytes;
}

// Moves what has not been read to the front of the block and fills up behind it.
bool LineReader::readBlock()
{
    m_lostCr = 0;
    m_filled -= m_next;
    if (m_filled > 0)
        std::memmove(m_block.get(), m_block.get() + m_next, m_filled);
    m_blockStart += static_cast<qint64>(m_next);
    m_next = 0;
    const qint64 end = m_blockStart + static_cast<qint64>(m_filled);
    if (end >= m_source.size())
        return false;
    if (m_capacity < m_blockBytes)
        enlargeBlock(m_blockBytes);
    else if (m_filled == m_capacity)
        enlargeBlock(m_capacity * 2);
    const qint64 got = m_source.read(end, &m_block[m_filled], static_cast<qint64>(m_capacity - m_filled));
    if (got == 0)
        return false;
    m_filled += static_cast<size_t>(got);
    return true;
}

// Gives the last line back the CR that it was delivered without.
void LineReader::restoreLine()
{
    if (m_lostCr > 0)
        m_block[m_lostCr - 1] = '\r';
    m_lostCr = 0;
}

// A whole line of `length` bytes.
std::string_view LineReader::takeLine(size_t length)
{
    char *start = m_block.get() + m_next;
    m_next += length;
    if (m_mode == Mode::Text && length > 1 && start[length - 2] == '\r') {
        // The CR is overwritten by the line feed in this view; restoreLine puts it back.
        --length;
        m_lostCr = m_next - 1;
        m_block[m_lostCr - 1] = '\n';
    }
    return {start, length};
}

// The start of a line: not so much that what follows would be read as something else.
std::string_view LineReader::takePiece(size_t length)
{
    const char *start = m_block.get() + m_next;
    for (size_t back = 1; back <= 3; ++back) {
        const auto byte = static_cast<unsigned char>(start[length - back]);
        if (byte >= 0xC0 || (byte == '\r' && back == 1))
            length -= back; // the first byte of a character, or of a CR LF
        if (byte < 0x80 || byte >= 0xC0)
            break;
    }
    m_next += length;
    return {start, length};
}

std::optional<std::string_view> LineReader::readLine(size_t most)
{
    restoreLine();
    size_t searched = 0;
    for (;;) {
        const char *start = m_block.get() + m_next;
        const size_t available = std::min(most, m_filled - m_next);
        const void *feed =
            available > searched ? std::memchr(start + searched, '\n', available - searched) : nullptr;
        if (feed)
            return takeLine(static_cast<size_t>(static_cast<const char *>(feed) - start) + 1);
        if (available == most)
            return takePiece(most);
        searched = available;
        if (!readBlock()) {
            const std::string_view rest(m_block.get() + m_next, m_filled - m_next);
            m_next = m_filled;
            return rest.empty() ? std::nullopt : std::make_optional(rest);
        }
    }
}

void LineReader::skipLine()
{
    restoreLine();
    while (fill(1)) {
        const char *start = m_block.get() + m_next;
        const void *feed = std::memchr(start, '\n', m_filled - m_next);
        m_next = feed ? m_next + static_cast<size_t>(static_cast<const char *>(feed) - start) + 1 : m_filled;
        if (feed)
            return;
    }
}

std::string_view LineReader::peek(size_t count)
{
    fill(count);
    return {m_block.get() + m_next, std::min(count, m_filled - m_next)};
}

std::string_view LineReader::readLines()
{
    for (;;) {
        const std::string_view rest(m_block.get() + m_next, m_filled - m_next);
        const bool atFileEnd = position() + static_cast<qint64>(rest.size()) >= size();
        const size_t feed = atFileEnd || rest.size() > longestLine ? rest.size() - 1 : rest.rfind('\n');
        if (!rest.empty() && feed != std::string_view::npos) {
            m_next += feed + 1;
            return rest.substr(0, feed + 1);
        }
        if (atFileEnd || !readBlock()) {
            m_next = m_filled;
            return rest;
        }
    }
}

// Makes `bytes` bytes from the next one on available, if the file has them.
bool LineReader::fill(size_t bytes)
{
    while (m_filled - m_next < bytes)
        if (!readBlock())
            return false;
    return true;
}

bool LineReader::nextIsFold()
{
    std::string_view next = peek(4);
    if (next.substr(0, 3) == "\xEF\xBB\xBF")
        next.remove_prefix(3);
    return !next.empty() && (next[0] == ' ' || next[0] == '\t');
}

bool LineReader::skipToLineStart(LineStarts starts)
{
    if (!fill(1))
        return false;
    if (isLineStart(m_block[m_next], starts))
        return true;
    for (;;) {
        const char *end = m_block.get() + m_filled;
        const char *found = findLineStart(m_block.get() + m_next, end, starts);
        m_next = static_cast<size_t>(found - m_block.get());
        if (found < end)
            return true;
        // Remember whether the block ends in a line feed: the next block may begin with a line's start.
        const bool hadFeed = m_block[m_filled - 1] == '\n';
        if (!readBlock())
            return false;
        if (hadFeed && isLineStart(m_block[m_next], starts))
            return true;
    }
}

bool LineReader::skipToLineWith(std::string_view text)
{
    if (!fill(1))
        return false;
    constexpr size_t mostKept = size_t{1} << 20;
    qint64 line = position();
    size_t searched = 0; // bytes from m_next on in which no find starts
    for (;;) {
        const std::string_view rest(m_block.get() + m_next, m_filled - m_next);
        const size_t at = findText(rest, text, searched);
        const size_t feed = rest.rfind('\n', at);
        if (feed != std::string_view::npos)
            line = position() + static_cast<qint64>(feed) + 1;
        if (at != std::string_view::npos) {
            seek(line);
            return true;
        }
        const size_t searchedTo = rest.size() - std::min(rest.size(), text.size() - 1);
        const size_t lineBegin = feed + 1; // none: npos + 1 is 0
        const size_t kept = rest.size() - lineBegin > mostKept ? searchedTo : lineBegin;
        m_next += kept;
        searched = std::max(searchedTo, kept) - kept;
        if (!readBlock()) {
            m_next = m_filled;
            return false;
        }
    }
}

void LineReader::seek(qint64 position)
{
    restoreLine();
    position = std::max<qint64>(0, position);
    const qint64 ahead = position - m_blockStart;
    if (ahead >= 0 && ahead <= static_cast<qint64>(m_filled)) {
        m_next = static_cast<size_t>(ahead);
        return;
    }
    m_blockStart = position;
    m_filled = m_next = 0;
}

bool LineReader::atEnd()
{
    return m_next == m_filled && !readBlock();
}

QString lineText(std::string_view line)
{
    return wholeLineText(line.substr(0, line.find('\0')));
}

QString wholeLineText(std::string_view line)
{
    return QString::fromUtf8(line.data(), static_cast<int>(line.size()));
}
