#include "convert_run.h"
#include "data_table.h"
#include "store_files.h"

#include <QScopeGuard>

#include <sys/stat.h>
#include <unistd.h>

namespace
{
const QByteArray mbox = "From - Mon Jan  1 00:00:00 2007\nSubject: s\n\ntext\n";
const QByteArray mail = "Subject: s\n\ntext\n";
} // namespace

class TestFind : public QObject
{
    Q_OBJECT

private slots:
    void stores_data()
    {
        // "told": lines "client files path-below-the-home", in the order in which they are printed
        const DataTable row([](const FileMap &files, const QStringList &told) {
            const QTemporaryDir home;
            writeFiles(home.path(), files);
            QVERIFY(QFile::link(home.path(), home.filePath("circle")));
            const Run run = convert({"find", "--json", home.path()});
            QCOMPARE(run.status, 0);
            QStringList lines;
            for (const QJsonValue &store : run.json()["stores"].toArray())
                lines.append(QString("%1 %2 %3")
                                 .arg(store["name"].toString())
                                 .arg(store["mailboxes"].toInt())
                                 .arg(store["path"].toString().mid(home.path().size() + 1)));
            QCOMPARE(lines, told);
            QCOMPARE(run.err.contains("no store of mail"), told.isEmpty());
        });
        row("nothing", FileMap{{"notes.txt", mbox}, {"keep.eml", mail}, {"a.olm", "text"}}, {});
        row("profiles, by the names above them",
            FileMap{{".thunderbird/a.default/prefs.js", ""},
                    {".thunderbird/a.default/Mail/Local Folders/Inbox", mbox},
                    {".thunderbird/a.default/Mail/Local Folders/Inbox.msf", "x"},
                    {".thunderbird/a.default/ImapMail/h/INBOX", mbox},
                    {".thunderbird/a.default/1.eml", mail},
                    {"Library/Application Support/PostboxApp/Profiles/p/prefs.js", ""},
                    {"Library/Application Support/PostboxApp/Profiles/p/Mail/x", mbox},
                    {".mozilla/seamonkey/s/prefs.js", ""},
                    {".mozilla/seamonkey/s/Mail/x", mbox},
                    {".mozilla/firefox/f/prefs.js", ""},
                    {"Eudora/Profiles/e/prefs.js", ""},
                    {"Eudora/Profiles/e/Mail/x", mbox}},
            {"seamonkey 1 .mozilla/seamonkey/s", "thunderbird 2 .thunderbird/a.default",
             "eudora 1 Eudora/Profiles/e", "postbox 1 Library/Application Support/PostboxApp/Profiles/p"});
        row("profiles elsewhere",
            FileMap{{"old/prefs.js", ""},
                    {"old/Mail/x", mbox},
                    {"old/compatibility.ini", "[Compatibility]\nLastPlatformDir=/usr/lib/seamonkey\r\n"},
                    {"old-2/prefs.js", ""},
                    {"old-2/Mail/x", "\xEF\xBB\xBF" + mbox},
                    {"Postbox/Mail/x", mbox},
                    {"Eudora Folder/Mail Folder/In", mbox}},
            {"eudora 1 Eudora Folder", "postbox 1 Postbox", "thunderbird 1 old-2", "seamonkey 1 old"});
        row("Apple Mail",
            FileMap{{"Library/Mail/V2/IMAP-a@b/INBOX.mbox/Messages/1.emlx", mail},
                    {"Library/Mail/V2/IMAP-a@b/INBOX.mbox/Attachments/1/2/forwarded.eml", mail},
                    {"Library/Mail/V2/MailData/Envelope Index", "x"},
                    {"copy/POP-a@b/In.mbox/Messages/1.emlx", mail},
                    {"copy/POP-a@b/Out.imapmbox/Messages/2.partial.emlx", mail},
                    {"Desktop/note", ""},
                    {"Desktop/export/A.mbox/mbox", mbox},
                    {"Desktop/export/A.mbox/table_of_contents", "x"},
                    {"Desktop/export/A/B.mbox/mbox", mbox},
                    {"Desktop/single.mbox/mbox", mbox}},
            {"apple-mbox 2 Desktop/export", "apple-mbox 1 Desktop/single.mbox", "apple-emlx 1 Library/Mail",
             "apple-emlx 2 copy/POP-a@b"});
        row("files for each message",
            FileMap{{"MailMate/Messages/IMAP/a@b/INBOX.mailbox/Messages/1.eml", mail},
                    {"MailMate/Database.noindex/x", "x"},
                    {".opera/mail/accounts.ini", ""},
                    {".opera/mail/store/account1/2012/09/01/1.mbs", mail},
                    {".opera/mail/store/account2/2012/09/01/2.mbs", mail},
                    {"Outspring Mail/index", "x"},
                    {"Outspring Mail/Inbox/1.eml", mail},
                    {"Outspring Mail/Sent/2.f.eml", mail},
                    {"plain/In/1.eml", mail},
                    {"plain/In/.DS_Store", "x"},
                    {"plain/Out/2.eml", mail},
                    {"backup.olm", "PK\3\4"}},
            {"opera 2 .opera/mail", "mailmate 1 MailMate", "outspring 2 Outspring Mail", "olm 1 backup.olm",
             "outspring 2 plain"});
    }

    void stores() { checkRow(); }

    // Each store once, whatever folders are given; what can't be looked into is told and changes no status.
    void placesAndProblems()
    {
        const QTemporaryDir home;
        writeFiles(home.path(), {{"It's/p/prefs.js", ""}, {"It's/p/Mail/x", mbox}, {"b/x", ""}});
        const QByteArray unnamed = QFile::encodeName(home.path()) + "/b/no\xFFtext";
        QVERIFY(::mkdir(unnamed, 0700) == 0);
        const auto removed = qScopeGuard([&] { ::rmdir(unnamed); }); // which the toolkit can't name
        QVERIFY(QFile::link(home.filePath("It's"), home.filePath("link")));
        const QString there = home.filePath("It's/p");
        const Run run = convert({"find", there, home.path(), home.filePath("none")});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out,
                 QString("Thunderbird (.mbox): 1 mailbox, %1 bytes\n    %2\n    velmora-convert convert "
                         "--client thunderbird --out . '%3'\n")
                     .arg(mbox.size())
                     .arg(there, QString(there).replace("'", "'\\''"))
                     .toUtf8());
        QVERIFY2(run.err.contains("its name is no UTF-8") && run.err.contains("/none: no such folder"),
                 run.err);
        QCOMPARE(run.err.count('\n'), 2);
        QVERIFY2(convert({"find", home.filePath("link")}).out.contains("/link/p\n"), "a link that is named");
    }
};

QTEST_GUILESS_MAIN(TestFind)
#include "test_find.moc"
