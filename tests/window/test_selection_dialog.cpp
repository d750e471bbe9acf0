#include "data_table.h"
#include "store_files.h"
#include "window_robot.h"

#include "scan/default_location.h"
#include "scan/store_kinds.h"

#include <QTemporaryDir>

class TestSelectionDialog : public QObject
{
    Q_OBJECT

private slots:
    void defaultLocations_data()
    {
        const DataTable<int, QString, QString> row("client", "user", "place");
        row("user", 3, "ann", "/Users/ann/Library/Thunderbird");
        row("administrator", 2, "root", "/private/var/root/Library/Mail");
        row("no name", 6, "", "/Users//Library/Thunderbird");
        row("case counts", 10, "Root", "/Users/Root/Library/Application Support/Opera Mail");
        row("none", 5, "ann", "");
    }

    void defaultLocations()
    {
        QFETCH(int, client);
        QFETCH(QString, user);
        QFETCH(QString, place);
        QCOMPARE(defaultLocation(*findStoreKind(client), user), place);
    }

    void clients_data()
    {
        const DataTable<int, bool> row("client", "hasDefault");
        for (int client = 0; client <= 10; ++client)
            QTest::addRow("client %d", client) << client << (client != 0 && client != 1 && client != 5);
    }

    // What the line shows and what would be scanned agree at every client, also after another one.
    void clients()
    {
        QFETCH(int, client);
        QFETCH(bool, hasDefault);
        WindowRobot robot;
        auto *combo = robot.in<QComboBox>(m_pParseDatabase, "comboBoxForClientList");
        auto *line = robot.in<QLineEdit>(m_pParseDatabase, "textEdit_FileSelected");
        QCOMPARE(combo->currentIndex(), 0);
        combo->setCurrentIndex(client == 4 ? 8 : 4);
        combo->setCurrentIndex(client);
        QCOMPARE(pMessageSavingThread->m_mailClientIndex, client);
        QCOMPARE(line->text(), m_selectedFile);
        QCOMPARE(!line->text().isEmpty(), hasDefault);
    }

    void startRefuses()
    {
        WindowRobot robot;
        auto *combo = robot.in<QComboBox>(m_pParseDatabase, "comboBoxForClientList");
        robot.expectBox("\nChoose a mail client.", QMessageBox::Ok);
        robot.start();
        combo->setCurrentIndex(1);
        robot.expectBox("\nSelect mailbox database for conversion.", QMessageBox::Ok);
        robot.start();
        QVERIFY2(robot.isQuiet(), qPrintable(robot.surprises()));
        QVERIFY(m_pParseDatabase->isVisible() && !pMessageSavingThread->isRunning());
    }

    void browse()
    {
        QTemporaryDir dir;
        writeFiles(dir.path(), {{"a.olm", "x"}});
        WindowRobot robot;
        auto *combo = robot.in<QComboBox>(m_pParseDatabase, "comboBoxForClientList");
        auto *line = robot.in<QLineEdit>(m_pParseDatabase, "textEdit_FileSelected");
        auto browse = [&](const QString &path) {
            robot.expectFileDialog(path);
            robot.click(m_pParseDatabase, "browseConverterButton");
        };
        combo->setCurrentIndex(3);
        const QString place = line->text();
        browse(dir.path());
        QCOMPARE(m_selectedFile, dir.path());
        QCOMPARE(line->text(), dir.path());
        browse(""); // the default location is back
        QCOMPARE(m_selectedFile, place);
        QCOMPARE(line->text(), place);
        combo->setCurrentIndex(1);
        browse(dir.path());
        browse("");
        QVERIFY(m_selectedFile.isEmpty() && line->text().isEmpty());
        combo->setCurrentIndex(5);
        browse(dir.filePath("a.olm"));
        QCOMPARE(line->text(), dir.filePath("a.olm"));
        browse("");
        QVERIFY(m_selectedFile.isEmpty());
        combo->setCurrentIndex(0);
        robot.expectBox("\nChoose a mail client.", QMessageBox::Ok);
        robot.click(m_pParseDatabase, "browseConverterButton");
        QVERIFY2(robot.isQuiet(), qPrintable(robot.surprises()));
    }

    void leave_data()
    {
        const DataTable<QByteArray> row("way");
        for (const char *way : {"Close button", "close box", "Escape"})
            row(way, QByteArray(way));
    }

    void leave()
    {
        QFETCH(QByteArray, way);
        WindowRobot robot;
        QVERIFY(!m_pMyOpenButton->isEnabled() && !m_pMySaveButton->isEnabled() &&
                robot.fileAction(0)->isEnabled() && !robot.fileAction(1)->isEnabled());
        robot.in<QComboBox>(m_pParseDatabase, "comboBoxForClientList")->setCurrentIndex(3);
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
        QCOMPARE(robot.in<QComboBox>(m_pParseDatabase, "comboBoxForClientList")->currentIndex(), 0);
        QCOMPARE(pMessageSavingThread->m_mailClientIndex, 0);
        QVERIFY(m_selectedFile.isEmpty() && robot.isQuiet());
    }

    void targets_data()
    {
        const DataTable<int, bool, bool> row("client", "outlook", "apple");
        for (int client = 1; client <= 10; ++client)
            QTest::addRow("client %d", client) << client << (client != 5) << (client > 2);
    }

    void targets()
    {
        QFETCH(int, client);
        QFETCH(bool, outlook);
        QFETCH(bool, apple);
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
    }
};

QTEST_MAIN(TestSelectionDialog)
#include "test_selection_dialog.moc"
