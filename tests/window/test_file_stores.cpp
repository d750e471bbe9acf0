#include "store_files.h"
#include "window_robot.h"

#include <QStyledItemDelegate>
#include <QTemporaryDir>

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
    QCOMPARE(rows, (QStringList{"Ann\n\nFirst", "Bob\n\nSecond"}));
    const auto *delegate = qobject_cast<QStyledItemDelegate *>(robot.list()->itemDelegate());
    QCOMPARE(delegate->displayText(rows.first(), QLocale()),
             QString("Ann") + QChar(QChar::LineSeparator) + "First");
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

// While a long list fills, the window answers, and yet nothing else can be begun. A file that goes meanwhile is
// skipped and named.
void TestFileStores::answersWhileListing()
{
    QTemporaryDir dir;
    constexpr int fileCount = 8000;
    FileMap files;
    for (int i = 0; i < fileCount; ++i)
        files.insert(QString("V2/IMAP-a@example.org/INBOX.mbox/Messages/%1.emlx").arg(i),
                     emlx("Ann", QByteArray(200, 'x')));
    writeFiles(dir.path(), files);
    WindowRobot robot;
    scan(&robot, dir.path());
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, &timer, [&] {
        if (AllFilePathInStrListForTree.isEmpty() || ticks++ > 0)
            return; // the folder is still being walked, or this has been done
        QVERIFY(!robot.tree()->isEnabled());
        const QString last = AllFilePathInStrListForTree.last();
        QVERIFY(QFile::remove(last));
        robot.expectBox("not listed, it can't be opened: " + last, QMessageBox::Ok);
        robot.window->OnOpenFile();
        robot.window->OnSavingFiles();
    });
    timer.start(1);
    click(robot, inbox(robot));
    QVERIFY2(ticks > 0, "the window answered while the list was read");
    QCOMPARE(robot.list()->topLevelItemCount(), fileCount - 1);
    QCOMPARE(robot.statusCount(), QString::number(fileCount - 1));
    QVERIFY(robot.tree()->isEnabled() && m_pMyOpenButton->isEnabled() && m_pMySaveButton->isEnabled());
    QVERIFY2(robot.isQuiet(), qPrintable(robot.surprises()));
    QVERIFY(!m_pSaveAs && !m_pParseDatabase->isVisible());
}

QTEST_MAIN(TestFileStores)
#include "test_file_stores.moc"
