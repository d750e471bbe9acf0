#include "app/olm_records.h"
#include "app/problem_log.h"
#include "app/shared_state.h"
#include "browse/folder_tree.h"
#include "olm_files.h"
#include "save/mail_saving.h"
#include "save/olm_dates.h"
#include "save/olm_message.h"
#include "save/olm_target.h"
#include "scan/message_saving_thread.h"
#include "store_files.h"
#include "worker_run.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
const QByteArray sentDate = "Wed, 12 Nov 2014 14:38:04 +0530";
const QByteArray receivedDate = "Thu, 13 Nov 2014 15:39:05 -0100";
const OlmMarks marks = {QDateTime(QDate(2020, 2, 3), QTime(4, 5, 6)), "ID", 777};

QByteArray composed(const MailMLRC &record, const QByteArray &archive = QByteArray())
{
    MemoryBytes bytes({archive.constData(), static_cast<size_t>(archive.size())});
    QByteArray written;
    OlmComposer(&bytes).compose(record, marks, [&](std::string_view piece) {
        written.append(piece.data(), static_cast<int>(piece.size()));
    });
    return written;
}

// The lines of a header block that start so, with their folds.
QByteArray header(const MailMLRC &record, const QByteArray &start)
{
    const QByteArray block = '\n' + olmHeaderBlock(record, marks);
    const int at = block.indexOf('\n' + start);
    if (at < 0)
        return QByteArray();
    int end = block.indexOf('\n', at + 1);
    while (block.mid(end + 1, 1) == "\t")
        end = block.indexOf('\n', end + 1);
    return block.mid(at + 1, end - at - 1);
}
} // namespace

class TestOlmSave : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void dates_data();
    void dates();
    void presentTime();
    void from_data();
    void from();
    void people_data();
    void people();
    void headerBlock();
    void html_data();
    void html();
    void escapesOneByOne();
    void boundaries_data();
    void boundaries();
    void wholeMessage();
    void withoutBody();
    void base64Pieces();
    void shortArchive();
    void attachmentsBeyondTheArchive();
    void targets_data();
    void targets();
    void bundle();
    void hostileFolders();
    void stopBetweenMessages();
    void vanishedAndShrunk();

private:
    void scan(const QByteArray &archive);
    void save();

    QScopedPointer<QTemporaryDir> m_dir;
    QMessageSavingThread m_scan;
    QMailSaving m_save;
};

void TestOlmSave::init()
{
    m_dir.reset(new QTemporaryDir);
    m_selectedFile = m_dir->filePath("backup.olm");
    saveDir = m_dir->filePath("out");
    discardScanResult();
    m_scan.m_mailClientIndex = 5;
    takeProblems();
}

void TestOlmSave::scan(const QByteArray &archive)
{
    writeFiles(m_dir->path(), {{"backup.olm", archive}});
    QVERIFY(runToEnd(&m_scan));
    for (auto folder = objMapFID_PID.constBegin(); folder != objMapFID_PID.constEnd(); ++folder)
        addFolderRecord(folder.key(), folder.value());
    markFolder(llRootId, stateTicked);
}

void TestOlmSave::save()
{
    bForAppleMail = true;
    QVERIFY(runToEnd(&m_save));
}

void TestOlmSave::dates_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<int>("outgoing");
    QTest::addColumn<QString>("held");     // s: sent time, r: received time
    QTest::addColumn<QString>("envelope"); // s, r, n: now, -: none
    QTest::addColumn<QString>("date");
    const auto row = [](const char *folder, int outgoing, const char *held, const char *envelope,
                        const char *date) {
        QTest::addRow("%s, %d, %s", folder, outgoing, held)
            << QString(folder) << outgoing << QString(held) << QString(envelope) << QString(date);
    };
    row("Sent Items", 0, "sr", "s", "s");
    row("x/Sent Items 2", 7, "sr", "s", "s");
    row("Sent Items/Inbox", 1, "sr", "s", "s");
    row("sent items", 0, "sr", "r", "r");
    row("Inbox", 1, "sr", "r", "r");
    row("Inbox/Deleted Items", 1, "sr", "r", "r");
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
    row("", 0, "sr", "r", "r");
    // A row whose date is empty takes what there is.
    row("Sent Items", 1, "r", "r", "r");
    row("Inbox", 1, "", "n", "n");
    row("Deleted Items", 0, "s", "s", "n");
    row("Drafts", 0, "", "n", "n");
    row("Work", 1, "r", "r", "r");
}

void TestOlmSave::dates()
{
    QFETCH(QString, folder);
    QFETCH(int, outgoing);
    QFETCH(QString, held);
    MailMLRC record;
    record.szFolderPath.set(folder);
    record.iIsOutgoing = outgoing;
    if (held.contains("s"))
        record.szSentTime.set(sentDate);
    if (held.contains("r"))
        record.szReceivedTime.set(receivedDate);
    const OlmDates dates = datesOfOlmRecord(record);
    const auto letter = [&](const QByteArray &date) {
        return !dates.written ? "-" : date.isEmpty() ? "n" : date == sentDate ? "s" : "r";
    };
    QTEST(QString(letter(dates.envelope)), "envelope");
    QTEST(QString(letter(dates.header)), "date");
    const QByteArray block = olmHeaderBlock(record, marks);
    QCOMPARE(block.startsWith("From ???@??? "), dates.written);
    QCOMPARE(block.contains("User-Agent: "), dates.written && !dates.envelope.isEmpty());
    QCOMPARE(block.contains("Date: "), dates.written);
}

void TestOlmSave::presentTime()
{
    QVERIFY(composed(MailMLRC())
                .startsWith("From ???@??? Mon Feb 3 04:05:06 2020\n"
                            "Date: Mon, 03 Feb 2020 04:05:06 +0530\n"
                            "X-MS-Has-Attach: \nMime-version: 1.1\n"));
}

void TestOlmSave::from_data()
{
    QTest::addColumn<QString>("addresses");
    QTest::addColumn<QString>("names");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("one") << "a@x;"
                         << "Ann;" << QByteArray("From: Ann <a@x>");
    QTest::newRow("the last") << "a@x;b@x;"
                              << "Ann;Bob;" << QByteArray("From: Bob <b@x>");
    QTest::newRow("no name") << "a@x;b@x;"
                             << "" << QByteArray("From: b@x <b@x>");
    QTest::newRow("empty name") << "a@x;"
                                << ";" << QByteArray("From:  <a@x>");
    QTest::newRow("entities stay") << "a&amp;b;"
                                   << "A&lt;;" << QByteArray("From:  <b>");
    QTest::newRow("percent signs") << "%2;"
                                   << "%2%1;" << QByteArray("From: %2%1 <%2>");
    QTest::newRow("no address") << ""
                                << "Ann;" << QByteArray();
}

void TestOlmSave::from()
{
    QFETCH(QString, addresses);
    QFETCH(QString, names);
    MailMLRC record;
    record.szFromAddress.set(addresses);
    record.szFromName.set(names);
    QTEST(header(record, "From: "), "line");
}

void TestOlmSave::people_data()
{
    QTest::addColumn<QString>("addresses");
    QTest::addColumn<QString>("names");
    QTest::addColumn<QByteArray>("line");
    const auto row = [](const char *name, const char *addresses, const char *names, const char *line) {
        QTest::newRow(name) << QString(addresses) << QString(names) << QByteArray(line);
    };
    row("one", "a;", "A;", "To: A <a>");
    row("two", "a;b;", "A;B;", "To: A <a>,\n\tB <b>");
    row("three, one nameless", "a;b;c;", "A;Unknown Name;C;", "To: A <a>,\n\tb <b>,\n\tC <c>");
    row("one like the last has no comma either", "a;b;a;c;a;", "1;2;3;4;5;",
        "To: 1 <a>2 <b>,\n\t3 <a>4 <c>,\n\t5 <a>");
    row("the last is empty", "a;;", "A;;", "To: A <a>,\n\t <>");
    row("one in the middle is empty", "a;;b;", "A;;B;", "To: A <a>,\n\t <>,\n\tB <b>");
    row("entities", "a&amp;lt;b;", "A&nbsp;B;", "To: ");
    row("lists of different length", "a;b;", "A;", "To: ");
    row("entities on both sides", "a&amp;b;", "A&lt;B;", "To: A<B <a&b>");
    row("case counts in entities", "a&AMP;", "A;b", "To: A <a&AMP>");
}

void TestOlmSave::people()
{
    QFETCH(QString, addresses);
    QFETCH(QString, names);
    MailMLRC record;
    record.szToAddress.set(addresses);
    record.szToName.set(names);
    QTEST(header(record, "To: "), "line");
}

void TestOlmSave::headerBlock()
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
    const QByteArray before = "From ???@??? Thu Nov 13 15:39:05 2014\n"
                              "User-Agent: Microsoft-MacOutlook/14.0.0.100825\n"
                              "Subject: =?UTF-8?B?WvxyaWNo?=\n"
                              "From: a@x <a@x>\n"
                              "To: B <b@x>\n"
                              "Cc: C <c@x>\n"
                              "Date: Thu, 13 Nov 2014 15:39:05 -0100\n"
                              "Thread-Topic: topic\n";
    const QByteArray behind = "Message-ID: ID\nX-MS-Has-Attach: yes\nMime-version: 1.1\n";
    QCOMPARE(olmHeaderBlock(record, marks), before + behind);
    for (const QByteArray priority : {"2", "4", "3", "22"}) {
        record.szPriority.set(priority);
        const QByteArray shown = priority == "2" || priority == "4" ? priority : QByteArray();
        QCOMPARE(olmHeaderBlock(record, marks), before + "X-Priority: " + shown + '\n' + behind);
    }
}

void TestOlmSave::html_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QByteArray>("html");
    const auto row = [](const char *name, const QByteArray &body, const QByteArray &html) {
        QTest::newRow(name) << body << html;
    };
    row("plain", "a\nb\r\nc", "<html>a b  c</html>");
    row("empty", "", "<html></html>");
    row("a document", "&lt;HTML&gt;\n&lt;/Html&gt;\r\n", "<HTML>\n</Html>\r\n");
    row("tags in any order", "</html> <html x\n", "</html> <html x\n");
    row("no end", "<html>\n", "<html><html> </html>");
    row("escaped twice", "&amp;lt;html&amp;gt;</html>\n", "<html></html>\n");
    row("escaped three times", "&amp;amp;lt;", "<html>&amp;lt;</html>");
    row("blank", "a&nbsp;b&amp;nbsp;c&NBSP;", "<html>a b c&NBSP;</html>");
    row("others stay", "&quot;&apos;&#10;&", "<html>&quot;&apos;&#10;&</html>");
    row("Latin-1", "\xE9\xFF", "<html>\xE9\xFF</html>");
}

void TestOlmSave::html()
{
    QFETCH(QByteArray, body);
    QTEST(olmHtml(body), "html");
}

// One pass gives what one replacement after the other gives.
void TestOlmSave::escapesOneByOne()
{
    const QByteArray pieces[] = {"&", "amp;", "lt;", "gt;", "nbsp;", "&amp;", "a", ";"};
    for (int code = 0; code < 8 * 8 * 8 * 8 * 8; ++code) {
        QByteArray body;
        for (int rest = code, i = 0; i < 5; ++i, rest /= 8)
            body += pieces[rest % 8];
        QByteArray expected = body;
        expected.replace("&amp;gt;", ">").replace("&amp;lt;", "<").replace("&gt;", ">");
        expected.replace("&lt;", "<").replace("&amp;", "&").replace("&nbsp;", " ");
        QCOMPARE(olmHtml(body), "<html>" + expected + "</html>");
    }
}

void TestOlmSave::boundaries_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QByteArray>("outerParameter");
    QTest::addColumn<QByteArray>("outer");
    QTest::addColumn<QByteArray>("innerParameter");
    QTest::addColumn<QByteArray>("inner");
    QTest::newRow("generated") << "0123456789abcdef" << QByteArray("boundary=0123456789abcdef")
                               << QByteArray("0123456789abcdef") << QByteArray("boundary=0123456787779abcdef")
                               << QByteArray("0123456787779abcdef");
    QTest::newRow("in brackets") << "<0123456789@x>" << QByteArray("boundary=\"0123456789@x\"")
                                 << QByteArray("0123456789@x") << QByteArray("boundary=\"0123456777789@x\"")
                                 << QByteArray("0123456777789@x");
    QTest::newRow("short") << "abc" << QByteArray("boundary=abc") << QByteArray("abc")
                           << QByteArray("boundary=abc      777") << QByteArray("abc      777");
    QTest::newRow("empty") << "" << QByteArray("boundary=") << QByteArray("")
                           << QByteArray("boundary=         777") << QByteArray("         777");
}

void TestOlmSave::boundaries()
{
    QFETCH(QString, id);
    QFETCH(QByteArray, outerParameter);
    QFETCH(QByteArray, outer);
    QFETCH(QByteArray, innerParameter);
    QFETCH(QByteArray, inner);
    MailMLRC record;
    record.iIsOutgoing = 9;
    record.szMessageId.set(id);
    record.llBodySize = 1;
    const QByteArray idLine = id.isEmpty() ? "" : "Message-ID: ID\n";
    QCOMPARE(composed(record, "x"), idLine +
                                        "X-MS-Has-Attach: \nMime-version: 1.1\n"
                                        "Content-type: multipart/mixed;\n\t" +
                                        outerParameter + "\n\n--" + outer +
                                        "\nContent-type: multipart/alternative;\n\t" + innerParameter +
                                        "\n\n--" + inner +
                                        "\nContent-type: text/html;charset=\"UTF-8\"\n"
                                        "Content-transfer-encoding: quoted-printable\n\n"
                                        "<html>x</html>\n\n--" +
                                        inner + "--\n\n");
}

void TestOlmSave::wholeMessage()
{
    const QByteArray archive = "..bodyAAABB..";
    MailMLRC record;
    record.iIsOutgoing = 9;
    record.szMessageId.set("0123456789");
    record.llBodyOffset = 2;
    record.llBodySize = 4;
    record.pAttachContentIds = "no;b@x;";
    record.pAttachContentTypes = "text/plain;image/png;";
    record.pAttachNames = "a.txt;b.png;";
    record.pAttachUrls = "u;v;";
    record.pAttachOffsets = "6;9;";
    record.pAttachSizes = "3;2;";
    const QByteArray attached = "--0123456789\n"
                                "Content-type: text/plain; name=\"a.txt\"\n"
                                "Content-Description: a.txt\n"
                                "Content-Disposition: attachment; filename=\"a.txt\";\n"
                                "Content-Transfer-Encoding: base64\n"
                                "\n"
                                "QUFB\n"
                                "\n"
                                "--0123456789\n"
                                "Content-type: image/png; name=\"b.png\"\n"
                                "Content-Description: b.png\n"
                                "Content-Disposition: attachment; filename=\"b.png\";\n"
                                "Content-Transfer-Encoding: base64\n"
                                "Content-ID: <b@x>\n"
                                "\n"
                                "QkI=\n"
                                "\n"
                                "--0123456789--\n";
    const QByteArray start = "Message-ID: ID\nX-MS-Has-Attach: yes\nMime-version: 1.1\n";
    const QByteArray written = composed(record, archive);
    QVERIFY(written.startsWith(start + "Content-type: multipart/mixed;\n"));
    QVERIFY(written.endsWith("<html>body</html>\n\n--0123456787779--\n\n" + attached));
    // Without a body the attachments follow the header at once, and two line feeds close the message.
    record.llBodySize = 0;
    QCOMPARE(composed(record, archive), start + attached + "\n\n");
    // One list missing: no attachments.
    record.pAttachSizes = QByteArray();
    QCOMPARE(composed(record, archive), start + "\n\n");
}

void TestOlmSave::withoutBody()
{
    MailMLRC record;
    record.iIsOutgoing = 9;
    QCOMPARE(composed(record), QByteArray("X-MS-Has-Attach: \nMime-version: 1.1\n\n\n"));
    record.llBodySize = -3;
    QCOMPARE(composed(record), QByteArray("X-MS-Has-Attach: \nMime-version: 1.1\n"));
}

// Data longer than what is read at a time are one line, as if encoded at once.
void TestOlmSave::base64Pieces()
{
    for (const int size : {196607, 196608, 196609, 393216, 500000}) {
        QByteArray archive(size, Qt::Uninitialized);
        for (int i = 0; i < size; ++i)
            archive[i] = static_cast<char>(i * 7 + i / 251);
        MailMLRC record;
        for (QByteArray *list : {&record.pAttachContentIds, &record.pAttachContentTypes, &record.pAttachNames,
                                 &record.pAttachUrls})
            *list = "x;";
        record.pAttachOffsets = "0;";
        record.pAttachSizes = QByteArray::number(size) + ';';
        QVERIFY(composed(record, archive).contains("\n\n" + archive.toBase64() + "\n\n----\n"));
    }
}

// A body ends where the archive ends; what is missing of an attachment are zero bytes.
void TestOlmSave::shortArchive()
{
    const QByteArray archive = "0123456789";
    MailMLRC record;
    record.iIsOutgoing = 9;
    record.llBodyOffset = 8;
    record.llBodySize = 9;
    record.pAttachContentIds = record.pAttachContentTypes = record.pAttachNames = record.pAttachUrls = "x;";
    record.pAttachOffsets = "7;";
    record.pAttachSizes = "5;";
    MemoryBytes bytes({archive.constData(), 10});
    OlmComposer composer(&bytes);
    QByteArray written;
    composer.compose(record, marks, [&](std::string_view piece) {
        written.append(piece.data(), static_cast<int>(piece.size()));
    });
    QVERIFY(written.contains("<html>89</html>"));
    QVERIFY(written.contains("\n\n" + QByteArray("789\0\0", 5).toBase64() + "\n\n"));
    QCOMPARE(composer.incompleteMessages(), qint64(1));
}

void TestOlmSave::attachmentsBeyondTheArchive()
{
    MailMLRC record;
    record.pAttachContentIds = record.pAttachContentTypes = record.pAttachNames = record.pAttachUrls =
        "1;2;3;4;";
    record.pAttachOffsets = "0;-5;9223372036854775800;0;";
    record.pAttachSizes = "9223372036854775807;3;4;-9;";
    const QByteArray archive = "0123456789";
    const QByteArray written = composed(record, archive);
    QCOMPARE(written.count("base64\nContent-ID"), 4);
    QVERIFY(written.size() < 2000);
}

void TestOlmSave::targets_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("file"); // below the bundle's "Mail"
    const auto row = [](const char *name, const char *folder, const QString &file) {
        QTest::newRow(name) << QString(folder) << file;
    };
    row("one", "Inbox", "Inbox/Inbox.mbox");
    row("deep", "Inbox/Work", "Inbox/Work/Work.mbox");
    row("none", "", "Folder1/Folder1.mbox");
    row("dots in names", "a..b/...", "a..b/.../....mbox");
    row("parents", "../..", QString::fromUtf8("‥/‥/‥.mbox"));
    row("itself", "./a", QString::fromUtf8("․/a/a.mbox"));
    row("absolute", "/etc", QString::fromUtf8("␣/etc/etc.mbox"));
    row("empty ones", "a//b/", QString::fromUtf8("a/␣/b/␣/␣.mbox"));
}

void TestOlmSave::targets()
{
    QFETCH(QString, folder);
    QFETCH(QString, file);
    const MailboxTarget target = appleTargetOfOlmFolder(folder, "/out");
    QCOMPARE(target.file, "/out/Main Identity.mbox/Mail/" + file);
    QCOMPARE(target.folder + file.mid(file.lastIndexOf('/') + 1), target.file);
}

void TestOlmSave::bundle()
{
    const auto xml = [](const QByteArray &subject) {
        return olmXml({olmElement("OPFMessageCopySubject", subject)});
    };
    scan(olmMessageEntry("Inbox", xml("1")) + olmMessageEntry("Sent Items", xml("2")) +
         olmMessageEntry("Inbox/Work", xml("3")) + olmMessageEntry("Inbox", xml("4")) + xml("no folder"));
    QCOMPARE(MailItemCount, 5u);
    QSignalSpy finished(&m_save, &QMailSaving::FinishSaving);
    save();
    QVERIFY(!finished.isEmpty());
    QCOMPARE(ulCount.load(), quint64(4));
    const FileMap files = readFiles(saveDir + "/Main Identity.mbox/Mail");
    QCOMPARE(files.keys(),
             QStringList({"Inbox/Inbox.mbox", "Inbox/Work/Work.mbox", "Sent Items/Sent Items.mbox"}));
    const QByteArray inbox = files.value("Inbox/Inbox.mbox");
    QCOMPARE(inbox.count("From ???@???"), 2);
    QVERIFY(inbox.indexOf(QByteArray("1").toBase64()) < inbox.indexOf(QByteArray("4").toBase64()));
    QVERIFY(takeProblems().isEmpty());
    // A folder that is not ticked writes nothing.
    QVERIFY(QDir(saveDir).removeRecursively());
    markFolder(llRootId, stateNotTicked);
    save();
    QVERIFY(readFiles(saveDir).isEmpty());
}

void TestOlmSave::hostileFolders()
{
    QByteArray archive;
    for (const char *folder : {"../../../evil", "..", "/etc", ".", "a/../../../evil"})
        archive += olmMessageEntry(folder, olmXml({""}));
    scan(archive);
    save();
    QCOMPARE(readFiles(m_dir->path()).size(), 6);
    QCOMPARE(readFiles(saveDir + "/Main Identity.mbox/Mail").size(), 5);
}

void TestOlmSave::stopBetweenMessages()
{
    const QByteArray entry = olmMessageEntry("Inbox", olmXml({olmElement("OPFMessageCopyBody", "text")}));
    scan(entry + entry + entry + olmMessageEntry("Work", olmXml({""})));
    QSignalSpy finished(&m_save, &QMailSaving::FinishSaving);
    const auto stop = connect(
        &m_save, &QMailSaving::OnIndivisibleProgressvalue, &m_save,
        [](double percent) { bStopFlag = percent >= 50; }, Qt::DirectConnection);
    save();
    disconnect(stop);
    QCOMPARE(finished.size(), 0);
    const FileMap files = readFiles(saveDir + "/Main Identity.mbox/Mail");
    QCOMPARE(files.keys(), QStringList{"Inbox/Inbox.mbox"});
    QCOMPARE(files.first().count("<html>text</html>"), 2);
    QVERIFY(files.first().endsWith("--\n\n"));
}

void TestOlmSave::vanishedAndShrunk()
{
    const QByteArray entry = olmMessageEntry("Inbox", olmXml({olmElement("OPFMessageCopyBody", "text")}));
    scan(entry + entry);
    QVERIFY(QFile::resize(m_selectedFile, entry.size()));
    save();
    QCOMPARE(readFiles(saveDir).first().count("From ???@???"), 2);
    QVERIFY(takeProblems().value(0).contains(m_selectedFile));
    QVERIFY(QFile::remove(m_selectedFile));
    QVERIFY(QDir(saveDir).removeRecursively());
    save();
    QVERIFY(readFiles(saveDir).isEmpty());
    QVERIFY(takeProblems().value(0).contains(m_selectedFile));
}

QTEST_GUILESS_MAIN(TestOlmSave)
#include "test_olm_save.moc"
