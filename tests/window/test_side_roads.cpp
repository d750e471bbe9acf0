#include "window_robot.h"

#include "app/problem_log.h"

#include <QRegularExpression>

namespace
{
const char abortQuestion[] = "Process cannot be resumed from the current stage.";
const QByteArray message = "From - Mon Jan  1 00:00:00 2007\nFrom: Ann <a@b.example>\nSubject: Hello\n\n" +
                           QByteArray(120, 'x') + "\n\n";
const QByteArray large = message.repeated(3000); // more than is copied at once
} // namespace

class TestSideRoads : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir.reset(new QTemporaryDir);
        writeFiles(store(), {{"Mail/Local Folders/Inbox", large}, {"Mail/Local Folders/Sent", large}});
        QVERIFY(QDir().mkpath(out()));
    }

    // After a stop the folders reached are there, can be listed and saved.
    void stopScan()
    {
        for (const bool stop : {false, true}) {
            WindowRobot robot;
            WorkerGate gate(pMessageSavingThread, 50);
            robot.choose(3, store());
            robot.start();
            QTRY_VERIFY(gate.isHolding() && robot.progress());
            QVERIFY(!m_pParseDatabase->isVisible());
            QVERIFY(!m_pMyOpenButton->isEnabled() && !m_pMySaveButton->isEnabled());
            QVERIFY(!robot.tree()->isEnabled());
            for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Space})
                QTest::keyClick(robot.progress(), key);
            QVERIFY(robot.isQuiet()); // no question
            const QString step = robot.in<QLabel>(robot.progress(), "stepLabel")->text();
            QVERIFY2(QRegularExpression("^(Inbox|Sent), \\d of \\d$").match(step).hasMatch(),
                     qPrintable(step));
            robot.progress()->close();
            QVERIFY(robot.progress());
            robot.fileAction(0)->trigger(); // Open while a scan runs changes nothing
            QVERIFY(robot.progress() && !m_pParseDatabase->isVisible());
            robot.expectBox("Application Running !!\nPlease halt the current process to Exit.",
                            QMessageBox::Ok);
            QVERIFY(!robot.window->close() && robot.isQuiet() && robot.progress());

            robot.expectBox(abortQuestion, stop ? QMessageBox::Yes : QMessageBox::No);
            robot.expectBox(stop ? "\nProcess Aborted." : scanDone, QMessageBox::Ok);
            robot.click(robot.progress(), "stopButton");
            QCOMPARE(bStopFlag.load(), stop);
            QCOMPARE(robot.progress() != nullptr, !stop);
            gate.open();
            QTRY_VERIFY(robot.isQuiet() && !pMessageSavingThread->isRunning());
            robot.settle();
            QVERIFY(robot.canOpenAndSave());
            QTreeWidgetItem *parent = robot.folder("Mail/Local Folders");
            QCOMPARE(parent->childCount(), stop ? 1 : 2);
            robot.clickFolder("Mail/Local Folders/" + parent->child(0)->text(0));
            QCOMPARE(robot.statusCount(), QString("3000"));
        }
    }

    void stopSave_data()
    {
        const DataTable row([this](double heldFrom, bool stop, const QString &text) {
            WindowRobot robot;
            scanAndTick(&robot);
            WorkerGate gate(pMailSaving, heldFrom);
            robot.save("radioButtonforOutlook", out());
            QTRY_VERIFY(gate.isHolding() && robot.progress());
            QCOMPARE(robot.in<QLabel>(robot.progress(), "SearchLabel")->text(),
                     QString("Saving Database File ..."));

            robot.expectBox(abortQuestion, stop ? QMessageBox::Yes : QMessageBox::No);
            robot.click(robot.progress(), "stopButton");
            QVERIFY(robot.isQuiet());
            gate.open();
            QTRY_VERIFY(!pMailSaving->isRunning());
            robot.settle();
            QCOMPARE(robot.importWindow()->isVisible(), !text.isEmpty());
            if (!text.isEmpty())
                QCOMPARE(robot.closingText(), text + bundle());
            QVERIFY(!robot.progress() && !IsPreview && !FileSavingIdentification == stop);
            QVERIFY(robot.canOpenAndSave() && robot.tree()->isEnabled());
            qint64 written = 0;
            for (const QByteArray &mailbox : readFiles(bundle() + "/Mail"))
                written += mailbox.size();
            QCOMPARE(written < large.size(), stop); // a mailbox that is being copied ends at once
            // A stopped save leaves the marks, so that it can be done again.
            QCOMPARE(robot.folder("")->checkState(0), stop ? Qt::Checked : Qt::Unchecked);
        });
        row("No", 50.0, false, "\nFile saved successfully at location ");
        row("Yes", 50.0, true, "\nProcess aborted. File saved Successfully at location ");
        row("before anything is written", 0.0, true, "");
    }

    void stopSave() { checkRow(); }

    // The save that runs is neither stopped nor joined by another one.
    void saveWhileSaving()
    {
        WindowRobot robot;
        scanAndTick(&robot);
        WorkerGate gate(pMailSaving, 50);
        robot.save("radioButtonforOutlook", out());
        QTRY_VERIFY(gate.isHolding());
        QVERIFY(!m_pMySaveButton->isEnabled() && !robot.fileAction(1)->isEnabled());
        SaveAsWindow *before = m_pSaveAs;
        robot.window->OnSavingFiles();
        robot.window->OnOpenFile();
        QCOMPARE(m_pSaveAs, before);
        QVERIFY(!bStopFlag && StartMailItem);
        gate.open();
        QTRY_VERIFY(robot.importWindow()->isVisible());
        QCOMPARE(QFileInfo(bundle() + "/Mail/Local Folders/Inbox.mbox").size(), qint64(large.size() + 1));
    }

    void replaceQuestion()
    {
        for (const bool replace : {false, true}) {
            writeFiles(bundle(), {{"old", "old"}});
            WindowRobot robot;
            robot.scan(store());
            robot.tick("Mail/Local Folders/Sent");
            robot.click(m_pMySaveButton);
            QVERIFY(m_pSaveAs->isVisible());
            robot.expectFileDialog(out());
            robot.expectBox("\nMain Identity.rge already exists at this location. Do you want to replace it?",
                            replace ? QMessageBox::Yes : QMessageBox::No);
            robot.click(m_pSaveAs, "Ok_Button");
            QVERIFY2(robot.isQuiet(), qPrintable(robot.surprises()));
            if (!replace) {
                QVERIFY(m_pSaveAs->isVisible());
                QCOMPARE(readFiles(bundle()), (FileMap{{"old", "old"}}));
                continue;
            }
            QTRY_VERIFY(robot.importWindow()->isVisible());
            const FileMap written = readFiles(bundle());
            QVERIFY(!written.contains("old"));
            QCOMPARE(written.value("Mail/Local Folders/Sent.mbox"), large + "\n");
        }
    }

    void nothingFoundAndNothingTicked()
    {
        WindowRobot robot;
        robot.choose(3, out());
        robot.expectBox("\nSelected file is either invalid or empty.", QMessageBox::Ok);
        robot.start();
        QTRY_VERIFY(robot.isQuiet());
        robot.settle();
        QVERIFY(!robot.progress());
        QVERIFY(m_pMyOpenButton->isEnabled() && !m_pMySaveButton->isEnabled() && m_selectedFile.isEmpty());
        QVERIFY(!robot.fileAction(1)->isEnabled());
        robot.click(m_pMyOpenButton); // no question
        QVERIFY(m_pParseDatabase->isVisible());
        robot.scan(store());
        QCOMPARE(robot.folder("Mail/Local Folders")->childCount(), 2);
        robot.expectBox("Select a folder to save.", QMessageBox::Ok);
        robot.click(m_pMySaveButton);
        QVERIFY(robot.isQuiet() && !m_pSaveAs->isVisible());
    }

    void closeQuestion()
    {
        for (const bool close : {false, true}) {
            WindowRobot robot;
            robot.expectBox("\nDo you want to close Velmora Mail Converter? ",
                            close ? QMessageBox::Yes : QMessageBox::No);
            QCOMPARE(robot.window->close(), close);
            QVERIFY(robot.isQuiet());
            QCOMPARE(closeevent, close ? 1 : 0);
            if (close)
                QVERIFY(robot.window->close()); // asked once only
        }
    }

    // A save that runs keeps the window open, as a scan does.
    void closeWhileSaving()
    {
        WindowRobot robot;
        scanAndTick(&robot);
        WorkerGate gate(pMailSaving, 50);
        robot.save("radioButtonforOutlook", out());
        QTRY_VERIFY(gate.isHolding());
        robot.expectBox("Application Running !!\nPlease halt the current process to Exit.", QMessageBox::Ok);
        QVERIFY(!robot.window->close() && robot.isQuiet() && robot.progress());
        gate.open();
        QTRY_VERIFY(robot.importWindow()->isVisible());
    }

    void cancelledTarget_data()
    {
        const DataTable row([this](const QByteArray &way) {
            WindowRobot robot;
            scanAndTick(&robot);
            robot.click(m_pMySaveButton);
            QVERIFY(m_pSaveAs->isVisible());
            if (way == "Cancel")
                robot.click(m_pSaveAs, "CloseButton");
            else if (way == "Escape")
                QTest::keyClick(m_pSaveAs, Qt::Key_Escape);
            else if (way == "close box")
                m_pSaveAs->close();
            else
                robot.expectFileDialog(""), robot.click(m_pSaveAs, "Ok_Button");
            QVERIFY(robot.isQuiet());
            QVERIFY(!m_pSaveAs->isVisible() && !pMailSaving->isRunning());
            QVERIFY(robot.canOpenAndSave() && robot.tree()->isEnabled());
            QVERIFY(readFiles(out()).isEmpty());
        });
        for (const char *way : {"Cancel", "Escape", "close box", "file dialog"})
            row(way, QByteArray(way));
    }

    void cancelledTarget() { checkRow(); }

    // A reader that gives up at a file sends no end signal: its dialog stays, names the file, and Stop ends it.
    void endedEarly()
    {
        WindowRobot robot;
        robot.choose(3, store());
        pMessageSavingThread->m_mailClientIndex = 99; // no reader: the thread ends at once
        const QString reason = "can't be read: /a/" + QString("very long folder/").repeated(12) + "file";
        const auto giveUp = [&] {
            emit pMessageSavingThread->OnShowProgressDlg();
            for (int number = 0; number < 6; ++number)
                reportProblem(reason + QString(number, ' '));
        };
        const auto givingUp = connect(pMessageSavingThread, &QThread::started, pMessageSavingThread, giveUp,
                                      Qt::DirectConnection);
        robot.start();
        QTRY_VERIFY(!pMessageSavingThread->isRunning() && robot.progress());
        disconnect(givingUp);
        QLabel *label = robot.in<QLabel>(robot.progress(), "SearchLabel");
        QTRY_VERIFY(label->text().startsWith(reason));
        QVERIFY(label->text().contains("\n... and 1 more\n") && label->text().contains("Stop"));
        QVERIFY(label->height() > 60);
        QVERIFY(robot.progress()->height() >= label->geometry().bottom());
        robot.expectBox(abortQuestion, QMessageBox::Yes);
        robot.expectBox("\nProcess Aborted.", QMessageBox::Ok);
        robot.click(robot.progress(), "stopButton");
        QVERIFY2(robot.isQuiet(), qPrintable(robot.surprises()));
        QVERIFY(!robot.progress() && m_pMyOpenButton->isEnabled() && robot.tree()->isEnabled());
        robot.expectBox(discardQuestion, QMessageBox::Yes);
        robot.click(m_pMyOpenButton);
        robot.scan(store()); // the stop that came after the end stops nothing later
        QCOMPARE(robot.folder("Mail/Local Folders")->childCount(), 2);
    }

    void endedWithoutASign()
    {
        WindowRobot robot;
        robot.choose(3, store());
        pMessageSavingThread->m_mailClientIndex = 99;
        robot.expectBox("The process ended before it was done.", QMessageBox::Ok);
        robot.start();
        QTRY_VERIFY2(robot.isQuiet(), qPrintable(robot.surprises()));
        QVERIFY(m_pMyOpenButton->isEnabled() && !robot.progress());
    }

    // The closing window says what is missing from the bundle.
    void unreadableMailbox()
    {
        WindowRobot robot;
        scanAndTick(&robot);
        QVERIFY(QFile::remove(store() + "/Mail/Local Folders/Sent"));
        robot.save("radioButtonforOutlook", out());
        QTRY_VERIFY(robot.importWindow()->isVisible());
        QVERIFY2(
            robot.closingText().startsWith("\nWhat was saved so far is at location " + bundle() + "\n\n") &&
                robot.closingText().contains(store() + "/Mail/Local Folders/Sent"),
            qPrintable(robot.closingText()));
        QLabel *label = robot.in<QLabel>(robot.importWindow(), "InfoLabels");
        QVERIFY(label->height() > 62);
        QVERIFY(!label->geometry().intersects(robot.in<QLabel>(robot.importWindow(), "label_3")->geometry()));
    }

private:
    void scanAndTick(WindowRobot *robot) const
    {
        robot->scan(store());
        robot->tick("");
    }
    QString store() const { return m_dir->filePath("profile"); }
    QString out() const { return m_dir->filePath("out"); }
    QString bundle() const { return out() + "/Main Identity.rge"; }

    QScopedPointer<QTemporaryDir> m_dir;
};

QTEST_MAIN(TestSideRoads)
#include "test_side_roads.moc"
