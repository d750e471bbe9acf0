#include "data_table.h"
#include "text/date_rules.h"
#include "text/header_rules.h"
#include "text/remove_all.h"

class TestHeaderRules : public QObject
{
    Q_OBJECT

private slots:
    // One value, and what each user of the rules makes of it.
    void sender_data()
    {
        const DataTable row([](const QString &line, const QStringList &folds, const QString &file,
                               const QString &mailbox, const QString &list, const QString &mailboxIndex,
                               const QString &operaIndex) {
            const auto decoded = [&](const HeaderDialect &users) {
                return decodeSender("From: " + line + '\n', folds, users);
            };
            QCOMPARE(decoded(singleFileHeaders), file);
            QCOMPARE(decoded(mailboxHeaders), mailbox);
            QCOMPARE(decoded(listHeaders), list);
            QCOMPARE(decoded(mailboxIndexHeaders), mailboxIndex);
            QCOMPARE(decoded(operaIndexHeaders), operaIndex);
        });
        const QStringList none;
        const QString word = "\"=?UTF-8?B?w6k=?=\" <r@x>";
        const QString qWord = "\"=?UTF-8?Q?=C3=A9?=\" <r@x>";
        row("plain", "A <a@x>", none, "A <a@x>\n", "A <a@x>", "A <a@x>\n", "A <a@x>", "A <a@x>\n");
        row("nothing", "", none, "\n", "", "\n", "", "\n");
        row("folded plain", "Ann", {" <a@x>\n"}, "Ann\n", "Ann", "Ann\n <a@x>\n", "Ann", "Ann\n <a@x>\n");
        row("Q word alone", "=?UTF-8?Q?N=C3=A9?=", none, "Né", "Né", "Né", "Né", "Né");
        row("Q word and address", "=?UTF-8?Q?R=C3=A9?= <r@x>", none, "Ré <r@x>\n", "Ré <r@x>", "Ré <r@x>\n",
            "Ré <r@x>", "Ré <r@x>");
        row("B word and address", "=?UTF-8?B?QW5u?= <a@x>", none, "Ann <a@x>", "QW5u <a@x>", "Ann <a@x>",
            "QW5u <a@x>", "Ann <a@x>");
        row("quoted B word", word, none, "é", "B?w6k", "é", "B?w6k", word + '\n');
        row("quoted Q word", qWord, none, "é\" <r@x>\n", "é\" <r@x>", "é\" <r@x>\n", "é\" <r@x>",
            qWord + '\n');
        row("unknown encoding", "=?UTF-8?X?abc?=", none, "abc", "abc", "abc", "abc", "abc");
        row("two words", "=?UTF-8?Q?=C3=A9?=", {"\t=?UTF-8?B?QW5u?=\n"}, "é", "é", "éAnn", "éAnn", "éAnn");
        row("fold, unknown", "a", {" =?UTF-8?X?b?= c\n"}, "a\n", "a", "a\nb?= c\n c\n", "a",
            "a\nb?= c\n c\n");
    }

    void sender() { checkRow(); }

    void nameInCapitals()
    {
        QCOMPARE(decodeSender("FROM: Ann\n", {}, mailboxHeaders), QString("FROM: Ann"));
        QCOMPARE(decodeSender("FROM: Ann\n", {}, operaIndexHeaders), QString("FROM: Ann\n"));
    }

    void subject_data()
    {
        const DataTable table([](const QString &line, const QStringList &folds, const QString &file,
                                 const QString &mailbox, const QString &list, const QString &operaIndex) {
            QCOMPARE(decodeSubject(line, folds, singleFileHeaders), file);
            QCOMPARE(decodeSubject(line, folds, mailboxHeaders), mailbox);
            QCOMPARE(decodeSubject(line, folds, mailboxIndexHeaders), mailbox);
            QCOMPARE(decodeSubject(line, folds, listHeaders), list);
            QCOMPARE(decodeSubject(line, folds, operaIndexHeaders), operaIndex);
        });
        const auto row = [&](const char *name, const QString &value, const QString &file,
                             const QString &mailbox, const QString &list, const QString &operaIndex) {
            table(name, "Subject: " + value + '\n', {}, file, mailbox, list, operaIndex);
        };
        const auto same = [&](const char *name, const QString &value, const QString &subject) {
            row(name, value, subject, subject, subject, subject);
        };
        const QString behind = "Re: =?UTF-8?Q?caf=C3=A9?=";
        const QString other = "Re: =?ISO-8859-1?Q?caf=E9?=";
        const QString fold = "a\nb?= c\n c\n";
        same("plain", "Hi", "Hi\n");
        table("empty", "Subject:\n", {}, "", "", "Subject:\n", "");
        table("folded plain", "Subject: Hi\n", {" a\n"}, "Hi\n a\n", "Hi\n a\n", "Hi\n a\n", "Hi\n a\n");
        row("word behind text", behind, "Re: café", behind + '\n', "Re: café", behind + '\n');
        row("other charset behind text", other, "Re: =?ISO-8859-1?Q?caf=E9", other + '\n',
            "Re: =?ISO-8859-1?Q?caf=E9", other + '\n');
        same("underscore stays", "=?UTF-8?Q?a_b?=", "a_b");
        table("two words", "Subject: =?UTF-8?Q?a?=\n", {" =?UTF-8?Q?=C3=A9?=\n"}, "aé", "aé", "aé", "aé");
        row("text behind a B word", "=?UTF-8?B?QW5u?= -!", "Ann -!", "Ann", "Ann", "Ann -!");
        row("padded B word", "=?UTF-8?B?QUJDQQ==?=", "ABC", "ABCA", "ABC", "ABCA");
        same("unknown charset", "=?no-such-charset?Q?=C3=A9?=", "é");
        same("B word is UTF-8", "=?ISO-8859-1?B?w6k=?=", "é");
        same("Korean", "=?ks_c_5601-1987?Q?=C7=D1=B1=DB?=", "한글");
        same("lower case encoding", "=?UTF-8?q?=C3=A9?=", "=C3=A9");
        table("text behind", "Subject: a\n", {" =?UTF-8?Q?b?= c\n"}, "a\nb c\n", "a\nb c\n", "a\nb c\n",
              "a\nb c\n");
        table("fold, unknown", "Subject: a\n", {" =?UTF-8?X?b?= c\n"}, "a\nb c\n", fold, fold, fold);
    }

    void subject() { checkRow(); }

    void recipients_data()
    {
        const DataTable row([](const QString &line, const QString &label, const QString &shown) {
            QCOMPARE(decodeRecipients(line, label), shown);
        });
        row("plain", "To: a@x\n", "To: ", "To: a@x\n");
        row("B word and address", "To: =?UTF-8?B?QW5u?= <a@x>\n", "To: ", "To: Ann <a@x>");
        row("word alone", "to: =?UTF-8?Q?A?=\n", "To: ", "To: A");
        row("word alone, CR LF", "To: =?UTF-8?Q?A?=\r\n", "To: ", "To: A\r");
        row("third is lost", "To: =?UTF-8?Q?A?= <a>, =?UTF-8?Q?B?= <b>\n", "To: ", "To: A <a>, =?UTF-8?Q?");
        row("two blanks", "Cc:  =?UTF-8?B?QW5u?=\n", "Cc: ", "Cc:  =?UTF-8?B?QW5u?=\n");
        row("unknown encoding, alone", "CC: =?UTF-8?X?A?=\n", "CC: ", "A");
        row("unknown encoding, text behind", "CC: =?UTF-8?X?A?= b\n", "CC: ", "A?= b\n b");
        row("charset never ends", "To: =?UTF-8\n", "To: ", "");
    }

    void recipients() { checkRow(); }

    void removal()
    {
        for (const char *text : {"", "?=", "a?=", "?=a", "?\?==", "?=?=?=", "a?=b?=c", "no"}) {
            QString ours = text;
            removeAll(&ours, "?=");
            QCOMPARE(ours, QString(text).remove("?="));
        }
    }

    void date_data()
    {
        const DataTable row([](const QString &date, const QString &common, const QString &withIndia) {
            QCOMPARE(displayDate(date, ZoneNames::Common), common);
            QCOMPARE(displayDate(date, ZoneNames::CommonAndIndia), withIndia);
        });
        const QString afternoon = "05 Mar 2012 02:07:09 PM";
        const auto both = [&](const char *name, const QString &date, const QString &shown) {
            row(name, date, shown, shown);
        };
        for (const char *date :
             {"Mon, 5 Mar 2012 14:07:09\n", "Mon, 5 Mar 2012 14:07:09 +0530\n", "5 Mar 2012 14:07:09 GMT",
              "5 Mar 2012 EDT 14:07:09", "Mon, 5 Mar 2012 14:07:09 +0000 (UTC)\r\n",
              "5 Mar 12 14:07:09 +0000", "Monday, 05 March 2012 14:07:09"})
            both(date, date, afternoon);
        both("month first", "March 5, 2012 14:07 PM", "05 Mar 2012 02:07:00 PM");
        both("midnight", "5 Mar 2012 00:00:00", "05 Mar 2012 12:00:00 AM");
        for (const char *none :
             {"Mon, 5 Mar 2012 14:07 +0000", "\n Mon, 5 Mar 2012 14:07:09", "yesterday", "\n"})
            both(none, none, QString());
        row("India in the middle", "5 Mar 2012 (India Standard Time) 14:07:09", QString(), afternoon);
    }

    void date() { checkRow(); }
};

QTEST_APPLESS_MAIN(TestHeaderRules)
#include "test_header_rules.moc"
