#include "data_table.h"
#include "scan/file_tree_path.h"
#include "scan_run.h"
#include "text/part_index.h"

#include <unistd.h>

namespace
{
constexpr int appleMail = 2;
constexpr int mailMate = 8;
constexpr int outspring = 9;

const QByteArray mail = "12\nFrom: a@a.example\nSubject: s\n\nx\n";

const QStringList finished{"hide", "finished"};
const QStringList nothing{"nothing"};

// "tree: path" of each file record, paths below the store, sorted.
QStringList filesOf(const ScanRun &run)
{
    QStringList lines;
    for (const MailItemNode *item = StartMailItem; item; item = item->next) {
        QStringList tree;
        for (qint64 folder = item->parentId; folder != llRootId; folder = objMapFID_PID.value(folder))
            tree.prepend(objMapFID_Name.value(folder));
        lines.append(tree.join('/') + ": " + item->path.mid(run.path().size() + 1));
    }
    lines.sort();
    return lines;
}
} // namespace

using PlaceOf = FilePlace (*)(const QString &, const QString &);
class TestFileScan : public QObject
{
    Q_OBJECT

private slots:
    void stores_data()
    {
        // "selected": below the store
        const DataTable row([](int client, const QString &selected, const QStringList &names,
                               const QStringList &ends, const QStringList &files) {
            ScanRun run(client);
            for (const QString &name : names)
                run.write({{name, mail}});
            QCOMPARE(run.scan(selected.isEmpty() ? run.path() : run.path(selected)), ends);
            QCOMPARE(filesOf(run), files);
            QCOMPARE(takeProblems().size(), ends == nothing ? 1 : 0); // the reason
        });
        row("apple: messages, companions, parts", appleMail, "",
            {"b.mbox/M/1.emlx", "b.mbox/M/2.partial.emlx", "b.mbox/M/2.1.emlxpart", "b.mbox/M/1.plist",
             "b.mbox/M/3.eml", "b.mbox/M/4.EMLX"},
            finished,
            {"Mail/b.mbox: b.mbox/M/1.emlx", "Mail/b.mbox: b.mbox/M/2.partial.emlx",
             "Mail/b.mbox: b.mbox/M/3.eml"});
        row("apple: only news", appleMail, "", {"RSS/Apple Hot News.rssmbox/a.mbox/1.emlx"}, finished, {});
        row("apple: no mailbox", appleMail, "", {"x/1.emlx", "a.mbox/2.emlx"}, finished,
            {"Mail/a.mbox: a.mbox/2.emlx"});
        row("apple: the mailbox itself", appleMail, "a.mbox/M", {"a.mbox/M/1.emlx", "a.mbox/2.emlx"},
            finished, {"Mail/a.mbox: a.mbox/2.emlx", "Mail/a.mbox: a.mbox/M/1.emlx"});
        row("apple: no message", appleMail, "", {"a.mbox/1.eml"}, nothing, {});

        row("mate: two mailboxes", mailMate, "", {"I/a.mailbox/M/1.eml", "I/b.mailbox/M/1.eml"}, finished,
            {"Mail/I/a.mailbox: I/a.mailbox/M/1.eml", "Mail/I/b.mailbox: I/b.mailbox/M/1.eml"});
        row("mate: no mailbox", mailMate, "", {"a/1.eml"}, nothing, {});

        row("outspring: both names", outspring, "", {"a/b/1.eml", "a/b/1.f.eml"}, finished,
            {"Mail/a/b: a/b/1.eml", "Mail/a/b: a/b/1.f.eml"});
        row("outspring: another client's store", outspring, "", {"a.mailbox/1.eml"}, nothing, {});

        row("quotes and blanks", outspring, "it's \"mine\" $(x)", {"it's \"mine\" $(x)/a 'b'/1 2.eml"},
            finished, {"Mail/a 'b': it's \"mine\" $(x)/a 'b'/1 2.eml"});
    }

    void stores() { checkRow(); }

    // Whichever the search names first: every file has one record, and both folders are there.
    void nestedMailboxes()
    {
        ScanRun run(appleMail);
        run.write({{"a.mbox/M/1.emlx", mail}, {"a.mbox/b.mbox/M/2.emlx", mail}});
        QCOMPARE(run.scan(), finished);
        QCOMPARE(filesOf(run).size(), 2);
        QCOMPARE(listOfPathOfOnlyForTree.size(), 2);
        QVERIFY(filesOf(run).contains("Mail/a.mbox: a.mbox/M/1.emlx"));
        QVERIFY(objMapName_FID.contains("b.mbox"));
    }

    void unreadable_data()
    {
        // "folder": has a file's name
        const DataTable row([](int client, const QString &folder, const FileMap &others) {
            ScanRun run(client);
            run.write(others);
            QVERIFY(QDir(run.path()).mkpath(folder));
            QCOMPARE(run.scan(), QStringList());
            QVERIFY(onlyProblem().contains(run.path(folder)));
        });
        row("message", appleMail, "a.mbox/1.emlx", {{"a.mbox/1.emlx/x.txt", ""}});
        const QByteArray section = "X-Apple-Content-Length: 3\n\n";
        row("part", appleMail, "a.mbox/1.2.emlxpart", {{"a.mbox/1.partial.emlx", "9\n" + section}});
        row("the second part, of two that are used", appleMail, "a.mbox/1.3.emlxpart",
            {{"a.mbox/1.partial.emlx", "9\n" + section + section},
             {"a.mbox/1.2.emlxpart", ""},
             {"a.mbox/1.4.emlxpart", ""}});
        row("mate", mailMate, "a.mailbox/1.eml", {});
        row("outspring", outspring, "a/1.eml", {});
    }

    void unreadable() { checkRow(); }

    // A part that no section of its message takes, and one behind the property list, may be anything.
    void unusedPart()
    {
        ScanRun run(appleMail);
        run.write({{"a.mbox/1.partial.emlx", "9\nX-Apple-Content-Length: 3\n\n\n"
                                             "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                             "X-Apple-Content-Length: 3\n\n"},
                   {"a.mbox/1.2.emlxpart", ""}});
        QVERIFY(QDir(run.path()).mkpath("a.mbox/1.3.emlxpart"));
        QCOMPARE(run.scan(), finished);
        QVERIFY(!hasProblems());
    }

    // A store that is not there is as an empty one, whatever the search says of it.
    void missingStore()
    {
        for (const int client : {appleMail, mailMate, outspring}) {
            ScanRun run(client);
            QCOMPARE(run.scan(run.path("missing")), nothing);
            QCOMPARE(takeProblems(), QStringList("no such folder: " + run.path("missing")));
        }
    }

    void stopBetweenFiles()
    {
        ScanRun run(outspring);
        for (int i = 0; i < 300; ++i)
            run.write({{QString("%1/%1.eml").arg(i), mail}});
        run.stopFrom = 10;
        QCOMPARE(run.scan(), QStringList());
        QCOMPARE(filesOf(run).size(), 30); // the file at which 10 per cent are shown is not taken
    }

    // Names with line feeds and names that are no UTF-8 are passed over, and do no harm to others.
    void oddNames()
    {
        ScanRun run(outspring);
        run.write({{"a/1.eml", mail}, {"a/x\ny.eml", mail}, {"a\nb/2.eml", mail}, {"c d /3.eml", mail}});
        const QByteArray bad = QFile::encodeName(run.path()) + "/a/\xE4.eml";
        QCOMPARE(::link(QFile::encodeName(run.path("a/1.eml")).constData(), bad.constData()), 0);
        QCOMPARE(run.scan(), finished);
        QCOMPARE(filesOf(run), QStringList({"Mail/a: a/1.eml", "Mail/c d : c d /3.eml"}));
        ::unlink(bad.constData());
    }

    void secondScan()
    {
        ScanRun run(outspring);
        run.write({{"a/1.eml", mail}});
        run.scan();
        const qint64 first = PID;
        discardScanResult();
        run.scan();
        QCOMPARE(filesOf(run), QStringList{"Mail/a: a/1.eml"});
        QCOMPARE(StartMailItem->parentId, first + 2);
        QCOMPARE(objMapFID_PID.size(), 2);
        QCOMPARE(MapLeftTreePath.value(first + 2), run.path("a"));
    }

    void place_data()
    {
        const DataTable table([](PlaceOf placeOf, const QString &selected, const QString &path,
                                 const QString &tree, const QString &folder) {
            const FilePlace place = placeOf(path, selected);
            QCOMPARE(place.tree, tree);
            QCOMPARE(place.folder, folder);
        });
        const auto rowsOf = [&table](const QByteArray &client, PlaceOf placeOf) {
            return [&table, client, placeOf](const char *name, const char *selected, const char *path,
                                             const char *tree, const char *folder) {
                table(client + ": " + name, placeOf, selected, path, tree, folder);
            };
        };

        const auto apple = rowsOf("apple", TreeCreatorForAppleMail);
        apple("above", "/s", "/s/me/In.mbox/Messages/1.emlx", "Mail/me/In.mbox", "/s/me/In.mbox");
        apple("imap", "/s", "/s/me/In.imapmbox/M/1.emlx", "Mail/me/In.imapmbox", "/s/me/In.imapmbox");
        apple("inside", "/s/a.mbox/M/0", "/s/a.mbox/M/0/1.emlx", "Mail/a.mbox", "/s/a.mbox");
        apple("a folder of the mailbox's name", "/s/a", "/s/a/a.mbox/1.emlx", "Mail/a.mbox", "/s/a/a.mbox");
        apple("one rule after the other", "/s/a", "/s/a.mbox/1.emlx", "Mail/aMail.mbox", "/s/a.mbox");
        apple("nested", "/s", "/s/a.mbox/b.mbox/1.emlx", "Mail/a.mbox/b.mbox", "/s/a.mbox/b.mbox");
        apple("imap above mbox", "/s", "/s/a.imapmbox/b.mbox/1.emlx", "Mail/a.imapmbox", "/s/a.imapmbox");
        apple("imap in a file's name", "/s", "/s/a.mbox/1.imapmbox.emlx", "Mail/a.imapmbox", "/s/a.imapmbox");
        apple("no mailbox", "/s", "/s/a.rssmbox/1.emlx", "", "");
        apple("mailbox without a name", "/s", "/s/.mbox/1.emlx", "Mail/.mbox", "/s/.mbox");

        const auto mate = rowsOf("mate", TreeCreatorForMailMate);
        mate("above", "/s", "/s/IMAP/In.mailbox/M/1.eml", "Mail/IMAP/In.mailbox", "/s/IMAP/In.mailbox");
        mate("inside, .mbox goes from the name", "/s/a.mbox.mailbox/M", "/s/a.mbox.mailbox/M/1.eml",
             "Mail/a.mailbox", "/s/a.mbox.mailbox");
        mate("above: .mbox stays", "/s", "/s/a.mbox.mailbox/1.eml", "Mail/a.mbox.mailbox",
             "/s/a.mbox.mailbox");
        mate("one rule excludes the other", "/s/a", "/s/a.mailbox/1.eml", "Mail/a.mailbox", "/s/a.mailbox");
        mate("mailbox above mbox", "/s", "/s/a.mailbox/b.mbox/1.eml", "Mail/a.mailbox", "/s/a.mailbox");
        mate("mailbox in a file's name", "/s", "/s/a.mbox/1.mailbox.eml", "Mail/a.mailbox", "/s/a.mailbox");
        mate("no directory with the suffix", "/s", "/s/a.mailbox.eml", "", "");

        const auto out = rowsOf("outspring", TreeCreatorForOutSpring);
        out("the chosen folder itself", "/s", "/s/1.eml", "Mail", "/s");
        out("below", "/s", "/s/a/b/1.f.eml", "Mail/a/b", "/s/a/b");
        out(".mbox goes", "/s", "/s/x.mbox.mbox/y.mboxes/1.eml", "Mail/x/yes", "/s/x.mbox.mbox/y.mboxes");
        out("a folder that is all suffix", "/s", "/s/.mbox/1.eml", "Mail/", "/s/.mbox");
    }

    void place() { checkRow(); }

    void partOrder_data()
    {
        // Parts of the message "7", without ".emlxpart" at their end.
        const DataTable row([](const QStringList &parts, const QStringList &taken) {
            const auto paths = [](QStringList names) {
                names.replaceInStrings(QRegularExpression("^"), "/s/in.mbox/M/");
                return names.replaceInStrings(QRegularExpression("$"), ".emlxpart");
            };
            QCOMPARE(PartIndex(paths(parts)).takeParts("/s/in.mbox/M/7.partial.emlx"), paths(taken));
        });
        row("by number", {"7.10", "7.2", "7.3"}, {"7.2", "7.3", "7.10"});
        row("only its own", {"77.1", "7.1", "17.1", "7-1"}, {"7.1"});
        row("deeper number", {"7.2.10", "7.2.9"}, {"7.2.9", "7.2.10"});
        row("one number twice: as they came", {"7.2.4", "7.1.4"}, {"7.2.4", "7.1.4"});
        row("one path twice", {"7.1", "7.1"}, {"7.1"});
        row("a number written otherwise", {"7.02", "7.+3", "7.x", "7."}, {});
        row("below zero, above 32 bits", {"7.5000000000", "7.-1"}, {"7.-1", "7.5000000000"});
        row("a folder of the message's name", {"7.d/1", "7.d/x.2"}, {"7.d/x.2"});
        row("the suffix in a folder's name", {"7.2", "7.1.emlxpart/7.2", "7.1"},
            {"7.1.emlxpart/7.2", "7.1", "7.2", "7.1.emlxpart/7.2"});
        row("the store's path again further down", {"s/in.mbox/M/7.1"}, {"s/in.mbox/M/7.1"});
    }

    void partOrder() { checkRow(); }

    void partsAreTakenOnce()
    {
        PartIndex index({"/s/7.1.emlxpart", "find: '/s/7.x': Permission denied", "/s/7.x.2.emlxpart",
                         "/s/7.03.emlxpart"});
        QCOMPARE(index.takeParts("/s/7.x.partial.emlx"), QStringList{"/s/7.x.2.emlxpart"});
        QCOMPARE(index.takeParts("/s/7.partial.emlx"), QStringList{"/s/7.1.emlxpart"});
        QCOMPARE(index.takeParts("/s/7.partial.emlx"), QStringList());
        QCOMPARE(index.takeParts("/s/7.03.partial.emlx"), QStringList());
    }

    // The same message numbers in every mailbox must not make one message look at all mailboxes.
    void manyMailboxes()
    {
        QStringList stems;
        for (int mailbox = 0; mailbox < 400; ++mailbox)
            for (int message = 0; message < 100; ++message)
                stems.append(QString("/s/%1.mbox/Messages/%2.").arg(mailbox).arg(message));
        PartIndex index(QStringList(stems).replaceInStrings(QRegularExpression("$"), "1.emlxpart"));
        for (const QString &stem : stems)
            QCOMPARE(index.takeParts(stem + "partial.emlx"), QStringList{stem + "1.emlxpart"});
    }
};

QTEST_GUILESS_MAIN(TestFileScan)
#include "test_file_scan.moc"
