#include "app/shared_state.h"
#include "dialogs/about_dialog.h"
#include "platform/system_info.h"
#include "store_files.h"

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

QTEST_MAIN(TestAbout)
#include "test_about.moc"
