#include "save/olm_header.h"

#include "save/olm_dates.h"
#include "text/semicolon_list.h"

#include <QLocale>
#include <QStringList>

namespace
{
// Places in "Wed, 12 Nov 2014 14:38:04 +0530".
QByteArray weekday(const QByteArray &date)
{
    return date.mid(0, 3);
}
QByteArray day(const QByteArray &date)
{
    return date.mid(5, 2);
}
QByteArray month(const QByteArray &date)
{
    return date.mid(8, 3);
}
QByteArray year(const QByteArray &date)
{
    return date.mid(12, 4);
}
QByteArray timeOfDay(const QByteArray &date)
{
    return date.mid(17, 8);
}
QByteArray zone(const QByteArray &date)
{
    return date.mid(26, 5);
}

QByteArray envelope(const QByteArray &date, const QDateTime &now)
{
    const QByteArray start = "From ???@??? ";
    if (date.isEmpty())
        return start + now.toString(Qt::TextDate).toLatin1() + '\n';
    return start + weekday(date) + ' ' + month(date) + ' ' + day(date) + ' ' + timeOfDay(date) + ' ' +
           year(date) + "\nUser-Agent: Microsoft-MacOutlook/14.0.0.100825\n";
}

QByteArray dateHeader(const QByteArray &date, const QDateTime &now)
{
    const QByteArray taken =
        date.isEmpty()
            ? QLocale::c().toString(now, QStringLiteral("ddd, dd MMM yyyy hh:mm:ss")).toLatin1() + " +0530"
            : date;
    return "Date: " + taken.mid(0, 4) + ' ' + day(taken) + ' ' + month(taken) + ' ' + year(taken) + ' ' +
           timeOfDay(taken) + ' ' + zone(taken) + '\n';
}

QByteArray fromHeader(const MailMLRC &record)
{
    const QString address = lastItem(record.szFromAddress.text());
    const QString name = record.szFromName.isEmpty() ? address : lastItem(record.szFromName.text());
    return QStringLiteral("From: %1 <%2>\n").arg(name, address).toLatin1();
}

// A comma and a new line stand behind each address but those that equal the last one. Lists that don't correspond
// leave the header empty.
QByteArray peopleHeader(const char *label, const QString &addressList, const QString &nameList)
{
    const QStringList addresses = entitiesUndone(addressList).split(QLatin1Char(';'));
    const QStringList names = entitiesUndone(nameList).split(QLatin1Char(';'));
    QString text = QLatin1String(label);
    const int count = addresses.size() == names.size() ? addresses.size() - 1 : 0;
    for (int i = 0; i < count; ++i) {
        const QString &address = addresses.at(i);
        text += names.at(i) == QLatin1String("Unknown Name") ? address : names.at(i);
        text += QLatin1String(" <") + address + QLatin1Char('>');
        if (address != addresses.at(count - 1))
            text += QLatin1String(",\n\t");
    }
    return text.toLatin1() + '\n';
}

QByteArray priorityHeader(const QByteArray &priority)
{
    return "X-Priority: " + (priority == "4" || priority == "2" ? priority : QByteArray()) + '\n';
}
} // namespace

int emptyRecipientHeaders(const MailMLRC &record)
{
    const auto isEmpty = [](const auto &addresses, const auto &names) {
        return !addresses.isEmpty() && !correspond(addresses.text(), names.text());
    };
    return (isEmpty(record.szToAddress, record.szToName) ? 1 : 0) +
           (isEmpty(record.szCcAddress, record.szCcName) ? 1 : 0);
}

QByteArray olmHeaderBlock(const MailMLRC &record, const OlmMarks &marks)
{
    const OlmDates dates = datesOfOlmRecord(record);
    QByteArray block;
    if (dates.written)
        block += envelope(dates.envelope, marks.now);
    if (!record.szSubject.isEmpty())
        block += "Subject: =?UTF-8?B?" + record.szSubject.bytes().toBase64() + "?=\n";
    if (!record.szFromAddress.isEmpty())
        block += fromHeader(record);
    if (!record.szToAddress.isEmpty())
        block += peopleHeader("To: ", record.szToAddress.text(), record.szToName.text());
    if (!record.szCcAddress.isEmpty())
        block += peopleHeader("Cc: ", record.szCcAddress.text(), record.szCcName.text());
    if (dates.written)
        block += dateHeader(dates.header, marks.now);
    if (!record.szThreadTopic.isEmpty())
        block += "Thread-Topic: " + record.szThreadTopic.bytes() + '\n';
    if (!record.szPriority.isEmpty())
        block += priorityHeader(record.szPriority.bytes());
    if (!record.szMessageId.isEmpty())
        block += "Message-ID: " + marks.messageId + '\n';
    block += QByteArray("X-MS-Has-Attach: ") + (record.pAttachContentIds.isNull() ? "" : "yes") + '\n';
    block += "Mime-version: 1.1\n";
    return block;
}
