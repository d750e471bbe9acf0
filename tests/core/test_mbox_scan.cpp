#include "data_table.h"
#include "scan/folder_ids.h"
#include "scan/mbox_index.h"
#include "scan/mbox_tree_path.h"
#include "scan_run.h"

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
        list.append(item->path);
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
        lines.append(record(node->offset, node->length, node->from, node->subject));
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
        const DataTable row([](const QString &file, const QString &selected, const QString &tree) {
            QCOMPARE(treePathOfMailbox(file, selected), tree);
        });
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

    void treePath() { checkRow(); }

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
        QCOMPARE(folders().join(' '),
                 QString("Mail= Mail/a=/x/Profile/MAIL/a Mail/a/Inbox=/x/Profile/MAIL/a/Inbox Mail/b= "
                         "Mail/b/Inbox=/x/Profile/Mail/other/Inbox Mail/= Mail//="));
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
        for (const char *file : {"Inbox", ".hidden", "notes.emlx.d/box", "Old.mbox"})
            run.write({{base + file, mailbox}});
        for (const char *file : {"Inbox.msf", "capitals"})
            run.write({{base + file, "FROM x\n" + mailbox}});
        run.write({{base + "empty", ""}});
        QCOMPARE(run.scan(), QStringList({"hide", "finished"}));
        QCOMPARE(files(), QStringList({run.path(base + ".hidden"), run.path(base + "Inbox")}));
        QCOMPARE(listOfPathOfOnlyForTree.size(), 2);
        QCOMPARE(run.folders, 4);
        // Files that are no mailboxes by their path are indexed all the same.
        for (const char *file : {"Old.mbox", "notes.emlx.d/box"})
            QCOMPARE(messagesOfPath(run.path(base + file)).size(), size_t(1));
        QCOMPARE(StartMailItem->pathLength(), StartMailItem->path.size() * 2);
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
        const DataTable row([](const QString &selected, int client, const QStringList &ends, bool hundred) {
            ScanRun run(client);
            QCOMPARE(run.scan(selected == " " ? selected : run.path(selected)), ends);
            QCOMPARE(run.percent == 100, hundred);
        });
        row("empty folder", "", thunderbird, {"nothing"}, false);
        row("no folder", "missing", thunderbird, {"nothing"}, true);
        row("a blank, as after a closed dialog", " ", thunderbird, {"nothing"}, true);
        row("no such client", "", 11, {}, false);
    }

    void ends() { checkRow(); }

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
        const DataTable row([this](const QByteArray &file, const QStringList &found) {
            QVERIFY(index(file) || found.isEmpty());
            QCOMPARE(::records(), found);
            QCOMPARE(messagesOfPath(m_folder.filePath("box")).size(), static_cast<size_t>(found.size()));
        });
        // A separator and these lines, which are one message.
        const auto message = [&](const char *name, const QByteArray &lines, qint64 length,
                                 const QString &from, const QString &subject) {
            row(name, separator + lines, {record(0, length, from, subject)});
        };
        row("empty file", QByteArray(), {});
        row("one line only", separator, {});
        row("no separator first", "Subject: x\n" + separator + "a\n", {});
        for (const char *day : {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"})
            row(day, "From a\nx\nFrom b " + QByteArray(day) + " c\ny\n",
                {record(0, 9, "", ""), record(9, 15, "", "")});
        row("capitals are none", "FROM a Mon \nSubject: x\n", {});
        row("first line needs no weekday", "From x\nFrom: a\nSubject: b\n\nc", {record(0, 28, "a", "b\n")});
        row("two messages", separator + "From: a\nSubject: b\n\nc\n" + separator + "From: d\n\ne\n",
            {record(0, 56, "a", "b\n"), record(56, 45, "d", "")});
        row("at the end", separator + "From: a\n" + separator,
            {record(0, 42, "a", ""), record(42, 34, "", "")});
        row("a line with a weekday cuts, without one not",
            separator + "From me on Mon day\nFrom you\nFrom it on Mon\nFrom he on Mond ay\n",
            {record(0, 34, "", ""), record(34, 62, "", "")});
        message("escaped and indented lines", ">From x Mon \n From x Mon \nfrom x Mon \n", 72, "", "");
        message("headers in the body", "\ntext\nfrom: a\nSUBJECT: b\n", 59, "from: a", "SUBJECT: b\n");
        message("first one counts", "From: a\nFrom: b\nSubject: c\nSubject: d\n", 72, "a", "c\n");
        message("first subject counts, too", "Subject: c\nSubject: d\nFrom: a\nFrom: b\n", 72, "a", "c\n");
        message("folds", "From: a\n <b@c>\nSubject: d\n\te\nTo: f\n", 34 + 15 + 14 + 6, "a", "d\n\te\n");
        message("sender on the fold", "From:\n a@b\nx\n", 47, "From:", "");
        message("file ends in a fold", "Subject: a\n b", 47, "", "a\n b");
        row("fold ended by a separator", separator + "Subject: a\n b\n" + separator + "x\n",
            {record(0, 48, "", "a\n b\n"), record(48, 36, "", "")});
        message("encoded subject over two lines", "Subject: =?UTF-8?Q?caf=C3=A9?=\n =?UTF-8?B?IG5vaXI=?=\n\n",
                34 + 31 + 23, "", QString::fromUtf8("café noir"));
        row("CR LF: offsets lie behind by one",
            "From a Mon x\r\nFrom: b\r\n\r\nc\r\nFrom d Mon x\r\nSubject: e\r\n",
            {record(0, 29, "b", ""), record(29, 25, "", "e\n")});
        row("a separator beyond ASCII is counted in characters", separator + "\nFrom \xC3\xA9 Mon x\nend\n",
            {record(0, 36, "", ""), record(36, 17, "", "")});
        message("byte order mark before a header", "\xEF\xBB\xBFSubject: a\nend\n", 52, "", "a\n");
        message("marks within a value stay", "From: \357\277\276A\nSubject: =?x?Q?=EF=BB=BF=EF=BB=BFx?=\n",
                34 + 11 + 37, QString(QChar(0xFFFE)) + "A", QString(QChar(0xFEFF)) + "x");
        message("zero bytes", QByteArray("Subject: a\0b\nFrom x\0 Mon \nend\n", 30), 64, "", "a");
    }

    void records() { checkRow(); }

    // The reader's block is 256 KiB: a separator, a header and a fold pass over its edge byte by byte.
    void aSeamAnywhere()
    {
        const QByteArray second = separator + "From: a@b\r\nSubject: x\n y\n\nend\n";
        for (int before = 0; before <= second.size() + 2; ++before) {
            const QByteArray filler(256 * 1024 - before - separator.size() - 1, 'x');
            index(separator + filler + '\n' + second);
            const qint64 cut = 256 * 1024 - before;
            const QStringList expected{record(0, cut, "", ""), record(cut, second.size(), "a@b", "x\n y\n")};
            QCOMPARE(::records(), expected);
            CleanLinkedList();
        }
    }

    void secondFileGoesOnInTheEmptyRecord()
    {
        const QTemporaryDir folder;
        writeFiles(folder.path(), {{"a", separator + "From: a\n"}, {"b", separator + "From: b\n"}});
        QVERIFY(GetAllFieldsForTree(folder.filePath("a")));
        QVERIFY(GetAllFieldsForTree(folder.filePath("b")));
        QVERIFY(!GetAllFieldsForTree(folder.filePath("missing")));
        QVERIFY(!GetAllFieldsForTree(folder.path()));
        const QStringList expected{record(0, 42, "a", ""), record(0, 42, "b", "")};
        QCOMPARE(::records(), expected);
        QVERIFY(TmpMboxMbxPtrEnd->path.isEmpty());
        QCOMPARE(messagesOfPath(folder.filePath("b")).size(), size_t(1));
    }

    // A long separator is read in pieces of 64 KiB; the weekday and a character pass over the seam.
    void longSeparator()
    {
        for (int bytes = 65536 - 14; bytes <= 65536 + 2; ++bytes) {
            const QByteArray name =
                QByteArray(bytes % 3, 'x') + QByteArray("\xE2\x82\xAC").repeated(bytes / 3);
            index(separator + "From " + name + " Mon x\r\nend\n");
            const qint64 behind = separator.size() + 5 + bytes + 8;
            const qint64 cut = behind - (5 + bytes % 3 + bytes / 3 + 7);
            const QStringList expected{record(0, cut, "", ""), record(cut, behind + 4 - cut, "", "")};
            QCOMPARE(::records(), expected);
            CleanLinkedList();
        }
    }

    void fieldsAreCutAtTheirWidth()
    {
        const QByteArray folds = QByteArray(" s\n").repeated(500000); // more than is kept
        index(separator + "Subject: s\n" + folds + "From: " + QByteArray(253, 'f') + "\xF0\x9F\x98\x80\n");
        QCOMPARE(TmpMboxMbxPtrStart->subject, "s\n" + QString(" s\n").repeated(84));
        QCOMPARE(TmpMboxMbxPtrStart->from, QString(253, 'f') + QChar(0xD83D));
        const QByteArray line = QByteArray("s").repeated(3 << 20);
        index(separator + "Subject: " + line + "\nFrom: f\n");
        QCOMPARE(TmpMboxMbxPtrEnd, TmpMboxMbxPtrStart->next->next);
        QCOMPARE(TmpMboxMbxPtrStart->next->subject, QString(254, 's'));
        QCOMPARE(TmpMboxMbxPtrStart->next->from, QString("f"));
    }

    void progressComesForEachPercent()
    {
        int calls = 0;
        qint64 last = -1;
        index((separator + "Subject: x\n\ntext\n").repeated(20000), [&](qint64 done, qint64 size) {
            ++calls;
            QVERIFY(done > last && done <= size);
            last = done;
        });
        QVERIFY2(calls >= 90 && calls <= 102, qPrintable(QString::number(calls)));
    }

private:
    bool index(const QByteArray &file, const std::function<void(qint64, qint64)> &progress = {}) const
    {
        writeFiles(m_folder.path(), {{"box", file}});
        return GetAllFieldsForTree(m_folder.filePath("box"), progress);
    }

    const QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TestMboxScan)
#include "test_mbox_scan.moc"
