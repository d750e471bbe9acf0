#include "app/olm_records.h"
#include "app/problem_log.h"
#include "app/shared_state.h"
#include "browse/message_rows.h"
#include "browse/olm_preview.h"
#include "browse/preview.h"
#include "olm_files.h"
#include "scan/message_saving_thread.h"
#include "store_files.h"
#include "worker_run.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
QStringList shown(const std::optional<PreviewText> &preview)
{
    QStringList lines;
    for (const HeaderLine &line : preview ? preview->header : std::vector<HeaderLine>())
        lines.append((line.bold ? "bold:" : "") + line.text);
    return lines;
}

QByteArray from(const QByteArray &items)
{
    return olmElement("OPFMessageCopyFromAddresses", items);
}
} // namespace

class TestOlmBrowse : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void ends_data();
    void ends();
    void foldersAndParents();
    void manyFoldersOfOneName();
    void stopInAScan();
    void secondScanForgetsTheFirst();
    void rows();
    void preview();
    void previewOfBodyless();
    void html_data();
    void html();

private:
    void scan(const QByteArray &archive);

    QScopedPointer<QTemporaryDir> m_dir;
    QMessageSavingThread m_thread;
};

void TestOlmBrowse::init()
{
    m_dir.reset(new QTemporaryDir);
    m_selectedFile = m_dir->filePath("backup.olm");
    m_thread.m_mailClientIndex = 5;
    takeProblems();
}

void TestOlmBrowse::scan(const QByteArray &archive)
{
    writeFiles(m_dir->path(), {{"backup.olm", archive}});
    QVERIFY(runToEnd(&m_thread));
}

void TestOlmBrowse::ends_data()
{
    QTest::addColumn<QByteArray>("archive"); // null: no file
    QTest::addColumn<int>("finished");
    QTest::addColumn<int>("nothing");
    QTest::addColumn<int>("folders");
    QTest::newRow("no file") << QByteArray() << 0 << 0 << 0;
    QTest::newRow("empty") << QByteArray("") << 0 << 1 << 0;
    QTest::newRow("no archive") << QByteArray("<emails x></emails>") << 0 << 1 << 0;
    QTest::newRow("folders without messages") << olmMessageEntry("a/b", "<emails >") << 0 << 1 << 2;
    QTest::newRow("messages without a folder") << olmXml({""}) << 1 << 0 << 0;
    QTest::newRow("messages") << olmMessageEntry("a/b", olmXml({""})) << 1 << 0 << 2;
}

void TestOlmBrowse::ends()
{
    QFETCH(QByteArray, archive);
    QSignalSpy finished(&m_thread, &QMessageSavingThread::FinishScaning);
    QSignalSpy nothing(&m_thread, &QMessageSavingThread::NoDataIntoFile);
    QSignalSpy hidden(&m_thread, &QMessageSavingThread::ProgressDailogHide);
    QSignalSpy folders(&m_thread, &QMessageSavingThread::MakeTreeWidget);
    if (archive.isNull()) {
        QVERIFY(runToEnd(&m_thread));
    } else {
        scan(archive);
    }
    QTEST(finished.size(), "finished");
    QTEST(nothing.size(), "nothing");
    QTEST(folders.size(), "folders");
    QCOMPARE(hidden.size(), archive.isNull() ? 0 : 1);
    QCOMPARE(hasProblems(), archive.isNull());
    QVERIFY(!bStopFlag);
}

void TestOlmBrowse::foldersAndParents()
{
    const qint64 before = PID;
    scan(olmMessageEntry("a/b", olmXml({"", ""})) + olmMessageEntry("b", olmXml({""})) +
         olmMessageEntry("a", olmXml({""})) + olmXml({""}) +
         olmMessageEntry(QByteArray(1024, 'x'), olmXml({""})));
    std::vector<qint64> parents;
    QStringList paths;
    for (const MailMLRC *record = TmpMlrcPtrStart; record; record = record->pNext) {
        parents.push_back(record->llParentId == noFolderId ? -1
                                                           : qMax<qint64>(0, record->llParentId - before));
        paths.append(record->szFolderPath.text());
    }
    // a, a/b, b, the long one; a second message of an entry has no folder.
    QCOMPARE(parents, (std::vector<qint64>{2, 0, 3, 1, -1, 4}));
    QCOMPARE(paths, QStringList({"a/b", "a/b", "b", "a", "", ""}));
    QCOMPARE(objMapFID_PID.value(before + 2), before + 1);
    QCOMPARE(objMapFID_PID.value(before + 3), llRootId);
    QVERIFY(MapLeftTreePath.isEmpty());
}

// The same names over and over: no search through all of them for each.
void TestOlmBrowse::manyFoldersOfOneName()
{
    QByteArray archive;
    for (int i = 0; i < 300; ++i)
        archive += olmMessageEntry(QByteArray::number(i) + QByteArray("/a").repeated(300), "");
    scan(archive + olmMessageEntry(QByteArray("/").repeated(60000), ""));
    QCOMPARE(objMapFID_PID.size(), 300 * 301 + 1025);
}

void TestOlmBrowse::stopInAScan()
{
    const QByteArray entry = olmMessageEntry("a", olmXml({""}));
    QSignalSpy finished(&m_thread, &QMessageSavingThread::FinishScaning);
    QSignalSpy folders(&m_thread, &QMessageSavingThread::MakeTreeWidget);
    const auto stop = connect(
        &m_thread, &QMessageSavingThread::OnIndivisibleProgressvalue, &m_thread,
        [](double percent) { bStopFlag = percent >= 50; }, Qt::DirectConnection);
    scan(entry.repeated(4));
    disconnect(stop);
    QCOMPARE(finished.size(), 0);
    QCOMPARE(folders.size(), 1);
    QCOMPARE(MailItemCount, 2u);
}

void TestOlmBrowse::secondScanForgetsTheFirst()
{
    const QByteArray list = olmElement("OPFMessageCopyAttachmentList", olmAttachmentItem("n", "u"));
    scan(olmMessageEntry("a", olmXml({""})) + olmEntry({"left over", "x"}));
    QVERIFY(!tmpstrOrigPath.isEmpty());
    scan(olmEntry({"u", "x"}) + olmMessageEntry("a", olmXml({list})));
    QCOMPARE(MailItemCount, 1u);
    QCOMPARE(TmpMlrcPtrStart, TmpMlrcPtrEnd);
    QCOMPARE(TmpMlrcPtrStart->pAttachNames, QByteArray("n;"));
    QVERIFY(!hasProblems());
    scan(olmMessageEntry("a", olmXml({list})));
    QVERIFY(takeProblems().value(0).contains("1 message"));
}

void TestOlmBrowse::rows()
{
    const QByteArray subject = olmElement("OPFMessageCopySubject", "Re: x");
    scan(olmMessageEntry("a", olmXml({from(olmAddress("a@x", "Ann") + olmAddress("b@x", "Bob")) + subject})) +
         olmMessageEntry(
             "a", olmXml({from(olmAddress("a@x", "Ann")) + olmElement("OPFMessageCopyBody", "12345")})) +
         olmMessageEntry("b", olmXml({subject})) + olmMessageEntry("a", olmXml({from(olmAddress("c@x"))})));
    const std::vector<MessageRow> rows = olmRows(objMapName_FID.value("a"));
    QStringList texts;
    for (const MessageRow &row : rows)
        texts.append(row.text);
    QCOMPARE(texts, QStringList({"Bob\nRe: x", "Ann\nNo Subject", "\nNo Subject"}));
    QCOMPARE(rows[0].path + rows[0].offset + rows[0].length, QString("00"));
    QCOMPARE(rows[1].offset, QString::number(TmpMlrcPtrStart->pNext->llBodyOffset));
    QCOMPARE(rows[1].length, QString("5"));
    QVERIFY(olmRows(0).empty());
    QVERIFY(olmRows(noFolderId).empty());
}

void TestOlmBrowse::preview()
{
    const QByteArray copy = "OPFMessageCopy";
    const QByteArray lists =
        from(olmAddress("a@x", "Ann") + olmAddress("b@x", "Bob")) +
        olmElement(copy + "ToAddresses", olmAddress("c@x") + olmAddress("d@x")) +
        olmElement(copy + "CCAddresses", olmAddress("e@x")) +
        olmElement(copy + "BCCAddresses", olmAddress("f@x")) +
        olmElement(copy + "AttachmentList", olmAttachmentItem("1", "u") + olmAttachmentItem("2", "v"));
    const QByteArray message = lists + olmElement(copy + "Subject", "\xC3\xA9") +
                               olmElement(copy + "SentTime", "2014-11-12T01:08:04") +
                               olmElement(copy + "Body", "&lt;b&gt;\xC3\xA9");
    scan(olmEntry({"u", "1"}) + olmEntry({"v", "2"}) + olmMessageEntry("a", olmXml({message})));
    const MessageRow row = olmRows(objMapName_FID.value("a")).at(0);
    const auto preview = previewOfOlmMessage(row.offset, row.length);
    QCOMPARE(shown(preview),
             QStringList({"bold:\nb@x", "\nTo: c@x;d@x;", "\nCc: e@x;", QString::fromUtf8("\n\xC3\xA9"),
                          "\nDate: 12 Nov 2014 02:53:04 PM", "\nf@x;", "\nAttachments: 1\n2\n"}));
    QCOMPARE(*preview->html, QString::fromUtf8("<b>\xC3\xA9"));
    QVERIFY(!previewOfOlmMessage(row.offset, "0"));
    QVERIFY(!hasProblems());
    QVERIFY(QFile::remove(m_selectedFile));
    const auto gone = previewOfOlmMessage(row.offset, row.length);
    QCOMPARE(gone->header.size(), size_t(7));
    QCOMPARE(*gone->html, QString(""));
    QVERIFY(takeProblems().value(0).contains(m_selectedFile));
}

// They all have the same place, so that each shows the first.
void TestOlmBrowse::previewOfBodyless()
{
    scan(olmMessageEntry("a", olmXml({from(olmAddress("a@x"))})) +
         olmMessageEntry("a", olmXml({from(olmAddress("b@x"))})));
    const auto rows = olmRows(objMapName_FID.value("a"));
    const auto preview = previewOfOlmMessage(rows[1].offset, rows[1].length);
    QCOMPARE(shown(preview), QStringList{"bold:\na@x"});
    QCOMPARE(*preview->html, QString(""));
}

void TestOlmBrowse::html_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("html");
    QTest::newRow("plain") << QByteArray("a\nb") << "a\nb";
    QTest::newRow("escaped") << QByteArray("&lt;p&gt;a&nbsp;b &amp; &quot;") << "<p>a b & &quot;";
    QTest::newRow("escaped twice") << QByteArray("&amp;lt;b&amp;gt;") << "&lt;b>";
    QTest::newRow("blank escaped twice") << QByteArray("&amp;nbsp;") << " ";
    QTest::newRow("escaped three times") << QByteArray("&amp;amp;lt;") << "<";
    QTest::newRow("zero byte") << QByteArray("a\0b", 3) << "a";
    QTest::newRow("invalid") << QByteArray("a\xFF") << QString("a") + QChar(0xFFFD);
}

void TestOlmBrowse::html()
{
    QFETCH(QByteArray, body);
    QTEST(olmBodyHtml(body), "html");
}

QTEST_GUILESS_MAIN(TestOlmBrowse)
#include "test_olm_browse.moc"
