#include "save/mailbox_copy.h"

#include "app/problem_log.h"
#include "text/byte_search.h"
#include "text/latin1_line.h"
#include "text/line_bytes.h"
#include "text/mbox_separator.h"

#include <algorithm>
#include <cstring>
#include <utility>

bool MailboxCopy::open(ByteSource source)
{
    m_source = std::move(source);
    m_size = m_source.size();
    char bytes[byteOrderMark.size() + 5];
    const std::string_view start(bytes, static_cast<size_t>(m_source.read(0, bytes, sizeof bytes)));
    m_startsWithMark = startsWith(start, byteOrderMark) && startsWith(withoutMark(start), "From ");
    return startsWith(start, "From ");
}

CopyEnd MailboxCopy::copyTo(MailboxFile *target, const std::function<bool(qint64, qint64)> &goOn)
{
    m_target = target;
    m_block.resize(m_blockBytes);
    startGroup();
    bool stopped = false;
    while (!stopped && readBlock()) {
        stopped = !goOn(m_position, m_size);
        if (stopped)
            break;
        const size_t length = segmentLength();
        copySegment({m_block.data(), length});
        m_filled -= length;
        std::copy_n(m_block.data() + length, m_filled, m_block.data());
    }
    reserve(0);
    if (stopped) {
        takeBackGroup();
    } else {
        if (m_midLine)
            countLines(1);
        endLastGroup();
    }
    m_target->take(m_outSize);
    m_outSize = 0;
    m_target->append('\n'); // the last chunk goes out even where it is empty
    reportUnread(errorString());
    return endTally(stopped);
}

CopyEnd MailboxCopy::endTally(bool stopped)
{
    const bool failed = !errorString().isEmpty();
    if (!stopped && !failed && m_secondLine >= m_size)
        m_tally.dropOnlyLine();
    if (const bool stands = m_target->settle(); stopped || !stands) {
        const qint64 found = m_tally.found();
        m_tally = stands && m_firstLineEnd >= 0 ? m_firstLineTally : m_groupTally;
        m_tally.cutMessage();
        m_tally.setFound(found);
        return stands ? CopyEnd::Stopped : CopyEnd::Unwritable;
    }
    if (failed)
        m_tally.cutMessage();
    else
        m_tally.endMessage();
    return failed ? CopyEnd::Unreadable : CopyEnd::Whole;
}

// Fills the block up. False when all of the source has been copied.
bool MailboxCopy::readBlock()
{
    const qint64 got =
        m_source.read(m_read, m_block.data() + m_filled, static_cast<qint64>(m_block.size() - m_filled));
    m_filled += static_cast<size_t>(got);
    m_read += got;
    if (m_filled < m_block.size())
        m_size = m_read; // the end, be it earlier than expected
    return m_filled > 0;
}

// How much of the block is copied now: up to its last line feed; all of it at the end of the source. A line longer
// than the block goes piece by piece, cut so that no character and no CR LF is torn and its last piece still shows
// how it ends.
size_t MailboxCopy::segmentLength() const
{
    if (m_filled < m_block.size())
        return m_filled;
    const std::string_view block(m_block.data(), m_filled);
    if (const size_t feed = block.rfind('\n'); feed != std::string_view::npos)
        return feed + 1;
    constexpr size_t heldBack = 4;
    constexpr size_t continuations = 3;
    const auto isContinuation = [&](size_t at) { return (block[at] & 0xC0) == 0x80; };
    const size_t length = m_filled - heldBack;
    size_t first = length; // byte of the character at `length`
    while (first > length - continuations && isContinuation(first))
        --first;
    return isContinuation(first) ? length : first; // more of them belong to no character
}

// Room in the target for what so many bytes can become: a line that gets a ">" has at least six bytes, a chunk's line
// feed stands behind many lines, and the copy stores 16 bytes at a time, so needs 16 behind its end.
void MailboxCopy::reserve(size_t bytes)
{
    m_roomBytes = bytes + bytes / 4 + 64;
    m_out = m_target->room(m_roomBytes);
}

void MailboxCopy::copySegment(std::string_view segment)
{
    reserve(segment.size());
    size_t at = 0;
    while (at < segment.size()) {
        if (startsLine(segment, at))
            repairLine(segment, at);
        const bool mark = segment[at] == byteOrderMark[0] && startsLine(segment, at);
        const size_t run = mark ? 0 : copyRun(segment, at);
        at = run > 0 ? at + run : copyOddByte(segment, at);
    }
    rememberLastLine(segment);
    m_target->take(m_outSize);
    m_outSize = 0;
}

bool MailboxCopy::startsLine(std::string_view segment, size_t at) const
{
    return at == 0 ? !m_midLine : segment[at - 1] == '\n';
}

// Keeps "From " lines of a text part from passing for separators, and counts them all. "From - " lines are never
// touched.
void MailboxCopy::repairLine(std::string_view segment, size_t at)
{
    const std::string_view line = withoutMark(segment.substr(at));
    if (startsWith(line, "Content-Type: text/plain;") || startsWith(line, "Content-Type: text/html;"))
        m_inText = true;
    if (!startsWith(line, "From "))
        return;
    bool quoted = false;
    if (m_inText && !startsWith(line, "From - ")) {
        quoted = !previousCloses(segment, at);
        m_inText = quoted;
    }
    if (quoted)
        put('>');
    m_tally.takeFromLine(m_position, m_position == 0 || separates(segment, at), quoted);
}

// Whether a message begins at the line at `at` by the rule of the scan. The line may go on behind the segment.
bool MailboxCopy::separates(std::string_view segment, size_t at)
{
    const std::string_view line = segment.substr(at, segment.find('\n', at) - at);
    const auto next = m_position + static_cast<qint64>(line.size());
    return at + line.size() < segment.size() ? isMboxSeparator(line) : isMboxSeparator(line, &m_source, next);
}

// Copies up to a byte that needs a second look, a line that may need repair, or the chunk's end. Gives the bytes
// taken.
size_t MailboxCopy::copyRun(std::string_view segment, size_t at)
{
    const char *begin = segment.data() + at;
    char *out = m_out + m_outSize;
    CopiedText copied =
        (m_inText ? copyPlainText : copyPlainHeaders)(begin, segment.data() + segment.size(), out);
    const auto limit = static_cast<size_t>(m_firstLineEnd < 0 ? 1 : m_chunkLeft);
    if (copied.feeds >= limit)
        copied = cutBehindLine(copied, begin, out, limit);
    const auto taken = static_cast<size_t>(copied.in - begin);
    m_outSize += static_cast<size_t>(copied.out - out);
    m_position += static_cast<qint64>(taken);
    m_tally.addCharacters({0, static_cast<qint64>(copied.high)});
    countLines(static_cast<qint64>(copied.feeds));
    return taken;
}

// Copies a character that takes a second look: one above U+007F as Latin-1, a CR that no line feed follows.
size_t MailboxCopy::copyOddByte(std::string_view segment, size_t at)
{
    const std::string_view rest = segment.substr(at);
    size_t taken = 1;
    if (rest[0] == '\r') {
        put('\r');
    } else if (startsWith(rest, byteOrderMark) && startsLine(segment, at)) {
        taken = byteOrderMark.size();
    } else {
        const Latin1Character character = latin1Character(rest);
        if (character.taken == 0)
            return copyBadLine(segment, at);
        taken = character.taken;
        m_tally.addCharacters(character.counts);
        for (size_t i = 0; i < character.given; ++i)
            put(character.bytes[i]);
    }
    m_position += static_cast<qint64>(taken);
    return at + taken;
}

// Copies a line's rest that holds malformed UTF-8 as the toolkit decodes it. The line end is left to copyRun.
size_t MailboxCopy::copyBadLine(std::string_view segment, size_t at)
{
    const size_t end = std::min(segment.find('\n', at), segment.size());
    std::string_view rest = segment.substr(at, end - at);
    if (end < segment.size() && endsWith(rest, "\r"))
        rest.remove_suffix(1);
    QByteArray latin1;
    m_tally.addCharacters(appendAsLatin1(rest, false, &latin1));
    for (const char byte : latin1)
        put(byte);
    m_position += static_cast<qint64>(rest.size());
    return at + rest.size();
}

// Whether the line before the one at `at` ends a message: an empty line, or a closing MIME boundary (RFC 2046, 5.1.1).
bool MailboxCopy::previousCloses(std::string_view segment, size_t at) const
{
    if (at == 0)
        return m_closed;
    const size_t feed = at < 2 ? std::string_view::npos : segment.rfind('\n', at - 2);
    const bool whole = feed != std::string_view::npos || !m_midLine;
    std::string_view line = segment.substr(feed == std::string_view::npos ? 0 : feed + 1);
    line = line.substr(0, at - static_cast<size_t>(line.data() - segment.data()) - 1);
    if (whole)
        line = withoutMark(line);
    if (endsWith(line, "\r"))
        line.remove_suffix(1);
    const bool dashes = whole ? startsWith(line, "--") : m_lineDashes;
    return (whole && line.empty()) || (dashes && (endsWith(line, "--") || endsWith(line, "--\r")));
}

void MailboxCopy::rememberLastLine(std::string_view segment)
{
    const size_t feed = segment.rfind('\n');
    if (feed == segment.size() - 1) {
        m_closed = previousCloses(segment, segment.size());
        m_midLine = false;
        return;
    }
    if (feed != std::string_view::npos || !m_midLine) {
        const size_t start = feed == std::string_view::npos ? 0 : feed + 1;
        const std::string_view line = withoutMark(segment.substr(start));
        m_lineDashes = startsWith(line, "--");
        m_midLine = !line.empty(); // a mark alone, at the end of the file, is no line
    }
}

qint64 MailboxCopy::targetSize() const
{
    return m_target->size() + static_cast<qint64>(m_outSize);
}

void MailboxCopy::countLines(qint64 lines)
{
    if (lines > 0 && m_firstLineEnd < 0) {
        m_firstLineEnd = targetSize();
        m_firstLineTally = m_tally;
        m_secondLine = m_secondLine < 0 ? m_position : m_secondLine;
    }
    m_chunkLeft -= lines;
    if (m_chunkLeft > 0)
        return;
    m_chunkLeft = chunkLimit;
    m_groupLines += chunkLimit;
    if (m_groupLines == readLimit) {
        put('\n');
        startGroup();
    } else {
        m_chunkEnds.push_back(targetSize());
    }
}

void MailboxCopy::startGroup()
{
    m_target->take(m_outSize);
    m_outSize = 0;
    if (m_target->settle()) // where it failed, it has gone back to where the group before this one starts
        m_groupTally = m_tally;
    m_out = m_target->room(m_roomBytes);
    m_groupStart = targetSize();
    m_groupLines = 0;
    m_chunkLeft = chunkLimit;
    m_chunkEnds.clear();
    m_firstLineEnd = -1;
}

// The group is shorter than was assumed.
void MailboxCopy::endLastGroup()
{
    if (m_chunkEnds.empty())
        return;
    m_target->take(m_outSize);
    m_outSize = 0;
    m_target->insertLineFeeds(m_chunkEnds);
    m_out = m_target->room(m_roomBytes);
}

void MailboxCopy::takeBackGroup()
{
    m_target->truncate(m_firstLineEnd < 0 ? m_groupStart : m_firstLineEnd);
}
