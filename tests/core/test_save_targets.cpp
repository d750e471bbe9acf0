#include "app/shared_state.h"
#include "browse/folder_tree.h"
#include "data_table.h"
#include "save/exact_target.h"
#include "save/safe_path.h"
#include "save/writers.h"
#include "store_files.h"
#include "text/opera_location.h"

namespace
{
const char outlook[] = "/out/Main Identity.rge/";
const char apple[] = "/out/Main Identity.mbox/";

QString withSingleSlashes(QString path)
{
    while (path.contains("//"))
        path.replace("//", "/");
    return path;
}
} // namespace

class TestSaveTargets : public QObject
{
    Q_OBJECT

private slots:
    void mailboxes_data()
    {
        // Files below "Main Identity.rge/Mail/" and below "Main Identity.mbox/Mail/", and the folder that the
        // Apple Mail writer makes there.
        const DataTable row([](const QString &selected, const QString &path, const QString &inOutlook,
                               const QString &inApple, const QString &folder) {
            const MailboxTarget outlookTarget = mboxToOutlook(path, selected, "/out");
            QCOMPARE(outlookTarget.file, "/out/Main Identity.rge/Mail/" + inOutlook);
            QVERIFY(outlookTarget.file.startsWith(outlookTarget.folder));
            const MailboxTarget appleTarget = mboxToAppleMail(path, selected, "/out");
            QCOMPARE(appleTarget.file, "/out/Main Identity.mbox/Mail/" + inApple);
            QCOMPARE(appleTarget.folder, "/out/Main Identity.mbox/Mail/" + folder);
        });
        row("bundle", "/x/E", "/x/E/In.mbox/mbox", "/In/In.mbox", "/InIn.mbox", "/In");
        row("nested", "/x/E", "/x/E/A.mbox/B.mbox/mbox", "/A.mbox/B/B.mbox", "/A.mbox/BB.mbox", "/A.mbox/B");
        row("bundle selected", "/x/In.mbox", "/x/In.mbox/mbox", "In/In.mbox", "InIn.mbox", "In");
        row("leads up", "/x", "/x/...mbox/mbox", "/%2E%2E/...mbox", "/%2E%2E...mbox", "/%2E%2E");
        row("folder", "/x/p", "/x/p/Mail/In.sbd/A b", "In.sbd/A b.mbox", "In.sbd/A b/A b.mbox", "In.sbd/A b");
        row("last Mail counts", "/x", "/x/Mail/p/Mail/host/In", "host/In.mbox", "host/In/In.mbox", "host/In");
        row("Mail before ImapMail", "/x", "/x/ImapMail/Mail/a/ImapMail/b", "a/ImapMail/b.mbox",
            "a/ImapMail/b/b.mbox", "a/ImapMail/b");
        row("marks share no slash", "/x", "/x/Mail/Mail/a", "Mail/a.mbox", "Mail/a/a.mbox", "Ma");
        row("directly below Mail", "/x", "/x/Mail/In", "In/In.mbox", "In/In.mbox", "In");
        row("suffix within the name", "/x", "/x/Mail/a/In.mbox.old", "a/In.mbox.old/In.old.mbox",
            "a/In.mbox.old/In.mbox.old.mbox", "a/In.mbox.old");
        row("suffix above", "/x", "/x/Mail/a.mbox/In", "a.mbox/In/In.mbox", "a.mbox/In/In.mbox", "a.mbox/In");
        row("name stands earlier", "/x", "/x/Mail/In/In", "In/In.mbox", "In/In/In.mbox", "In");
        row("name within one", "/x", "/x/Mail/Old In/In", "Old In/In.mbox", "Old In/In/In.mbox", "Old In");
        row("mailbox called Mail", "/x", "/x/Mail/a/Mail", "a/Mail.mbox", ".mbox", "");
        row("no mark", "/x/store", "/x/store/In", "In/In.mbox", "/In/In.mbox", "/In/");
        row("no mark, in folders", "/x/store", "/x/store/a/b", "a/b.mbox", "/a/b/b.mbox", "/a/b/");
    }

    void mailboxes() { checkRow(); }

    void files_data()
    {
        // "file": below the bundle
        const DataTable table(
            [](TargetRule rule, const QString &selected, const QString &path, const QString &file) {
                const bool toApple = rule == mailMateToAppleMail || rule == outspringToAppleMail;
                const MailboxTarget target = rule(path, selected, "/out");
                QCOMPARE(withSingleSlashes(target.file), (toApple ? apple : outlook) + file);
                QVERIFY(target.folder.endsWith('/'));
                QCOMPARE(target.file.left(target.folder.size()), target.folder);
            });
        const auto rowsOf = [&table](const QByteArray &client, TargetRule rule) {
            return [&table, client, rule](const char *name, const char *selected, const char *below,
                                          const char *file) {
                table(client + ": " + name, rule, selected, QString(selected) + below,
                      QString("Mail/") + file);
            };
        };

        const auto emlx = rowsOf("emlx", emlxToOutlook);
        emlx("below the store", "/u/Mail", "/V2/acct/INBOX.mbox/Messages/1.emlx", "V2/acct/INBOX/INBOX.mbox");
        emlx("nested", "/u/Mail", "/V2/A.mbox/B.mbox/Data/1/2/Messages/1.emlx", "V2/A/B/B.mbox");
        emlx("imap", "/u/Mail", "/X.imapmbox/Y.imapmbox/1.emlx", "X/Y/Y.mbox");
        emlx("imap wins", "/u/Mail", "/X.imapmbox/Sub.mbox/1.emlx", "X/X.mbox");
        emlx("case matters", "/u/Mail", "/A.mbox/B.MBOX/1.emlx", "A/A.mbox");
        emlx("mailbox selected", "/u/Mail/INBOX.mbox", "/Messages/1.emlx", "INBOX/INBOX.mbox");
        emlx("Messages selected", "/u/INBOX.mbox/Messages", "/1.emlx", "INBOX/INBOX.mbox");
        emlx("Data selected", "/u/INBOX.mbox/Data", "/Messages/1.emlx", "Data/INBOX/INBOX.mbox");
        emlx("store's path comes again", "/a", "/x/a/In.mbox/1.emlx", "x/In/In.mbox");
        emlx("suffix within a name", "/u", "/a.mbox.old.mbox/1.emlx", "a.old/a.mbox.old.mbox");
        emlx("name that would lead up", "/u", "/...mbox/...mbox/1.emlx", "%2E%2E/%2E%2E/...mbox");
        emlx("in no mailbox", "/u/Mail", "/loose/1.emlx", "loose/loose.mbox");
        table("emlx: not below the store", emlxToOutlook, "/u/Mail", "/v/In.mbox/1.emlx", "In.mbox");

        const auto mailMate = rowsOf("MailMate", mailMateToOutlook);
        mailMate("account's folder", "/u/MM", "/Messages/IMAP/me/In.mailbox/Messages/1.eml", "me/In/In.mbox");
        mailMate("nested", "/u/MM", "/Messages/IMAP/me/In.mailbox/Sub.mailbox/1.eml", "me/In/Sub/Sub.mbox");
        mailMate("Messages selected", "/u/MM/Messages", "/IMAP/In.mailbox/Messages/1.eml", "IMAP/In/In.mbox");
        mailMate("cut first", "/u/me", "/In.mailbox/Messages/Sub.mailbox/1.eml", "sages/Sub/Sub.mbox");
        mailMate("cut to nothing", "/u", "/Messages.mailbox/1.eml", "Messages.mbox");
        mailMate("mailbox selected", "/u/IMAP/acct/INBOX.mailbox", "/Messages/1.eml", "INBOX/INBOX.mbox");
        mailMate("within a mailbox", "/u/INBOX.mailbox/Messages", "/1.eml", "Messages/INBOX/INBOX.mbox");
        table("MailMate: inside", mailMateToOutlook, "/u/In", "/u/In.mailbox/1.eml", "Mail/In/In.mbox");
        mailMate("mailbox wins", "/u", "/a.mailbox/b.mbox/1.eml", "a/a.mbox");

        const auto mailMateToApple = rowsOf("MailMate to Apple Mail", mailMateToAppleMail);
        mailMateToApple("account", "/u/MM", "/Messages/IMAP/In.mailbox/Messages/1.eml", "In/In.mbox");
        mailMateToApple("mailbox selected", "/u/In.mailbox", "/Messages/1.eml", "Mail/In/In.mbox");
        mailMateToApple("within a mailbox", "/u/In.mailbox/Messages", "/1.eml", "Mail/Messages/In/In.mbox");

        const auto outspring = rowsOf("Outspring", outspringToOutlook);
        outspring("folder", "/u/O", "/Work/1.f.eml", "Work/Work.mbox");
        outspring("suffix", "/u/O", "/Work.mbox/1.eml", "Work/Work.mbox.mbox");
        outspring("other suffixes stay", "/u/O", "/A.imapmbox/B/1.eml", "A.imapmbox/B/B.mbox");
        outspring("in the store itself", "/u/O", "/1.eml", "O/Mail/O.mbox");

        const auto outspringToApple = rowsOf("Outspring to Apple Mail", outspringToAppleMail);
        outspringToApple("folder", "/u/O", "/a/Work/1.eml", "a/Work/Work.mbox");
        outspringToApple("in the store itself", "/u/O", "/1.eml", "Mail/O/O.mbox");
    }

    void files() { checkRow(); }

    void operaLocation_data()
    {
        const DataTable row([](const QByteArray &text, const QString &location) {
            QString found;
            takeOperaFolderBehind(viewOf(text), &found);
            QCOMPARE(found, location);
            QCOMPARE(found.isNull(), location.isNull());
        });
        row("none", "From: a\n\nX-Opera-location: b\n", QString());
        row("one", "From: a\nX-Opera-Location:  INBOX \r\n\nbody\n", "INBOX");
        row("last wins", "X-Opera-Location: a\n\nX-Opera-Location: b/c\n", "b/c");
        row("up to the last colon", "X-Opera-Location: a/b : c:17\n", "a/b : c");
        row("not trimmed behind the cut", "X-Opera-Location: a :17", "a ");
        row("behind other text", ">> X-Opera-Location: a\n", "a");
        row("twice in a line", "X-Opera-Location: a X-Opera-Location: b\n", "a X-Opera-Location");
        row("empty", "X-Opera-Location: a\nX-Opera-Location:\nb\n", "");
        row("utf-8", "X-Opera-Location: Entw\xC3\xBCrfe\n", QString::fromUtf8("Entw\xC3\xBCrfe"));
    }

    void operaLocation() { checkRow(); }

    void namedFolders_data()
    {
        const DataTable row([](TargetRule rule, const QString &folder, const QString &file) {
            const MailboxTarget target = rule(folder, "/selected", "/out");
            QCOMPARE(target.file, (rule == operaToOutlook ? outlook : apple) + ("Mail/" + file));
            QCOMPARE(target.folder, target.file.left(target.file.lastIndexOf('/') + 1));
        });
        row("Opera", operaToOutlook, "/Work/INBOX/Projects", "Work/INBOX/Projects/Projects.mbox");
        row("Opera to Apple Mail", operaToAppleMail, "/Work/INBOX", "Work/INBOX/INBOX.mbox");
        row("Opera, empty", operaToAppleMail, "/Work/", "Work//.mbox");
        row("Opera, up", operaToOutlook, "/../../x/..", "%2E%2E/%2E%2E/x/%2E%2E/%2E%2E.mbox");
        row("olm", olmToAppleMail, "Inbox", "Inbox/Inbox.mbox");
        row("olm, deep", olmToAppleMail, "Inbox/Work", "Inbox/Work/Work.mbox");
        row("olm, none", olmToAppleMail, "", "Folder1/Folder1.mbox");
        row("olm, dots in names", olmToAppleMail, "a..b/...", "a..b/.../....mbox");
        row("olm, up", olmToAppleMail, "../.", "%2E%2E/%2E/%2E.mbox");
        row("olm, empty components", olmToAppleMail, "/a//b/", "/a//b//.mbox");
    }

    void namedFolders() { checkRow(); }

    // Folders in the order of their mail, by their raw names, and their mailboxes.
    void exactCopies_data()
    {
        const DataTable row([](const QStringList &folders, const QStringList &mailboxes) {
            discardScanResult();
            ExactTargets targets("/b");
            QStringList files;
            for (const QString &folder : folders)
                files.append(targets.targetOf(idOf(folder)).file);
            QCOMPARE(files, mailboxes);
        });
        row("top folder Mail", {"Mail/In", "In/Mail", "Mail", "Mail/Mail"},
            {"/b/Mail/In/In.mbox", "/b/Mail/In/Mail/Mail.mbox", "/b/Mail/Mail.mbox",
             "/b/Mail/Mail/Mail.mbox"});
        row("letter case", {"In", "IN", "in/x", "IN/X"},
            {"/b/Mail/In/In.mbox", "/b/Mail/IN (2)/IN (2).mbox", "/b/Mail/in/x/x.mbox",
             "/b/Mail/IN/X (2)/X (2).mbox"});
        row("Unicode form", {"\xC3\xA9", "E\xCC\x81"},
            {"/b/Mail/\xC3\xA9/\xC3\xA9.mbox", "/b/Mail/E\xCC\x81 (2)/E\xCC\x81 (2).mbox"});
        row("number taken", {"A (2)", "A", "A.mbox", "A (2).mbox"},
            {"/b/Mail/A (2)/A (2).mbox", "/b/Mail/A/A.mbox", "/b/Mail/A (3)/A (3).mbox",
             "/b/Mail/A (2) (2)/A (2) (2).mbox"});
        row("a folder's own file", {"A", "A/A.mbox.mailbox", "A/A.mbox.mailbox/B"},
            {"/b/Mail/A/A.mbox", "/b/Mail/A/A.mbox (2)/A.mbox (2).mbox", "/b/Mail/A/A.mbox (2)/B/B.mbox"});
        row("a folder's own file, the other way", {"A/A.mbox.mailbox/B", "A"},
            {"/b/Mail/A/A.mbox/B/B.mbox", "/b/Mail/A (2)/A (2).mbox"});
        row("export", {"X.mbox/mbox", "X/mbox"}, {"/b/Mail/X/X.mbox", "/b/Mail/X/mbox/mbox.mbox"});
    }
    void exactCopies() { checkRow(); }

    void harmlessPaths_data()
    {
        const DataTable row(
            [](const QString &path, const QString &harmless) { QCOMPARE(harmlessPath(path), harmless); });
        for (const char *same :
             {"", "/", "a", "/a/b", "//a//b/", "/a./.b/..c/d../...", "/Work/In.mbox/%2E", "/ . /.. "})
            row(same, same, same);
        row("up", "/../../etc", "/%2E%2E/%2E%2E/etc");
        row("only up", "..", "%2E%2E");
        row("here", "a/./b", "a/%2E/b");
        row("up at the end", "/a/..", "/a/%2E%2E");
        row("zero", QString(QLatin1String("/a\0b/c", 6)), "/a%00b/c");
        row("zero behind dots", QString(QLatin1String("/..\0", 4)), "/..%00");
    }

    void harmlessPaths() { checkRow(); }

private:
    // The folder of these raw names, which come into the tree.
    static qint64 idOf(const QString &names)
    {
        qint64 parent = llRootId;
        const QStringList all = names.split('/');
        for (const QString &name : all) {
            qint64 folder = 0;
            for (const qint64 id : objMapFID_PID.keys(parent))
                folder = objMapFID_Name[id] == name ? id : folder;
            if (folder == 0) {
                folder = llRootId + 1 + objMapFID_PID.size();
                objMapFID_Name[folder] = name;
                objMapFID_PID[folder] = parent;
            }
            parent = folder;
        }
        return parent;
    }
};

QTEST_APPLESS_MAIN(TestSaveTargets)
#include "test_save_targets.moc"
