#include "app/shared_state.h"
#include "data_table.h"
#include "dialogs/about_dialog.h"
#include "dialogs/preferences_dialog.h"
#include "dialogs/report_dialog.h"
#include "platform/system_info.h"
#include "store_files.h"

#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QSettings>
#include <QTimer>
#include <QTreeWidget>

namespace
{
template <typename T>
T *in(const QDialog &dialog, const char *name)
{
    return dialog.findChild<T *>(name);
}

// The Preferences dialog with its widgets.
struct Preferences : PreferencesDialog {
    QCheckBox *box = in<QCheckBox>(*this, "CheckForUpdateCheckBox");
    QComboBox *interval = in<QComboBox>(*this, "comboBoxUpdates");
    QPushButton *now = in<QPushButton>(*this, "CheckUpdateButton");
    QPushButton *ok = in<QPushButton>(*this, "OkButton");
    QPushButton *cancel = in<QPushButton>(*this, "CancelButton");
};
} // namespace

class TestDialogs : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY2(m_settings.fileName().startsWith(qEnvironmentVariable("XDG_CONFIG_HOME")),
                 "not the user's own");
        m_settings.clear();
        m_settings.sync();
    }

    void readPreferences_data()
    {
        const DataTable row([this](const QVariant &check, const QVariant &storedInterval, bool checked,
                                   const QString &interval) {
            if (check.isValid())
                m_settings.setValue("CheckForUpdate", check);
            if (storedInterval.isValid())
                m_settings.setValue("UpdateInterval", storedInterval);
            m_settings.sync();
            const Preferences dialog;
            QCOMPARE(dialog.box->isChecked(), checked);
            QCOMPARE(dialog.interval->isEnabled(), checked);
            QCOMPARE(dialog.interval->currentText(), interval);
        });
        row("nothing stored", {}, {}, false, "Daily");
        row("on, no interval", true, {}, true, "Daily");
        row("off: the interval isn't read", false, "Monthly", false, "Daily");
        row("monthly", true, "Monthly", true, "Monthly");
        row("unknown interval", true, "Yearly", true, "Daily");
        row("other letter case", true, "weekly", true, "Daily");
    }

    void readPreferences() { checkRow(); }

    void storePreferences()
    {
        Preferences dialog;
        dialog.show();
        QTest::mouseClick(dialog.box, Qt::LeftButton, {}, QPoint(8, dialog.box->height() / 2));
        QVERIFY(dialog.interval->isEnabled());
        dialog.interval->setCurrentText("Monthly");
        dialog.ok->click();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QVERIFY(!dialog.isVisible());
        QCOMPARE(stored(), "true, Monthly");

        dialog.show();
        dialog.box->setChecked(false);
        QVERIFY(!dialog.interval->isEnabled());
        dialog.ok->click();
        QCOMPARE(stored(), "false, Monthly"); // disabled, and stored all the same
    }

    void cancelPreferences()
    {
        for (const bool escape : {false, true}) {
            Preferences dialog;
            dialog.show();
            dialog.box->setChecked(true);
            if (escape)
                QTest::keyClick(&dialog, Qt::Key_Escape);
            else
                dialog.cancel->click();
            QVERIFY(!dialog.isVisible());
            QCOMPARE(stored(), ", ");
        }
    }

    void checkNow()
    {
        Preferences dialog;
        dialog.show();
        QString said;
        bool enabledMeanwhile = true;
        QTimer::singleShot(0, [&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            QVERIFY(box);
            said = box->text();
            enabledMeanwhile = dialog.now->isEnabled();
            box->close();
        });
        dialog.now->click();
        QVERIFY2(said.startsWith("No address to ask for updates is set"), qPrintable(said));
        QVERIFY(!enabledMeanwhile);
        QVERIFY(dialog.now->isEnabled() && dialog.isVisible());
    }

    void drag()
    {
        Preferences dialog;
        dialog.show();
        dialog.move(100, 100);
        const auto send = [&dialog](QEvent::Type type, QPoint at, Qt::MouseButton button,
                                    Qt::MouseButtons held) {
            QMouseEvent event(type, dialog.mapFromGlobal(at), at, button, held, Qt::NoModifier);
            QApplication::sendEvent(&dialog, &event);
        };
        send(QEvent::MouseButtonPress, QPoint(120, 120), Qt::LeftButton, Qt::LeftButton);
        send(QEvent::MouseMove, QPoint(150, 110), Qt::NoButton, Qt::LeftButton);
        QCOMPARE(dialog.pos(), QPoint(130, 90));
        send(QEvent::MouseMove, QPoint(300, 300), Qt::NoButton, Qt::RightButton);
        QCOMPARE(dialog.pos(), QPoint(130, 90));
    }

    void keyboard()
    {
        Preferences dialog;
        dialog.box->setChecked(true);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        for (QWidget *widget :
             QList<QWidget *>{dialog.box, dialog.interval, dialog.now, dialog.ok, dialog.cancel}) {
            QCOMPARE(QApplication::focusWidget(), widget);
            QTest::keyClick(widget, Qt::Key_Tab);
        }
        dialog.interval->setFocus();
        QTest::keyClick(dialog.interval, Qt::Key_Return);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
    }

    // A ledger in which something was left out and changed, as its dialog tells it.
    void report()
    {
        SaveLedger ledger;
        ledger.enterFolder(501);
        ledger.addFound(3);
        ledger.addTarget("/out/Inbox.mbox");
        ledger.addWritten(2);
        ledger.addLeftOut({"/store/Inbox", 812, 1, LeftOutReason::Stopped, "the disk <b>failed</b>"});
        ledger.addChanges(ChangeKind::Latin1, {1, 4, "/store/Inbox", 0});
        ledger.addChanged(1);
        SaveReport end;
        end.end = SaveReport::End::Stopped;
        end.bundle = "/out/Main Identity.rge";
        ReportDialog dialog(end, ledger, {"can't be read: /store/Sent"}, nullptr);
        const auto *table = dialog.findChild<QTreeWidget *>("folderTable");
        QCOMPARE(table->topLevelItemCount(), 2); // the folder, and all
        const QTreeWidgetItem *all = table->topLevelItem(1);
        QCOMPARE(all->text(1) + all->text(2) + all->text(5), "321");
        const QString text = dialog.findChild<QPlainTextEdit *>("reasons")->toPlainText();
        for (const char *part :
             {"the disk <b>failed</b>", "/store/Sent", "Not whole: /out/Inbox.mbox", "4 character"})
            QVERIFY2(text.contains(part), part);
        const QStringList lines = closingNumbers(end, ledger);
        QCOMPARE(lines.first(), "Messages: 3 found, 2 written, 1 left out");
        QVERIFY(lines.last().startsWith("Changed: 1. Exact copies"));
    }

    void about()
    {
        strPlistPath.clear();
        AboutDlg dialog;
        dialog.show();
        QCOMPARE(dialog.windowTitle(), "Velmora Mail Converter");
        QCOMPARE(in<QLabel>(dialog, "ProductVersionLabel")->text(), "2.0.0.1");
        QCOMPARE(in<QLabel>(dialog, "OSLabel")->text(), systemInfo().name);
        QCOMPARE(in<QLabel>(dialog, "VersionLabel")->text(), systemInfo().version);
        QCOMPARE(in<QLabel>(dialog, "LabelPixmap")->pixmap(Qt::ReturnByValue).size(), QSize(524, 76));
        QTest::mouseClick(in<QPushButton>(dialog, "OKButton"), Qt::LeftButton);
        QVERIFY(!dialog.isVisible());
    }

    void aboutLink_data()
    {
        // "text": empty where the label is hidden
        const DataTable row([](const QByteArray &entries, const QString &text) {
            const QTemporaryDir folder;
            writeFiles(folder.path(), {{"a.plist", "<plist><dict>" + entries + "</dict></plist>"}});
            strPlistPath = folder.filePath("a.plist");
            AboutDlg dialog;
            dialog.show();
            const QLabel *link = in<QLabel>(dialog, "TicketLabel");
            QCOMPARE(link->isVisible() ? link->text() : QString(), text);
            QCOMPARE(link->openExternalLinks() && link->font().family() == "Lucida Grande", !text.isNull());
        });
        row("both",
            "<key>SupText</key><string>Q &amp; A</string>"
            "<key>SupLink</key><string>https://a.example/?b&amp;c</string>",
            "<a href=\"https://a.example/?b&amp;c\">Q &amp; A</a>");
        row("no link", "<key>SupText</key><string>Q</string>", QString());
        row("empty text", "<key>SupText</key><string/><key>SupLink</key><string>a:b</string>", QString());
    }

    void aboutLink() { checkRow(); }

private:
    QString stored()
    {
        m_settings.sync();
        return m_settings.value("CheckForUpdate").toString() + ", " +
               m_settings.value("UpdateInterval").toString();
    }

    QSettings m_settings{"velmora", "ConverterPreferences"};
};

QTEST_MAIN(TestDialogs)
#include "test_dialogs.moc"
