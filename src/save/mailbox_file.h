#pragma once

#include "platform/finder_info.h"

#include <QByteArray>
#include <QString>

#include <string_view>
#include <vector>

/// Whether a save writes, or only counts what it would write.
enum class SaveMode { Write, CountOnly };

/// A target mailbox that is appended to. Its folders and the file itself are made where missing, the file with its
/// Finder codes. What can't be made or written is reported once as a problem naming the path; the file is then cut
/// back to where it was settled last, so that no half message and no hole stays, and what is appended until it is
/// opened again is dropped. Writes are gathered in a buffer. One that only counts touches no file.
class MailboxFile
{
public:
    /// Not open yet; `mode` holds for all that is opened.
    explicit MailboxFile(SaveMode mode = SaveMode::Write) : m_mode(mode) {}
    ~MailboxFile() { close(); }
    MailboxFile(const MailboxFile &) = delete;
    MailboxFile &operator=(const MailboxFile &) = delete;

    /// Opens for appending; closes what was open before.
    void open(const QString &path, const FinderCodes &codes);
    /// False also after a failure.
    bool isOpen() const { return m_isOpen; }
    /// Why the last open or write failed, "" where none did since the last open.
    const QString &errorString() const { return m_error; }
    /// The path given to the last open.
    const QString &path() const { return m_path; }
    /// Appends bytes; dropped while the mailbox is not open.
    void append(std::string_view bytes);
    void append(char byte) { append(std::string_view(&byte, 1)); }
    /// A place for that many bytes behind those in the file; they count once `take` tells how many there are.
    char *room(size_t bytes);
    /// So many bytes were put into the room given last.
    void take(size_t bytes);
    /// Bytes in the file, those still to be written included.
    qint64 size() const { return m_size; }
    /// Puts a line feed at places of the file in ascending order, as they are before the first of them.
    void insertLineFeeds(const std::vector<qint64> &places);
    /// Cuts the file to a size it had before, in bytes.
    void truncate(qint64 size);
    /// Writes out what is gathered; a later failure leaves all up to here. True if it stands in the file, by the word of
    /// a quota or a network share too, which may come only with a close.
    bool settle();
    /// Bytes appended since then.
    qint64 unsettledBytes() const { return m_size - m_settled; }
    /// Bytes settled since the file was opened, or since the last call.
    qint64 takeAddedBytes();
    /// Settles and closes.
    void close();

private:
    void flush();
    void fail(int error);
    void write(const char *bytes, size_t count, qint64 position);
    void moveBack(qint64 from, qint64 to, qint64 count);

    SaveMode m_mode;
    QString m_path;
    QString m_error;
    bool m_isOpen = false;
    int m_file = -1; ///< -1 where it only counts
    qint64 m_size = 0;
    qint64 m_start = 0;   ///< size when it was opened, or at the last takeAddedBytes
    qint64 m_settled = 0; ///< size when it was settled last
    QByteArray m_buffer;
    size_t m_filled = 0;
};
