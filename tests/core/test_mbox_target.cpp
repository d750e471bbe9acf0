#include "save/mbox_target.h"

#include <QtTest>

class TestMboxTarget : public QObject
{
    Q_OBJECT

private slots:
    void targets_data();
    void targets();
};

void TestMboxTarget::targets_data()
{
    QTest::addColumn<QString>("selected");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("outlook"); // file below "Main Identity.rge/Mail/"
    QTest::addColumn<QString>("apple");   // file below "Main Identity.mbox/Mail/"
    QTest::addColumn<QString>("folder");  // that the Apple Mail writer makes there

    const struct {
        const char *name;
        const char *selected;
        const char *path;
        const char *outlook;
        const char *apple;
        const char *folder;
    } rows[] = {
        {"bundle", "/x/Export", "/x/Export/Inbox.mbox/mbox", "/Inbox/Inbox.mbox", "/InboxInbox.mbox",
         "/Inbox"},
        {"nested bundle", "/x/Export", "/x/Export/A.mbox/B.mbox/mbox", "/A.mbox/B/B.mbox", "/A.mbox/BB.mbox",
         "/A.mbox/B"},
        {"bundle in folders", "/x", "/x/a/In.mbox/mbox", "/a/In/In.mbox", "/a/InIn.mbox", "/a/In"},
        {"bundle selected", "/x/Inbox.mbox", "/x/Inbox.mbox/mbox", "Inbox/Inbox.mbox", "InboxInbox.mbox",
         "Inbox"},
        {"bundle that would lead up", "/x", "/x/...mbox/mbox", "/%2E%2E/...mbox", "/%2E%2E...mbox",
         "/%2E%2E"},
        {"profile", "/x/p", "/x/p/Mail/Local Folders/Inbox", "Local Folders/Inbox.mbox",
         "Local Folders/Inbox/Inbox.mbox", "Local Folders/Inbox"},
        {"account", "/x/p", "/x/p/ImapMail/server/INBOX", "server/INBOX.mbox", "server/INBOX/INBOX.mbox",
         "server/INBOX"},
        {"sub-folder", "/x/p", "/x/p/Mail/Local Folders/Inbox.sbd/Work", "Local Folders/Inbox.sbd/Work.mbox",
         "Local Folders/Inbox.sbd/Work/Work.mbox", "Local Folders/Inbox.sbd/Work"},
        {"last Mail counts", "/x", "/x/Mail/p/Mail/server/INBOX", "server/INBOX.mbox",
         "server/INBOX/INBOX.mbox", "server/INBOX"},
        {"Mail before ImapMail", "/x", "/x/ImapMail/Mail/a/ImapMail/b", "a/ImapMail/b.mbox",
         "a/ImapMail/b/b.mbox", "a/ImapMail/b"},
        {"marks share no slash", "/x", "/x/Mail/Mail/a", "Mail/a.mbox", "Mail/a/a.mbox", "Ma"},
        {"directly below Mail", "/x", "/x/Mail/Inbox", "Inbox/Inbox.mbox", "Inbox/Inbox.mbox", "Inbox"},
        {"suffix within the name", "/x", "/x/Mail/a/In.mbox.old", "a/In.mbox.old/In.old.mbox",
         "a/In.mbox.old/In.mbox.old.mbox", "a/In.mbox.old"},
        {"suffix of a folder", "/x", "/x/Mail/a.mbox/In", "a.mbox/In/In.mbox", "a.mbox/In/In.mbox",
         "a.mbox/In"},
        {"name stands earlier", "/x", "/x/Mail/Inbox/Inbox", "Inbox/Inbox.mbox", "Inbox/Inbox/Inbox.mbox",
         "Inbox"},
        {"name within an earlier one", "/x", "/x/Mail/Old Inbox/In", "Old Inbox/In.mbox",
         "Old Inbox/In/In.mbox", "Old In"},
        {"mailbox called Mail", "/x", "/x/Mail/a/Mail", "a/Mail.mbox", ".mbox", ""},
        {"no mark", "/x/store", "/x/store/Inbox", "Inbox/Inbox.mbox", "/Inbox/Inbox.mbox", "/Inbox/"},
        {"no mark, in folders", "/x/store", "/x/store/a/b", "a/b.mbox", "/a/b/b.mbox", "/a/b/"},
    };
    for (const auto &row : rows)
        QTest::newRow(row.name) << row.selected << row.path << row.outlook << row.apple << row.folder;
}

void TestMboxTarget::targets()
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

QTEST_APPLESS_MAIN(TestMboxTarget)
#include "test_mbox_target.moc"
