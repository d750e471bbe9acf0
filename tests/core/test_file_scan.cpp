#include "app/problem_log.h"
#include "app/shared_state.h"
#include "scan/message_saving_thread.h"
#include "store_files.h"
#include "worker_run.h"

#include <QTemporaryDir>
#include <QtTest>

#include <unistd.h>

namespace
{
constexpr int appleMail = 2;
constexpr int mailMate = 8;
constexpr int outspring = 9;

const QByteArray mail = "12\nFrom: a@a.example\nSubject: s\n\nx\n";

QString treeOf(qint64 folder)
{
    QStringList names;
    for (; folder != llRootId; folder = objMapFID_PID.value(folder))
        names.prepend(objMapFID_Name.value(folder));
    return names.join('/');
}
} // namespace

class TestFileScan : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void stores_data();
    void stores();
    void nestedMailboxes();
    void unreadable_data();
    void unreadable();
    void unusedPart();
    void missingStore();
    void stopBetweenFiles();
    void oddNames();
    void secondScan();

private:
    // Runs a scan to its end and gives the signals that ended it.
    QStringList scan(int client, const QString &selected);
    // "tree: path" of each file record, paths below the store, in any order.
    QStringList files() const;
    QStringList trees() const;
    QString store() const { return m_dir->path(); }

    QScopedPointer<QTemporaryDir> m_dir;
};

void TestFileScan::init()
{
    m_dir.reset(new QTemporaryDir);
    discardScanResult();
    takeProblems();
}

void TestFileScan::cleanup()
{
    CleanLinkedList();
    discardScanResult();
}

QStringList TestFileScan::scan(int client, const QString &selected)
{
    m_selectedFile = selected;
    QMessageSavingThread thread;
    thread.m_mailClientIndex = client;
    QStringList ends;
    QObject context;
    connect(&thread, &QMessageSavingThread::FinishScaning, &context, [&] { ends.append("finished"); });
    connect(&thread, &QMessageSavingThread::ProgressDailogHide, &context, [&] { ends.append("hide"); });
    connect(&thread, &QMessageSavingThread::NoDataIntoFile, &context, [&] { ends.append("nothing"); });
    runToEnd(&thread);
    QCoreApplication::processEvents();
    return ends;
}

QStringList TestFileScan::files() const
{
    QStringList lines;
    for (const MailItemNode *item = StartMailItem; item; item = item->next)
        lines.append(treeOf(item->parentId) + ": " + pathOf(*item).mid(store().size() + 1));
    lines.sort();
    return lines;
}

QStringList TestFileScan::trees() const
{
    QStringList lines;
    for (const qint64 folder : objMapFID_PID.keys())
        lines.append(treeOf(folder));
    return lines;
}

void TestFileScan::stores_data()
{
    QTest::addColumn<int>("client");
    QTest::addColumn<QString>("selected"); // below the store
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("ends");
    QTest::addColumn<QStringList>("files");
    const QStringList finished{"hide", "finished"};
    const QStringList nothing{"nothing"};

    QTest::newRow("apple: messages, companions, parts")
        << appleMail << ""
        << QStringList{"a/in.mbox/M/1.emlx",  "a/in.mbox/M/2.partial.emlx", "a/in.mbox/M/2.1.emlxpart",
                       "a/in.mbox/M/1.plist", "a/in.mbox/M/3.eml",          "a/in.mbox/M/4.EMLX"}
        << finished
        << QStringList{"Mail/a/in.mbox: a/in.mbox/M/1.emlx", "Mail/a/in.mbox: a/in.mbox/M/2.partial.emlx",
                       "Mail/a/in.mbox: a/in.mbox/M/3.eml"};
    QTest::newRow("apple: only the news feed")
        << appleMail << "" << QStringList{"RSS/Apple Hot News.rssmbox/M/1.emlx"} << finished << QStringList{};
    QTest::newRow("apple: no mailbox around a message")
        << appleMail << "" << QStringList{"x/1.emlx", "a.mbox/2.emlx"} << finished
        << QStringList{"Mail/a.mbox: a.mbox/2.emlx"};
    QTest::newRow("apple: the mailbox itself")
        << appleMail << "a.mbox/M" << QStringList{"a.mbox/M/1.emlx", "a.mbox/2.emlx"} << finished
        << QStringList{"Mail/a.mbox: a.mbox/2.emlx", "Mail/a.mbox: a.mbox/M/1.emlx"};
    QTest::newRow("apple: no message")
        << appleMail << "" << QStringList{"a.mbox/1.eml"} << nothing << QStringList{};

    QTest::newRow("mate: two mailboxes")
        << mailMate << "" << QStringList{"I/a.mailbox/M/1.eml", "I/b.mailbox/M/1.eml"} << finished
        << QStringList{"Mail/I/a.mailbox: I/a.mailbox/M/1.eml", "Mail/I/b.mailbox: I/b.mailbox/M/1.eml"};
    QTest::newRow("mate: no mailbox") << mailMate << "" << QStringList{"a/1.eml"} << nothing << QStringList{};

    QTest::newRow("outspring: both names, a quiet folder between")
        << outspring << "" << QStringList{"a/b/1.eml", "a/b/1.f.eml"} << finished
        << QStringList{"Mail/a/b: a/b/1.eml", "Mail/a/b: a/b/1.f.eml"};
    QTest::newRow("outspring: another client's store")
        << outspring << "" << QStringList{"a.mailbox/1.eml"} << nothing << QStringList{};

    QTest::newRow("quotes and blanks")
        << outspring << "it's \"mine\" $(x)" << QStringList{"it's \"mine\" $(x)/a 'b'/1 2.eml"} << finished
        << QStringList{"Mail/a 'b': it's \"mine\" $(x)/a 'b'/1 2.eml"};
}

void TestFileScan::stores()
{
    QFETCH(int, client);
    QFETCH(QString, selected);
    QFETCH(QStringList, names);
    for (const QString &name : names)
        writeFiles(store(), {{name, mail}});
    QTEST(scan(client, selected.isEmpty() ? store() : store() + "/" + selected), "ends");
    QTEST(files(), "files");
    QVERIFY(!hasProblems());
    QVERIFY(!bStopFlag);
}

// Whichever the search names first: every file has one record, and both folders are there.
void TestFileScan::nestedMailboxes()
{
    writeFiles(store(), {{"a.mbox/M/1.emlx", mail}, {"a.mbox/b.mbox/M/2.emlx", mail}});
    QCOMPARE(scan(appleMail, store()), QStringList({"hide", "finished"}));
    QCOMPARE(files().size(), 2);
    QCOMPARE(listOfPathOfOnlyForTree.size(), 2);
    QVERIFY(files().contains("Mail/a.mbox: a.mbox/M/1.emlx"));
    QVERIFY(trees().contains("Mail/a.mbox/b.mbox"));
}

void TestFileScan::unreadable_data()
{
    QTest::addColumn<int>("client");
    QTest::addColumn<QString>("folder"); // has a file's name
    QTest::addColumn<FileMap>("others");
    QTest::newRow("message") << appleMail << "a.mbox/1.emlx" << FileMap{{"a.mbox/1.emlx/x.txt", ""}};
    QTest::newRow("part") << appleMail << "a.mbox/1.2.emlxpart"
                          << FileMap{{"a.mbox/1.partial.emlx", "9\nX-Apple-Content-Length: 3\n\n\n"}};
    QTest::newRow("the second part, of two that are used")
        << appleMail << "a.mbox/1.3.emlxpart"
        << FileMap{
               {"a.mbox/1.partial.emlx", "9\nX-Apple-Content-Length: 3\n\n\nX-Apple-Content-Length: 3\n\n"},
               {"a.mbox/1.2.emlxpart", ""},
               {"a.mbox/1.4.emlxpart", ""}};
    QTest::newRow("mate") << mailMate << "a.mailbox/1.eml" << FileMap{};
    QTest::newRow("outspring") << outspring << "a/1.eml" << FileMap{};
}

void TestFileScan::unreadable()
{
    QFETCH(int, client);
    QFETCH(QString, folder);
    QFETCH(FileMap, others);
    writeFiles(store(), others);
    QVERIFY(QDir(store()).mkpath(folder));
    QCOMPARE(scan(client, store()), QStringList());
    const QStringList problems = takeProblems();
    QCOMPARE(problems.size(), 1);
    QVERIFY2(problems.first().contains(store() + "/" + folder), qPrintable(problems.first()));
}

// A part that no section of its message takes, and one behind the property list, may be anything.
void TestFileScan::unusedPart()
{
    writeFiles(store(), {{"a.mbox/1.partial.emlx", "9\nX-Apple-Content-Length: 3\n\n\n"
                                                   "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                                   "X-Apple-Content-Length: 3\n\n"},
                         {"a.mbox/1.2.emlxpart", ""}});
    QVERIFY(QDir(store()).mkpath("a.mbox/1.3.emlxpart"));
    QCOMPARE(scan(appleMail, store()), QStringList({"hide", "finished"}));
    QVERIFY(!hasProblems());
}

// A store that is not there is as an empty one, whatever the search says of it.
void TestFileScan::missingStore()
{
    for (const int client : {appleMail, mailMate, outspring})
        QCOMPARE(scan(client, store() + "/missing"), QStringList{"nothing"});
    QVERIFY(!hasProblems());
}

void TestFileScan::stopBetweenFiles()
{
    for (int i = 0; i < 300; ++i)
        writeFiles(store(), {{QString("%1/%1.eml").arg(i), mail}});
    m_selectedFile = store();
    QMessageSavingThread thread;
    thread.m_mailClientIndex = outspring;
    bool ended = false;
    connect(&thread, &QMessageSavingThread::FinishScaning, this, [&] { ended = true; });
    connect(
        &thread, &QMessageSavingThread::OnIndivisibleProgressvalue, &thread,
        [](double percent) {
            if (percent >= 10)
                bStopFlag = true;
        },
        Qt::DirectConnection);
    runToEnd(&thread);
    QCoreApplication::processEvents();
    QVERIFY(!ended);
    QCOMPARE(files().size(), 30); // the file at which 10 per cent are shown is not taken
    QVERIFY(!bStopFlag);
}

// Names with line feeds and names that are no UTF-8 are passed over, and do no harm to others.
void TestFileScan::oddNames()
{
    writeFiles(store(),
               {{"a/1.eml", mail}, {"a/x\ny.eml", mail}, {"a\nb/2.eml", mail}, {"c d /3.eml", mail}});
    QFile latin(store() + "/a/plain");
    QVERIFY(latin.open(QIODevice::WriteOnly));
    const QByteArray bad = QFile::encodeName(store()) + "/a/\xE4.eml";
    QCOMPARE(::link(QFile::encodeName(latin.fileName()).constData(), bad.constData()), 0);
    QCOMPARE(scan(outspring, store()), QStringList({"hide", "finished"}));
    QCOMPARE(files(), QStringList({"Mail/a: a/1.eml", "Mail/c d : c d /3.eml"}));
    ::unlink(bad.constData());
}

void TestFileScan::secondScan()
{
    writeFiles(store(), {{"a/1.eml", mail}});
    scan(outspring, store());
    const qint64 first = PID;
    discardScanResult();
    scan(outspring, store());
    QCOMPARE(files(), QStringList{"Mail/a: a/1.eml"});
    QCOMPARE(StartMailItem->parentId, first + 2);
    QCOMPARE(objMapFID_PID.size(), 2);
    QCOMPARE(MapLeftTreePath.value(first + 2), store() + "/a");
}

QTEST_GUILESS_MAIN(TestFileScan)
#include "test_file_scan.moc"
