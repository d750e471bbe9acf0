#pragma once

#include "platform/byte_source.h"
#include "text/byte_search.h"

#include <QString>

#include <memory>
#include <optional>
#include <string_view>

/// Reads a file, or any other source of bytes, line by line in blocks, never holding it whole. A line runs through
/// its line feed, or to the end of the source; it may be of any length and hold zero bytes. Reading ends where the
/// source ends or fails; errorString() tells which.
class LineReader
{
public:
    /// In text mode a CR directly before the line feed is not delivered; positions stay those of the file.
    enum class Mode { Bytes, Text };

    /// Without a source yet.
    explicit LineReader(Mode mode) : m_mode(mode) {}

    /// Opens a regular file. False if that fails; errorString() then names the path.
    bool open(const QString &path) { return open(ByteSource::ofFile(path)); }
    /// Reads a source from its start; false if it could not be opened.
    bool open(ByteSource source);

    /// The next line, line feed included, or nothing at the end of the file. Of a line longer than `most` bytes (at
    /// least shortestPiece) about as many come, and the next call goes on behind them; no CR LF and no character of
    /// UTF-8 is torn. The view is valid until the next call.
    std::optional<std::string_view> readLine(size_t most = std::string_view::npos);
    static constexpr size_t shortestPiece = 8;
    /// Passes over the rest of the line, however long.
    void skipLine();
    /// The bytes to come, up to `count` of them, without going on. Valid until the next call.
    std::string_view peek(size_t count);
    /// As many whole lines as one block holds, as they stand in the file whatever the mode; only the last line of
    /// the file may lack its line feed. Empty at the end of the file. A line longer than `longestLine` bytes comes
    /// in pieces. The view is valid until the next call.
    std::string_view readLines();
    static constexpr size_t longestLine = size_t(64) << 20;

    /// True if the next line, read as text, starts with a blank or a tab: a folded header line.
    bool nextIsFold();
    /// Passes over lines that don't start with a byte of `starts`, as fast as the machine can look for them.
    /// False if the file ends first.
    bool skipToLineStart(LineStarts starts);
    /// Passes over lines that don't contain `text` (no line feed in it), likewise. A long line is read twice rather
    /// than kept.
    bool skipToLineWith(std::string_view text);

    /// Bytes from the start of the file to the next byte that readLine will look at.
    qint64 position() const { return m_blockStart + static_cast<qint64>(m_next); }
    /// Goes to a byte position; one outside the file reads as its end.
    void seek(qint64 position);
    /// True if no byte is left; may read the next block to know.
    bool atEnd();
    /// The file's size in bytes when it was opened.
    qint64 size() const { return m_source.size(); }
    /// Why the file could not be opened, or not be read to its end; empty where nothing went wrong.
    const QString &errorString() const { return m_source.errorString(); }
    /// What is read.
    const ByteSource &source() const { return m_source; }

    /// The bytes read at a time, 256 KiB unless told; takes effect before the first read.
    void setBlockBytes(size_t bytes) { m_blockBytes = bytes; }

private:
    bool readBlock();
    void enlargeBlock(size_t bytes);
    bool fill(size_t bytes);
    void restoreLine();
    std::string_view takeLine(size_t length);
    std::string_view takePiece(size_t length);

    Mode m_mode;
    ByteSource m_source;
    size_t m_blockBytes = 256 * 1024;
    std::unique_ptr<char[]> m_block; ///< bytes of the file from m_blockStart on; grows only for a longer line
    size_t m_capacity = 0;           ///< bytes that m_block has room for
    qint64 m_blockStart = 0;
    size_t m_filled = 0; ///< valid bytes in m_block
    size_t m_next = 0;   ///< index of the next byte
    size_t m_lostCr = 0; ///< index behind the CR that the last line has lost; 0: none
};

/// A line as text: its bytes up to the first zero byte, read as UTF-8 as QString does (a byte order mark at the
/// start of the line goes, an invalid byte becomes U+FFFD).
QString lineText(std::string_view line);
/// The same without the stop at a zero byte.
QString wholeLineText(std::string_view line);
