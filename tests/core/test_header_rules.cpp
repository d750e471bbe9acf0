#include "data_table.h"
#include "text/date_rules.h"
#include "text/header_rules.h"
#include "text/remove_all.h"

#include <QtTest>

class TestHeaderRules : public QObject
{
    Q_OBJECT

private slots:
    // One value, and what each user of the rules makes of it.
    void sender_data()
    {
        const DataTable<QString, QStringList, QString, QString, QString, QString, QString> row(
            "line", "folds", "file", "mailbox", "list", "mailboxIndex", "operaIndex");
        const QStringList none;
        row("plain", "From: Ann <a@x>\n", none, "Ann <a@x>\n", "Ann <a@x>", "Ann <a@x>\n", "Ann <a@x>",
            "Ann <a@x>\n");
        row("name in capitals", "FROM: Ann\n", none, "FROM: Ann\n", "FROM: Ann", "FROM: Ann\n", "FROM: Ann",
            "FROM: Ann\n");
        row("nothing", "From: \n", none, "\n", "", "\n", "", "\n");
        row("folded plain", "From: Ann\n", {" <a@x>\n"}, "Ann\n", "Ann", "Ann\n <a@x>\n", "Ann",
            "Ann\n <a@x>\n");
        row("Q word alone", "From: =?UTF-8?Q?Ren=C3=A9?=\n", none, "René", "René", "René", "René", "René");
        row("Q word and address", "From: =?UTF-8?Q?Ren=C3=A9?= <r@x>\n", none, "René <r@x>\n", "René <r@x>",
            "René <r@x>\n", "René <r@x>", "René <r@x>");
        row("B word and address", "From: =?UTF-8?B?QW5u?= <a@x>\n", none, "Ann <a@x>", "QW5u <a@x>",
            "Ann <a@x>", "QW5u <a@x>", "Ann <a@x>");
        row("quoted B word", "From: \"=?UTF-8?B?UmVuw6k=?=\" <r@x>\n", none, "René", "B?UmVuw6k", "René",
            "B?UmVuw6k", "\"=?UTF-8?B?UmVuw6k=?=\" <r@x>\n");
        row("quoted Q word", "From: \"=?UTF-8?Q?Ren=C3=A9?=\" <r@x>\n", none, "René\" <r@x>\n",
            "René\" <r@x>", "René\" <r@x>\n", "René\" <r@x>", "\"=?UTF-8?Q?Ren=C3=A9?=\" <r@x>\n");
        row("unknown encoding", "From: =?UTF-8?X?abc?=\n", none, "abc", "abc", "abc", "abc", "abc");
        row("words on two lines", "From: =?UTF-8?Q?A=C3=A9?=\n", {"\t=?UTF-8?B?QW5u?=\n"}, "Aé", "Aé",
            "AéAnn", "AéAnn", "AéAnn");
        row("fold of unknown encoding", "From: a\n", {" =?UTF-8?X?b?= c\n"}, "a\n", "a", "a\nb?= c\n c\n",
            "a", "a\nb?= c\n c\n");
    }

    void sender()
    {
        QFETCH(QString, line);
        QFETCH(QStringList, folds);
        QTEST(decodeSender(line, folds, singleFileHeaders), "file");
        QTEST(decodeSender(line, folds, mailboxHeaders), "mailbox");
        QTEST(decodeSender(line, folds, mailboxIndexHeaders), "mailboxIndex");
        QTEST(decodeSender(line, folds, listHeaders), "list");
        QTEST(decodeSender(line, folds, operaIndexHeaders), "operaIndex");
    }

    void subject_data()
    {
        const DataTable<QString, QStringList, QString, QString, QString, QString> row(
            "line", "folds", "file", "mailbox", "list", "operaIndex");
        const QStringList none;
        const auto same = [&](const char *name, const char *line, const QStringList &folds,
                              const char *subject) {
            row(name, line, folds, subject, subject, subject, subject);
        };
        same("plain", "Subject: Hi\n", none, "Hi\n");
        row("empty", "Subject:\n", none, "", "", "Subject:\n", "");
        same("folded plain", "Subject: Hi\n", {" there\n"}, "Hi\n there\n");
        row("word behind text", "Subject: Re: =?UTF-8?Q?caf=C3=A9?=\n", none, "Re: café",
            "Re: =?UTF-8?Q?caf=C3=A9?=\n", "Re: café", "Re: =?UTF-8?Q?caf=C3=A9?=\n");
        row("other charset behind text", "Subject: Re: =?ISO-8859-1?Q?caf=E9?=\n", none,
            "Re: =?ISO-8859-1?Q?caf=E9", "Re: =?ISO-8859-1?Q?caf=E9?=\n", "Re: =?ISO-8859-1?Q?caf=E9",
            "Re: =?ISO-8859-1?Q?caf=E9?=\n");
        same("underscore stays", "Subject: =?UTF-8?Q?a_b?=\n", none, "a_b");
        same("two folded words", "Subject: =?UTF-8?Q?a?=\n", {" =?UTF-8?Q?=C3=A9?=\n"}, "aé");
        row("text behind a B word", "Subject: =?UTF-8?B?QW5u?= -!\n", none, "Ann -!", "Ann", "Ann", "Ann -!");
        row("padded B word", "Subject: =?UTF-8?B?QUJDQQ==?=\n", none, "ABC", "ABCA", "ABC", "ABCA");
        same("unknown charset", "Subject: =?no-such-charset?Q?=C3=A9?=\n", none, "é");
        same("B word is UTF-8", "Subject: =?ISO-8859-1?B?w6k=?=\n", none, "é");
        same("Latin-1", "Subject: =?ISO-8859-1?Q?=E9?=\n", none, "é");
        same("Korean", "Subject: =?ks_c_5601-1987?Q?=C7=D1=B1=DB?=\n", none, "한글");
        same("lower case encoding", "Subject: =?UTF-8?q?=C3=A9?=\n", none, "=C3=A9");
        same("fold of text behind a word", "Subject: a\n", {" =?UTF-8?Q?b?= c\n"}, "a\nb c\n");
        row("fold of unknown encoding", "Subject: a\n", {" =?UTF-8?X?b?= c\n"}, "a\nb c\n", "a\nb?= c\n c\n",
            "a\nb?= c\n c\n", "a\nb?= c\n c\n");
    }

    void subject()
    {
        QFETCH(QString, line);
        QFETCH(QStringList, folds);
        QTEST(decodeSubject(line, folds, singleFileHeaders), "file");
        QTEST(decodeSubject(line, folds, mailboxHeaders), "mailbox");
        QTEST(decodeSubject(line, folds, mailboxIndexHeaders), "mailbox");
        QTEST(decodeSubject(line, folds, listHeaders), "list");
        QTEST(decodeSubject(line, folds, operaIndexHeaders), "operaIndex");
    }

    void recipients_data()
    {
        const DataTable<QString, QString, QString> row("line", "label", "shown");
        row("plain", "To: a@x\n", "To: ", "To: a@x\n");
        row("B word and address", "To: =?UTF-8?B?QW5u?= <a@x>\n", "To: ", "To: Ann <a@x>");
        row("word alone", "to: =?UTF-8?Q?A?=\n", "To: ", "To: A");
        row("word alone, CR LF", "To: =?UTF-8?Q?A?=\r\n", "To: ", "To: A\r");
        row("third part is lost", "To: =?UTF-8?Q?A?= <a@x>, =?UTF-8?Q?B?= <b@x>\n",
            "To: ", "To: A <a@x>, =?UTF-8?Q?");
        row("two blanks", "Cc:  =?UTF-8?B?QW5u?=\n", "Cc: ", "Cc:  =?UTF-8?B?QW5u?=\n");
        row("unknown encoding, alone", "CC: =?UTF-8?X?A?=\n", "CC: ", "A");
        row("unknown encoding, text behind", "CC: =?UTF-8?X?A?= b\n", "CC: ", "A?= b\n b");
        row("charset never ends", "To: =?UTF-8\n", "To: ", "");
    }

    void recipients()
    {
        QFETCH(QString, line);
        QFETCH(QString, label);
        QTEST(decodeRecipients(line, label), "shown");
    }

    void removal_data()
    {
        const DataTable<QString, QString> row("text", "piece");
        for (const char *text : {"", "?=", "a?=", "?=a", "?\?==", "?=?=?=", "a?=b?=c", "no"})
            row(text, text, "?=");
        row("overlapping", "aaaaa", "aa");
    }

    void removal()
    {
        QFETCH(QString, text);
        QFETCH(QString, piece);
        QString ours = text;
        removeAll(&ours, piece);
        QCOMPARE(ours, text.remove(piece));
    }

    void date_data()
    {
        const DataTable<QString, QString, QString> row("date", "common", "withIndia");
        const QString afternoon = "05 Mar 2012 02:07:09 PM";
        const auto both = [&](const char *name, const QString &date, const QString &shown) {
            row(name, date, shown, shown);
        };
        both("day name, no zone", "Mon, 5 Mar 2012 14:07:09\n", afternoon);
        both("offset is not applied", "Mon, 5 Mar 2012 14:07:09 +0530\n", afternoon);
        both("no day name, zone word", "5 Mar 2012 14:07:09 GMT", afternoon);
        both("zone word that is taken out", "Mon, 5 Mar 2012 14:07:09 EDT\n", afternoon);
        both("zone comment", "Mon, 5 Mar 2012 14:07:09 +0000 (UTC)\r\n", afternoon);
        both("year of two digits", "5 Mar 12 14:07:09 +0000", afternoon);
        both("long names", "Monday, 05 March 2012 14:07:09", afternoon);
        both("month first", "March 5, 2012 14:07 PM", "05 Mar 2012 02:07:00 PM");
        both("midnight", "5 Mar 2012 00:00:00", "05 Mar 2012 12:00:00 AM");
        both("no seconds", "Mon, 5 Mar 2012 14:07 +0000", QString());
        both("blank in front", "\n Mon, 5 Mar 2012 14:07:09", QString());
        both("no date", "yesterday", QString());
        both("line end alone", "\n", QString());
        row("India in the middle", "5 Mar 2012 (India Standard Time) 14:07:09", QString(), afternoon);
    }

    void date()
    {
        QFETCH(QString, date);
        QTEST(displayDate(date, ZoneNames::Common), "common");
        QTEST(displayDate(date, ZoneNames::CommonAndIndia), "withIndia");
    }
};

QTEST_APPLESS_MAIN(TestHeaderRules)
#include "test_header_rules.moc"
