#include "data_table.h"
#include "save/file_target.h"
#include "save/mbox_target.h"
#include "save/opera_target.h"
#include "save/safe_path.h"

#include <QtTest>

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

Q_DECLARE_METATYPE(const TargetRule *)

class TestSaveTargets : public QObject
{
    Q_OBJECT

private slots:
    void mailboxes_data()
    {
        // Files below "Main Identity.rge/Mail/" and below "Main Identity.mbox/Mail/", and the folder that the Apple
        // Mail writer makes there.
        const DataTable<QString, QString, QString, QString, QString> row("selected", "path", "outlook",
                                                                         "apple", "folder");
        row("bundle", "/x/Export", "/x/Export/Inbox.mbox/mbox", "/Inbox/Inbox.mbox", "/InboxInbox.mbox",
            "/Inbox");
        row("nested bundle", "/x/Export", "/x/Export/A.mbox/B.mbox/mbox", "/A.mbox/B/B.mbox",
            "/A.mbox/BB.mbox", "/A.mbox/B");
        row("bundle selected", "/x/Inbox.mbox", "/x/Inbox.mbox/mbox", "Inbox/Inbox.mbox", "InboxInbox.mbox",
            "Inbox");
        row("bundle that would lead up", "/x", "/x/...mbox/mbox", "/%2E%2E/...mbox", "/%2E%2E...mbox",
            "/%2E%2E");
        row("profile", "/x/p", "/x/p/Mail/Local Folders/Inbox", "Local Folders/Inbox.mbox",
            "Local Folders/Inbox/Inbox.mbox", "Local Folders/Inbox");
        row("sub-folder", "/x/p", "/x/p/Mail/Local Folders/Inbox.sbd/Work",
            "Local Folders/Inbox.sbd/Work.mbox", "Local Folders/Inbox.sbd/Work/Work.mbox",
            "Local Folders/Inbox.sbd/Work");
        row("last Mail counts", "/x", "/x/Mail/p/Mail/server/INBOX", "server/INBOX.mbox",
            "server/INBOX/INBOX.mbox", "server/INBOX");
        row("Mail before ImapMail", "/x", "/x/ImapMail/Mail/a/ImapMail/b", "a/ImapMail/b.mbox",
            "a/ImapMail/b/b.mbox", "a/ImapMail/b");
        row("marks share no slash", "/x", "/x/Mail/Mail/a", "Mail/a.mbox", "Mail/a/a.mbox", "Ma");
        row("directly below Mail", "/x", "/x/Mail/Inbox", "Inbox/Inbox.mbox", "Inbox/Inbox.mbox", "Inbox");
        row("suffix within the name", "/x", "/x/Mail/a/In.mbox.old", "a/In.mbox.old/In.old.mbox",
            "a/In.mbox.old/In.mbox.old.mbox", "a/In.mbox.old");
        row("suffix of a folder", "/x", "/x/Mail/a.mbox/In", "a.mbox/In/In.mbox", "a.mbox/In/In.mbox",
            "a.mbox/In");
        row("name stands earlier", "/x", "/x/Mail/Inbox/Inbox", "Inbox/Inbox.mbox", "Inbox/Inbox/Inbox.mbox",
            "Inbox");
        row("name within an earlier one", "/x", "/x/Mail/Old Inbox/In", "Old Inbox/In.mbox",
            "Old Inbox/In/In.mbox", "Old In");
        row("mailbox called Mail", "/x", "/x/Mail/a/Mail", "a/Mail.mbox", ".mbox", "");
        row("no mark", "/x/store", "/x/store/Inbox", "Inbox/Inbox.mbox", "/Inbox/Inbox.mbox", "/Inbox/");
        row("no mark, in folders", "/x/store", "/x/store/a/b", "a/b.mbox", "/a/b/b.mbox", "/a/b/");
    }

    void mailboxes()
    {
        QFETCH(QString, selected);
        QFETCH(QString, path);
        QFETCH(QString, outlook);
        QFETCH(QString, apple);
        QFETCH(QString, folder);
        const MailboxTarget outlookTarget = outlookTargetOfMailbox(path, selected, "/out");
        QCOMPARE(outlookTarget.file, "/out/Main Identity.rge/Mail/" + outlook);
        QVERIFY(outlookTarget.file.startsWith(outlookTarget.folder));
        const MailboxTarget appleTarget = appleTargetOfMailbox(path, selected, "/out");
        QCOMPARE(appleTarget.file, "/out/Main Identity.mbox/Mail/" + apple);
        QCOMPARE(appleTarget.folder, "/out/Main Identity.mbox/Mail/" + folder);
    }

    void files_data()
    {
        // "file": below the bundle
        const DataTable<const TargetRule *, QString, QString, QString> row("rule", "selected", "path",
                                                                           "file");

        const TargetRule *emlx = &emlxToOutlook;
        row("emlx: below the store", emlx, "/u/Mail", "/u/Mail/V2/acct/INBOX.mbox/Messages/1.emlx",
            "Mail/V2/acct/INBOX/INBOX.mbox");
        row("emlx: nested", emlx, "/u/Mail", "/u/Mail/V2/A.mbox/B.mbox/Data/1/2/Messages/1.emlx",
            "Mail/V2/A/B/B.mbox");
        row("emlx: imap", emlx, "/u/Mail", "/u/Mail/X.imapmbox/Y.imapmbox/1.emlx", "Mail/X/Y/Y.mbox");
        row("emlx: imap wins", emlx, "/u/Mail", "/u/Mail/X.imapmbox/Sub.mbox/1.emlx", "Mail/X/X.mbox");
        row("emlx: case matters", emlx, "/u/Mail", "/u/Mail/A.mbox/B.MBOX/1.emlx", "Mail/A/A.mbox");
        row("emlx: mailbox selected", emlx, "/u/Mail/INBOX.mbox", "/u/Mail/INBOX.mbox/Messages/1.emlx",
            "Mail/INBOX/INBOX.mbox");
        row("emlx: imap mailbox selected", emlx, "/u/Mail/INBOX.imapmbox",
            "/u/Mail/INBOX.imapmbox/Messages/1.emlx", "Mail/INBOX/INBOX.mbox");
        row("emlx: Messages selected", emlx, "/u/INBOX.mbox/Messages", "/u/INBOX.mbox/Messages/1.emlx",
            "Mail/INBOX/INBOX.mbox");
        row("emlx: Data selected", emlx, "/u/INBOX.mbox/Data", "/u/INBOX.mbox/Data/Messages/1.emlx",
            "Mail/Data/INBOX/INBOX.mbox");
        row("emlx: store's path comes again", emlx, "/a", "/a/x/a/In.mbox/1.emlx", "Mail/x/In/In.mbox");
        row("emlx: suffix within a name", emlx, "/u", "/u/a.mbox.old.mbox/1.emlx",
            "Mail/a.old/a.mbox.old.mbox");
        row("emlx: name that would lead up", emlx, "/u", "/u/...mbox/...mbox/1.emlx",
            "Mail/%2E%2E/%2E%2E/...mbox");
        row("emlx: in no mailbox", emlx, "/u/Mail", "/u/Mail/loose/1.emlx", "Mail/loose/loose.mbox");
        row("emlx: not below the store", emlx, "/u/Mail", "/v/In.mbox/1.emlx", "In.mbox");

        const TargetRule *mailMate = &mailMateToOutlook;
        row("MailMate: account's folder", mailMate, "/u/MM",
            "/u/MM/Messages/IMAP/acct/INBOX.mailbox/Messages/1.eml", "Mail/acct/INBOX/INBOX.mbox");
        row("MailMate: nested", mailMate, "/u/MM",
            "/u/MM/Messages/IMAP/acct/INBOX.mailbox/Sub.mailbox/Messages/1.eml",
            "Mail/acct/INBOX/Sub/Sub.mbox");
        row("MailMate: Messages selected", mailMate, "/u/MM/Messages",
            "/u/MM/Messages/IMAP/acct/INBOX.mailbox/Messages/1.eml", "Mail/IMAP/acct/INBOX/INBOX.mbox");
        row("MailMate: cut before the suffix goes", mailMate, "/u/acct",
            "/u/acct/In.mailbox/Messages/Sub.mailbox/1.eml", "Mail/sages/Sub/Sub.mbox");
        row("MailMate: cut to nothing", mailMate, "/u", "/u/Messages.mailbox/1.eml", "Mail/Messages.mbox");
        row("MailMate: mailbox selected", mailMate, "/u/IMAP/acct/INBOX.mailbox",
            "/u/IMAP/acct/INBOX.mailbox/Messages/1.eml", "Mail/INBOX/INBOX.mbox");
        row("MailMate: within a mailbox", mailMate, "/u/INBOX.mailbox/Messages",
            "/u/INBOX.mailbox/Messages/1.eml", "Mail/Messages/INBOX/INBOX.mbox");
        row("MailMate: inside excludes below", mailMate, "/u/INBOX", "/u/INBOX.mailbox/1.eml",
            "Mail/INBOX/INBOX.mbox");
        row("MailMate: mailbox wins", mailMate, "/u", "/u/a.mailbox/b.mbox/1.eml", "Mail/a/a.mbox");

        const TargetRule *mailMateToApple = &mailMateToAppleMail;
        row("MailMate to Apple Mail", mailMateToApple, "/u/MM",
            "/u/MM/Messages/IMAP/acct/INBOX.mailbox/Messages/1.eml", "Mail/acct/INBOX/INBOX.mbox");
        row("MailMate to Apple Mail: mailbox selected", mailMateToApple, "/u/INBOX.mailbox",
            "/u/INBOX.mailbox/Messages/1.eml", "Mail/Mail/INBOX/INBOX.mbox");
        row("MailMate to Apple Mail: within a mailbox", mailMateToApple, "/u/INBOX.mailbox/Messages",
            "/u/INBOX.mailbox/Messages/1.eml", "Mail/Mail/Messages/INBOX/INBOX.mbox");

        const TargetRule *outspring = &outspringToOutlook;
        row("Outspring: folder", outspring, "/u/O", "/u/O/Work/1.f.eml", "Mail/Work/Work.mbox");
        row("Outspring: suffix", outspring, "/u/O", "/u/O/Work.mbox/1.eml", "Mail/Work/Work.mbox.mbox");
        row("Outspring: other suffixes stay", outspring, "/u/O", "/u/O/A.imapmbox/Messages/1.eml",
            "Mail/A.imapmbox/Messages/Messages.mbox");
        row("Outspring: in the store itself", outspring, "/u/O", "/u/O/1.eml", "Mail/O/Mail/O.mbox");

        const TargetRule *outspringToApple = &outspringToAppleMail;
        row("Outspring to Apple Mail: folder", outspringToApple, "/u/O", "/u/O/a/Work/1.eml",
            "Mail/a/Work/Work.mbox");
        row("Outspring to Apple Mail: in the store itself", outspringToApple, "/u/O", "/u/O/1.eml",
            "Mail/Mail/O/O.mbox");
    }

    void files()
    {
        QFETCH(const TargetRule *, rule);
        QFETCH(QString, selected);
        QFETCH(QString, path);
        QFETCH(QString, file);
        const bool toApple = rule == &mailMateToAppleMail || rule == &outspringToAppleMail;
        const MailboxTarget target = targetOfStem(*rule, mailboxStem(*rule, path), selected, "/out");
        QCOMPARE(withSingleSlashes(target.file), (toApple ? apple : outlook) + file);
        QVERIFY(target.folder.endsWith('/'));
        QCOMPARE(target.file.left(target.folder.size()), target.folder);
    }

    void operaLocation_data()
    {
        const DataTable<QByteArray, QString> row("text", "location");

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

    void operaLocation()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, location);
        QString found;
        takeOperaLocation({text.constData(), static_cast<size_t>(text.size())}, &found);
        QCOMPARE(found, location);
        QCOMPARE(found.isNull(), location.isNull());
    }

    void operaTargets_data()
    {
        const DataTable<QString, QString, QString> row("account", "location", "file");
        row("folder", "Work", "INBOX", "/out/b/Mail/Work/INBOX/INBOX.mbox");
        row("folders", "Work", "INBOX/Projects", "/out/b/Mail/Work/INBOX/Projects/Projects.mbox");
        row("none", "Work", QString(), "/out/b/Mail/Work/Mails/Mails.mbox");
        row("empty", "Work", "", "/out/b/Mail/Work//.mbox");
        row("trimmed at its end", "Work", "a ", "/out/b/Mail/Work/a/a.mbox");
        row("up in the location", "Work", "../../../x/..",
            "/out/b/Mail/Work/%2E%2E/%2E%2E/%2E%2E/x/%2E%2E/%2E%2E.mbox");
    }

    void operaTargets()
    {
        QFETCH(QString, account);
        QFETCH(QString, location);
        QFETCH(QString, file);
        const MailboxTarget target = operaTarget(account, location, "/out/b");
        QCOMPARE(target.file, file);
        QCOMPARE(target.folder, file.left(file.lastIndexOf('/') + 1));
    }

    void harmlessPaths_data()
    {
        const DataTable<QString, QString> row("path", "harmless");
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

    void harmlessPaths()
    {
        QFETCH(QString, path);
        QTEST(harmlessPath(path), "harmless");
    }
};

QTEST_APPLESS_MAIN(TestSaveTargets)
#include "test_save_targets.moc"
