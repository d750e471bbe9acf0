#include "app/passed_over.h"
#include "data_table.h"
#include "scan_run.h"

namespace
{
const QByteArray mbox = "From a Mon b\nSubject: s\n\ntext\n";
const QByteArray mail = "From: a@b\nSubject: s\n\ntext\n";
} // namespace

class TestPassedOver : public QObject
{
    Q_OBJECT

private slots:
    void files_data()
    {
        // "told": lines "reason: path below the store"
        const DataTable row([](int client, const FileMap &files, const QStringList &told, int others) {
            ScanRun run(client);
            run.write(files);
            run.scan();
            QStringList lines;
            for (const PassedOverFile &file : passedOver.files())
                lines.append(
                    QString("%1: %2").arg(nameOf(file.reason), file.path.mid(run.path().size() + 1)));
            lines.sort();
            QCOMPARE(lines, told);
            QCOMPARE(passedOver.otherFiles(), qint64(others));
            QStringList taken = listOfPathOfOnlyForTree.paths();
            QCOMPARE(taken.removeDuplicates(), 0);
            takeUnread();
        });
        row("mbox: empty, no mail", 3, FileMap{{"Inbox", mbox}, {"empty", ""}, {"prefs.js", "x"}}, {}, 2);
        row("mbox: names of other kinds", 3,
            FileMap{{"Inbox", mbox}, {"a.mbox", mbox}, {"b.emlx", mbox}, {"c.emlx", "x"}},
            {"excluded-name: a.mbox", "excluded-name: b.emlx"}, 1);
        row("mbox: a blank at the end, beside its namesake", 3, FileMap{{"Inbox", mbox}, {"Inbox ", mbox}},
            {"name: Inbox "}, 0);
        row("mbox: a folder with a blank at the end, beside a mailbox", 3,
            FileMap{{"Inbox", mbox}, {"Inbox /Sub", mbox}}, {}, 0);
        row(".emlx: outside a mailbox, a part that nobody takes", 2,
            FileMap{{"a.mbox/1.emlx", mail},
                    {"2.emlx", mail},
                    {"a.mbox/9.1.emlxpart", "x"},
                    {"a.mbox/Info.plist", "x"}},
            {"no-folder: 2.emlx", "part: a.mbox/9.1.emlxpart"}, 1);
        row(".eml: one that refuses the store", 8, FileMap{{"stray.eml", mail}}, {"not-reached: stray.eml"},
            0);
        row("opera: accounts.ini is no other file", 10,
            FileMap{{"accounts.ini", "x"}, {"a/1.mbs", mail}, {"a/x", "x"}}, {}, 1);
    }

    void files() { checkRow(); }

    void reasons_data()
    {
        // "reason": what the only problem of a scan that finds nothing has
        const DataTable row([](int client, const FileMap &files, const QString &reason) {
            ScanRun run(client);
            run.write(files);
            run.scan(); // what is told again is no second problem
            QCOMPARE(run.scan(), QStringList("nothing"));
            const QStringList problems = takeProblems();
            QCOMPARE(problems.size(), 1);
            QVERIFY2(problems.first().contains(reason), qPrintable(problems.first()));
            QVERIFY(!takeUnread());
        });
        row("maildir", 3, FileMap{{"M/cur/1", mail}, {"M/new/2", mail}, {"a.mbox", ""}},
            "1 message file(s) of a maildir");
        row("plain .mbox files", 3, FileMap{{"a.mbox", mbox}, {"b.mbox", mbox}},
            "2 mailbox file(s) named .mbox");
        row("another client's files", 2, FileMap{{"x/1.mbx", mail}}, "/x/1.mbx");
        row("another client's store", 2, FileMap{{"a", ""}, {"p/prefs.js", ""}, {"p/Mail/Inbox", mbox}},
            "there is a store of Thunderbird (.mbox), choose that client and ");
        row("the file that refuses the store", 8, FileMap{{"stray.eml", mail}}, "/stray.eml");
    }

    void reasons() { checkRow(); }

    // The walk for the files passed over stays in the store.
    void links()
    {
        ScanRun elsewhere(2);
        elsewhere.write({{"1.emlx", mail}});
        ScanRun run(2);
        run.write({{"a.mbox/1.emlx", mail}});
        QVERIFY(QFile::link(elsewhere.path(), run.path("link")));
        run.scan();
        QVERIFY(passedOver.files().empty());
    }
};

QTEST_GUILESS_MAIN(TestPassedOver)
#include "test_passed_over.moc"
