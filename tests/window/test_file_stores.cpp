#include "store_files.h"
#include "window_robot.h"

#include <QTemporaryDir>

#include <cstdio>

namespace
{
QByteArray emlx(const QByteArray &sender, const QByteArray &subject)
{
    const QByteArray text = "From: " + sender + "\nSubject: " + subject + "\n\nText\n";
    return QByteArray::number(text.size()) + "\n" + text + "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
}
} // namespace

/// Stores with a file for each message: their lists are read when a folder is clicked.
class TestFileStores : public QObject
{
    Q_OBJECT

private slots:
    void listAndSave();
    void unreadableFile();
    void answersWhileListing();

private:
    static void scan(WindowRobot *robot, const QString &store)
    {
        robot->choose(2, store);
        robot->expectBox("\nMailbox scan completed successfully.", QMessageBox::Ok);
        robot->start();
        QTRY_VERIFY2(robot->isQuiet(), qPrintable(robot->surprises()));
        QTRY_VERIFY(!pMessageSavingThread->isRunning() && robot->tree()->topLevelItemCount() == 1);
        robot->settle();
    }
    static QTreeWidgetItem *inbox(const WindowRobot &robot)
    {
        return robot.tree()->findItems("INBOX", Qt::MatchExactly | Qt::MatchRecursive).value(0);
    }
    static void click(const WindowRobot &robot, QTreeWidgetItem *item)
    {
        robot.tree()->scrollToItem(item);
        const QRect place = robot.tree()->visualItemRect(item);
        QTest::mouseClick(robot.tree()->viewport(), Qt::LeftButton, {},
                          QPoint(place.left() + 60, place.center().y()));
    }
};

void TestFileStores::listAndSave()
{
    QTemporaryDir dir;
    const QString store = dir.filePath("Mail");
    writeFiles(store, {{"V2/IMAP-a@example.org/INBOX.mbox/Messages/1.emlx", emlx("Ann", "First")},
                       {"V2/IMAP-a@example.org/INBOX.mbox/Messages/2.emlx", emlx("Bob", "Second")}});
    QVERIFY(QDir().mkpath(dir.filePath("out")));
    WindowRobot robot;
    scan(&robot, store);
    QVERIFY(inbox(robot));
    click(robot, inbox(robot));
    QCOMPARE(robot.statusName() + robot.statusCount(), QString("INBOX:2"));
    QStringList rows = {robot.list()->topLevelItem(0)->text(1), robot.list()->topLevelItem(1)->text(1)};
    rows.sort();
    QCOMPARE(rows, (QStringList{"Ann\nFirst", "Bob\nSecond"}));
    QVERIFY2(!robot.header().isEmpty(), "the first row's message is shown");
    robot.tick("");
    robot.save("radioButtonforOutlook", dir.filePath("out"));
    QTRY_VERIFY(robot.importWindow()->isVisible()); // the end signals come more than once, the window once
    robot.click(robot.importWindow(), "OKButton");
    robot.settle();
    QVERIFY(!robot.importWindow()->isVisible() && robot.isQuiet());
    QCOMPARE(robot.closingText(),
             "\nFile saved successfully at location " + dir.filePath("out") + "/Main Identity.rge");
}

// A file whose name is no text can't be opened by it: it is skipped and named; the controls come back.
void TestFileStores::unreadableFile()
{
    QTemporaryDir dir;
    const QString messages = "V2/IMAP-a@example.org/INBOX.mbox/Messages/";
    writeFiles(dir.path(), {{messages + "1.emlx", emlx("Ann", "First")}});
    WindowRobot robot;
    scan(&robot, dir.path());
    const QByteArray unopened = QFile::encodeName(dir.filePath(messages)) + "\xff.emlx";
    FILE *file = std::fopen(unopened.constData(), "w");
    QVERIFY(file && std::fclose(file) == 0);
    robot.expectBox("not listed, it can't be opened: " + QFile::decodeName(unopened), QMessageBox::Ok);
    click(robot, inbox(robot));
    QVERIFY2(robot.isQuiet(), qPrintable(robot.surprises()));
    QCOMPARE(robot.statusCount(), QString("1"));
    QVERIFY(robot.tree()->isEnabled() && m_pMyOpenButton->isEnabled() && m_pMySaveButton->isEnabled());
}

// While a long list fills, the window goes on and yet nothing else can be begun.
void TestFileStores::answersWhileListing()
{
    QTemporaryDir dir;
    FileMap files;
    for (int i = 0; i < 5000; ++i)
        files.insert(QString("V2/IMAP-a@example.org/INBOX.mbox/Messages/%1.emlx").arg(i),
                     emlx("Ann", QByteArray(20000, 'x')));
    writeFiles(dir.path(), files);
    WindowRobot robot;
    scan(&robot, dir.path());
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, &timer, [&] {
        if (ticks++ > 0 || robot.list()->topLevelItemCount() == 5000)
            return;
        QVERIFY(!robot.tree()->isEnabled());
        robot.window->OnOpenFile();
        robot.window->OnSavingFiles();
    });
    timer.start(1);
    click(robot, inbox(robot));
    QVERIFY2(ticks > 0, "the window answered while the list was read");
    QCOMPARE(robot.list()->topLevelItemCount(), 5000);
    QCOMPARE(robot.statusCount(), QString("5000"));
    QVERIFY2(robot.isQuiet(), qPrintable(robot.surprises()));
    QVERIFY(!m_pSaveAs && !m_pParseDatabase->isVisible());
}

QTEST_MAIN(TestFileStores)
#include "test_file_stores.moc"
