#include "scan/mbox_index.h"

#include "app/problem_log.h"
#include "app/records.h"
#include "text/header_lines.h"
#include "text/mailbox_paths.h"
#include "text/mbox_separator.h"

#include <QFileInfo>

#include <cerrno>

namespace
{
constexpr size_t pieceBytes = 64 * 1024; // of a line that starts with "From "

// Tells why a file that may be a mailbox could not be read; a folder, or a name that leads nowhere, is no mailbox.
void reportReadError(const QString &path, const ByteSource &source)
{
    const bool isFile = source.isOpen() || (source.errorNumber() != 0 && source.errorNumber() != ENOENT);
    if (isFile && mayBeMailbox(path) && !source.errorString().isEmpty())
        reportUnread(Problem::tr("can't be read to its end: ") + source.errorString());
}

// Looks at the first line, which may be as long as the file.
bool opensAtSeparator(LineReader *reader)
{
    return startsAsSeparator(reader->peek(lineStartBytes));
}

// The index of one file while it is read.
class MailboxIndexer
{
public:
    MailboxIndexer(const QString &path, LineReader &reader)
        : m_path(cutField(path, pathFieldLimit)), m_reader(reader), m_entry(messageIndexOf(path))
    {
    }

    template <typename Progress>
    void readMessages(Progress progress)
    {
        m_reader.skipLine();
        bool readAny = false;
        while (!m_reader.atEnd()) {
            if (!TmpMboxMbxPtrEnd)
                appendMessage();
            readAny = true;
            const bool both = m_fromSeen && m_subjectSeen;
            if (!m_reader.skipToLineStart(both ? LineStarts::From : LineStarts::FromOrSubject))
                break;
            readLine();
            progress(m_reader.position());
            if (m_reader.position() >= m_reader.size()) {
                endMessage(m_reader.position());
                return;
            }
        }
        if (readAny && m_reader.position() >= m_reader.size())
            endMessage(m_reader.position());
    }

private:
    // A line that can matter.
    void readLine()
    {
        const std::string_view start = m_reader.peek(lineStartBytes);
        const bool isText = start[0] >= 0 || start.substr(0, 3) == "\xEF\xBB\xBF";
        const HeaderStart header = isText ? headerStart(start) : HeaderStart::Other;
        if (header == HeaderStart::From && !m_fromSeen) {
            m_fromSeen = true;
            store(&TmpMboxMbxPtrEnd->from, readSender(&m_reader, mailboxIndexHeaders, lineText));
        } else if (header == HeaderStart::Subject && !m_subjectSeen) {
            m_subjectSeen = true;
            store(&TmpMboxMbxPtrEnd->subject, readSubject(&m_reader, mailboxIndexHeaders, lineText));
        } else if (startsAsSeparator(start)) {
            readSeparator();
        } else {
            m_reader.skipLine();
        }
    }

    static void store(QString *field, const QString &value)
    {
        if (!value.isEmpty())
            *field = cutField(value, headerFieldLimit);
    }

    // A line that starts with "From ": with a weekday in it, it begins the next message.
    void readSeparator()
    {
        SeparatorLine line;
        for (bool ended = false; !ended && !m_reader.atEnd();) {
            const std::optional<std::string_view> piece = m_reader.readLine(pieceBytes);
            line.take(*piece);
            ended = piece->back() == '\n';
        }
        if (!line.isSeparator())
            return;
        const qint64 start = m_reader.position() - line.utf16Units();
        endMessage(start);
        m_start = start;
        m_fromSeen = m_subjectSeen = false;
    }

    void endMessage(qint64 end)
    {
        MboxMessageNode *record = TmpMboxMbxPtrEnd;
        record->path = m_path;
        record->length = end - m_start;
        record->offset = m_start;
        m_entry.push_back(record);
        appendMessage();
    }

    const QString m_path; ///< as in the records
    LineReader &m_reader;
    std::vector<const MboxMessageNode *> &m_entry;
    qint64 m_start = 0; ///< where the current message begins, bytes
    bool m_fromSeen = false;
    bool m_subjectSeen = false;
};
} // namespace

MailboxStart lookAtMailbox(const QString &path)
{
    char bytes[lineStartBytes];
    ByteSource source = ByteSource::ofFile(path, sizeof bytes);
    const qint64 got = source.read(0, bytes, sizeof bytes);
    const bool isMissing = source.errorNumber() == 0 || source.errorNumber() == ENOENT;
    if (!source.isOpen() && (isMissing || QFileInfo(path).isDir()))
        return MailboxStart::NoFile;
    reportReadError(path, source);
    if (!source.errorString().isEmpty())
        return MailboxStart::Unreadable;
    return startsAsSeparator({bytes, static_cast<size_t>(got)}) ? MailboxStart::Separator
                                                                : MailboxStart::Other;
}

bool GetAllFieldsForTree(const QString &path, const std::function<void(qint64, qint64)> &progress)
{
    LineReader reader(LineReader::Mode::Text);
    if (!reader.open(path) || !opensAtSeparator(&reader)) {
        reportReadError(path, reader.source());
        return false;
    }
    qint64 nextReport = 0;
    MailboxIndexer(path, reader).readMessages([&](qint64 done) {
        if (!progress || done < nextReport)
            return;
        progress(done, reader.size());
        nextReport = done + reader.size() / 100;
    });
    reportReadError(path, reader.source());
    return true;
}
