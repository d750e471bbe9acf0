#include "app/shared_state.h"
#include "scan/folder_ids.h"
#include "scan/mbox_tree_path.h"
#include "scan/message_saving_thread.h"
#include "store_files.h"
#include "worker_run.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
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
    return list;
}
} // namespace

class TestMboxScan : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void treePath_data();
    void treePath();
    void folderIds();
    void mailboxesAndOthers();
    void idsRiseOverScans();
    void ends_data();
    void ends();
    void stopLeavesWholeFiles();
    void forASaveNothingIsIndexed();

private:
    void scan();

    QScopedPointer<QTemporaryDir> m_dir;
    QMessageSavingThread m_thread;
};

void TestMboxScan::init()
{
    m_dir.reset(new QTemporaryDir);
    m_selectedFile = m_dir->path();
    discardScanResult();
    CleanLinkedList();
    m_thread.m_mailClientIndex = 3;
    m_thread.m_indexMessages = true;
}

void TestMboxScan::scan()
{
    QVERIFY(runToEnd(&m_thread));
    QVERIFY(!bProcessRunning && !bStopFlag);
}

void TestMboxScan::treePath_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("selected");
    QTest::addColumn<QString>("tree");
    const auto row = [](const char *name, const char *file, const char *selected, const char *tree) {
        QTest::newRow(name) << QString(file) << QString(selected) << QString(tree);
    };
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

void TestMboxScan::treePath()
{
    QFETCH(QString, file);
    QFETCH(QString, selected);
    QTEST(treePathOfMailbox(file, selected), "tree");
}

void TestMboxScan::folderIds()
{
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

void TestMboxScan::mailboxesAndOthers()
{
    writeFiles(m_dir->path(), {{"Mail/Local Folders/Inbox", mailbox},
                               {"Mail/Local Folders/.hidden", mailbox},
                               {"Mail/Local Folders/Inbox.msf", "// From \n"},
                               {"Mail/Local Folders/empty", ""},
                               {"Mail/Local Folders/notes.emlx.d/box", mailbox},
                               {"Mail/Local Folders/Old.mbox", mailbox},
                               {"Mail/Local Folders/capitals", "FROM x\n" + mailbox}});
    QSignalSpy finished(&m_thread, &QMessageSavingThread::FinishScaning);
    QSignalSpy tree(&m_thread, &QMessageSavingThread::MakeTreeWidget);
    scan();
    QCOMPARE(finished.size(), 1);
    QStringList found = files();
    found.sort();
    const QString base = m_dir->path() + "/Mail/Local Folders/";
    const QStringList expected{base + ".hidden", base + "Inbox"};
    QCOMPARE(found, expected);
    QCOMPARE(listOfPathOfOnlyForTree.size(), 2);
    QCOMPARE(tree.size(), 4);
    // Files that are no mailboxes by their path are indexed all the same.
    QCOMPARE(messagesOfPath(base + "Old.mbox").size(), size_t(1));
    QCOMPARE(messagesOfPath(base + "notes.emlx.d/box").size(), size_t(1));
    QCOMPARE(StartMailItem->pathLength, pathOf(*StartMailItem).size() * 2);
    QVERIFY(bMboxFileFound && !bOlmFileFound);
}

void TestMboxScan::idsRiseOverScans()
{
    writeFiles(m_dir->path(), {{"Mail/a", mailbox}});
    scan();
    const qint64 last = PID;
    discardScanResult();
    scan();
    QCOMPARE(PID, last + 2);
    QCOMPARE(objMapFID_PID.size(), 2);
    QCOMPARE(objMapFID_PID.firstKey(), last + 1);
    QCOMPARE(TmpMboxMbxPtrStart->next, TmpMboxMbxPtrEnd);
}

void TestMboxScan::ends_data()
{
    QTest::addColumn<QString>("selected");
    QTest::addColumn<int>("client");
    QTest::addColumn<int>("nothing");
    QTest::addColumn<bool>("hundred");
    QTest::newRow("empty folder") << "" << 3 << 1 << false;
    QTest::newRow("no folder") << "/missing" << 3 << 1 << true;
    QTest::newRow("a blank, as after a closed dialog") << " " << 3 << 1 << true;
    QTest::newRow("no such client") << "" << 11 << 0 << false;
}

void TestMboxScan::ends()
{
    QFETCH(QString, selected);
    QFETCH(int, client);
    m_selectedFile = selected == " " ? selected : m_dir->path() + selected;
    m_thread.m_mailClientIndex = client;
    QSignalSpy nothing(&m_thread, &QMessageSavingThread::NoDataIntoFile);
    QSignalSpy finished(&m_thread, &QMessageSavingThread::FinishScaning);
    QSignalSpy progress(&m_thread, &QMessageSavingThread::OnIndivisibleProgressvalue);
    scan();
    QTEST(nothing.size(), "nothing");
    QCOMPARE(finished.size(), 0);
    QTEST(!progress.isEmpty() && progress.last().first().toDouble() == 100.0, "hundred");
}

void TestMboxScan::stopLeavesWholeFiles()
{
    writeFiles(m_dir->path(), {{"Mail/a", mailbox + mailbox}, {"Mail/b", mailbox}});
    QSignalSpy finished(&m_thread, &QMessageSavingThread::FinishScaning);
    QSignalSpy tree(&m_thread, &QMessageSavingThread::MakeTreeWidget);
    const auto stop = connect(
        &m_thread, &QMessageSavingThread::OnSubProgressvalue, &m_thread, [] { bStopFlag = true; },
        Qt::DirectConnection);
    scan();
    disconnect(stop);
    QCOMPARE(finished.size(), 0);
    QCOMPARE(files().size(), 1);
    QCOMPARE(tree.size(), 2);
    const size_t messages = files().first().endsWith("a") ? 2 : 1;
    QCOMPARE(messagesOfPath(files().first()).size(), messages);
}

void TestMboxScan::forASaveNothingIsIndexed()
{
    writeFiles(m_dir->path(), {{"Mail/a", mailbox}, {"Mail/b.mbox", mailbox}, {"Mail/c", "text\n"}});
    m_thread.m_indexMessages = false;
    scan();
    QCOMPARE(files(), QStringList{m_dir->path() + "/Mail/a"});
    QVERIFY(!TmpMboxMbxPtrStart);
}

QTEST_GUILESS_MAIN(TestMboxScan)
#include "test_mbox_scan.moc"
