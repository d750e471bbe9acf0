#pragma once

#include "platform/finder_info.h"

#include <QByteArray>
#include <QString>

#include <string_view>

/// A target mailbox that is appended to. Its folders and the file itself are made where missing, the file with its
/// Finder codes. What can't be made or written is reported once as a problem naming the path; the rest is then
/// dropped, and nothing else stops. Writes are gathered in a small buffer.
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
    /// Bytes in the file, those still to be written included.
    qint64 size() const { return m_size; }
    /// Cuts the file to a size it had before, in bytes.
    void truncate(qint64 size);
    void close();

private:
    void flush();
    void fail(int error);
    void write(const char *bytes, size_t count);

    QString m_path;
    int m_file = -1;
    qint64 m_size = 0;
    QByteArray m_buffer;
};

/// Text as Latin-1 with one byte for each UTF-16 unit, as the toolkit does it: a unit above U+00FF becomes "?".
inline QByteArray mailboxText(const QString &text)
{
    return text.toLatin1();
}
