#include "text/header_rules.h"
#include "text/remove_all.h"

#include <QtTest>

namespace
{
QString utf8(const char *text)
{
    return QString::fromUtf8(text);
}
} // namespace

class TestHeaderRules : public QObject
{
    Q_OBJECT

private slots:
    void sender_data();
    void sender();
    void subject_data();
    void subject();
    void recipients_data();
    void recipients();
    void removal_data();
    void removal();
};

// One value, and what each user of the rules makes of it.
void TestHeaderRules::sender_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("folds");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("mailbox");
    QTest::addColumn<QString>("list");
    QTest::addColumn<QString>("mailboxIndex");
    QTest::addColumn<QString>("operaIndex");

    const QStringList none;
    QTest::newRow("plain") << "From: Ann <a@x>\n"
                           << none << "Ann <a@x>\n"
                           << "Ann <a@x>"
                           << "Ann <a@x>\n"
                           << "Ann <a@x>"
                           << "Ann <a@x>\n";
    QTest::newRow("name in capitals") << "FROM: Ann\n"
                                      << none << "FROM: Ann\n"
                                      << "FROM: Ann"
                                      << "FROM: Ann\n"
                                      << "FROM: Ann"
                                      << "FROM: Ann\n";
    QTest::newRow("nothing") << "From: \n"
                             << none << "\n"
                             << ""
                             << "\n"
                             << ""
                             << "\n";
    QTest::newRow("folded plain") << "From: Ann\n"
                                  << QStringList{" <a@x>\n"} << "Ann\n"
                                  << "Ann"
                                  << "Ann\n <a@x>\n"
                                  << "Ann"
                                  << "Ann\n <a@x>\n";
    QTest::newRow("Q word alone") << "From: =?UTF-8?Q?Ren=C3=A9?=\n"
                                  << none << utf8("René") << utf8("René") << utf8("René") << utf8("René")
                                  << utf8("René");
    QTest::newRow("Q word and address") << "From: =?UTF-8?Q?Ren=C3=A9?= <r@x>\n"
                                        << none << utf8("René <r@x>\n") << utf8("René <r@x>")
                                        << utf8("René <r@x>\n") << utf8("René <r@x>") << utf8("René <r@x>");
    QTest::newRow("B word and address") << "From: =?UTF-8?B?QW5u?= <a@x>\n"
                                        << none << "Ann <a@x>"
                                        << "QW5u <a@x>"
                                        << "Ann <a@x>"
                                        << "QW5u <a@x>"
                                        << "Ann <a@x>";
    QTest::newRow("quoted B word") << "From: \"=?UTF-8?B?UmVuw6k=?=\" <r@x>\n"
                                   << none << utf8("René") << "B?UmVuw6k" << utf8("René") << "B?UmVuw6k"
                                   << "\"=?UTF-8?B?UmVuw6k=?=\" <r@x>\n";
    QTest::newRow("quoted Q word") << "From: \"=?UTF-8?Q?Ren=C3=A9?=\" <r@x>\n"
                                   << none << utf8("René\" <r@x>\n") << utf8("René\" <r@x>")
                                   << utf8("René\" <r@x>\n") << utf8("René\" <r@x>")
                                   << "\"=?UTF-8?Q?Ren=C3=A9?=\" <r@x>\n";
    QTest::newRow("unknown encoding") << "From: =?UTF-8?X?abc?=\n"
                                      << none << "abc"
                                      << "abc"
                                      << "abc"
                                      << "abc"
                                      << "abc";
    QTest::newRow("words on two lines") << "From: =?UTF-8?Q?A=C3=A9?=\n"
                                        << QStringList{"\t=?UTF-8?B?QW5u?=\n"} << utf8("Aé") << utf8("Aé")
                                        << utf8("AéAnn") << utf8("AéAnn") << utf8("AéAnn");
    QTest::newRow("fold of unknown encoding") << "From: a\n"
                                              << QStringList{" =?UTF-8?X?b?= c\n"} << "a\n"
                                              << "a"
                                              << "a\nb?= c\n c\n"
                                              << "a"
                                              << "a\nb?= c\n c\n";
}

void TestHeaderRules::sender()
{
    QFETCH(QString, line);
    QFETCH(QStringList, folds);
    QTEST(decodeSender(line, folds, singleFileHeaders), "file");
    QTEST(decodeSender(line, folds, mailboxHeaders), "mailbox");
    QTEST(decodeSender(line, folds, mailboxIndexHeaders), "mailboxIndex");
    QTEST(decodeSender(line, folds, listHeaders), "list");
    QTEST(decodeSender(line, folds, operaIndexHeaders), "operaIndex");
}

void TestHeaderRules::subject_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("folds");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("mailbox");
    QTest::addColumn<QString>("list");
    QTest::addColumn<QString>("operaIndex");

    const QStringList none;
    QTest::newRow("plain") << "Subject: Hi\n"
                           << none << "Hi\n"
                           << "Hi\n"
                           << "Hi\n"
                           << "Hi\n";
    QTest::newRow("empty") << "Subject:\n"
                           << none << ""
                           << ""
                           << "Subject:\n"
                           << "";
    QTest::newRow("folded plain") << "Subject: Hi\n"
                                  << QStringList{" there\n"} << "Hi\n there\n"
                                  << "Hi\n there\n"
                                  << "Hi\n there\n"
                                  << "Hi\n there\n";
    QTest::newRow("word behind text") << "Subject: Re: =?UTF-8?Q?caf=C3=A9?=\n"
                                      << none << utf8("Re: café") << "Re: =?UTF-8?Q?caf=C3=A9?=\n"
                                      << utf8("Re: café") << "Re: =?UTF-8?Q?caf=C3=A9?=\n";
    QTest::newRow("other charset behind text") << "Subject: Re: =?ISO-8859-1?Q?caf=E9?=\n"
                                               << none << "Re: =?ISO-8859-1?Q?caf=E9"
                                               << "Re: =?ISO-8859-1?Q?caf=E9?=\n"
                                               << "Re: =?ISO-8859-1?Q?caf=E9"
                                               << "Re: =?ISO-8859-1?Q?caf=E9?=\n";
    QTest::newRow("underscore stays") << "Subject: =?UTF-8?Q?a_b?=\n"
                                      << none << "a_b"
                                      << "a_b"
                                      << "a_b"
                                      << "a_b";
    QTest::newRow("two folded words")
        << "Subject: =?UTF-8?Q?a?=\n"
        << QStringList{" =?UTF-8?Q?=C3=A9?=\n"} << utf8("aé") << utf8("aé") << utf8("aé") << utf8("aé");
    QTest::newRow("text behind a B word") << "Subject: =?UTF-8?B?QW5u?= -!\n"
                                          << none << "Ann -!"
                                          << "Ann"
                                          << "Ann"
                                          << "Ann -!";
    QTest::newRow("padded B word") << "Subject: =?UTF-8?B?QUJDQQ==?=\n"
                                   << none << "ABC"
                                   << "ABCA"
                                   << "ABC"
                                   << "ABCA";
    QTest::newRow("unknown charset") << "Subject: =?no-such-charset?Q?=C3=A9?=\n"
                                     << none << utf8("é") << utf8("é") << utf8("é") << utf8("é");
    QTest::newRow("B word is UTF-8") << "Subject: =?ISO-8859-1?B?w6k=?=\n"
                                     << none << utf8("é") << utf8("é") << utf8("é") << utf8("é");
    QTest::newRow("Latin-1") << "Subject: =?ISO-8859-1?Q?=E9?=\n"
                             << none << utf8("é") << utf8("é") << utf8("é") << utf8("é");
    QTest::newRow("Korean") << "Subject: =?ks_c_5601-1987?Q?=C7=D1=B1=DB?=\n"
                            << none << utf8("한글") << utf8("한글") << utf8("한글") << utf8("한글");
    QTest::newRow("lower case encoding") << "Subject: =?UTF-8?q?=C3=A9?=\n"
                                         << none << "=C3=A9"
                                         << "=C3=A9"
                                         << "=C3=A9"
                                         << "=C3=A9";
    QTest::newRow("fold of text behind a word") << "Subject: a\n"
                                                << QStringList{" =?UTF-8?Q?b?= c\n"} << "a\nb c\n"
                                                << "a\nb c\n"
                                                << "a\nb c\n"
                                                << "a\nb c\n";
    QTest::newRow("fold of unknown encoding") << "Subject: a\n"
                                              << QStringList{" =?UTF-8?X?b?= c\n"} << "a\nb c\n"
                                              << "a\nb?= c\n c\n"
                                              << "a\nb?= c\n c\n"
                                              << "a\nb?= c\n c\n";
}

void TestHeaderRules::subject()
{
    QFETCH(QString, line);
    QFETCH(QStringList, folds);
    QTEST(decodeSubject(line, folds, singleFileHeaders), "file");
    QTEST(decodeSubject(line, folds, mailboxHeaders), "mailbox");
    QTEST(decodeSubject(line, folds, mailboxIndexHeaders), "mailbox");
    QTEST(decodeSubject(line, folds, listHeaders), "list");
    QTEST(decodeSubject(line, folds, operaIndexHeaders), "operaIndex");
}

void TestHeaderRules::recipients_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("shown");

    QTest::newRow("plain") << "To: a@x\n"
                           << "To: "
                           << "To: a@x\n";
    QTest::newRow("B word and address") << "To: =?UTF-8?B?QW5u?= <a@x>\n"
                                        << "To: "
                                        << "To: Ann <a@x>";
    QTest::newRow("word alone") << "to: =?UTF-8?Q?A?=\n"
                                << "To: "
                                << "To: A";
    QTest::newRow("word alone, CR LF") << "To: =?UTF-8?Q?A?=\r\n"
                                       << "To: "
                                       << "To: A\r";
    QTest::newRow("third part is lost") << "To: =?UTF-8?Q?A?= <a@x>, =?UTF-8?Q?B?= <b@x>\n"
                                        << "To: "
                                        << "To: A <a@x>, =?UTF-8?Q?";
    QTest::newRow("two blanks") << "Cc:  =?UTF-8?B?QW5u?=\n"
                                << "Cc: "
                                << "Cc:  =?UTF-8?B?QW5u?=\n";
    QTest::newRow("unknown encoding, alone") << "CC: =?UTF-8?X?A?=\n"
                                             << "CC: "
                                             << "A";
    QTest::newRow("unknown encoding, text behind") << "CC: =?UTF-8?X?A?= b\n"
                                                   << "CC: "
                                                   << "A?= b\n b";
    QTest::newRow("charset never ends") << "To: =?UTF-8\n"
                                        << "To: "
                                        << "";
}

void TestHeaderRules::recipients()
{
    QFETCH(QString, line);
    QFETCH(QString, label);
    QTEST(decodeRecipients(line, label), "shown");
}

void TestHeaderRules::removal_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("piece");
    for (const char *text : {"", "?=", "a?=", "?=a", "?\?==", "?=?=?=", "a?=b?=c", "no"})
        QTest::newRow(text) << text << "?=";
    QTest::newRow("overlapping") << "aaaaa"
                                 << "aa";
}

void TestHeaderRules::removal()
{
    QFETCH(QString, text);
    QFETCH(QString, piece);
    QString ours = text;
    removeAll(&ours, piece);
    QCOMPARE(ours, text.remove(piece));
}

QTEST_APPLESS_MAIN(TestHeaderRules)
#include "test_header_rules.moc"
