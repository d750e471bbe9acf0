#pragma once

#include "platform/finder_info.h"

#include <QByteArray>
#include <QString>

#include <string_view>
#include <vector>

/// A target mailbox that is appended to. Its folders and the file itself are made where missing, the file with its
/// Finder codes. What can't be made or written is reported once as a problem naming the path; the rest is then
/// dropped, and nothing else stops. Writes are gathered in a buffer.
class MailboxFile
{
public:
    MailboxFile() = default;
    ~MailboxFile() { close(); }
    MailboxFile(const MailboxFile &) = delete;
    MailboxFile &operator=(const MailboxFile &) = delete;

    /// Opens for appending; closes what was open before.
    void open(const QString &path, const FinderCodes &codes);
    bool isOpen() const { return m_file >= 0; }
    /// The path given to the last open.
    const QString &path() const { return m_path; }
    void append(std::string_view bytes);
    void append(char byte) { append(std::string_view(&byte, 1)); }
    /// A place for that many bytes behind those in the file; they count once `take` tells how many were put there.
    char *room(size_t bytes);
    void take(size_t bytes);
    /// Bytes in the file, those still to be written included.
    qint64 size() const { return m_size; }
    /// Puts a line feed at places of the file in ascending order, as they are before the first of them.
    void insertLineFeeds(const std::vector<qint64> &places);
    /// Takes away the bytes at such places.
    void removeBytes(const std::vector<qint64> &places);
    /// Cuts the file to a size it had before, in bytes.
    void truncate(qint64 size);
    void close();

private:
    void flush();
    void fail(int error);
    void write(const char *bytes, size_t count, qint64 position);
    void move(qint64 from, qint64 to, qint64 count);

    QString m_path;
    int m_file = -1;
    qint64 m_size = 0;
    QByteArray m_buffer;
    size_t m_filled = 0;
};

/// Text as Latin-1 with one byte for each UTF-16 unit, as the toolkit does it: a unit above U+00FF becomes "?".
inline QByteArray mailboxText(const QString &text)
{
    return text.toLatin1();
}
