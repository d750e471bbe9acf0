#include "scan/mbox_index.h"

#include "app/problem_log.h"
#include "app/records.h"
#include "text/header_rules.h"
#include "text/line_reader.h"
#include "text/mbox_names.h"
#include "text/mbox_separator.h"

#include <cerrno>

namespace
{
// Tells why a file that may be a mailbox could not be read; a folder, or a name that leads nowhere, is no mailbox.
void reportReadError(const QString &path, const ByteSource &source)
{
    const bool isFile = source.isOpen() || (source.errorNumber() != 0 && source.errorNumber() != ENOENT);
    if (isFile && mayBeMailbox(path) && !source.errorString().isEmpty())
        reportUnread(QStringLiteral("can't be read to its end: ") + source.errorString());
}

// Reads the first line: true if it starts with "From ".
bool openedAtSeparator(LineReader *reader)
{
    const std::optional<std::string_view> first = reader->readLine();
    return first && lineText(*first).startsWith(QLatin1String("From "));
}

// The index of one file while it is read.
class MailboxIndexer
{
public:
    MailboxIndexer(const QString &path, LineReader &reader)
        : m_path(path), m_reader(reader), m_entry(messageIndexOf(path))
    {
    }

    // Reads the rest of the file; the first line has been read.
    template <typename Progress>
    void readMessages(Progress progress)
    {
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
        const std::optional<std::string_view> line = m_reader.readLine();
        if (!line)
            return;
        const std::string_view head = line->substr(0, 12);
        if (static_cast<unsigned char>(head[0]) > 0x7F && head.substr(0, 3) != "\xEF\xBB\xBF")
            return;
        const QString text = lineText(*line);
        if (!m_fromSeen && text.startsWith(QLatin1String("From:"), Qt::CaseInsensitive)) {
            m_fromSeen = true;
            storeSender(text);
        } else if (!m_subjectSeen && text.startsWith(QLatin1String("Subject:"), Qt::CaseInsensitive)) {
            m_subjectSeen = true;
            storeSubject(text);
        } else if (isMboxSeparator(*line)) {
            const qint64 start = m_reader.position() - text.size();
            endMessage(start);
            m_start = start;
            m_fromSeen = m_subjectSeen = false;
        }
    }

    // The folded lines behind the header just read.
    QStringList readFolds()
    {
        QStringList folds;
        while (m_reader.nextIsFold())
            folds.append(lineText(*m_reader.readLine()));
        return folds;
    }

    void storeSender(const QString &line)
    {
        const QString sender = decodeSender(line, readFolds(), mailboxIndexHeaders);
        if (!sender.isEmpty())
            storeField(TmpMboxMbxPtrEnd->from, headerFieldUnits, sender);
    }

    void storeSubject(const QString &line)
    {
        const QString subject = decodeSubject(line, readFolds(), mailboxIndexHeaders);
        if (!subject.isEmpty())
            storeField(TmpMboxMbxPtrEnd->subject, headerFieldUnits, subject);
    }

    void endMessage(qint64 end)
    {
        MboxMessageNode *record = TmpMboxMbxPtrEnd;
        storeField(record->path, pathFieldUnits, m_path);
        record->length = end - m_start;
        record->offset = m_start;
        m_entry.push_back(record);
        appendMessage();
    }

    QString m_path;
    LineReader &m_reader;
    std::vector<const MboxMessageNode *> &m_entry;
    qint64 m_start = 0; ///< where the current message begins, bytes
    bool m_fromSeen = false;
    bool m_subjectSeen = false;
};
} // namespace

bool beginsAsMailbox(const QString &path)
{
    LineReader reader(LineReader::Mode::Text);
    const bool begins = reader.open(path) && openedAtSeparator(&reader);
    reportReadError(path, reader.source());
    return begins;
}

bool GetAllFieldsForTree(const QString &path, const std::function<void(qint64, qint64)> &progress)
{
    LineReader reader(LineReader::Mode::Text);
    if (!reader.open(path) || !openedAtSeparator(&reader)) {
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
