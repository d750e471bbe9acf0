#include "app/shared_state.h"
#include "scan/mbox_index.h"
#include "store_files.h"

#include <QTemporaryDir>
#include <QtTest>

namespace
{
struct Found {
    qint64 offset;
    qint64 length;
    QString from;
    QString subject;
    bool operator==(const Found &other) const
    {
        return offset == other.offset && length == other.length && from == other.from &&
               subject == other.subject;
    }
};

// For failure messages: a record a line.
QString shown(const QVector<Found> &records)
{
    QString text;
    for (const Found &record : records)
        text += QStringLiteral("%1+%2 [%3] [%4]\n")
                    .arg(record.offset)
                    .arg(record.length)
                    .arg(record.from, record.subject);
    return text;
}

QVector<Found> recordsInMemory()
{
    QVector<Found> records;
    for (const MboxMessageNode *node = TmpMboxMbxPtrStart; node && node->next; node = node->next)
        records.append({node->offset, node->length, fieldText(node->from), fieldText(node->subject)});
    return records;
}

const QByteArray separator = "From a@b Mon Jan  1 00:00:00 2007\n"; // 34 bytes
} // namespace

Q_DECLARE_METATYPE(QVector<Found>)

class TestMboxIndex : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { CleanLinkedList(); }
    void records_data();
    void records();
    void aSeamAnywhere();
    void secondFileGoesOnInTheEmptyRecord();
    void fieldsAreCutAtTheirWidth();
    void progressComesForEachPercent();
};

void TestMboxIndex::records_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QVector<Found>>("found");
    using Records = QVector<Found>;
    QTest::newRow("empty file") << QByteArray() << Records{};
    QTest::newRow("one line only") << separator << Records{};
    QTest::newRow("no separator first") << "Subject: x\n" + separator + "a\n" << Records{};
    QTest::newRow("capitals are none") << QByteArray("FROM a Mon \nSubject: x\n") << Records{};
    QTest::newRow("first line needs no weekday")
        << QByteArray("From x\nFrom: a\nSubject: b\n\nc") << Records{{0, 28, "a", "b\n"}};
    QTest::newRow("two messages") << separator + "From: a\nSubject: b\n\nc\n" + separator + "From: d\n\ne\n"
                                  << Records{{0, 56, "a", "b\n"}, {56, 45, "d", ""}};
    QTest::newRow("separator as the last line")
        << separator + "From: a\n" + separator << Records{{0, 42, "a", ""}, {42, 34, "", ""}};
    QTest::newRow("a line with a weekday cuts, without one not")
        << separator + "From me on Mon day\nFrom you\nFrom it on Mon\nFrom he on Mond ay\n"
        << Records{{0, 34, "", ""}, {34, 62, "", ""}};
    QTest::newRow("escaped and indented lines cut nothing")
        << separator + ">From x Mon \n From x Mon \nfrom x Mon \n"
        << Records{{0, 72, "", ""}};
    QTest::newRow("headers may stand in the body") << separator + "\ntext\nfrom: a\nSUBJECT: b\n"
                                                   << Records{{0, 59, "from: a", "SUBJECT: b\n"}};
    QTest::newRow("first one counts") << separator + "From: a\nFrom: b\nSubject: c\nSubject: d\n"
                                      << Records{{0, 72, "a", "c\n"}};
    QTest::newRow("folded sender and subject") << separator + "From: a\n <b@c>\nSubject: d\n\te\nTo: f\n"
                                               << Records{{0, 34 + 15 + 14 + 6, "a", "d\n\te\n"}};
    QTest::newRow("sender on the fold") << separator + "From:\n a@b\nx\n" << Records{{0, 47, "From:", ""}};
    QTest::newRow("file ends in a fold") << separator + "Subject: a\n b" << Records{{0, 47, "", "a\n b"}};
    QTest::newRow("fold ended by a separator") << separator + "Subject: a\n b\n" + separator + "x\n"
                                               << Records{{0, 48, "", "a\n b\n"}, {48, 36, "", ""}};
    QTest::newRow("encoded subject over two lines")
        << separator + "Subject: =?UTF-8?Q?caf=C3=A9?=\n =?UTF-8?B?IG5vaXI=?=\n\n"
        << Records{{0, 34 + 31 + 23, "", QString::fromUtf8("café noir")}};
    QTest::newRow("CR LF: offsets lie behind by one")
        << QByteArray("From a Mon x\r\nFrom: b\r\n\r\nc\r\nFrom d Mon x\r\nSubject: e\r\n")
        << Records{{0, 29, "b", ""}, {29, 25, "", "e\n"}};
    QTest::newRow("a separator beyond ASCII is counted in characters")
        << separator + "\nFrom \xC3\xA9 Mon x\nend\n"
        << Records{{0, 36, "", ""}, {36, 17, "", ""}};
    QTest::newRow("byte order mark before a header") << separator + "\xEF\xBB\xBFSubject: a\nend\n"
                                                     << Records{{0, 52, "", "a\n"}};
    QTest::newRow("marks within a value stay")
        << separator + "From: \xEF\xBF\xBE"
                       "A\nSubject: =?x?Q?=EF=BB=BF=EF=BB=BFx?=\n"
        << Records{{0, 34 + 11 + 37, QString(QChar(0xFFFE)) + "A", QString(QChar(0xFEFF)) + "x"}};
    QTest::newRow("zero bytes end a line's text")
        << separator + QByteArray("Subject: a\0b\nFrom x\0 Mon \nend\n", 30) << Records{{0, 64, "", "a"}};
}

void TestMboxIndex::records()
{
    QFETCH(QByteArray, file);
    QFETCH(QVector<Found>, found);
    QTemporaryDir folder;
    writeFiles(folder.path(), {{"box", file}});
    GetAllFieldsForTree(folder.filePath("box"));
    QCOMPARE(shown(recordsInMemory()), shown(found));
    QCOMPARE(messagesOfPath(folder.filePath("box")).size(), static_cast<size_t>(found.size()));
}

// The reader's block is 256 KiB: a separator, a header and a fold pass over its edge byte by byte.
void TestMboxIndex::aSeamAnywhere()
{
    const QByteArray second = separator + "From: a@b\r\nSubject: x\n y\n\nend\n";
    QTemporaryDir folder;
    for (int before = 0; before <= second.size() + 2; ++before) {
        const QByteArray filler(256 * 1024 - before - separator.size() - 1, 'x');
        writeFiles(folder.path(), {{"box", separator + filler + '\n' + second}});
        GetAllFieldsForTree(folder.filePath("box"));
        const qint64 cut = 256 * 1024 - before;
        const QVector<Found> expected{{0, cut, "", ""}, {cut, second.size(), "a@b", "x\n y\n"}};
        QCOMPARE(shown(recordsInMemory()), shown(expected));
        CleanLinkedList();
    }
}

void TestMboxIndex::secondFileGoesOnInTheEmptyRecord()
{
    QTemporaryDir folder;
    writeFiles(folder.path(), {{"a", separator + "From: a\n"}, {"b", separator + "From: b\n"}});
    QVERIFY(GetAllFieldsForTree(folder.filePath("a")));
    QVERIFY(GetAllFieldsForTree(folder.filePath("b")));
    QVERIFY(!GetAllFieldsForTree(folder.filePath("missing")));
    QVERIFY(!GetAllFieldsForTree(folder.path()));
    const QVector<Found> expected{{0, 42, "a", ""}, {0, 42, "b", ""}};
    QCOMPARE(shown(recordsInMemory()), shown(expected));
    QVERIFY(TmpMboxMbxPtrEnd->path[0] == 0);
    QCOMPARE(messagesOfPath(folder.filePath("b")).size(), size_t(1));
}

void TestMboxIndex::fieldsAreCutAtTheirWidth()
{
    QTemporaryDir folder;
    writeFiles(folder.path(), {{"box", separator + "Subject: " + QByteArray(300, 's') +
                                           "\nFrom: " + QByteArray(254, 'f') + "\n"}});
    GetAllFieldsForTree(folder.filePath("box"));
    QCOMPARE(fieldText(TmpMboxMbxPtrStart->subject), QString(254, 's'));
    QCOMPARE(fieldText(TmpMboxMbxPtrStart->from), QString(254, 'f'));
}

void TestMboxIndex::progressComesForEachPercent()
{
    QTemporaryDir folder;
    QByteArray file;
    for (int i = 0; i < 20000; ++i)
        file += separator + "Subject: x\n\ntext\n";
    writeFiles(folder.path(), {{"box", file}});
    int calls = 0;
    qint64 last = -1;
    GetAllFieldsForTree(folder.filePath("box"), [&](qint64 done, qint64 size) {
        ++calls;
        QVERIFY(done > last && done <= size);
        last = done;
    });
    QVERIFY2(calls >= 90 && calls <= 102, qPrintable(QString::number(calls)));
}

QTEST_APPLESS_MAIN(TestMboxIndex)
#include "test_mbox_index.moc"
