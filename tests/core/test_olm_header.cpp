#include "app/olm_records.h"
#include "data_table.h"
#include "save/olm_dates.h"
#include "save/olm_header.h"

#include <QRegularExpression>

namespace
{
const QByteArray sentDate = "Wed, 12 Nov 2014 14:38:04 +0530";
const QByteArray receivedDate = "Thu, 13 Nov 2014 15:39:05 -0100";
const OlmMarks marks = {QDateTime(QDate(2020, 2, 3), QTime(4, 5, 6)), "ID", 777};

// The lines of a header block that start so, with their folds.
QByteArray header(const MailMLRC &record, const QByteArray &start)
{
    const QRegularExpression lines('^' + QRegularExpression::escape(start) + ".*(\n\t.*)*",
                                   QRegularExpression::MultilineOption);
    return lines.match(QString::fromLatin1(olmHeaderBlock(record, marks))).captured().toLatin1();
}
} // namespace

class TestOlmHeader : public QObject
{
    Q_OBJECT

private slots:
    void dates_data()
    {
        // Dates are "s" for the sent time, "r" for the received time, "n" for now, "-" for none.
        const DataTable table([](const QString &folder, int outgoing, const QString &held,
                                 const QString &envelope, const QString &date) {
            MailMLRC record;
            record.szFolderPath.set(folder);
            record.iIsOutgoing = outgoing;
            if (held.contains("s"))
                record.szSentTime.set(sentDate);
            if (held.contains("r"))
                record.szReceivedTime.set(receivedDate);
            const OlmDates dates = datesOfOlmRecord(record);
            const auto letter = [&](const QByteArray &time) {
                return !dates.written ? "-" : time.isEmpty() ? "n" : time == sentDate ? "s" : "r";
            };
            QCOMPARE(QString(letter(dates.envelope)), envelope);
            QCOMPARE(QString(letter(dates.header)), date);
            const QByteArray block = olmHeaderBlock(record, marks);
            QCOMPARE(block.startsWith("From ???@??? "), dates.written);
            QCOMPARE(block.contains("User-Agent: "), dates.written && !dates.envelope.isEmpty());
            QCOMPARE(block.contains("Date: "), dates.written);
        });
        const auto row = [&](const char *folder, int outgoing, const char *held, const char *envelope,
                             const char *date) {
            table(folder + QByteArray::number(outgoing) + held, folder, outgoing, held, envelope, date);
        };
        row("Sent Items", 0, "sr", "s", "s");
        row("x/Sent Items 2", 7, "sr", "s", "s");
        row("Inbox", 1, "sr", "r", "r");
        row("Inbox", 5, "s", "s", "s");
        row("Deleted Items", 1, "sr", "s", "s");
        row("Deleted Items", 0, "sr", "r", "r");
        row("Deleted Items", 2, "sr", "-", "-");
        row("Deleted Items/Drafts", 2, "sr", "s", "s");
        row("Drafts", 0, "sr", "s", "s");
        row("Work", 1, "sr", "s", "s");
        row("Work", 0, "sr", "r", "r");
        row("Work", 0, "s", "s", "n");
        row("Work", 0, "", "n", "n");
        row("Work", -1, "sr", "-", "-");
        // A row whose date is empty takes what there is.
        row("Sent Items", 1, "r", "r", "r");
        row("Inbox", 1, "", "n", "n");
        row("Deleted Items", 0, "s", "s", "n");
    }

    void dates() { checkRow(); }

    void people_data()
    {
        const DataTable row([](const QByteArray &start, const QString &addresses, const QString &names,
                               const QByteArray &line) {
            MailMLRC record;
            record.szToAddress.set(addresses);
            record.szToName.set(names);
            record.szFromAddress.set(addresses);
            record.szFromName.set(names);
            QCOMPARE(header(record, start), line);
        });
        row("sender", "From: ", "a@x;", "Ann;", "From: Ann <a@x>");
        row("the last sender", "From: ", "a@x;b@x;", "Ann;Bob;", "From: Bob <b@x>");
        row("sender without a name", "From: ", "a@x;b@x;", "", "From: b@x <b@x>");
        row("sender with an empty name", "From: ", "a@x;", ";", "From:  <a@x>");
        row("entities in a sender stay", "From: ", "a&amp;b;", "A&lt;;", "From:  <b>");
        row("percent signs", "From: ", "%2;", "%2%1;", "From: %2%1 <%2>");
        row("no address", "From: ", "", "Ann;", QByteArray());
        const auto to = [&row](const char *name, const char *addresses, const char *names, const char *line) {
            row(name, "To: ", addresses, names, QByteArray("To: ") + line);
        };
        to("recipient", "a;", "A;", "A <a>");
        to("one of three is nameless", "a;b;c;", "A;Unknown Name;C;", "A <a>,\n\tb <b>,\n\tC <c>");
        to("one like the last", "a;b;a;c;a;", "1;2;3;4;5;", "1 <a>2 <b>,\n\t3 <a>4 <c>,\n\t5 <a>");
        to("the last is empty", "a;;", "A;;", "A <a>,\n\t <>");
        to("one in the middle is empty", "a;;b;", "A;;B;", "A <a>,\n\t <>,\n\tB <b>");
        to("entities", "a&amp;lt;b;", "A&nbsp;B;", "");
        to("lists of different length", "a;b;", "A;", "");
        to("entities on both sides", "a&amp;b;", "A&lt;B;", "A<B <a&b>");
        to("case counts in entities", "a&AMP;", "A;b", "A <a&AMP>");
    }

    void people() { checkRow(); }

    void headerBlock()
    {
        MailMLRC record;
        record.szFolderPath.set("Inbox");
        record.szReceivedTime.set(receivedDate);
        record.szSubject.set(QString::fromUtf8("Z\xC3\xBCrich"));
        record.szFromAddress.set("a@x;");
        record.szToAddress.set("b@x;");
        record.szToName.set("B;");
        record.szCcAddress.set("c@x;");
        record.szCcName.set("C;");
        record.szThreadTopic.set("topic");
        record.szMessageId.set("<m@x>");
        record.pAttachContentIds = "no;";
        const QByteArray before =
            "From ???@??? Thu Nov 13 15:39:05 2014\nUser-Agent: Microsoft-MacOutlook/14.0.0.100825\n"
            "Subject: =?UTF-8?B?WvxyaWNo?=\nFrom: a@x <a@x>\nTo: B <b@x>\nCc: C <c@x>\n"
            "Date: Thu, 13 Nov 2014 15:39:05 -0100\nThread-Topic: topic\n";
        const QByteArray behind = "Message-ID: ID\nX-MS-Has-Attach: yes\nMime-version: 1.1\n";
        QCOMPARE(olmHeaderBlock(record, marks), before + behind);
        for (const QByteArray priority : {"2", "4", "3", "22"}) {
            record.szPriority.set(priority);
            const QByteArray shown = priority == "2" || priority == "4" ? priority : QByteArray();
            QCOMPARE(olmHeaderBlock(record, marks), before + "X-Priority: " + shown + '\n' + behind);
        }
    }
};

QTEST_GUILESS_MAIN(TestOlmHeader)
#include "test_olm_header.moc"
