#include "save/file_target.h"
#include "save/opera_target.h"

#include <QtTest>

Q_DECLARE_METATYPE(const TargetRule *)

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

class TestFileTarget : public QObject
{
    Q_OBJECT

private slots:
    void targets_data();
    void targets();
    void operaLocation_data();
    void operaLocation();
    void operaTargets_data();
    void operaTargets();
};

void TestFileTarget::targets_data()
{
    QTest::addColumn<const TargetRule *>("rule");
    QTest::addColumn<QString>("selected");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("file"); // below the bundle

    const struct {
        const char *name;
        const TargetRule *rule;
        const char *selected;
        const char *path;
        const char *file;
    } rows[] = {
        {"emlx: below the store", &emlxToOutlook, "/u/Mail", "/u/Mail/V2/acct/INBOX.mbox/Messages/1.emlx",
         "Mail/V2/acct/INBOX/INBOX.mbox"},
        {"emlx: directly below", &emlxToOutlook, "/u/Mail", "/u/Mail/In.mbox/1.emlx", "Mail/In/In.mbox"},
        {"emlx: nested", &emlxToOutlook, "/u/Mail", "/u/Mail/V2/A.mbox/B.mbox/Data/1/2/Messages/1.emlx",
         "Mail/V2/A/B/B.mbox"},
        {"emlx: imap", &emlxToOutlook, "/u/Mail", "/u/Mail/X.imapmbox/Y.imapmbox/1.emlx", "Mail/X/Y/Y.mbox"},
        {"emlx: imap wins", &emlxToOutlook, "/u/Mail", "/u/Mail/X.imapmbox/Sub.mbox/1.emlx", "Mail/X/X.mbox"},
        {"emlx: case matters", &emlxToOutlook, "/u/Mail", "/u/Mail/A.mbox/B.MBOX/1.emlx", "Mail/A/A.mbox"},
        {"emlx: mailbox selected", &emlxToOutlook, "/u/Mail/INBOX.mbox", "/u/Mail/INBOX.mbox/Messages/1.emlx",
         "Mail/INBOX/INBOX.mbox"},
        {"emlx: imap mailbox selected", &emlxToOutlook, "/u/Mail/INBOX.imapmbox",
         "/u/Mail/INBOX.imapmbox/Messages/1.emlx", "Mail/INBOX/INBOX.mbox"},
        {"emlx: nested mailbox selected", &emlxToOutlook, "/u/A.mbox/B.mbox", "/u/A.mbox/B.mbox/1.emlx",
         "Mail/B/B.mbox"},
        {"emlx: Messages selected", &emlxToOutlook, "/u/INBOX.mbox/Messages", "/u/INBOX.mbox/Messages/1.emlx",
         "Mail/INBOX/INBOX.mbox"},
        {"emlx: Messages below Data selected", &emlxToOutlook, "/u/INBOX.mbox/Data/Messages",
         "/u/INBOX.mbox/Data/Messages/1.emlx", "Mail/Data/INBOX/INBOX.mbox"},
        {"emlx: Data selected", &emlxToOutlook, "/u/INBOX.mbox/Data", "/u/INBOX.mbox/Data/Messages/1.emlx",
         "Mail/Data/INBOX/INBOX.mbox"},
        {"emlx: store's path comes again", &emlxToOutlook, "/a", "/a/x/a/In.mbox/1.emlx",
         "Mail/x/In/In.mbox"},
        {"emlx: suffix within a name", &emlxToOutlook, "/u", "/u/a.mbox.old.mbox/1.emlx",
         "Mail/a.old/a.mbox.old.mbox"},
        {"emlx: name that would lead up", &emlxToOutlook, "/u", "/u/...mbox/...mbox/1.emlx",
         "Mail/%2E%2E/%2E%2E/...mbox"},
        {"emlx: in no mailbox", &emlxToOutlook, "/u/Mail", "/u/Mail/loose/1.emlx", "Mail/loose/loose.mbox"},
        {"emlx: not below the store", &emlxToOutlook, "/u/Mail", "/v/In.mbox/1.emlx", "In.mbox"},

        {"MailMate: account's folder", &mailMateToOutlook, "/u/MM",
         "/u/MM/Messages/IMAP/acct/INBOX.mailbox/Messages/1.eml", "Mail/acct/INBOX/INBOX.mbox"},
        {"MailMate: nested", &mailMateToOutlook, "/u/MM",
         "/u/MM/Messages/IMAP/acct/INBOX.mailbox/Sub.mailbox/Messages/1.eml", "Mail/acct/INBOX/Sub/Sub.mbox"},
        {"MailMate: Messages selected", &mailMateToOutlook, "/u/MM/Messages",
         "/u/MM/Messages/IMAP/acct/INBOX.mailbox/Messages/1.eml", "Mail/IMAP/acct/INBOX/INBOX.mbox"},
        {"MailMate: cut before the suffix goes", &mailMateToOutlook, "/u/acct",
         "/u/acct/In.mailbox/Messages/Sub.mailbox/1.eml", "Mail/sages/Sub/Sub.mbox"},
        {"MailMate: cut to nothing", &mailMateToOutlook, "/u", "/u/Messages.mailbox/1.eml",
         "Mail/Messages.mbox"},
        {"MailMate: mailbox selected", &mailMateToOutlook, "/u/IMAP/acct/INBOX.mailbox",
         "/u/IMAP/acct/INBOX.mailbox/Messages/1.eml", "Mail/INBOX/INBOX.mbox"},
        {"MailMate: within a mailbox", &mailMateToOutlook, "/u/INBOX.mailbox/Messages",
         "/u/INBOX.mailbox/Messages/1.eml", "Mail/Messages/INBOX/INBOX.mbox"},
        {"MailMate: inside excludes below", &mailMateToOutlook, "/u/INBOX", "/u/INBOX.mailbox/1.eml",
         "Mail/INBOX/INBOX.mbox"},
        {"MailMate: mailbox wins", &mailMateToOutlook, "/u", "/u/a.mailbox/b.mbox/1.eml", "Mail/a/a.mbox"},
        {"MailMate: mbox", &mailMateToOutlook, "/u", "/u/a.mbox/1.eml", "Mail/a/a.mbox"},

        {"MailMate to Apple Mail", &mailMateToAppleMail, "/u/MM",
         "/u/MM/Messages/IMAP/acct/INBOX.mailbox/Messages/1.eml", "Mail/acct/INBOX/INBOX.mbox"},
        {"MailMate to Apple Mail: Messages selected", &mailMateToAppleMail, "/u/MM/Messages",
         "/u/MM/Messages/IMAP/acct/INBOX.mailbox/Messages/1.eml", "Mail/IMAP/acct/INBOX/INBOX.mbox"},
        {"MailMate to Apple Mail: mailbox selected", &mailMateToAppleMail, "/u/INBOX.mailbox",
         "/u/INBOX.mailbox/Messages/1.eml", "Mail/Mail/INBOX/INBOX.mbox"},
        {"MailMate to Apple Mail: within a mailbox", &mailMateToAppleMail, "/u/INBOX.mailbox/Messages",
         "/u/INBOX.mailbox/Messages/1.eml", "Mail/Mail/Messages/INBOX/INBOX.mbox"},

        {"Outspring: folder", &outspringToOutlook, "/u/O", "/u/O/Work/1.f.eml", "Mail/Work/Work.mbox"},
        {"Outspring: nested", &outspringToOutlook, "/u/O", "/u/O/a/b/Work/1.eml", "Mail/a/b/Work/Work.mbox"},
        {"Outspring: suffix", &outspringToOutlook, "/u/O", "/u/O/Work.mbox/1.eml",
         "Mail/Work/Work.mbox.mbox"},
        {"Outspring: other suffixes stay", &outspringToOutlook, "/u/O", "/u/O/A.imapmbox/Messages/1.eml",
         "Mail/A.imapmbox/Messages/Messages.mbox"},
        {"Outspring: in the store itself", &outspringToOutlook, "/u/O", "/u/O/1.eml", "Mail/O/Mail/O.mbox"},
        {"Outspring: in the store itself, suffix", &outspringToOutlook, "/u/O.mbox", "/u/O.mbox/1.eml",
         "Mail/O/Mail/O.mbox.mbox"},
        {"Outspring to Apple Mail: folder", &outspringToAppleMail, "/u/O", "/u/O/a/Work/1.eml",
         "Mail/a/Work/Work.mbox"},
        {"Outspring to Apple Mail: in the store itself", &outspringToAppleMail, "/u/O", "/u/O/1.eml",
         "Mail/Mail/O/O.mbox"},
    };
    for (const auto &row : rows)
        QTest::newRow(row.name) << row.rule << row.selected << row.path << row.file;
}

void TestFileTarget::targets()
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

void TestFileTarget::operaLocation_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("location");
    const auto row = [](const char *name, const QByteArray &text, const QString &location) {
        QTest::newRow(name) << text << location;
    };
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

void TestFileTarget::operaLocation()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, location);
    QString found;
    takeOperaLocation({text.constData(), static_cast<size_t>(text.size())}, &found);
    QCOMPARE(found, location);
    QCOMPARE(found.isNull(), location.isNull());
}

void TestFileTarget::operaTargets_data()
{
    QTest::addColumn<QString>("account");
    QTest::addColumn<QString>("location");
    QTest::addColumn<QString>("file");
    QTest::newRow("folder") << "Work"
                            << "INBOX"
                            << "/out/b/Mail/Work/INBOX/INBOX.mbox";
    QTest::newRow("folders") << "Work"
                             << "INBOX/Projects"
                             << "/out/b/Mail/Work/INBOX/Projects/Projects.mbox";
    QTest::newRow("none") << "Work" << QString() << "/out/b/Mail/Work/Mails/Mails.mbox";
    QTest::newRow("empty") << "Work"
                           << ""
                           << "/out/b/Mail/Work//.mbox";
    QTest::newRow("trimmed at its end") << "Work"
                                        << "a "
                                        << "/out/b/Mail/Work/a/a.mbox";
    QTest::newRow("up in the account") << "../.."
                                       << "a"
                                       << "/out/b/Mail/%2E%2E/%2E%2E/a/a.mbox";
    QTest::newRow("up in the location") << "Work"
                                        << "../../../x/.."
                                        << "/out/b/Mail/Work/%2E%2E/%2E%2E/%2E%2E/x/%2E%2E/%2E%2E.mbox";
    QTest::newRow("from the root") << "/etc"
                                   << "/etc"
                                   << "/out/b/Mail//etc//etc/etc.mbox";
    QTest::newRow("zero") << "Work" << QString(QLatin1String("a\0b", 3))
                          << "/out/b/Mail/Work/a%00b/a%00b.mbox";
}

void TestFileTarget::operaTargets()
{
    QFETCH(QString, account);
    QFETCH(QString, location);
    QFETCH(QString, file);
    const MailboxTarget target = operaTarget(account, location, "/out/b");
    QCOMPARE(target.file, file);
    QCOMPARE(target.folder, file.left(file.lastIndexOf('/') + 1));
}

QTEST_APPLESS_MAIN(TestFileTarget)
#include "test_file_target.moc"
