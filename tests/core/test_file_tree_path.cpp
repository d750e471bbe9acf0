#include "scan/file_tree_path.h"

#include <QtTest>

using PlaceOf = FilePlace (*)(const QString &, const QString &);
Q_DECLARE_METATYPE(PlaceOf)

class TestFileTreePath : public QObject
{
    Q_OBJECT

private slots:
    void place_data();
    void place();
};

void TestFileTreePath::place_data()
{
    QTest::addColumn<PlaceOf>("placeOf");
    QTest::addColumn<QString>("selected");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("tree");
    QTest::addColumn<QString>("folder");
    const auto row = [](const char *name, PlaceOf placeOf, const char *selected, const char *path,
                        const char *tree, const char *folder) {
        QTest::newRow(name) << placeOf << selected << path << tree << folder;
    };

    const PlaceOf apple = appleMailPlace;
    row("apple: above", apple, "/s", "/s/IMAP-me/INBOX.mbox/Messages/1.emlx", "Mail/IMAP-me/INBOX.mbox",
        "/s/IMAP-me/INBOX.mbox");
    row("apple: imap", apple, "/s", "/s/IMAP-me/INBOX.imapmbox/Messages/1.emlx",
        "Mail/IMAP-me/INBOX.imapmbox", "/s/IMAP-me/INBOX.imapmbox");
    row("apple: at", apple, "/s/a.mbox", "/s/a.mbox/Messages/1.emlx", "Mail/a.mbox", "/s/a.mbox");
    row("apple: inside", apple, "/s/a.mbox/Messages/0", "/s/a.mbox/Messages/0/1.emlx", "Mail/a.mbox",
        "/s/a.mbox");
    row("apple: a folder whose name starts like the mailbox", apple, "/s/a", "/s/a/a.mbox/1.emlx",
        "Mail/a.mbox", "/s/a/a.mbox");
    row("apple: both rules, one after the other", apple, "/s/a", "/s/a.mbox/1.emlx", "Mail/aMail.mbox",
        "/s/a.mbox");
    row("apple: nested, the last one counts", apple, "/s", "/s/a.mbox/b.mbox/1.emlx", "Mail/a.mbox/b.mbox",
        "/s/a.mbox/b.mbox");
    row("apple: imap above a later mbox", apple, "/s", "/s/a.imapmbox/b.mbox/1.emlx", "Mail/a.imapmbox",
        "/s/a.imapmbox");
    row("apple: imap only in a file's name", apple, "/s", "/s/a.mbox/1.imapmbox.emlx", "Mail/a.imapmbox",
        "/s/a.imapmbox");
    row("apple: no mailbox", apple, "/s", "/s/a.rssmbox/1.emlx", "", "");
    row("apple: mailbox without a name", apple, "/s", "/s/.mbox/1.emlx", "Mail/.mbox", "/s/.mbox");

    const PlaceOf mate = mailMatePlace;
    row("mate: above", mate, "/s", "/s/IMAP/me/INBOX.mailbox/Messages/1.eml", "Mail/IMAP/me/INBOX.mailbox",
        "/s/IMAP/me/INBOX.mailbox");
    row("mate: at", mate, "/s/a.mailbox", "/s/a.mailbox/1.eml", "Mail/a.mailbox", "/s/a.mailbox");
    row("mate: inside, .mbox goes from the name", mate, "/s/a.mbox.mailbox/M", "/s/a.mbox.mailbox/M/1.eml",
        "Mail/a.mailbox", "/s/a.mbox.mailbox");
    row("mate: above, .mbox stays", mate, "/s", "/s/a.mbox.mailbox/1.eml", "Mail/a.mbox.mailbox",
        "/s/a.mbox.mailbox");
    row("mate: the first rule excludes the second", mate, "/s/a", "/s/a.mailbox/1.eml", "Mail/a.mailbox",
        "/s/a.mailbox");
    row("mate: mailbox above a later mbox", mate, "/s", "/s/a.mailbox/b.mbox/1.eml", "Mail/a.mailbox",
        "/s/a.mailbox");
    row("mate: mailbox only in a file's name", mate, "/s", "/s/a.mbox/1.mailbox.eml", "Mail/a.mailbox",
        "/s/a.mailbox");
    row("mate: no directory with the suffix", mate, "/s", "/s/a.mailbox.eml", "", "");

    const PlaceOf out = outspringPlace;
    row("outspring: the chosen folder itself", out, "/s", "/s/1.eml", "Mail", "/s");
    row("outspring: below", out, "/s", "/s/a/b/1.f.eml", "Mail/a/b", "/s/a/b");
    row("outspring: .mbox goes wherever it stands", out, "/s", "/s/x.mbox.mbox/y.mboxes/1.eml", "Mail/x/yes",
        "/s/x.mbox.mbox/y.mboxes");
    row("outspring: a folder that is all suffix", out, "/s", "/s/.mbox/1.eml", "Mail/", "/s/.mbox");
}

void TestFileTreePath::place()
{
    QFETCH(PlaceOf, placeOf);
    QFETCH(QString, selected);
    QFETCH(QString, path);
    const FilePlace place = placeOf(path, selected);
    QTEST(place.tree, "tree");
    QTEST(place.folder, "folder");
}

QTEST_APPLESS_MAIN(TestFileTreePath)
#include "test_file_tree_path.moc"
