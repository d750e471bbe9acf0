#include "browse/message_rows.h"

#include "app/shared_state.h"

std::vector<MessageRow> mailboxRows(const QString &folderPath)
{
    std::vector<MessageRow> rows;
    for (const MboxMessageNode *record : messagesOfPath(folderPath)) {
        QString subject = fieldText(record->subject);
        if (subject.endsWith(QLatin1Char('\n')))
            subject.chop(1);
        rows.push_back({fieldText(record->from) + QLatin1Char('\n') + subject, fieldText(record->path),
                        QString::number(record->offset), QString::number(record->length)});
    }
    return rows;
}
