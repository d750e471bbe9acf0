#include "window_robot.h"

#include "scan/default_location.h"
#include "scan/store_kinds.h"

#include <QDropEvent>
#include <QMimeData>

class TestSelectionDialog : public QObject
{
    Q_OBJECT

private slots:
    void defaultLocations()
    {
        const auto place = [](int client, const char *user) {
            return defaultLocation(*findStoreKind(client), user);
        };
        QCOMPARE(place(3, "ann"), QString("/Users/ann/Library/Thunderbird"));
        QCOMPARE(place(2, "root"), QString("/private/var/root/Library/Mail"));
        QCOMPARE(place(6, ""), QString("/Users//Library/Thunderbird"));
        QCOMPARE(place(10, "Root"), QString("/Users/Root/Library/Application Support/Opera Mail"));
        QCOMPARE(place(5, "ann"), QString());
    }

    // What the line shows and what would be scanned agree at every client, also after another one.
    void clients_data()
    {
        const DataTable row([](int client, bool hasDefault) {
            WindowRobot robot;
            auto *line = robot.in<QLineEdit>(m_pParseDatabase, "textEdit_FileSelected");
            QCOMPARE(robot.clientBox()->currentIndex(), 0);
            robot.clientBox()->setCurrentIndex(client == 4 ? 8 : 4);
            robot.clientBox()->setCurrentIndex(client);
            QCOMPARE(pMessageSavingThread->m_mailClientIndex, client);
            QCOMPARE(line->text(), m_selectedFile);
            QCOMPARE(!line->text().isEmpty(), hasDefault);
        });
        for (int client = 0; client <= 10; ++client)
            row(QByteArray::number(client), client, client != 0 && client != 1 && client != 5);
    }

    void clients() { checkRow(); }

    // What a file manager's store is taken for.
    void drop_data()
    {
        const DataTable row([](int chosen, const char *dropped, int client, const char *place) {
            WindowRobot robot;
            robot.clientBox()->setCurrentIndex(chosen);
            const QString samples = qEnvironmentVariable("VELMORA_SOURCE") + "/samples/";
            QMimeData data;
            data.setUrls({QUrl::fromLocalFile(samples + dropped)});
            QDragEnterEvent enter({}, Qt::CopyAction, &data, Qt::LeftButton, {});
            QCoreApplication::sendEvent(m_pParseDatabase, &enter);
            QVERIFY(enter.isAccepted());
            QDropEvent event({}, Qt::CopyAction, &data, Qt::LeftButton, {});
            QCoreApplication::sendEvent(m_pParseDatabase, &event);
            QCOMPARE(robot.clientBox()->currentIndex(), client);
            QCOMPARE(m_selectedFile, samples + place);
        });
        row("archive", 3, "outlook-2011/backup.olm", 5, "outlook-2011/backup.olm");
        row("no client yet", 0, "mailmate", 8, "mailmate");
        row("another client", 5, "thunderbird", 3, "thunderbird");
        row("a client that fits", 4, "thunderbird", 4, "thunderbird");
        row("below", 2, "opera", 10, "opera/mail");
        row("nothing", 2, "../docs", 2, "../docs");
    }

    void drop() { checkRow(); }

    void browse()
    {
        QTemporaryDir dir;
        writeFiles(dir.path(), {{"a.olm", "x"}});
        WindowRobot robot;
        auto *line = robot.in<QLineEdit>(m_pParseDatabase, "textEdit_FileSelected");
        auto browse = [&](const QString &path) {
            robot.expectFileDialog(path);
            robot.click(m_pParseDatabase, "browseConverterButton");
        };
        robot.clientBox()->setCurrentIndex(3);
        const QString place = line->text();
        browse(dir.path());
        QCOMPARE(m_selectedFile + line->text(), dir.path() + dir.path());
        browse(""); // the default location is back
        QCOMPARE(m_selectedFile + line->text(), place + place);
        robot.clientBox()->setCurrentIndex(1);
        browse(dir.path());
        browse("");
        QVERIFY(m_selectedFile.isEmpty() && line->text().isEmpty());
        robot.clientBox()->setCurrentIndex(5);
        browse(dir.filePath("a.olm"));
        QCOMPARE(line->text(), dir.filePath("a.olm"));
        browse("");
        QVERIFY(m_selectedFile.isEmpty());
    }

    void refusals()
    {
        WindowRobot robot;
        robot.expectBox("\nChoose a mail client.", QMessageBox::Ok);
        robot.click(m_pParseDatabase, "browseConverterButton");
        robot.expectBox("\nChoose a mail client.", QMessageBox::Ok);
        robot.start();
        robot.clientBox()->setCurrentIndex(1);
        robot.expectBox("\nSelect mailbox database for conversion.", QMessageBox::Ok);
        robot.start();
        QVERIFY2(robot.isQuiet(), qPrintable(robot.surprises()));
        QVERIFY(m_pParseDatabase->isVisible() && !pMessageSavingThread->isRunning());
    }

    void leave_data()
    {
        const DataTable row([](const QByteArray &way) {
            WindowRobot robot;
            QVERIFY(!m_pMyOpenButton->isEnabled() && !m_pMySaveButton->isEnabled() &&
                    robot.fileAction(0)->isEnabled() && !robot.fileAction(1)->isEnabled());
            robot.clientBox()->setCurrentIndex(3);
            if (way == "close box")
                m_pParseDatabase->close();
            else if (way == "Escape")
                QTest::keyClick(m_pParseDatabase, Qt::Key_Escape);
            else
                robot.click(m_pParseDatabase, "closeButton");
            QVERIFY(!m_pParseDatabase->isVisible());
            QVERIFY(m_pMyOpenButton->isEnabled() && !m_pMySaveButton->isEnabled());
            QCOMPARE(m_selectedFile, QString(" "));
            robot.click(m_pMyOpenButton);
            QVERIFY(m_pParseDatabase->isVisible() && !m_pMyOpenButton->isEnabled());
            QCOMPARE(robot.clientBox()->currentIndex(), 0);
            QCOMPARE(pMessageSavingThread->m_mailClientIndex, 0);
            QVERIFY(m_selectedFile.isEmpty() && robot.isQuiet());
        });
        for (const char *way : {"Close button", "close box", "Escape"})
            row(way, QByteArray(way));
    }

    void leave() { checkRow(); }

    void targets_data()
    {
        const DataTable row([](int client, bool outlook, bool apple) {
            WindowRobot robot;
            pMessageSavingThread->m_mailClientIndex = client;
            SaveAsWindow dialog(robot.window);
            dialog.show();
            auto *toOutlook = robot.in<QRadioButton>(&dialog, "radioButtonforOutlook");
            auto *toApple = robot.in<QRadioButton>(&dialog, "radioButtonforApple");
            QCOMPARE(toOutlook->isEnabled(), outlook);
            QCOMPARE(toApple->isEnabled(), apple);
            QCOMPARE(toOutlook->isChecked(), outlook);
            QCOMPARE(toApple->isChecked(), !outlook);
            QVERIFY(!robot.in<QRadioButton>(&dialog, "radioButton")->isVisible());
        });
        for (int client = 1; client <= 10; ++client)
            row(QByteArray::number(client), client, client != 5, client > 2);
    }

    void targets() { checkRow(); }
};

QTEST_MAIN(TestSelectionDialog)
#include "test_selection_dialog.moc"
