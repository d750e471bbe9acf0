#include "window_robot.h"

namespace
{
const QByteArray inbox = "From - Mon Jan  1 00:00:00 2007\nFrom: Ann <ann@example.org>\nSubject: First\n"
                         "Content-Type: text/plain; charset=utf-8\n\nHello,\nFrom here on all is quoted.\n\n"
                         "From - Mon Jan  1 00:00:00 2007\nFrom: =?UTF-8?Q?B=C3=B6b?= <bob@example.org>\n"
                         "Subject: Second\n\nBye\n";
const QByteArray sent = "From - Mon Jan  1 00:00:00 2007\nFrom: Me <me@example.org>\nSubject: Sent\n\nSent\n";

// What a save writes of a mailbox: a body line "From " is quoted, and a line feed closes the file.
QByteArray saved(QByteArray mailbox)
{
    return mailbox.replace("\nFrom here", "\n>From here") + "\n";
}
} // namespace

class TestWholeRoad : public QObject
{
    Q_OBJECT

private slots:
    void selectScanBrowseTickSave_data()
    {
        const DataTable row([](const QByteArray &target, const QString &bundleName, const QString &mailbox) {
            QTemporaryDir dir;
            const QString store = dir.filePath("a profile");
            const QString out = dir.filePath("out here");
            writeFiles(store, {{"Mail/Local Folders/Inbox", inbox}, {"Mail/Local Folders/Sent", sent}});
            QVERIFY(QDir().mkpath(out));

            WindowRobot robot;
            robot.scan(store);
            QVERIFY2(robot.surprises().isEmpty(), qPrintable(robot.surprises()));
            QVERIFY(!robot.progress());
            QCOMPARE(robot.tree()->topLevelItem(0)->text(0), QString("Main Identity"));

            robot.clickFolder("Mail/Local Folders/Inbox");
            QCOMPARE(robot.list()->topLevelItemCount(), 2);
            QCOMPARE(robot.list()->topLevelItem(0)->text(1), QString("Ann <ann@example.org>\nFirst"));
            QCOMPARE(robot.list()->topLevelItem(1)->text(1), QStringLiteral("Böb <bob@example.org>\nSecond"));
            QCOMPARE(robot.list()->topLevelItem(1)->text(2), store + "/Mail/Local Folders/Inbox");
            QCOMPARE(robot.list()->topLevelItem(1)->text(3).toInt(), inbox.lastIndexOf("From - "));
            QVERIFY(robot.list()->topLevelItem(0)->isSelected());
            QCOMPARE(robot.statusName(), QString("Inbox:"));
            QCOMPARE(robot.statusCount(), QString("2"));

            robot.tick("Mail/Local Folders/Inbox");
            QCOMPARE(robot.folder("Mail/Local Folders/Inbox")->checkState(0), Qt::Checked);
            QCOMPARE(robot.folder("")->checkState(0), Qt::PartiallyChecked);
            robot.save(target, out);
            QTRY_VERIFY(robot.importWindow()->isVisible());
            QCOMPARE(robot.closingText(), "\nFile saved successfully at location " + out + '/' + bundleName);
            QVERIFY(!robot.progress());
            robot.click(robot.importWindow(), "OKButton");
            QVERIFY(!robot.importWindow()->isVisible());

            const FileMap bundle = readFiles(out + '/' + bundleName);
            QCOMPARE(bundle.value(mailbox), saved(inbox));
            for (const QString &file : bundle.keys())
                QVERIFY2(!file.contains("Sent"), qPrintable(file));
            QCOMPARE(readFiles(store),
                     (FileMap{{"Mail/Local Folders/Inbox", inbox}, {"Mail/Local Folders/Sent", sent}}));
            QCOMPARE(robot.folder("")->checkState(0), Qt::Unchecked);
            QCOMPARE(robot.folder("Mail/Local Folders/Inbox")->checkState(0), Qt::Unchecked);
            QCOMPARE(int(StartFldrAtrib->state), int(stateNotTicked));
            QVERIFY(m_pMyOpenButton->isEnabled() && m_pMySaveButton->isEnabled());
            QVERIFY2(robot.isQuiet(), qPrintable(robot.surprises()));
        });
        row("Outlook", "radioButtonforOutlook", "Main Identity.rge", "Mail/Local Folders/Inbox.mbox");
        row("Apple Mail", "radioButtonforApple", "Main Identity.mbox", "Mail/Local Folders/Inbox/Inbox.mbox");
    }

    void selectScanBrowseTickSave() { checkRow(); }

    // Nothing of the first scan is left: not in the tree, and not in what a save writes.
    void secondScan()
    {
        QTemporaryDir dir;
        const QString first = dir.filePath("first");
        const QString second = dir.filePath("second");
        const QString out = dir.filePath("out");
        writeFiles(first, {{"Mail/Local Folders/Inbox", inbox}});
        writeFiles(second, {{"Mail/Local Folders/Sent", sent}});
        QVERIFY(QDir().mkpath(out));

        WindowRobot robot;
        robot.scan(first);
        robot.clickFolder("Mail/Local Folders/Inbox");
        robot.expectBox(discardQuestion, QMessageBox::No);
        robot.click(m_pMyOpenButton);
        QVERIFY(robot.isQuiet());
        QCOMPARE(robot.list()->topLevelItemCount(), 2);
        QVERIFY(StartMailItem && !m_pParseDatabase->isVisible());

        robot.expectBox(discardQuestion, QMessageBox::Yes);
        robot.click(m_pMyOpenButton);
        QVERIFY(robot.isQuiet());
        QCOMPARE(robot.tree()->topLevelItemCount() + robot.list()->topLevelItemCount(), 0);
        QVERIFY(!StartMailItem && !StartFldrAtrib && m_pParseDatabase->isVisible());
        QVERIFY(!m_pMyOpenButton->isEnabled() && !m_pMySaveButton->isEnabled());
        QCOMPARE(robot.statusName() + robot.statusCount(), QString());

        robot.scan(second);
        robot.tick("");
        QCOMPARE(robot.folder("Mail/Local Folders/Sent")->checkState(0), Qt::Checked);
        robot.save("radioButtonforOutlook", out);
        QTRY_VERIFY(robot.importWindow()->isVisible());
        const FileMap bundle = readFiles(out + "/Main Identity.rge/Mail");
        QCOMPARE(bundle, (FileMap{{"Local Folders/Sent.mbox", saved(sent)}}));
    }
};

QTEST_MAIN(TestWholeRoad)
#include "test_whole_road.moc"
