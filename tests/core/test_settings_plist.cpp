#include "app/settings_plist.h"
#include "app/shared_state.h"
#include "app/support_links.h"
#include "platform/system_info.h"
#include "store_files.h"

#include <QTemporaryDir>

// The settings property list is delivered with the program, but a person may have edited it: whatever stands
// there is a value or nothing, and never fetches a thing.
class TestSettingsPlist : public QObject
{
    Q_OBJECT

private slots:
    void value_data();
    void value();
    void missingFile();
    void readAnew();
    void links();
    void emptyAddress();
    void deliveredFile();
    void osRelease_data();
    void osRelease();

private:
    void writePlist(const QByteArray &text);
    QTemporaryDir m_folder;
};

static QByteArray plist(const QByteArray &body)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + body +
           "</dict></plist>\n";
}

void TestSettingsPlist::writePlist(const QByteArray &text)
{
    writeFiles(m_folder.path(), {{"links.plist", text}});
    strPlistPath = m_folder.filePath("links.plist");
}

void TestSettingsPlist::value_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("value");
    const QByteArray entry = "<key>Apple Mail</key><string>a &amp; \xC3\xA9</string>";
    const QByteArray secret =
        "<!DOCTYPE plist [<!ENTITY x SYSTEM \"" + m_folder.filePath("secret").toUtf8() + "\">]>";
    QTest::newRow("plain") << plist(entry) << QString::fromUtf8("a & \xC3\xA9");
    QTest::newRow("doctype") << "<!DOCTYPE plist PUBLIC \"-//X\" \"http://192.0.2.1/x.dtd\">" +
                                    plist(entry).mid(39)
                             << QString::fromUtf8("a & \xC3\xA9");
    QTest::newRow("among others")
        << plist("<key>a</key><array><string>b</string></array><key>c</key><true/>" + entry + "<key>d</key>")
        << QString::fromUtf8("a & \xC3\xA9");
    QTest::newRow("number") << plist("<key>Apple Mail</key><integer>12</integer>") << "12";
    QTest::newRow("truth") << plist("<key>Apple Mail</key><false/>") << "false";
    QTest::newRow("letter case") << plist("<key>apple mail</key><string>b</string>") << "";
    QTest::newRow("empty value") << plist("<key>Apple Mail</key><string></string>") << "";
    QTest::newRow("nested dictionary") << plist("<key>Apple Mail</key><dict>" + entry + "</dict>") << "";
    QTest::newRow("key inside another's value") << plist("<key>x</key><dict>" + entry + "</dict>") << "";
    QTest::newRow("value without key") << plist("<key>Apple Mail</key><key>b</key><string>c</string>") << "";
    QTest::newRow("cut short") << plist(entry).left(120) << "";
    QTest::newRow("broken after the entry") << plist(entry + "<key>") << "";
    QTest::newRow("no property list") << "<html><dict>" + entry + "</dict></html>"
                                      << "";
    QTest::newRow("list outermost") << "<plist><array>" + entry + "</array></plist>"
                                    << "";
    QTest::newRow("empty file") << QByteArray() << "";
    QTest::newRow("bytes") << QByteArray("bplist00\0\1\2\xFF", 12) << "";
    QTest::newRow("external entity") << secret + plist("<key>Apple Mail</key><string>&x;</string>").mid(39)
                                     << "";
    QTest::newRow("entities that multiply")
        << "<!DOCTYPE plist [<!ENTITY a \"aaaaaaaaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\">"
           "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;\">]>" +
               plist("<key>Apple Mail</key><string>&d;&d;&d;&d;</string>").mid(39)
        << "";
}

void TestSettingsPlist::value()
{
    QFETCH(QByteArray, text);
    writeFiles(m_folder.path(), {{"secret", "the secret"}});
    writePlist(text);
    QTEST(linkSetting("Apple Mail"), "value");
}

void TestSettingsPlist::missingFile()
{
    for (const QString &path : {QString(), m_folder.filePath("none.plist"), m_folder.path()}) {
        strPlistPath = path;
        QCOMPARE(linkSetting("Apple Mail"), QString());
    }
}

void TestSettingsPlist::readAnew()
{
    writePlist(plist("<key>a</key><string>first</string>"));
    QCOMPARE(linkSetting("a"), "first");
    writePlist(plist("<key>a</key><string>and then</string>"));
    QCOMPARE(linkSetting("a"), "and then");
    QVERIFY(QFile::remove(strPlistPath));
    QCOMPARE(linkSetting("a"), QString());
}

void TestSettingsPlist::links()
{
    writePlist(plist("<key>EmailToSupport</key><string>a@b.example</string>"
                     "<key>ViewSupportLink</key><string>https://b.example/v?a=1&amp;b=2#c</string>"
                     "<key>SubmitEnquiryLink</key><string>https://b.example/s</string>"
                     "<key>KBLink</key><string>https://b.example/k</string>"));
    QCOMPARE(GetEmailSupport(), QUrl("mailto:a@b.example"));
    QCOMPARE(GetViewSupport(), QUrl("https://b.example/v?a=1&b=2#c"));
    QCOMPARE(GetGenerateTicket(), QUrl("https://b.example/s"));
    QCOMPARE(GetKnowledgebase(), QUrl("https://b.example/k"));

    HelpFilePath = "/opt/a b#c?d%20";
    QCOMPARE(helpPage().toEncoded(), "file:///opt/a%20b%23c%3Fd%2520/help/Velmora_Mail_Converter.htm");
}

void TestSettingsPlist::emptyAddress()
{
    writePlist(plist("<key>EmailToSupport</key><string></string>"));
    for (const QUrl &url : {GetEmailSupport(), GetViewSupport(), GetGenerateTicket(), GetKnowledgebase()})
        QVERIFY2(url.isEmpty(), qPrintable(url.toString()));
}

// Nothing of the program is without a link, and every help page that the file names is there.
void TestSettingsPlist::deliveredFile()
{
    const QString resources = qEnvironmentVariable("VELMORA_SOURCE") + "/resources";
    strPlistPath = resources + "/MailConverterLink.plist";
    for (const char *key : {"EmailToSupport", "ViewSupportLink", "SubmitEnquiryLink", "KBLink", "SupText",
                            "SupLink", "Apple Mail", "Outlook 2011", "HowToImport"})
        QVERIFY2(!linkSetting(key).isEmpty(), key);
    for (const char *key : {"HowToImportLink", "HowToImportLink1"})
        QVERIFY2(QFile::exists(resources + linkSetting(key)), key);
    HelpFilePath = resources;
    QVERIFY(QFile::exists(helpPage().toLocalFile()));
}

void TestSettingsPlist::osRelease_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("version");
    QTest::newRow("quoted")
        << QByteArray("PRETTY_NAME=\"A B\"\nNAME=\"A \\\"B\\\"\"\nVERSION='1 (x)'\nVERSION_ID=1\n")
        << "A \"B\""
        << "1 (x)";
    QTest::newRow("bare, no version text") << QByteArray("NAME=A\nVERSION_ID=1.5") << "A"
                                           << "1.5";
    QTest::newRow("rolling") << QByteArray("# NAME=B\nNAME=A\n") << "A"
                             << "";
    QTest::newRow("lone quote") << QByteArray("NAME=\"\nVERSION=\\") << "\""
                                << "\\";
    QTest::newRow("empty") << QByteArray() << ""
                           << "";
}

void TestSettingsPlist::osRelease()
{
    QFETCH(QByteArray, text);
    const SystemInfo info = parseOsRelease(text);
    QTEST(info.name, "name");
    QTEST(info.version, "version");
    QVERIFY(!systemInfo().name.isEmpty() && !systemInfo().version.isEmpty());
}

QTEST_GUILESS_MAIN(TestSettingsPlist)
#include "test_settings_plist.moc"
