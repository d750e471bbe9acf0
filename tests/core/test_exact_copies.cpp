#include "browse/folder_tree.h"
#include "data_table.h"
#include "olm_files.h"
#include "save/exact_mailbox.h"
#include "save/mail_saving.h"
#include "save/save_ledger.h"
#include "scan_run.h"

namespace
{
const QByteArray list = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>";
const QByteArray listEnd = "</dict></plist>\n";
const QByteArray emptyList = list + listEnd;
const QByteArray dayTwo = " Fri Jan  2 00:00:00 1970\n"; // the time of every file
const QByteArray nobody = "From MAILER-DAEMON" + dayTwo;

QByteArray messageFile(const QByteArray &mail)
{
    return QByteArray::number(mail.size()) + '\n' + mail + emptyList;
}

// How the save ended: written messages, changes, left out ones, strays.
QString account()
{
    QString words = QString::number(saveLedger.total().written);
    for (int i = 0; i < changeKinds; ++i) {
        const ChangeCount &change = saveLedger.change(ChangeKind(i));
        if (change.messages > 0)
            words += QString(", %1 %2/%3").arg(nameOf(ChangeKind(i))).arg(change.messages).arg(change.count);
    }
    for (const LeftOutItem &item : saveLedger.leftOutItems())
        words += QString(", %1 %2").arg(nameOf(item.reason)).arg(item.messages.value_or(-1));
    if (saveLedger.strays() > 0)
        words += QString(", strays %1").arg(saveLedger.strays());
    return words;
}
} // namespace

class TestExactCopies : public QObject
{
    Q_OBJECT

private slots:
    // Stores of a few files, and all mailboxes of their exact copies.
    void stores_data()
    {
        const DataTable row([](int client, const FileMap &files, const FileMap &mailboxes,
                               const QString &expected) { checkStore(client, files, mailboxes, expected); });
        const auto mailFile = [&](const char *name, const QByteArray &file, const QByteArray &mailbox,
                                  const char *told = "1") {
            row(name, 9, {{"In/1.eml", file}}, {{"In/In.mbox", mailbox}}, told);
        };
        mailFile("no byte", "", nobody + "\n\n");
        mailFile("no line feed", "A: b", nobody + "A: b\n\n");
        mailFile("ends as a separator starts", "A: b\n\n>Fro", nobody + "A: b\n\n>Fro\n\n");
        mailFile("CR LF", "A: b\r\n\r\nx\ry\r\r\n\r", nobody + "A: b\n\nx\ry\r\n\r\n\n");
        mailFile("quoted", "A: b\n\nFrom \n>From x\n>>From : y\n> From\nFrom\n From \nfrom x\n",
                 nobody + "A: b\n\n>From \n>>From x\n>>>From : y\n> From\nFrom\n From \nfrom x\n\n",
                 "1, quoted 1/3");
        const QByteArray own = "From - Wed Nov 12 14:38:04 2014\n";
        mailFile("own separator", own + "A: b\n", own + "A: b\n\n");
        mailFile("own separator, CR LF", "From ann Sun 1:02\r\nA: b\r\n", "From ann Sun 1:02\nA: b\n\n");
        mailFile("own separator, no weekday", "From a@x Nov 12 14:38:04 2014\nA: b\n", nobody + "A: b\n\n");
        mailFile("own separator, no time", "From a@x Wed Nov 12 2014\nA: b\n", nobody + "A: b\n\n");
        mailFile("own separator alone", "From a@x", nobody + "\n\n");
        mailFile("own separator of 5000 bytes", "From a@x Wed 14:38" + QByteArray(5000, 'x') + "\nA: b\n",
                 nobody + "A: b\n\n");
        mailFile("no separator", "From : a@x Wed 14:38:04\nA: b\n",
                 nobody + ">From : a@x Wed 14:38:04\nA: b\n\n", "1, quoted 1/1");
        row("Opera", 10, {{"store/account1/2014/01/01/1.mbs", own + "A: b\n"}},
            {{"account1/Mails/Mails.mbox", own + "A: b\n\n"}}, "1");

        const auto box = [&](const char *name, const QByteArray &mailbox, const QByteArray &saved,
                             const char *told) {
            row(name, 3, {{"Mail/Box", mailbox}}, {{"Box/Box.mbox", saved}}, told);
        };
        const QByteArray first = "From a\n";
        box("mailbox", first + "A: b\r\n\r\nx\xFF\r\r\nFrom b\n" + own + "\r",
            first + "A: b\n\nx\xFF\r\nFrom b\n" + own + "\r\n", "2, strays 1");
        box("order mark", "\xEF\xBB\xBF" + first + "\xEF\xBB\xBF" + own, first + "\xEF\xBB\xBF" + own, "1");
        row("one line", 3, {{"Mail/Box", first}, {"Mail/Zero", first + "x"}},
            {{"Zero/Zero.mbox", first + "x\n"}}, "1");

        row("export", 1, {{"X.mbox/mbox", first + "x"}, {"Y/mbox", first + "y"}},
            {{"X/X.mbox", first + "x\n"}, {"Y/mbox/mbox.mbox", first + "y\n"}}, "2");
    }
    void stores() { checkRow(); }

    void emlx_data()
    {
        const DataTable row([](const FileMap &files, const QByteArray &mailbox, const QString &told) {
            FileMap store;
            for (auto file = files.cbegin(); file != files.cend(); ++file)
                store.insert("In.mbox/Messages/" + file.key(), file.value());
            checkStore(2, store, {{"In/In.mbox", mailbox}}, told);
        });
        const auto count = [&](const char *name, const QByteArray &file, const QByteArray &mail,
                               const char *told = "1") {
            row(name, {{"1.emlx", file}}, nobody + mail, told);
        };
        const QByteArray mail = "A: b\n\nx\n";
        count("byte count", "8\n" + mail + emptyList, mail + "\n");
        count("byte count with blanks", " +8 \r\n" + mail + emptyList, mail + "\n");
        count("within a line", "7\n" + mail + emptyList, mail + "\n");
        const QByteArray held = mail + emptyList;
        count("all of the file", QByteArray::number(held.size()) + '\n' + held, held + '\n');
        count("0", "0\n" + mail + emptyList, mail + "\n");
        count("negative", "-8\n" + mail + emptyList, mail + "\n");
        count("too large", "999\n" + mail + emptyList, mail + "\n");
        count("beyond all numbers", QByteArray(30, '9') + '\n' + mail + emptyList, mail + "\n");
        count("0 and two lists", "0\n" + mail + emptyList + "x" + emptyList + emptyList,
              mail + emptyList + "x" + emptyList + "\n");
        count("0 and a list in a line", "0\n" + mail + "x" + emptyList, mail + "x" + emptyList + "\n");
        count("0 and no list", "0\n" + mail, mail + "\n");
        count("nothing but a list", "0\n" + emptyList, "\n\n");
        count("too large and no list", "999\n" + mail, mail + "\n", "0, unreadable 1, strays 1");
        count("no number", mail + emptyList, mail + "\n");
        count("number and more", "8 x\n" + mail + emptyList, "8 x\n" + mail + "\n");
        count("no separator of its own", messageFile("From - Wed Nov 12 14:38:04 2014\nA: b\n"),
              ">From - Wed Nov 12 14:38:04 2014\nA: b\n\n", "1, quoted 1/1");
    }
    void emlx() { checkRow(); }

    void separators_data()
    {
        const DataTable row([](const QByteArray &headers, const QByteArray &words) {
            checkStore(9, {{"In/1.eml", headers}},
                       {{"In/In.mbox", "From " + words + '\n' + headers + "\n\n"}}, "1");
        });
        const auto date = [&](const QByteArray &name, const QByteArray &value, const char *words) {
            row(name, "Date: " + value, QByteArray("MAILER-DAEMON ") + words);
        };
        const char summer[] = "Sun Nov  1 22:30:05 2015";
        date("east", "Mon, 2 Nov 2015 04:00:05 +0530", summer);
        date("west", "Sun, 1 Nov 2015 15:30:05 -0700", summer);
        date("zone with a colon", "Sun, 1 Nov 2015 23:30:05 +01:00", summer);
        date("zone by name", "Sun, 1 Nov 2015 14:30:05 PST", summer);
        date("zone by another name", "Sun, 1 Nov 2015 22:30:05 UT", summer);
        date("no zone", "Sun, 1 Nov 2015 22:30:05", summer);
        date("no weekday", "1 November 2015 22:30:05 -0000", summer);
        date("no second", "1 Nov 2015 22:30 +0000", "Sun Nov  1 22:30:00 2015");
        date("leap second", "31 Dec 2016 23:59:60 GMT", "Sat Dec 31 23:59:59 2016");
        date("year of two digits", "1 Nov 15 22:30:05 Z", summer);
        date("and before 2000", "31 Dec 99 23:59:00 -0100", "Sat Jan  1 00:59:00 2000");
        date("year of three digits", "1 Nov 115 22:30:05 GMT", summer);
        date("comments", "Sun, (a \\) (b)) 1 Nov(x)2015 22:30:05 +0000 (GMT)", summer);
        date("folded", "Sun,\n 1 Nov 2015\n\t22:30:05 +0000", summer);
        date("as asctime", "Sun Nov  1 22:30:05 2015", summer);
        date("and a zone", "Sun Nov  1 23:30:05 +0100 2015", summer);
        date("and a zone behind", "Sun Nov  1 17:30:05 2015 EST", summer);
        date("with dashes", "Sunday, 01-Nov-2015 22:30:05 GMT", summer);
        for (const char *none : {"", "yesterday", "31 Feb 2015 22:30:05", "1 Nov 2015 24:00:00",
                                 "1 Nov 2015 22:30:61", "1 Foo 2015 1:02:03", "1 Nov 0 1:02"})
            date(QByteArray("no date, ") + none, none, "Fri Jan  2 00:00:00 1970");
        const auto from = [&](const char *name, const QByteArray &value, const QByteArray &address) {
            row(name, value, address + dayTwo.chopped(1));
        };
        from("address", "FROM : a@x", "a@x");
        from("with a name", "From: \"x, <y@z>\" <a@x>, b@x", "a@x");
        from("with a comment", "From: (b@x) a@x (c)", "a@x");
        from("first From of two", "From: a@x\nFrom: b@x", "a@x");
        from("folded address", "From: Ann\n <a@x>", "a@x");
        from("route", "From: <@b,@c:a@x>", "a@x");
        from("group", "From: Friends: a@x, b@x;", "a@x");
        from("no closing", "From: Ann <a@x", "a@x");
        from("blank in it", "From: <a b@x>", "MAILER-DAEMON");
        from("empty", "From: <>", "MAILER-DAEMON");
        from("in the body", "A: b\n\nFrom: a@x\nDate: 1 Nov 2015 22:30", "MAILER-DAEMON");
    }
    void separators() { checkRow(); }

    void emlxDates_data()
    {
        const DataTable row([](const QByteArray &mail, const QByteArray &dict, const QByteArray &time) {
            const QByteArray file = QByteArray::number(mail.size()) + '\n' + mail + list + dict + listEnd;
            checkStore(2, {{"In.mbox/Messages/1.emlx", file}},
                       {{"In/In.mbox", "From MAILER-DAEMON " + time + '\n' + mail + '\n'}}, "1");
        });
        const QByteArray key = "<key>date-received</key>";
        const QByteArray mail = "A: b\n";
        row("date received", mail, "<key>x</key><integer>1</integer>" + key + "<integer>86399</integer>",
            "Thu Jan  1 23:59:59 1970");
        row("as real", mail, key + "<real>1e9</real>", "Sun Sep  9 01:46:40 2001");
        row("header first", "Date: 1 Nov 2015 22:30 +0000\n", key + "<integer>1</integer>",
            "Sun Nov  1 22:30:00 2015");
        row("header that can't be read", "Date: x\n", key + "<integer>1</integer>",
            "Thu Jan  1 00:00:01 1970");
        for (const char *none : {"<integer>-1</integer>", "<integer>253402300800</integer>",
                                 "<string>x</string>", "<real>nan</real>", "<key>y</key><integer>1</integer>",
                                 "<string>x</string><integer>1</integer>"})
            row(none, mail, key + none, "Fri Jan  2 00:00:00 1970");
    }
    void emlxDates() { checkRow(); }

    void parts_data()
    {
        const DataTable row(
            [](const FileMap &files, const QByteArray &mail, const QByteArray &saved, const QString &told) {
                FileMap store{{"In.mbox/Messages/1.partial.emlx", messageFile(mail)}};
                for (auto file = files.cbegin(); file != files.cend(); ++file)
                    store.insert("In.mbox/" + file.key(), file.value());
                checkStore(2, store, {{"In/In.mbox", nobody + saved + '\n'}}, told);
            });
        const QByteArray cut = "X-Apple-Content-Length: 9\n";
        const QByteArray top = "Content-Type: multipart/mixed; boundary=b\n\n";
        const auto one = [&](const QByteArray &name, const FileMap &files, const QByteArray &headers,
                             const QByteArray &content, const char *told = "1") {
            row(name, files, top + "--b\n" + headers + cut + "\n\n--b--\n",
                top + "--b\n" + headers + (content.isNull() ? cut : QByteArray()) + "\n" + content +
                    "\n--b--\n",
                told);
        };
        one("beside, as it stands", {{"Messages/1.1.emlxpart", "x\ny=\xFF"}},
            "Content-Transfer-Encoding: base64\n", "x\ny=\xFF");
        one("beside before Attachments", {{"Messages/1.1.emlxpart", "x"}, {"Attachments/1/1/a", "y"}}, "",
            "x");
        one("quoted", {{"Messages/1.1.emlxpart", "From x"}}, "", ">From x", "1, quoted 1/1");
        one("of another section", {{"Messages/1.2.emlxpart", "x"}, {"Attachments/1/2/a", "y"}}, "",
            QByteArray(), "1, emptyParts 1/1");
        one("two files", {{"Attachments/1/1/a", "x"}, {"Attachments/1/1/b", "y"}}, "", QByteArray(),
            "1, emptyParts 1/1");
        one("hidden list", {{"Attachments/1/1/.DS_Store", "x"}, {"Attachments/1/1/a", "y"}}, "", "y");
        const FileMap file{{"Attachments/1/1/a b.txt", QByteArray(58, 'x') + "=\r\n\xE9 \n"}};
        one("base64", file, "Content-Transfer-Encoding: BASE64\n",
            "eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4\neD0NCukgCg==");
        one("quoted-printable", file, "content-transfer-encoding:\n quoted-printable\n",
            QByteArray(58, 'x') + "=3D=0D\n=E9=20\n");
        one("quoted-printable, a long line", {{"Attachments/1/1/a", QByteArray(75, 'x') + "From y"}},
            "Content-Transfer-Encoding: quoted-printable\n", QByteArray(75, 'x') + "=\n=46rom y");
        for (const char *plain : {"7bit", "8bit", "binary", "x-uuencode"})
            one(plain, file, QByteArray("Content-Transfer-Encoding: ") + plain + '\n',
                QByteArray(58, 'x') + "=\n\xE9 \n");
        one("empty file", {{"Attachments/1/1/a", ""}}, "Content-Transfer-Encoding: base64\n", "");

        row("no multipart", {{"Attachments/1/1/a", "x"}}, cut + "A: b\n\n", "A: b\n\nx\n", "1");
        row("folded header", {{"Attachments/1/1/a", "x"}}, "X-APPLE-Content-Length:\n 9\nA: b\n\n",
            "A: b\n\nx\n", "1");
        row("no empty line", {{"Attachments/1/1/a", "x"}}, "A: b\n" + cut, "A: b\n" + cut,
            "1, emptyParts 1/1");
        row("message in a message", {{"Attachments/1/1.1/a", "x"}},
            "Content-Type: message/rfc822\n\nA: b\n" + cut + "\n",
            "Content-Type: message/rfc822\n\nA: b\n\nx\n", "1");
        row("boundary that starts as another", {{"Attachments/1/2/a", "x"}},
            "Content-Type: multipart/mixed; boundary=bb\n\n--bb\nContent-Type: multipart/mixed; "
            "boundary=b\n\n--b\n\n--bb\n" +
                cut + "\n",
            "Content-Type: multipart/mixed; boundary=bb\n\n--bb\nContent-Type: multipart/mixed; "
            "boundary=b\n\n--b\n\n--bb\n\nx\n",
            "1");
        row("no header, no part", {{"Attachments/1/1/a", "x"}}, "A: b\n\n" + cut + "\n",
            "A: b\n\n" + cut + "\n", "1");
        // Parts as IMAP numbers them, each with a file that holds its number.
        FileMap numbers;
        for (const char *section : {"1", "2", "2.1", "2.2", "2.2.1", "2.2.2", "3", "3.1", "3.2", "4", "4.1",
                                    "4.1.1", "5", "5.1", "5.1.1", "6"})
            numbers.insert(QString("Attachments/1/%1/a").arg(section), QByteArray(section) + '!');
        const QByteArray nested =
            "Content-Type: Multipart/Mixed;\n\tx=\"a;boundary=no\"; Boundary=\"b \\\"1\"\n\n--no\n$\n--b "
            "\"1\n$1\n"
            "--b \"1 \nContent-Type: multipart/alternative; boundary=c\n\n--c\n$2.1\n--c\n"
            "Content-Type: multipart/related; boundary=cc\n\n--cc\n$2.2.1\n--cc\n$2.2.2\n--cc--\n$\n--c--\n\n"
            "--b \"1\nContent-Type: message/rfc822\n\nContent-Type: multipart/mixed; "
            "boundary=d\n\n--d\n$3.1\n--d\n"
            "$3.2\n--d--\n--b \"1\nContent-Type: message/rfc822\n\nA: b\n$4.1\n"
            "--b \"1\nContent-Type: multipart/digest; boundary=e\n\n--e\n\nA: b\n$5.1.1\n"
            "--b \"1\nContent-Type: message/rfc822\n$6\n--b \"1--\n";
        const auto filled = [&](QByteArray mail, bool whole) {
            mail.replace("$\n", "X-apple-content-length: 9\n\n");
            static const QRegularExpression mark("\\$([0-9.]+)\n");
            return QString::fromLatin1(mail)
                .replace(mark, whole ? "\n\\1!\n" : QString::fromLatin1(cut + "\n\n"))
                .toLatin1();
        };
        row("nested", numbers, filled(nested, false), filled(nested, true), "1");
    }
    void parts() { checkRow(); }

    // What a mailbox has before a place that can't be read arrives, message by message.
    void failingMailbox()
    {
        QByteArray mailbox;
        std::vector<int> starts; // of the messages
        for (int i = 0; i < 300; ++i) {
            starts.push_back(mailbox.size());
            mailbox += "From - Wed Nov 12 14:38:04 2014\n" +
                       QByteArray(50 + i * 13 % 7, 'x').append('\n').repeated(60);
        }
        QTemporaryDir out;
        for (const int place :
             {1, 40, 300000, starts[100], starts[200], starts[200] + 1, mailbox.size() - 1}) {
            const QString path = out.filePath(QString::number(place));
            const std::string_view bytes(mailbox.constData(), size_t(mailbox.size()));
            ByteSource start = ByteSource::failing(bytes, place);
            QCOMPARE(probeMailbox(&start).end == ExactEnd::Whole, place > 1); // its first line can be read
            ByteSource source = ByteSource::failing(bytes, place);
            MailboxFile target;
            target.open(path, {});
            const ExactMailboxCopy copy = copyMailboxExactly(&source, &target, [](qint64) { return true; });
            target.close();
            const QByteArray saved = readFiles(out.path()).value(QString::number(place));
            const bool atStart = std::count(starts.begin(), starts.end(), saved.size()) > 0;
            QVERIFY(mailbox.startsWith(saved) && atStart && saved.size() <= place);
            QCOMPARE(copy.written, qint64(saved.count("From ")));
            QCOMPARE(copy.found, copy.written + 1);
            QCOMPARE(copy.cutOffset, qint64(saved.size()));
        }
    }

private:
    // Saves all of a store and compares the mailboxes, by their paths below "Mail", and the account.
    static void checkStore(int client, const FileMap &files, const FileMap &mailboxes,
                           const QString &expected)
    {
        ScanRun run(client);
        run.write(files);
        setTimes(run, files);
        const auto [saved, told] = saveOf(&run, client == 5 ? run.path(files.firstKey()) : run.path());
        QCOMPARE(QStringList(saved.keys()).join(", "), QStringList(mailboxes.keys()).join(", "));
        for (const QString &path : mailboxes.keys())
            QCOMPARE(saved[path], mailboxes[path]);
        QCOMPARE(told, expected);
    }

    static void setTimes(const ScanRun &run, const FileMap &files)
    {
        for (const QString &path : files.keys()) {
            QFile file(run.path(path));
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(
                file.setFileTime(QDateTime::fromSecsSinceEpoch(86400), QFileDevice::FileModificationTime));
        }
    }

    // Saves all folders of a store; gives the mailboxes by their paths below "Mail", and the account.
    static std::pair<FileMap, QString> saveOf(ScanRun *run, const QString &store)
    {
        run->scan(store);
        for (auto folder = objMapFID_PID.constBegin(); folder != objMapFID_PID.constEnd(); ++folder)
            addFolderRecord(folder.key(), folder.value());
        QTemporaryDir out;
        saveDir = out.path();
        bExactCopies = true;
        bForAppleMail = bOlmFileFound.load();
        bForOutlookMail = !bOlmFileFound;
        markFolder(llRootId, stateTicked);
        QMailSaving saving;
        const bool ended = runToEnd(&saving);
        bExactCopies = false;
        takeProblems();
        const char *bundle = bForAppleMail ? "/Main Identity.mbox/Mail" : "/Main Identity.rge/Mail";
        return {readFiles(out.path() + bundle), ended ? account() : "the thread hangs"};
    }
};

QTEST_GUILESS_MAIN(TestExactCopies)
#include "test_exact_copies.moc"
