#include "app/settings_plist.h"
#include "app/shared_state.h"
#include "app/support_links.h"
#include "data_table.h"
#include "platform/system_info.h"
#include "store_files.h"

static QByteArray plist(const QByteArray &body)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + body +
           "</dict></plist>\n";
}

// The settings property list is delivered with the program, but a person may have edited it: whatever stands
// there is a value or nothing, and never fetches a thing.
class TestSettingsPlist : public QObject
{
    Q_OBJECT

private slots:
    void value_data()
    {
        const DataTable row([this](const QByteArray &text, const QString &value) {
            writeFiles(m_folder.path(), {{"secret", "the secret"}});
            writePlist(text);
            QCOMPARE(linkSetting("Apple Mail"), value);
        });
        const QByteArray entry = "<key>Apple Mail</key><string>a &amp; \xC3\xA9</string>";
        const QByteArray secret =
            "<!DOCTYPE plist [<!ENTITY x SYSTEM \"" + m_folder.filePath("secret").toUtf8() + "\">]>";
        row("plain", plist(entry), "a & \xC3\xA9");
        row("doctype", "<!DOCTYPE plist PUBLIC \"-//X\" \"http://a\">" + plist(entry).mid(39),
            "a & \xC3\xA9");
        row("among others", plist("<key>a</key><array><string>b</string></array><key>c</key><true/>" + entry),
            "a & \xC3\xA9");
        row("nested dictionary", plist("<key>Apple Mail</key><dict>" + entry + "</dict><string>a</string>"),
            "");
        row("key inside another's value", plist("<key>x</key><dict>" + entry + "</dict>"), "");
        row("value without key", plist("<key>Apple Mail</key><key>b</key><string>c</string>"), "");
        row("cut short", plist(entry).left(120), "");
        row("broken after the entry", plist(entry + "<key>"), "");
        row("no property list", "<html><dict>" + entry + "</dict></html>", "");
        row("empty file", QByteArray(), "");
        row("bytes", QByteArray("bplist00\0\1\2\xFF", 12), "");
        const int deep = 100000;
        row("deep",
            plist("<key>Apple Mail</key><string>" + QByteArray("<a>").repeated(deep) + "b" +
                  QByteArray("</a>").repeated(deep) + "</string>"),
            "b");
        row("external entity", secret + plist("<key>Apple Mail</key><string>&x;</string>").mid(39), "");
        row("entities that multiply",
            "<!DOCTYPE plist [<!ENTITY a \"aaaaaaaaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\">"
            "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;\">]>" +
                plist("<key>Apple Mail</key><string>&d;&d;&d;&d;</string>").mid(39),
            "");
    }

    void value() { checkRow(); }

    void readAnew()
    {
        writePlist(plist("<key>a</key><string>first</string>"));
        QCOMPARE(linkSetting("a"), "first");
        writePlist(plist("<key>a</key><string>and then</string>"));
        QCOMPARE(linkSetting("a"), "and then");
        for (const QString &path : {QString(), m_folder.filePath("none.plist"), m_folder.path()}) {
            strPlistPath = path;
            QCOMPARE(linkSetting("a"), QString());
        }
    }

    // Nothing of the program is without a link, and every help page that the file names is there.
    void deliveredFile()
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
        HelpFilePath = "/opt/a b#c?d%20";
        QCOMPARE(helpPage().toEncoded(), "file:///opt/a%20b%23c%3Fd%2520/help/Velmora_Mail_Converter.htm");
    }

    void osRelease_data()
    {
        const DataTable row([](const QByteArray &text, const QString &name, const QString &version) {
            const SystemInfo info = parseOsRelease(text);
            QCOMPARE(info.name, name);
            QCOMPARE(info.version, version);
            QVERIFY(!systemInfo().name.isEmpty() && !systemInfo().version.isEmpty());
        });
        row("quoted", "PRETTY_NAME=\"A B\"\nNAME=\"A \\\"B\\\"\"\nVERSION='1 x'\nVERSION_ID=1\n", "A \"B\"",
            "1 x");
        row("bare, no version text", "NAME=A\nVERSION_ID=1.5", "A", "1.5");
        row("rolling", "# NAME=B\nNAME=A\n", "A", "");
        row("lone quote", "NAME=\"\nVERSION=\\", "\"", "\\");
        row("empty", QByteArray(), "", "");
    }

    void osRelease() { checkRow(); }

private:
    void writePlist(const QByteArray &text)
    {
        writeFiles(m_folder.path(), {{"links.plist", text}});
        strPlistPath = m_folder.filePath("links.plist");
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TestSettingsPlist)
#include "test_settings_plist.moc"
