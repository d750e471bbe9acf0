#include "browse/message_rows.h"

#include "app/olm_records.h"
#include "app/problem_log.h"
#include "app/records.h"
#include "platform/folder_walk.h"
#include "text/header_lines.h"
#include "text/opera_accounts.h"
#include "text/semicolon_list.h"

namespace
{
// The text loses one line feed at its end: the subject's own, or the one in front of a subject that is not there.
QString fileRowText(const QString &sender, const QString &subject)
{
    QString text = sender + QLatin1Char('\n') + subject;
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return text;
}

// A subject that was not decoded still has its line feed, of which one goes.
QString mailboxRowText(const QString &sender, QString subject)
{
    if (subject.endsWith(QLatin1Char('\n')))
        subject.chop(1);
    return sender + QLatin1Char('\n') + subject;
}

constexpr size_t headerBlockBytes = 8 * 1024; // sender and subject mostly stand in the first block

// The file's mailbox: the path up to the last directory with one of the suffixes, "" if there is none.
QString mailboxOf(const QString &file)
{
    for (const char *suffix : {".imapmbox", ".mailbox", ".mbox"}) {
        const QString name = QLatin1String(suffix);
        const int end = file.lastIndexOf(name + QLatin1Char('/'));
        if (end >= 0)
            return file.left(end) + name;
    }
    return {};
}

// Files that stores keep beside their messages; the texts may stand anywhere in the path.
bool isCompanion(const QString &file)
{
    for (const char *text : {".emlxpart", ".DS_Store", ".plist", "..DS_Store", ".dat", "MacOS"})
        if (file.indexOf(QLatin1String(text), 1) > 0)
            return true;
    return false;
}
} // namespace

std::vector<MessageRow> mailboxRows(const QString &folderPath)
{
    std::vector<MessageRow> rows;
    for (const MboxMessageNode *record : messagesOfPath(folderPath))
        rows.push_back({mailboxRowText(record->from, record->subject), record->path,
                        QString::number(record->offset), QString::number(record->length)});
    return rows;
}

std::vector<MessageRow> operaRows(const QString &folderPath, const QString &folderName)
{
    std::vector<MessageRow> rows;
    for (const MboxMessageNode *record : messagesOfLabel(operaAccountOf(folderPath), folderName)) {
        QString sender = record->from;
        if (sender.endsWith(QLatin1Char('\n')))
            sender.remove(QLatin1Char('\n'));
        rows.push_back({fileRowText(sender, record->subject), record->path, QString(), QString()});
    }
    return rows;
}

std::vector<MessageRow> olmRows(qint64 folderId)
{
    std::vector<MessageRow> rows;
    for (const MailMLRC *record : olmRecordsOfFolder(folderId)) {
        const QString subject =
            record->szSubject.isEmpty() ? QStringLiteral("No Subject") : record->szSubject.text();
        rows.push_back({lastItem(record->szFromName.text()) + QLatin1Char('\n') + subject, QString(),
                        QString::number(record->llBodyOffset), QString::number(record->llBodySize)});
    }
    return rows;
}

QStringList filesBelow(const QString &folder, void (*keepAlive)())
{
    QStringList files;
    const auto take = [&](const QString &path, bool isFolder) {
        if (!isFolder)
            files.append(path.trimmed());
        else if (keepAlive)
            keepAlive();
    };
    walkFolder(folder, {take});
    return files;
}

bool isListed(const QString &file, const QString &folderPath)
{
    const bool belongs =
        mailboxOf(file) == folderPath || file.left(file.lastIndexOf(QLatin1Char('/'))) == folderPath;
    return belongs && !isCompanion(file);
}

std::optional<MessageRow> rowOfMessageFile(const QString &file, bool *opened)
{
    LineReader reader(LineReader::Mode::Text);
    reader.setBlockBytes(headerBlockBytes);
    const bool isOpen = reader.open(file);
    if (opened)
        *opened = isOpen;
    if (!isOpen)
        return std::nullopt;
    const SenderAndSubject found = readSenderAndSubject(&reader, listHeaders);
    reportUnread(reader.errorString());
    if (!found.sender && !found.subject)
        return std::nullopt;
    return MessageRow{fileRowText(found.sender.value_or(QString()), found.subject.value_or(QString())), file,
                      QString(), QString()};
}
