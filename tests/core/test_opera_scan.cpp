#include "browse/message_rows.h"
#include "data_table.h"
#include "scan/opera_message.h"
#include "scan_run.h"
#include "text/opera_accounts.h"

class TestOperaScan : public QObject
{
    Q_OBJECT

private slots:
    void locations_data()
    {
        // "folder": "-": none
        const DataTable row([this](const QByteArray &file, const QString &folder, const QString &label) {
            const OperaMessage message = read(file);
            QCOMPARE(message.folder.value_or("-"), folder);
            QCOMPARE(read(file, OperaFields::Folder).folder, message.folder);
            QCOMPARE(message.label, label);
        });
        row("none", "From: a\n", "-", "Mails");
        row("folder and number", "X-Opera-Location: a/b/c:17\n", "a/b/c", "c");
        row("no colon: the label is all of it", "X-Opera-Location: a/b\n", "a/b", "a/b");
        row("two colons", "X-Opera-Location: a:b/c:17\r\n", "a:b/c", "c");
        row("nothing before the colon", "X-Opera-Location: :17\n", "", "Mails");
        row("nothing behind the colon", "X-Opera-Location: a/b:\n", "a/b", "Mails");
        row("a blank before the colon stays in the label", "X-Opera-Location: a :1\n", "a ", "a ");
        row("anywhere in a line", " y X-Opera-Location: a:1\n", "y", "y");
        row("twice in a line", "X-Opera-Location: a:1 X-Opera-Location: b:1\n", "a", "a");
        row("the last one decides", "X-Opera-Location: a:1\n\nbody X-Opera-Location: b\n", "body", "body");
        row("a later empty one: only the label", "X-Opera-Location: a:1\nX-Opera-Location:\n", "a", "Mails");
        row("the same at the end of the file", "X-Opera-Location: a:1\nX-Opera-Location:", "a", "Mails");
        row("blank text", "X-Opera-Location:   \n", "-", "Mails");
        row("in a fold of the sender: only the folder", "From: a\n b X-Opera-Location: c\n", "b", "Mails");
        row("in a fold of the subject: both", "Subject: a\n b X-Opera-Location: c\n", "b", "b");
        row("a blank in front is the label's first piece", " X-Opera-Location: b\n", "b", "Mails");
        row("the sender's own line: both", "From: a X-Opera-Location: b\n", "From", "From");
        row("case counts", "x-opera-location: a\n", "-", "Mails");
        row("not ASCII", "X-Opera-Location: B\xC3\xBCro:1\n", "B\xC3\xBCro", "B\xC3\xBCro");
    }

    void locations() { checkRow(); }

    void headers_data()
    {
        const DataTable row([this](const QByteArray &file, const QString &sender, const QString &subject) {
            const OperaMessage message = read(file);
            QCOMPARE(message.sender, sender);
            QCOMPARE(message.subject, subject);
        });
        row("CR LF", "Subject: b\r\nFrom: a\r\n", "a\n", "b\n");
        row("folded", "From: =?UTF-8?Q?=C3=B6?=\n\t=?UTF-8?Q?rg?=\nSubject: a\n b\n", "\xC3\xB6rg",
            "a\n b\n");
        row("a fold with the sender's name", "Subject: a\n From: b\nFrom: c\n", "c\n", "a\n From: b\n");
        row("from the body", "To: x\n\nfrom: me\nSUBJECT: it\n", "from: me\n", "SUBJECT: it\n");
        row("an empty subject", "Subject:\nFrom: a\n", "a\n", "");
        row("only the first of each", "From: a\nFrom: b\nSubject: c\nSubject: d\n", "a\n", "c\n");
    }

    void headers() { checkRow(); }

    // Lines that lie across the blocks in which a file is read.
    void seams()
    {
        const QByteArray tail = "From: a\n b\nSubject: c\nX-Opera-Location: d/e:1\nlast";
        for (int before = 16384 - tail.size() - 4; before < 16384 + 4; ++before) {
            for (const char *fill : {"y", "y\n"}) {
                const OperaMessage message =
                    read(QByteArray(fill).repeated(before).left(before - 1) + '\n' + tail);
                QCOMPARE(message.folder.value_or("-"), QString("d/e"));
                QCOMPARE(message.label, QString("e"));
                QCOMPARE(message.sender, QString("a\n b\n"));
                QCOMPARE(message.subject, QString("c\n"));
            }
        }
    }

    void store()
    {
        const QByteArray mail = "From: a <a@a.example>\nSubject: s\n";
        ScanRun run(opera);
        run.write({{"mail/accounts.ini", "[A1]\nAccount Name=Work\n[a2]\nAccount Name=Home\n"},
                   {"mail/store/a1/1.mbs", "X-Opera-Location: In/Box:1\n" + mail},
                   {"mail/store/a1/2.mbs", "X-Opera-Location: In/Box:2\n\nno headers\n"},
                   {"mail/store/a2/RSS/Apple Hot News.rssmbox/3.mbs", mail},
                   {"mail/store/a2/4.mbs", mail}});
        QCOMPARE(run.scan(), QStringList({"hide", "finished"}));

        QMap<QString, qint64> folders;
        for (const qint64 id : objMapFID_PID.keys())
            folders.insert(objMapFID_Name.value(id), id);
        QCOMPARE(folders.keys(), QStringList({"Box", "Home", "In", "Mail", "Mails", "Work"}));
        QCOMPARE(objMapFID_PID.value(folders["Box"]), folders["In"]);
        QCOMPARE(objMapFID_PID.value(folders["In"]), folders["Work"]);
        QCOMPARE(objMapFID_PID.value(folders["Mails"]), folders["Home"]);
        QCOMPARE(mailItemsOfFolder(folders["Box"]).size(), size_t(2));
        QCOMPARE(mailItemsOfFolder(folders["Mails"]).size(), size_t(1));
        QCOMPARE(listOfPathOfOnlyForTree.size(), 3);
        int records = 0;
        for (const MboxMessageNode *record = TmpMboxMbxPtrStart; record; record = record->next, ++records)
            QVERIFY(!record->path.isEmpty() && record->length == 0 && record->offset == 0);
        QCOMPARE(records, 3);

        QStringList rows;
        for (const MessageRow &row : operaRows(MapLeftTreePath.value(folders["Box"]), "Box"))
            rows.append(row.text + "|" + row.path.section('/', -1) + row.offset + row.length);
        rows.sort();
        QCOMPARE(rows, QStringList({"a <a@a.example>\ns|1.mbs", "|2.mbs"}));
        QVERIFY(operaRows(MapLeftTreePath.value(folders["Box"]), "In/Box").empty());
        QVERIFY(operaRows(MapLeftTreePath.value(folders["Box"]), "Mails").empty()); // another account's label
        QCOMPARE(operaRows(MapLeftTreePath.value(folders["Mails"]), "Mails").size(), size_t(1));
    }

    // A record takes 511 characters of the path, and as many of the label.
    void longNames()
    {
        const QString deep =
            "store/a/" + QString(200, 'd') + "/" + QString(200, 'e') + "/" + QString(200, 'f') + "/1.mbs";
        ScanRun run(opera);
        run.write({{deep, "X-Opera-Location: " + QByteArray(600, 'l') + "\n"}});
        run.scan();
        QCOMPARE(TmpMboxMbxPtrStart->path, run.path(deep).left(511));
        QCOMPARE(TmpMboxMbxPtrStart->label, QString(511, 'l'));
        QCOMPARE(StartMailItem->path, run.path(deep));
        QCOMPARE(operaRows(run.path(deep), QString(511, 'l')).size(), size_t(1));
    }

    void endings()
    {
        ScanRun run(opera);
        QCOMPARE(run.scan(), QStringList{"nothing"});
        QVERIFY(!takeUnread());
        QCOMPARE(takeProblems(), QStringList("there is no file in it: " + run.path()));
        QVERIFY(QDir(run.path()).mkpath("store/a/1.mbs"));
        QCOMPARE(run.scan(), QStringList());
        QVERIFY(takeProblems().value(0).contains(run.path("store/a/1.mbs")));
        QVERIFY(!TmpMboxMbxPtrStart);
    }

    void account_data()
    {
        const DataTable row(
            [](const QString &path, const QString &account) { QCOMPARE(operaAccountOf(path), account); });
        row("plain", "/o/mail/store/account1/2009/1.mbs", "account1");
        row("the last one counts", "/o/store/a/store/b/1.mbs", "b");
        row("a longer name", "/o/stores-old/a/1.mbs", "a");
        row("trimmed", "/o/store/ a b /1.mbs", "a b");
        row("empty component", "/o/store//1.mbs", "");
        row("nothing behind", "/o/store", "");
        row("no store", "/o/x/1.mbs", "o");
    }

    void account() { checkRow(); }

    void accountNames_data()
    {
        const DataTable row([this](const QByteArray &ini, const QStringList &keys, const QStringList &scan,
                                   const QStringList &save) {
            writeFiles(m_dir.path(), {{"accounts.ini", ini}});
            OperaAccounts inScan(m_dir.filePath("accounts.ini"), scanAccounts);
            OperaAccounts inSave(m_dir.filePath("accounts.ini"), saveAccounts);
            for (int i = 0; i < keys.size(); ++i) {
                QCOMPARE(inScan.nameOf(keys[i]), scan[i]);
                QCOMPARE(inSave.nameOf(keys[i]), save[i]);
            }
        });
        const QByteArray filler100 = QByteArray("x=1\n").repeated(100);

        row("two accounts, taking turns", "[a]\nAccount Name=Work\r\n\n  [b]\n Account Name= B\xC3\xBCro \n",
            {"a", "b", "a"}, {"Work", "B\u00fcro", "Work"}, {"Work", "B\u00fcro", "Work"});
        row("key in another case", "[Account1]\nAccount Name=Work\n", {"account1"}, {"Work"}, {"account1"});
        row("no section: the name before it stays in a scan", "[a]\nAccount Name=Work\n",
            {"x", "a", "y", "a"}, {"x", "Work", "Work", "Work"}, {"x", "Work", "y", "Work"});
        row("a later section", "[a]\nAccount Name=One\n[a]\nAccount Name=Two\n", {"a"}, {"Two"}, {"One"});
        row("a later section, nameless", "[a]\nAccount Name=One\n[a]\nx=1\n", {"a"}, {"One"}, {"One"});
        row("empty name is passed over", "[a]\nAccount Name=\nAccount Name=Two\n", {"a"}, {"Two"}, {"a"});
        row("text before the mark", "[a]\nMy Account Name=One\n[b]\nMy Account Name=\nAccount Name=Two\n",
            {"a", "b"}, {"My", "Two"}, {"One", "b"});
        row("mark twice", "[a]\nAccount Name=1 Account Name=2\n", {"a"}, {"1"}, {"1 Account Name=2"});
        row("line 101 of the section", "[a]\n" + filler100 + "Account Name=Far\n", {"a"}, {"Far"}, {"Far"});
        row("line 102 of the section", "[a]\n" + filler100 + "x=1\nAccount Name=Far\n", {"a"}, {"a"}, {"a"});
        row("runs on into the next", "[a]\nx=1\n[b]\nAccount Name=B\n", {"a", "b"}, {"B", "B"}, {"B", "B"});
        row("a section inside", "[a]\nx=1\n[a]\n" + filler100 + "Account Name=A\n", {"a"}, {"a"}, {"a"});
        row("text behind the key", "[a] ; mine\nAccount Name=Work\n", {"a"}, {"Work"}, {"Work"});
        row("empty key", "[]\nAccount Name=None\n[a]\nAccount Name=Work\n", {"", "a", ""},
            {"", "Work", "Work"}, {"", "Work", "None"});
        row("byte order mark", "\xEF\xBB\xBF[a]\nAccount Name=Work", {"a"}, {"Work"}, {"Work"});
    }

    void accountNames() { checkRow(); }

    void missingAccounts()
    {
        for (const QString &path : {QString(), QString("/nowhere/accounts.ini")}) {
            OperaAccounts scan(path, scanAccounts);
            QCOMPARE(scan.nameOf("a"), QString("a"));
            QCOMPARE(scan.nameOf("b"), QString("b")); // nothing is carried over
            QCOMPARE(scan.nameOf(""), QString("b"));
        }
    }

private:
    static constexpr int opera = 10;

    OperaMessage read(const QByteArray &file, OperaFields fields = OperaFields::All) const
    {
        writeFiles(m_dir.path(), {{"m.mbs", file}});
        return readOperaMessage(m_dir.filePath("m.mbs"), fields);
    }

    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(TestOperaScan)
#include "test_opera_scan.moc"
