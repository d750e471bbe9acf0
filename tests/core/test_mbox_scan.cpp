#include "app/shared_state.h"
#include "data_table.h"
#include "scan/folder_ids.h"
#include "scan/mbox_index.h"
#include "scan/mbox_tree_path.h"
#include "scan_run.h"
#include "store_files.h"

#include <QTemporaryDir>
#include <QtTest>

namespace
{
constexpr int thunderbird = 3;
const QByteArray mailbox = "From - Mon Jan  1 00:00:00 2007\nFrom: a\nSubject: b\n\nc\n";

// Folders by their path of raw names, in the order of their ids, with the file system path behind "=".
QStringList folders()
{
    QMap<qint64, QString> trees;
    QStringList list;
    for (auto folder = objMapFID_PID.constBegin(); folder != objMapFID_PID.constEnd(); ++folder) {
        const QString above = trees.value(folder.value());
        trees[folder.key()] = (above.isEmpty() ? "" : above + "/") + objMapFID_Name.value(folder.key());
        list.append(trees[folder.key()] + "=" + MapLeftTreePath.value(folder.key()));
    }
    return list;
}

QStringList files()
{
    QStringList list;
    for (const MailItemNode *item = StartMailItem; item; item = item->next)
        list.append(pathOf(*item));
    list.sort();
    return list;
}

// A message's record as a line.
QString record(qint64 offset, qint64 length, const QString &from, const QString &subject)
{
    return QString("%1+%2 [%3] [%4]").arg(offset).arg(length).arg(from, subject);
}

QStringList records()
{
    QStringList lines;
    for (const MboxMessageNode *node = TmpMboxMbxPtrStart; node && node->next; node = node->next)
        lines.append(record(node->offset, node->length, fieldText(node->from), fieldText(node->subject)));
    return lines;
}

const QByteArray separator = "From a@b Mon Jan  1 00:00:00 2007\n"; // 34 bytes
} // namespace

class TestMboxScan : public QObject
{
    Q_OBJECT

private slots:
    void treePath_data()
    {
        const DataTable<QString, QString, QString> row("file", "selected", "tree");
        row("bundle", "/x/Export/Inbox.mbox/mbox", "/x/Export", "Mail/Inbox.mbox/mbox");
        row("bundle is selected", "/x/Inbox.mbox/mbox", "/x/Inbox.mbox", "Mail/mbox");
        row("selection's path comes twice", "/x/a/x/b.mbox/mbox", "/x", "Mail/a/b.mbox/mbox");
        row("imap", "/x/profile/ImapMail/host/INBOX", "/x", "Mail/host/INBOX");
        row("imap comes before local", "/x/Mail/ImapMail/host/INBOX", "/x", "Mail/host/INBOX");
        row("local", "/x/profile/Mail/Local Folders/Trash", "/x/profile", "Mail/Local Folders/Trash");
        row("last one counts", "/x/Mail/a/Mail/b", "/x", "Mail/b");
        row("start of a longer name", "/x/Mailboxes/In", "/x", "Mailboxes/In");
        row("a file called Mail", "/x/Mail", "/x", "Mail");
        row("case counts", "/x/mail/In", "/x", "Mail/mail/In");
        row("neither", "/x/Eudora/In", "/x/Eudora", "Mail/In");
    }

    void treePath()
    {
        QFETCH(QString, file);
        QFETCH(QString, selected);
        QTEST(treePathOfMailbox(file, selected), "tree");
    }

    void folderIds()
    {
        const ScanRun run(thunderbird);
        const qint64 first = PID + 1;
        treeCreator("Mail/a/Inbox", "/x/Profile/MAIL/A/Inbox");
        QCOMPARE(llParentIdRunning, first + 2);
        treeCreator("Mail/b/Inbox", "/x/Profile/Mail/other/Inbox");
        treeCreator("Mail/a/Inbox", "/elsewhere");
        QCOMPARE(llParentIdRunning, first + 2);
        treeCreator(QString(), "/x");
        treeCreator("Mail//", "/x/Mail//");
        const QStringList expected{"Mail=",
                                   "Mail/a=/x/Profile/MAIL/a",
                                   "Mail/a/Inbox=/x/Profile/MAIL/a/Inbox",
                                   "Mail/b=",
                                   "Mail/b/Inbox=/x/Profile/Mail/other/Inbox",
                                   "Mail/=",
                                   "Mail//="};
        QCOMPARE(folders(), expected);
        QCOMPARE(objMapName_FID.values("Inbox").size(), 2);
        qint64 id = 0;
        QVERIFY(GetParentId("Inbox", first + 3, &id));
        QCOMPARE(id, first + 4);
        QVERIFY(!GetParentId("inbox", first + 3, &id));
        QCOMPARE(objMapFID_PID.value(first), llRootId);
    }

    void mailboxesAndOthers()
    {
        ScanRun run(thunderbird);
        const QString base = "Mail/Local Folders/";
        run.write({{base + "Inbox", mailbox},
                   {base + ".hidden", mailbox},
                   {base + "Inbox.msf", "// From \n"},
                   {base + "empty", ""},
                   {base + "notes.emlx.d/box", mailbox},
                   {base + "Old.mbox", mailbox},
                   {base + "capitals", "FROM x\n" + mailbox}});
        QCOMPARE(run.scan(), QStringList({"hide", "finished"}));
        QCOMPARE(files(), QStringList({run.path(base + ".hidden"), run.path(base + "Inbox")}));
        QCOMPARE(listOfPathOfOnlyForTree.size(), 2);
        QCOMPARE(run.folders, 4);
        // Files that are no mailboxes by their path are indexed all the same.
        QCOMPARE(messagesOfPath(run.path(base + "Old.mbox")).size(), size_t(1));
        QCOMPARE(messagesOfPath(run.path(base + "notes.emlx.d/box")).size(), size_t(1));
        QCOMPARE(StartMailItem->pathLength, pathOf(*StartMailItem).size() * 2);
        QVERIFY(bMboxFileFound && !bOlmFileFound);
    }

    void idsRiseOverScans()
    {
        ScanRun run(thunderbird);
        run.write({{"Mail/a", mailbox}});
        run.scan();
        const qint64 last = PID;
        discardScanResult();
        run.scan();
        QCOMPARE(PID, last + 2);
        QCOMPARE(objMapFID_PID.size(), 2);
        QCOMPARE(objMapFID_PID.firstKey(), last + 1);
        QCOMPARE(TmpMboxMbxPtrStart->next, TmpMboxMbxPtrEnd);
    }

    void ends_data()
    {
        // "hundred": whether the whole is shown as done
        const DataTable<QString, int, QStringList, bool> row("selected", "client", "ends", "hundred");
        row("empty folder", "", thunderbird, {"nothing"}, false);
        row("no folder", "missing", thunderbird, {"nothing"}, true);
        row("a blank, as after a closed dialog", " ", thunderbird, {"nothing"}, true);
        row("no such client", "", 11, {}, false);
    }

    void ends()
    {
        QFETCH(QString, selected);
        QFETCH(int, client);
        ScanRun run(client);
        QTEST(run.scan(selected == " " ? selected : run.path(selected)), "ends");
        QTEST(run.percent == 100, "hundred");
    }

    void stopLeavesWholeFiles()
    {
        ScanRun run(thunderbird);
        run.write({{"Mail/a", mailbox + mailbox}, {"Mail/b", mailbox}});
        connect(
            &run.thread, &QMessageSavingThread::OnSubProgressvalue, &run.thread, [] { bStopFlag = true; },
            Qt::DirectConnection);
        QCOMPARE(run.scan(), QStringList());
        QCOMPARE(files().size(), 1);
        QCOMPARE(run.folders, 2);
        const size_t messages = files().first().endsWith("a") ? 2 : 1;
        QCOMPARE(messagesOfPath(files().first()).size(), messages);
    }

    void forASaveNothingIsIndexed()
    {
        ScanRun run(thunderbird);
        run.write({{"Mail/a", mailbox}, {"Mail/b.mbox", mailbox}, {"Mail/c", "text\n"}});
        run.thread.m_indexMessages = false;
        run.scan();
        QCOMPARE(files(), QStringList{run.path("Mail/a")});
        QVERIFY(!TmpMboxMbxPtrStart);
    }

    void cleanup() { CleanLinkedList(); }

    void records_data()
    {
        const DataTable<QByteArray, QStringList> row("file", "found");
        row("empty file", QByteArray(), {});
        row("one line only", separator, {});
        row("no separator first", "Subject: x\n" + separator + "a\n", {});
        row("capitals are none", "FROM a Mon \nSubject: x\n", {});
        row("first line needs no weekday", "From x\nFrom: a\nSubject: b\n\nc", {record(0, 28, "a", "b\n")});
        row("two messages", separator + "From: a\nSubject: b\n\nc\n" + separator + "From: d\n\ne\n",
            {record(0, 56, "a", "b\n"), record(56, 45, "d", "")});
        row("separator as the last line", separator + "From: a\n" + separator,
            {record(0, 42, "a", ""), record(42, 34, "", "")});
        row("a line with a weekday cuts, without one not",
            separator + "From me on Mon day\nFrom you\nFrom it on Mon\nFrom he on Mond ay\n",
            {record(0, 34, "", ""), record(34, 62, "", "")});
        row("escaped and indented lines cut nothing", separator + ">From x Mon \n From x Mon \nfrom x Mon \n",
            {record(0, 72, "", "")});
        row("headers may stand in the body", separator + "\ntext\nfrom: a\nSUBJECT: b\n",
            {record(0, 59, "from: a", "SUBJECT: b\n")});
        row("first one counts", separator + "From: a\nFrom: b\nSubject: c\nSubject: d\n",
            {record(0, 72, "a", "c\n")});
        row("first subject counts, before a sender too",
            separator + "Subject: c\nSubject: d\nFrom: a\nFrom: b\n", {record(0, 72, "a", "c\n")});
        row("folded sender and subject", separator + "From: a\n <b@c>\nSubject: d\n\te\nTo: f\n",
            {record(0, 34 + 15 + 14 + 6, "a", "d\n\te\n")});
        row("sender on the fold", separator + "From:\n a@b\nx\n", {record(0, 47, "From:", "")});
        row("file ends in a fold", separator + "Subject: a\n b", {record(0, 47, "", "a\n b")});
        row("fold ended by a separator", separator + "Subject: a\n b\n" + separator + "x\n",
            {record(0, 48, "", "a\n b\n"), record(48, 36, "", "")});
        row("encoded subject over two lines",
            separator + "Subject: =?UTF-8?Q?caf=C3=A9?=\n =?UTF-8?B?IG5vaXI=?=\n\n",
            {record(0, 34 + 31 + 23, "", QString::fromUtf8("café noir"))});
        row("CR LF: offsets lie behind by one",
            "From a Mon x\r\nFrom: b\r\n\r\nc\r\nFrom d Mon x\r\nSubject: e\r\n",
            {record(0, 29, "b", ""), record(29, 25, "", "e\n")});
        row("a separator beyond ASCII is counted in characters", separator + "\nFrom \xC3\xA9 Mon x\nend\n",
            {record(0, 36, "", ""), record(36, 17, "", "")});
        row("byte order mark before a header", separator + "\xEF\xBB\xBFSubject: a\nend\n",
            {record(0, 52, "", "a\n")});
        row("marks within a value stay",
            separator + "From: \xEF\xBF\xBE"
                        "A\nSubject: =?x?Q?=EF=BB=BF=EF=BB=BFx?=\n",
            {record(0, 34 + 11 + 37, QString(QChar(0xFFFE)) + "A", QString(QChar(0xFEFF)) + "x")});
        row("zero bytes end a line's text", separator + QByteArray("Subject: a\0b\nFrom x\0 Mon \nend\n", 30),
            {record(0, 64, "", "a")});
    }

    void records()
    {
        QFETCH(QByteArray, file);
        QTemporaryDir folder;
        writeFiles(folder.path(), {{"box", file}});
        GetAllFieldsForTree(folder.filePath("box"));
        QTEST(::records(), "found");
        QCOMPARE(messagesOfPath(folder.filePath("box")).size(), static_cast<size_t>(::records().size()));
    }

    // The reader's block is 256 KiB: a separator, a header and a fold pass over its edge byte by byte.
    void aSeamAnywhere()
    {
        const QByteArray second = separator + "From: a@b\r\nSubject: x\n y\n\nend\n";
        QTemporaryDir folder;
        for (int before = 0; before <= second.size() + 2; ++before) {
            const QByteArray filler(256 * 1024 - before - separator.size() - 1, 'x');
            writeFiles(folder.path(), {{"box", separator + filler + '\n' + second}});
            GetAllFieldsForTree(folder.filePath("box"));
            const qint64 cut = 256 * 1024 - before;
            const QStringList expected{record(0, cut, "", ""), record(cut, second.size(), "a@b", "x\n y\n")};
            QCOMPARE(::records(), expected);
            CleanLinkedList();
        }
    }

    void secondFileGoesOnInTheEmptyRecord()
    {
        QTemporaryDir folder;
        writeFiles(folder.path(), {{"a", separator + "From: a\n"}, {"b", separator + "From: b\n"}});
        QVERIFY(GetAllFieldsForTree(folder.filePath("a")));
        QVERIFY(GetAllFieldsForTree(folder.filePath("b")));
        QVERIFY(!GetAllFieldsForTree(folder.filePath("missing")));
        QVERIFY(!GetAllFieldsForTree(folder.path()));
        const QStringList expected{record(0, 42, "a", ""), record(0, 42, "b", "")};
        QCOMPARE(::records(), expected);
        QVERIFY(TmpMboxMbxPtrEnd->path[0] == 0);
        QCOMPARE(messagesOfPath(folder.filePath("b")).size(), size_t(1));
    }

    void fieldsAreCutAtTheirWidth()
    {
        QTemporaryDir folder;
        writeFiles(folder.path(), {{"box", separator + "Subject: " + QByteArray(300, 's') +
                                               "\nFrom: " + QByteArray(254, 'f') + "\n"}});
        GetAllFieldsForTree(folder.filePath("box"));
        QCOMPARE(fieldText(TmpMboxMbxPtrStart->subject), QString(254, 's'));
        QCOMPARE(fieldText(TmpMboxMbxPtrStart->from), QString(254, 'f'));
    }

    void progressComesForEachPercent()
    {
        QTemporaryDir folder;
        QByteArray file;
        for (int i = 0; i < 20000; ++i)
            file += separator + "Subject: x\n\ntext\n";
        writeFiles(folder.path(), {{"box", file}});
        int calls = 0;
        qint64 last = -1;
        GetAllFieldsForTree(folder.filePath("box"), [&](qint64 done, qint64 size) {
            ++calls;
            QVERIFY(done > last && done <= size);
            last = done;
        });
        QVERIFY2(calls >= 90 && calls <= 102, qPrintable(QString::number(calls)));
    }
};

QTEST_GUILESS_MAIN(TestMboxScan)
#include "test_mbox_scan.moc"
