#include "app/shared_state.h"
#include "app/window/main_window.h"
#include "data_table.h"
#include "store_files.h"

#include <QAction>
#include <QDesktopServices>
#include <QDialog>
#include <QMenu>
#include <QMenuBar>

static const QStringList schemes{"https", "mailto", "file", ""};

// The entry of the menu bar with this text, without its "&".
static QAction *entry(const QMainWindow &window, const QString &text)
{
    for (const QAction *menu : window.menuBar()->actions())
        for (QAction *action : menu->menu()->actions())
            if (action->text().remove('&') == text)
                return action;
    return nullptr;
}

// What the menus of the real window open: pages and addresses by the user's programs, dialogs as modal ones.
class TestLinks : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_opened.clear();
        for (const QString &scheme : schemes)
            QDesktopServices::setUrlHandler(scheme, this, "keepUrl");
    }

    void cleanup()
    {
        for (const QString &scheme : schemes)
            QDesktopServices::unsetUrlHandler(scheme);
    }

    void entries_data()
    {
        const DataTable row([this](const QString &key, const QString &value, const QString &url) {
            HelpFilePath = "/opt/a b";
            strPlistPath = m_folder.filePath("links.plist");
            QFile::remove(strPlistPath);

            const QConverterMainWindow window;
            QAction *action = entry(window, QTest::currentDataTag());
            QVERIFY(action);
            if (!value.isEmpty()) {
                action->trigger();
                QCOMPARE(m_opened, QList<QUrl>()); // without an address nothing happens
                const QString text = "<plist><dict><key>%1</key><string>%2</string></dict></plist>";
                writeFiles(m_folder.path(), {{"links.plist", text.arg(key, value).toUtf8()}});
            }
            action->trigger();
            QCOMPARE(m_opened, QList<QUrl>{QUrl(url)});
        });
        row("Email to Velmora Support", "EmailToSupport", "a@b.example", "mailto:a@b.example");
        row("View Support Section", "ViewSupportLink", "https://b.example/v", "https://b.example/v");
        row("Submit Enquiry", "SubmitEnquiryLink", "https://b.example/s", "https://b.example/s");
        row("View Knowledgebase Articles", "KBLink", "https://b.example/k", "https://b.example/k");
        row("Help Topics", "none", "", "file:///opt/a b/help/Velmora_Mail_Converter.htm");
    }

    void entries() { checkRow(); }

    void dialogs()
    {
        const QConverterMainWindow window;
        QCOMPARE(window.menuBar()->actions().first()->menu()->actions().last(),
                 entry(window, "Preferences..."));
        for (const char *text : {"About", "Preferences..."}) {
            entry(window, text)->trigger();
            QTRY_VERIFY(qobject_cast<QDialog *>(QApplication::activeModalWidget()));
            QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
            QTRY_VERIFY(!QApplication::activeModalWidget());
        }
    }

public slots:
    void keepUrl(const QUrl &url) { m_opened.append(url); } // stands for the user's browser and mail program

private:
    QTemporaryDir m_folder;
    QList<QUrl> m_opened;
};

QTEST_MAIN(TestLinks)
#include "test_links.moc"
