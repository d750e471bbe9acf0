#pragma once

#include "platform/byte_source.h"
#include "save/mailbox_file.h"
#include "save/mailbox_tally.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <string_view>
#include <vector>

/// How the copy of a mailbox ended.
enum class CopyEnd {
    Whole,
    Stopped,    ///< by the user
    Unreadable, ///< the source failed; what was read before is written
    Unwritable  ///< the target failed; the lines of the group in work are not there
};

/// Copies one mailbox file (mbox, RFC 4155) into a target mailbox: UTF-8 becomes Latin-1, CR LF becomes LF, a "From " line
/// of a text part that would pass for a separator gets a ">". Each full group of readLimit lines gets one line feed behind
/// it; the last, shorter group one behind each chunk of chunkLimit lines, and one at its end. Runs of bytes that nothing
/// changes are written as they were read; memory stays bounded whatever the file's size.
class MailboxCopy
{
public:
    static constexpr qint64 readLimit = 1000000; ///< lines of a group
    static constexpr qint64 chunkLimit = 100000; ///< lines of a chunk in the last group

    MailboxCopy() = default;
    MailboxCopy(const MailboxCopy &) = delete;
    MailboxCopy &operator=(const MailboxCopy &) = delete;

    /// Opens the mailbox read-only. False if that fails, which errorString() then tells, or if its first five bytes
    /// are not "From ".
    bool open(const QString &path) { return open(ByteSource::ofFile(path)); }
    bool open(ByteSource source);
    /// Why the mailbox could not be opened or read; empty where nothing went wrong.
    const QString &errorString() const { return m_source.errorString(); }
    /// Copies all of it. `goOn` gets the bytes read so far and the source's size, often; where it gives false,
    /// the lines of the group in work are taken back but for its first one. What is read when the source
    /// can't be read to its end is written, and the problem log gets the reason.
    CopyEnd copyTo(MailboxFile *target, const std::function<bool(qint64 done, qint64 size)> &goOn);
    /// What has become of the messages; all that were seen count, also where the target failed.
    const MailboxTally &tally() const { return m_tally; }
    /// True where a byte order mark stands before the "From " that the source begins with.
    bool startsWithMark() const { return m_startsWithMark; }
    /// What is copied.
    const ByteSource &source() const { return m_source; }

    /// For tests: the bytes read at a time, at least 128.
    void setBlockBytes(size_t bytes) { m_blockBytes = bytes; }

private:
    bool readBlock();
    size_t segmentLength() const;
    void copySegment(std::string_view segment);
    CopyEnd endTally(bool stopped);
    bool startsLine(std::string_view segment, size_t at) const;
    bool separates(std::string_view segment, size_t at);
    void repairLine(std::string_view segment, size_t at);
    size_t copyRun(std::string_view segment, size_t at);
    size_t copyOddByte(std::string_view segment, size_t at);
    size_t copyBadLine(std::string_view segment, size_t at);
    bool previousCloses(std::string_view segment, size_t at) const;
    void rememberLastLine(std::string_view segment);
    void countLines(qint64 lines);
    void startGroup();
    void endLastGroup();
    void takeBackGroup();

    void reserve(size_t bytes);
    void put(char byte) { m_out[m_outSize++] = byte; }
    qint64 targetSize() const;

    MailboxFile *m_target = nullptr;
    ByteSource m_source;
    bool m_startsWithMark = false;
    qint64 m_size = 0;     ///< bytes that the source has or, once it has ended early, had
    qint64 m_read = 0;     ///< bytes of the source read
    qint64 m_position = 0; ///< bytes of the source copied
    size_t m_blockBytes = 256 * 1024;
    std::vector<char> m_block;
    size_t m_filled = 0;
    char *m_out = nullptr; ///< what the segment has become so far
    size_t m_outSize = 0;
    size_t m_roomBytes = 0;

    bool m_inText = false;     ///< a text part has started, so that "From " lines are suspect
    bool m_midLine = false;    ///< the next segment goes on within a line
    bool m_lineDashes = false; ///< that line starts with "--"
    bool m_closed = false;     ///< the last whole line closes a message

    MailboxTally m_tally;
    MailboxTally m_groupTally;     ///< as it was where the group starts
    MailboxTally m_firstLineTally; ///< and behind the group's first line
    qint64 m_secondLine = -1; ///< where the source's second line starts; -1 while the first one has not ended

    // Each full group of readLimit lines gets one line feed behind it; the last, shorter group one behind each chunk of
    // chunkLimit lines. A group is assumed to be full, and the last one is mended at the end.
    qint64 m_chunkLeft = 0;          ///< lines until the chunk ends
    qint64 m_groupLines = 0;         ///< lines of the group's chunks that have ended
    std::vector<qint64> m_chunkEnds; ///< the group's chunk ends in the target
    qint64 m_groupStart = 0;         ///< target size where the group starts
    qint64 m_firstLineEnd = -1;      ///< target size behind the group's first line; -1 while it has none
};
