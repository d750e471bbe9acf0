#include "app/shared_state.h"
#include "dialogs/about_dialog.h"
#include "platform/open_url.h"
#include "platform/system_info.h"
#include "store_files.h"

#include <QDesktopServices>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>

class TestAbout : public QObject
{
    Q_OBJECT

private slots:
    void data();
    void supportLink_data();
    void supportLink();
    void openUrl();

public slots:
    void keepUrl(const QUrl &url) { m_opened.append(url); } // stands for the user's browser

private:
    QList<QUrl> m_opened;
};

static QLabel *label(const QDialog &dialog, const char *name)
{
    return dialog.findChild<QLabel *>(name);
}

void TestAbout::data()
{
    strPlistPath.clear();
    AboutDlg dialog;
    dialog.show();
    QCOMPARE(dialog.size(), QSize(524, 295));
    QCOMPARE(dialog.windowTitle(), "Velmora Mail Converter");
    QCOMPARE(label(dialog, "ProductVersionLabel")->text(), "2.0.0.1");
    QCOMPARE(label(dialog, "OSLabel")->text(), systemInfo().name);
    QCOMPARE(label(dialog, "VersionLabel")->text(), systemInfo().version);
    QCOMPARE(label(dialog, "LabelPixmap")->pixmap(Qt::ReturnByValue).size(), QSize(524, 76));
    QTest::mouseClick(dialog.findChild<QPushButton *>("OKButton"), Qt::LeftButton);
    QVERIFY(!dialog.isVisible());
}

void TestAbout::supportLink_data()
{
    QTest::addColumn<QByteArray>("entries");
    QTest::addColumn<QString>("text"); // null where the label is hidden
    QTest::newRow("both") << QByteArray("<key>SupText</key><string>Q &amp; A</string>"
                                        "<key>SupLink</key><string>https://a.example/?b&amp;c</string>")
                          << "<a href=\"https://a.example/?b&amp;c\">Q &amp; A</a>";
    QTest::newRow("no link") << QByteArray("<key>SupText</key><string>Q</string>") << QString();
    QTest::newRow("empty text") << QByteArray(
                                       "<key>SupText</key><string/><key>SupLink</key><string>a:b</string>")
                                << QString();
}

void TestAbout::supportLink()
{
    QFETCH(QByteArray, entries);
    QFETCH(QString, text);
    const QTemporaryDir folder;
    writeFiles(folder.path(), {{"a.plist", "<plist><dict>" + entries + "</dict></plist>"}});
    strPlistPath = folder.filePath("a.plist");
    AboutDlg dialog;
    dialog.show();
    const QLabel *link = label(dialog, "TicketLabel");
    QCOMPARE(link->isVisible(), !text.isNull());
    if (text.isNull())
        return;
    QCOMPARE(link->text(), text);
    QVERIFY(link->openExternalLinks());
    QCOMPARE(link->font().family(), "Lucida Grande");
}

void TestAbout::openUrl()
{
    QDesktopServices::setUrlHandler("https", this, "keepUrl");
    QDesktopServices::setUrlHandler(QString(), this, "keepUrl");
    ::openUrl(QUrl());
    ::openUrl(QUrl("https://a.example/b?c"));
    QDesktopServices::unsetUrlHandler("https");
    QDesktopServices::unsetUrlHandler(QString());
    QCOMPARE(m_opened, QList<QUrl>{QUrl("https://a.example/b?c")});
}

QTEST_MAIN(TestAbout)
#include "test_about.moc"
