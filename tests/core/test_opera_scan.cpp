#include "app/problem_log.h"
#include "app/shared_state.h"
#include "browse/message_rows.h"
#include "scan/message_saving_thread.h"
#include "scan/opera_message.h"
#include "store_files.h"
#include "worker_run.h"

#include <QTemporaryDir>
#include <QtTest>

class TestOperaScan : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void locations_data();
    void locations();
    void headers_data();
    void headers();
    void seams();
    void store();
    void longNames();
    void endings();

private:
    QStringList scan(const QString &selected);

    QScopedPointer<QTemporaryDir> m_dir;
};

void TestOperaScan::init()
{
    m_dir.reset(new QTemporaryDir);
    discardScanResult();
    takeProblems();
}

void TestOperaScan::cleanup()
{
    CleanLinkedList();
    discardScanResult();
}

QStringList TestOperaScan::scan(const QString &selected)
{
    m_selectedFile = selected;
    QMessageSavingThread thread;
    thread.m_mailClientIndex = 10;
    QStringList ends;
    QObject context;
    connect(&thread, &QMessageSavingThread::FinishScaning, &context, [&] { ends.append("finished"); });
    connect(&thread, &QMessageSavingThread::NoDataIntoFile, &context, [&] { ends.append("nothing"); });
    runToEnd(&thread);
    QCoreApplication::processEvents();
    return ends;
}

void TestOperaScan::locations_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("folder"); // "-": none
    QTest::addColumn<QString>("label");
    const auto row = [](const char *name, const QByteArray &file, const char *folder, const char *label) {
        QTest::newRow(name) << file << QString::fromUtf8(folder) << QString::fromUtf8(label);
    };
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

void TestOperaScan::locations()
{
    QFETCH(QByteArray, file);
    writeFiles(m_dir->path(), {{"m.mbs", file}});
    QString error;
    const std::optional<OperaMessage> message =
        readOperaMessage(m_dir->filePath("m.mbs"), OperaFields::All, &error);
    QVERIFY2(message, qPrintable(error));
    QTEST(message->folder.value_or("-"), "folder");
    QTEST(message->label, "label");
}

void TestOperaScan::headers_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("sender");
    QTest::addColumn<QString>("subject");
    const auto row = [](const char *name, const QByteArray &file, const char *sender, const char *subject) {
        QTest::newRow(name) << file << QString::fromUtf8(sender) << QString::fromUtf8(subject);
    };
    row("plain ones keep their line feed", "From x Mon\nFrom: a\nSubject: b\n", "a\n", "b\n");
    row("CR LF", "Subject: b\r\nFrom: a\r\n", "a\n", "b\n");
    row("decoded", "From: =?UTF-8?Q?J=C3=B6rg?= <j@j.example>\nSubject: =?UTF-8?B?w7w=?=\n",
        "J\xC3\xB6rg <j@j.example>", "\xC3\xBC");
    row("folded", "From: =?UTF-8?Q?J=C3=B6?=\n\t=?UTF-8?Q?rg?=\nSubject: a\n b\n", "J\xC3\xB6rg", "a\n b\n");
    row("the sender behind folds of the subject", "Subject: a\n From: no\nFrom: yes\n", "yes\n",
        "a\n From: no\n");
    row("from the body", "To: x\n\nfrom: me\nSUBJECT: it\n", "from: me\n", "SUBJECT: it\n");
    row("an empty subject", "Subject:\nFrom: a\n", "a\n", "");
    row("only the first of each", "From: a\nFrom: b\nSubject: c\nSubject: d\n", "a\n", "c\n");
}

void TestOperaScan::headers()
{
    QFETCH(QByteArray, file);
    writeFiles(m_dir->path(), {{"m.mbs", file}});
    QString error;
    const std::optional<OperaMessage> message =
        readOperaMessage(m_dir->filePath("m.mbs"), OperaFields::All, &error);
    QVERIFY2(message, qPrintable(error));
    QTEST(message->sender, "sender");
    QTEST(message->subject, "subject");
}

// Lines that lie across the blocks in which a file is read.
void TestOperaScan::seams()
{
    const QByteArray tail = "From: a\n b\nSubject: c\nX-Opera-Location: d/e:1\nlast";
    for (int before = 16384 - tail.size() - 4; before < 16384 + 4; ++before) {
        for (const char *fill : {"y", "y\n"}) {
            const QByteArray filler = QByteArray(fill).repeated(before).left(before - 1) + '\n';
            writeFiles(m_dir->path(), {{"m.mbs", filler + tail}});
            QString error;
            const std::optional<OperaMessage> message =
                readOperaMessage(m_dir->filePath("m.mbs"), OperaFields::All, &error);
            QVERIFY2(message, qPrintable(error));
            QCOMPARE(message->folder.value_or("-"), QString("d/e"));
            QCOMPARE(message->label, QString("e"));
            QCOMPARE(message->sender, QString("a\n b\n"));
            QCOMPARE(message->subject, QString("c\n"));
        }
    }
}

void TestOperaScan::store()
{
    const QByteArray mail = "From: a <a@a.example>\nSubject: s\n";
    writeFiles(m_dir->path(), {{"mail/accounts.ini", "[A1]\nAccount Name=Work\n[a2]\nAccount Name=Home\n"},
                               {"mail/store/a1/1.mbs", "X-Opera-Location: In/Box:1\n" + mail},
                               {"mail/store/a1/2.mbs", "X-Opera-Location: In/Box:2\n\nno headers\n"},
                               {"mail/store/a2/RSS/Apple Hot News.rssmbox/3.mbs", mail},
                               {"mail/store/a2/4.mbs", mail}});
    QCOMPARE(scan(m_dir->path()), QStringList{"finished"});

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
        QVERIFY(record->path[0] != 0 && record->length == 0 && record->offset == 0);
    QCOMPARE(records, 3);

    QStringList rows;
    for (const MessageRow &row : operaRows(MapLeftTreePath.value(folders["Box"]), "Box"))
        rows.append(row.text + "|" + row.path.section('/', -1) + row.offset + row.length);
    rows.sort();
    QCOMPARE(rows, QStringList({"\n|2.mbs", "a <a@a.example>\ns|1.mbs"}));
    QVERIFY(operaRows(MapLeftTreePath.value(folders["Box"]), "In/Box").empty());
    QVERIFY(operaRows(MapLeftTreePath.value(folders["Box"]), "Mails").empty()); // another account's label
    QCOMPARE(operaRows(MapLeftTreePath.value(folders["Mails"]), "Mails").size(), size_t(1));
}

// Path and label share a field; neither may run into the other.
void TestOperaScan::longNames()
{
    const QString deep =
        "store/a/" + QString(200, 'd') + "/" + QString(200, 'e') + "/" + QString(200, 'f') + "/1.mbs";
    writeFiles(m_dir->path(), {{deep, "X-Opera-Location: " + QByteArray(600, 'l') + "\n"}});
    QCOMPARE(scan(m_dir->path()), QStringList{"finished"});
    const QString path = m_dir->filePath(deep);
    QCOMPARE(fieldText(TmpMboxMbxPtrStart->path), path.left(511));
    QCOMPARE(fieldText(TmpMboxMbxPtrStart->path + labelFieldStart), QString(511, 'l'));
    QCOMPARE(pathOf(*StartMailItem), path);
    QCOMPARE(operaRows(path, QString(511, 'l')).size(), size_t(1));
}

void TestOperaScan::endings()
{
    QCOMPARE(scan(m_dir->path()), QStringList{"nothing"});
    QVERIFY(!hasProblems());
    QVERIFY(QDir(m_dir->path()).mkpath("store/a/1.mbs"));
    QCOMPARE(scan(m_dir->path()), QStringList());
    QVERIFY(takeProblems().value(0).contains(m_dir->filePath("store/a/1.mbs")));
    QVERIFY(!TmpMboxMbxPtrStart);
}

QTEST_GUILESS_MAIN(TestOperaScan)
#include "test_opera_scan.moc"
