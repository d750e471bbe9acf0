#include "save/olm_dates.h"

namespace
{
constexpr int anyDirection = -1;
constexpr int received = 0;
constexpr int sent = 1;

enum class Date { Sent, Received, ReceivedOrSent, WhatThereIs };

/// The first row whose text the folder path holds, with this direction, decides.
struct DateRow {
    const char *folderHolds;
    int direction; ///< the record's iIsOutgoing
    Date date;
};
constexpr DateRow dateRows[] = {
    {"Sent Items", anyDirection, Date::Sent}, {"Inbox", anyDirection, Date::ReceivedOrSent},
    {"Deleted Items", sent, Date::Sent},      {"Deleted Items", received, Date::Received},
    {"Drafts", anyDirection, Date::Sent},     {"", sent, Date::Sent},
    {"", received, Date::WhatThereIs},
};

const DateRow *rowOf(const MailMLRC &record)
{
    for (const DateRow &row : dateRows)
        if (record.szFolderPath.bytes().contains(row.folderHolds) &&
            (row.direction == anyDirection || row.direction == record.iIsOutgoing))
            return &row;
    return nullptr;
}

// "" where the row leaves it to what there is.
QByteArray pick(const MailMLRC &record, Date date)
{
    const QByteArray &sentTime = record.szSentTime.bytes();
    const QByteArray &receivedTime = record.szReceivedTime.bytes();
    switch (date) {
    case Date::Sent:
        return sentTime;
    case Date::Received:
        return receivedTime;
    case Date::ReceivedOrSent:
        return receivedTime.isEmpty() ? sentTime : receivedTime;
    case Date::WhatThereIs:
        break;
    }
    return {};
}
} // namespace

OlmDates datesOfOlmRecord(const MailMLRC &record)
{
    const DateRow *row = rowOf(record);
    if (!row)
        return {};
    const QByteArray date = pick(record, row->date);
    if (!date.isEmpty())
        return {true, date, date};
    return {true, pick(record, Date::ReceivedOrSent), record.szReceivedTime.bytes()};
}
