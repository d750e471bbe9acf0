#include "browse/message_rows.h"

#include "app/shared_state.h"

namespace
{
// A subject that was not decoded still has its line feed, of which one goes.
QString rowText(const QString &sender, QString subject)
{
    if (subject.endsWith(QLatin1Char('\n')))
        subject.chop(1);
    return sender + QLatin1Char('\n') + subject;
}
} // namespace

std::vector<MessageRow> mailboxRows(const QString &folderPath)
{
    std::vector<MessageRow> rows;
    for (const MboxMessageNode *record : messagesOfPath(folderPath))
        rows.push_back({rowText(record->from, record->subject), record->path, QString::number(record->offset),
                        QString::number(record->length)});
    return rows;
}
