#include "save/exact_mailbox.h"

#include "platform/ahead_queue.h"
#include "save/exact_text.h"
#include "text/byte_search.h"
#include "text/line_bytes.h"
#include "text/mbox_separator.h"

#include <algorithm>
#include <vector>

namespace
{
constexpr std::string_view separatorStart = "From ";
constexpr std::string_view separatorBehindFeed = "\nFrom ";
constexpr size_t probeBytes = 64 * 1024;
constexpr size_t pieceBytes = 256 * 1024;

/// A stretch of a mailbox, whole lines where they are no longer than that. Empty at the end, and where reading failed.
struct Piece {
    qint64 start = 0; ///< in the source, bytes
    std::string_view bytes;
    bool beginsMessage = false;
    qint64 messages = 0;  ///< that begin in it
    qint64 strays = 0;    ///< other lines that start with "From "
    bool isPlain = false; ///< goes into the target as it stands
};

// Cuts a mailbox into pieces. A piece ends before the last message that begins in its block, so that the next one begins
// with it; only a message longer than a block goes on in the pieces behind.
class PieceReader
{
public:
    explicit PieceReader(ByteSource *source) : m_source(source) {}

    /// The next piece, in a block for it.
    Piece read(std::vector<char> *block)
    {
        block->resize(std::min(pieceBytes, static_cast<size_t>(m_source->size())));
        const qint64 got = m_source->read(m_position, block->data(), static_cast<qint64>(block->size()));
        const bool failed = !m_source->errorString().isEmpty();
        const bool isLast = !failed && m_position + got >= m_source->size();
        Piece piece;
        piece.start = m_position;
        piece.beginsMessage = m_isAtMessage;
        piece.bytes = {block->data(), static_cast<size_t>(got)};
        if (m_position == 0)
            piece.bytes = withoutMark(piece.bytes);
        piece.start += got - static_cast<qint64>(piece.bytes.size());
        const size_t feed = piece.bytes.rfind('\n');
        if (!isLast && feed != std::string_view::npos)
            piece.bytes = piece.bytes.substr(0, feed + 1);
        const Piece withoutLast = countLines(&piece);
        m_isAtMessage = !isLast && !withoutLast.bytes.empty();
        if (m_isAtMessage)
            piece = withoutLast;
        else if (failed)
            piece.bytes = {};
        m_position = piece.start + static_cast<qint64>(piece.bytes.size());
        m_atLineStart = !piece.bytes.empty() && piece.bytes.back() == '\n';
        piece.isPlain = m_atLineStart && !holdsCrLf(piece.bytes);
        return piece;
    }

private:
    // Counts the lines that start with "From ". Gives the piece without the last message that begins in it, empty where
    // none does behind its start.
    Piece countLines(Piece *piece)
    {
        Piece withoutLast;
        const std::string_view bytes = piece->bytes;
        for (size_t at = m_atLineStart && startsWith(bytes, separatorStart) ? 0 : nextLine(bytes, 0);
             at < bytes.size(); at = nextLine(bytes, at)) {
            if (!m_isFirst &&
                !isSeparator(bytes.substr(at), piece->start + static_cast<qint64>(bytes.size()))) {
                ++piece->strays;
                continue;
            }
            m_isFirst = false;
            withoutLast = *piece;
            withoutLast.bytes = bytes.substr(0, at);
            piece->beginsMessage = piece->beginsMessage || at == 0;
            ++piece->messages;
        }
        return withoutLast;
    }

    // `text` begins with the line, which goes on at `next` in the source where it holds no line feed.
    bool isSeparator(std::string_view text, qint64 next)
    {
        const size_t feed = text.find('\n');
        return feed == std::string_view::npos ? isMboxSeparator(text, m_source, next)
                                              : isMboxSeparator(text.substr(0, feed));
    }

    // The next line that starts with "From " behind the one at `at`.
    static size_t nextLine(std::string_view bytes, size_t at)
    {
        const size_t found = findText(bytes, separatorBehindFeed, at);
        return found == std::string_view::npos ? bytes.size() : found + 1;
    }

    // Most mailboxes hold no CR at all, and one byte is looked for in half the time.
    static bool holdsCrLf(std::string_view bytes)
    {
        const size_t found = bytes.find('\r');
        return found != std::string_view::npos && findText(bytes, "\r\n", found) != std::string_view::npos;
    }

    ByteSource *m_source;
    qint64 m_position = 0;
    bool m_atLineStart = true;
    bool m_isAtMessage = true; ///< where the next piece begins a message does, also if it can't be read
    bool m_isFirst = true;     ///< the first line of a mailbox begins a message whatever it holds
};

/// A piece and the memory that it stands in.
struct ReadPiece {
    Piece piece;
    std::vector<char> block;
};

class Copy
{
public:
    Copy(ByteSource *source, MailboxFile *target)
        : m_source(source),
          m_target(target),
          m_text([target](std::string_view bytes) { target->append(bytes); }, ExactText::Quoting::None),
          m_messageStart(target->size()),
          m_pieces([source](AheadQueue<ReadPiece> *pieces) { readAll(source, pieces); })
    {
    }

    ExactMailboxCopy run(const std::function<bool(qint64)> &goOn)
    {
        const Piece *piece = &m_pieces.next()->piece;
        for (; !piece->bytes.empty(); piece = &m_pieces.next()->piece) {
            if (!goOn(piece->start)) {
                m_result.end = ExactEnd::Stopped;
                break;
            }
            take(*piece);
        }
        m_pieces.stop();
        if (m_result.end == ExactEnd::Whole && !m_source->errorString().isEmpty())
            m_result.end = ExactEnd::Unreadable;
        finish(*piece);
        return m_result;
    }

private:
    // Looking through a piece takes about as long as the system takes to write another. The last one is empty.
    static void readAll(ByteSource *source, AheadQueue<ReadPiece> *pieces)
    {
        PieceReader reader(source);
        while (ReadPiece *next = pieces->toFill()) {
            next->piece = reader.read(&next->block);
            const bool isLast = next->piece.bytes.empty();
            pieces->give();
            if (isLast)
                return;
        }
    }

    void take(const Piece &piece)
    {
        if (piece.beginsMessage) {
            if (m_target->settle()) {
                m_settledMessages = m_result.written;
                m_settledStrays = m_result.strays;
                m_settledOffset = piece.start;
            }
            m_messageStart = m_target->size();
            m_straysBefore = m_result.strays;
            m_result.cutOffset = piece.start;
        }
        if (piece.isPlain && m_endsLine)
            m_target->append(piece.bytes);
        else
            m_text.take(piece.bytes);
        m_endsLine = piece.bytes.back() == '\n';
        m_result.written += piece.messages;
        m_result.strays += piece.strays;
    }

    // `rest`: the piece that was not taken, empty where the source has ended. What is not whole goes: the message in
    // work, with the strays in it.
    void finish(const Piece &rest)
    {
        m_result.found = m_result.written;
        if (m_result.end == ExactEnd::Whole) {
            if (!m_endsLine)
                m_text.end();
        } else if (rest.beginsMessage) {
            ++m_result.found;
            m_result.cutOffset = rest.start;
        } else {
            m_target->truncate(m_messageStart);
            m_result.strays = m_straysBefore;
            m_result.written = std::max<qint64>(0, m_result.written - 1);
        }
        if (m_target->settle())
            return;
        // The file was cut back to where it was settled last; what came behind was only counted.
        m_result.end = ExactEnd::Unwritable;
        m_result.written = m_settledMessages;
        m_result.strays = m_settledStrays;
        m_result.cutOffset = m_settledOffset;
    }

    ByteSource *m_source;
    MailboxFile *m_target;
    ExactText m_text;
    bool m_endsLine = true; ///< what was taken ends with a line feed
    qint64 m_messageStart;  ///< in the target, of the last message that began a piece, bytes
    qint64 m_straysBefore = 0;
    qint64 m_settledMessages = 0; ///< that no later failure can take away
    qint64 m_settledStrays = 0;
    qint64 m_settledOffset = 0; ///< in the source, behind them, bytes
    ExactMailboxCopy m_result;
    AheadQueue<ReadPiece> m_pieces;
};
} // namespace

ExactMailboxCopy probeMailbox(ByteSource *source)
{
    ExactMailboxCopy probe;
    std::vector<char> block(probeBytes);
    bool isFirst = true;
    for (qint64 at = 0; at < source->size() && probe.found == 0;) {
        const qint64 got = source->read(at, block.data(), static_cast<qint64>(block.size()));
        const std::string_view bytes(block.data(), static_cast<size_t>(got));
        if (isFirst && !startsWith(withoutMark(bytes), separatorStart))
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
    if (probe.found == 0 && !source->errorString().isEmpty())
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
