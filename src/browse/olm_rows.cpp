#include "browse/message_rows.h"

#include "app/olm_records.h"
#include "text/semicolon_list.h"

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
