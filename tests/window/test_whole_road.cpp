#include "window_robot.h"

#include "app/problem_log.h"
#include "app/window/translations.h"

#include <QCheckBox>
#include <QTranslator>

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

    // From the first dialog to the last by keys alone.
    void byKeys_data()
    {
        const DataTable row([](QLocale::Language language, Qt::LayoutDirection direction) {
            QLocale::setDefault(language);
            installTranslations(qApp);
            QApplication::setLayoutDirection(direction);
            QTemporaryDir dir;
            writeFiles(dir.path(), {{"a/Mail/Local Folders/Inbox", inbox}});
            QVERIFY(QDir().mkpath(dir.filePath("out")));
            const auto text = [](const char *english) { return QConverterMainWindow::tr(english); };

            WindowRobot robot;
            robot.useKeys();
            for (int client = 0; client < 3; ++client)
                WindowRobot::pressKeyOn(robot.clientBox(), Qt::Key_Down);
            robot.expectFileDialog(dir.filePath("a"));
            robot.pressKeyOn(robot.in<QPushButton>(m_pParseDatabase, "browseConverterButton"), Qt::Key_Space);
            auto *start = robot.in<QPushButton>(m_pParseDatabase, "StartButton");
            QCOMPARE(m_pParseDatabase->focusWidget(), start);
            robot.expectBox(text(scanDone), QMessageBox::Ok);
            QTest::keyClick(m_pParseDatabase, Qt::Key_Return);
            QTRY_VERIFY2(robot.isQuiet(), qPrintable(robot.surprises()));
            QTRY_VERIFY(!pMessageSavingThread->isRunning() && robot.folder("Mail/Local Folders/Inbox"));
            robot.settle();

            robot.pressKeyOn(robot.tree(), Qt::Key_Home);
            while (robot.tree()->currentItem() != robot.folder("Mail/Local Folders/Inbox"))
                QTest::keyClick(robot.tree(), Qt::Key_Down);
            QTest::keyClick(robot.tree(), Qt::Key_Space);
            QCOMPARE(robot.folder("Mail/Local Folders/Inbox")->checkState(0), Qt::Checked);
            robot.pressKeyOn(m_pMySaveButton, Qt::Key_Space);
            QTRY_VERIFY(m_pSaveAs && m_pSaveAs->isVisible());
            QCOMPARE(m_pSaveAs->focusWidget()->objectName(), "radioButtonforOutlook");
            robot.pressKeyOn(robot.in<QCheckBox>(m_pSaveAs, "exactCopies"), Qt::Key_Space);
            robot.expectFileDialog(dir.filePath("out"));
            QTest::keyClick(m_pSaveAs, Qt::Key_Return);
            QTRY_VERIFY(robot.importWindow()->isVisible() && !robot.importWindow()->waitsForReport());
            QTest::keyClick(robot.importWindow(), Qt::Key_Return);
            QVERIFY(!robot.importWindow()->isVisible());
            QCOMPARE(
                readFiles(dir.filePath("out")).value("Main Identity.rge/Mail/Local Folders/Inbox/Inbox.mbox"),
                inbox);
            robot.expectBox(text("\nDo you want to close Velmora Mail Converter? "), QMessageBox::Yes);
            QVERIFY(robot.window->close() && robot.isQuiet());
            qDeleteAll(qApp->findChildren<QTranslator *>());
        });
        row("German, right to left", QLocale::German, Qt::RightToLeft);
        row("English", QLocale::English, Qt::LeftToRight);
    }

    void byKeys() { checkRow(); }

    // Nothing of the first scan is left: not in the tree, and not in what a save writes.
    void secondScan()
    {
        QTemporaryDir dir;
        const QString first = dir.filePath("first");
        const QString second = dir.filePath("second");
        const QString out = dir.filePath("out");
        writeFiles(first, {{"Mail/Local Folders/Inbox", inbox}});
        writeFiles(second, {{"store/account1/2014/01/01/1.mbs", sent}});
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

        robot.scan(second, 10);
        robot.tick("");
        QCOMPARE(robot.folder("Mail/account1/Mails")->checkState(0), Qt::Checked);
        robot.save("radioButtonforOutlook", out);
        QTRY_VERIFY(robot.importWindow()->isVisible());
        const FileMap bundle = readFiles(out + "/Main Identity.rge/Mail");
        const QByteArray mail = sent.mid(sent.indexOf("From: ")) + '\n';
        QCOMPARE(bundle,
                 (FileMap{{"account1/Mails/Mails.mbox", "From ???@??? Fri Dec 19 10:37:38 2014\n" + mail}}));

        // Nor is anything left of the first save: its target, or what it could not write.
        robot.click(robot.importWindow(), "OKButton");
        reportUnwritten("of the first save");
        takeProblems();
        robot.tick("");
        robot.save("radioButtonforApple", out);
        QTRY_VERIFY(robot.importWindow()->isVisible());
        QCOMPARE(robot.closingText(), "\nFile saved successfully at location " + out + "/Main Identity.mbox");
        QCOMPARE(readFiles(out + "/Main Identity.mbox/Mail"),
                 (FileMap{{"account1/Mails/Mails.mbox", "From - Wed Nov 12 14:38:04 2014\n" + mail}}));
    }
};

QTEST_MAIN(TestWholeRoad)
#include "test_whole_road.moc"
