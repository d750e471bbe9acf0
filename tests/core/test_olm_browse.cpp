#include "app/olm_records.h"
#include "browse/message_rows.h"
#include "browse/olm_preview.h"
#include "browse/preview.h"
#include "data_table.h"
#include "olm_files.h"
#include "scan_run.h"

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
    return olmCopy("FromAddresses", items);
}
} // namespace

class TestOlmBrowse : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_run.reset(new ScanRun(5)); }

    void ends_data()
    {
        const DataTable row([this](const QByteArray &archive, const QStringList &ends, int folders) {
            scan(archive);
            QCOMPARE(m_run->ends, ends);
            QCOMPARE(m_run->folders, folders);
            QCOMPARE(takeProblems().size(), ends.contains("nothing") ? 1 : 0); // the reason
        });
        row("empty", "", {"hide", "nothing"}, 0);
        row("no archive", "<emails x></emails>", {"hide", "nothing"}, 0);
        row("folders without messages", olmMessageEntry("a/b", "<emails >"), {"hide", "nothing"}, 2);
        row("messages without a folder", olmXml({""}), {"hide", "finished"}, 0);
        row("messages", olmMail("a/b", ""), {"hide", "finished"}, 2);
    }

    void ends() { checkRow(); }

    void noFile()
    {
        QCOMPARE(m_run->scan(m_run->path("missing")), QStringList());
        QVERIFY(hasProblems());
    }

    void foldersAndParents()
    {
        const qint64 before = PID;
        scan(olmMessageEntry("a/b", olmXml({"", ""})) + olmMail("b", "") + olmMail("a", "") + olmXml({""}) +
             olmMail(QByteArray(1024, 'x'), ""));
        std::vector<qint64> parents;
        QStringList paths;
        for (const MailMLRC *record = TmpMlrcPtrStart; record; record = record->pNext) {
            parents.push_back(
                record->llParentId == noFolderId ? -1 : qMax<qint64>(0, record->llParentId - before));
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
    void manyFoldersOfOneName()
    {
        QByteArray archive;
        for (int i = 0; i < 300; ++i)
            archive += olmMessageEntry(QByteArray::number(i) + QByteArray("/a").repeated(300), "");
        scan(archive + olmMessageEntry(QByteArray("/").repeated(60000), ""));
        QCOMPARE(objMapFID_PID.size(), 300 * 301 + 1025);
    }

    void stopInAScan()
    {
        m_run->stopFrom = 40;
        scan(olmMail("a", "").repeated(4));
        QVERIFY(!m_run->ends.contains("finished"));
        QCOMPARE(m_run->folders, 1);
        QCOMPARE(MailItemCount, 2u);
    }

    void secondScanForgetsTheFirst()
    {
        const QByteArray list = olmCopy("AttachmentList", olmAttachmentItem("n", "u"));
        scan(olmMail("a", "") + olmEntry({"left over", "x"}));
        QVERIFY(!tmpstrOrigPath.isEmpty());
        scan(olmEntry({"u", "x"}) + olmMail("a", list));
        QCOMPARE(MailItemCount, 1u);
        QCOMPARE(TmpMlrcPtrStart, TmpMlrcPtrEnd);
        QCOMPARE(TmpMlrcPtrStart->pAttachNames, QByteArray("n;"));
        QVERIFY(!hasProblems());
        scan(olmMail("a", list));
        QVERIFY(takeProblems().value(0).contains("1 message"));
    }

    void rows()
    {
        const QByteArray subject = olmCopy("Subject", "Re: x");
        scan(olmMail("a", from(olmAddress("a@x", "Ann") + olmAddress("b@x", "Bob")) + subject) +
             olmMail("a", from(olmAddress("a@x", "Ann")) + olmCopy("Body", "12345")) + olmMail("b", subject) +
             olmMail("a", from(olmAddress("c@x"))));
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

    void preview()
    {
        const QByteArray lists =
            from(olmAddress("a@x", "Ann") + olmAddress("b@x", "Bob")) +
            olmCopy("ToAddresses", olmAddress("c@x") + olmAddress("d@x")) +
            olmCopy("CCAddresses", olmAddress("e@x")) + olmCopy("BCCAddresses", olmAddress("f@x")) +
            olmCopy("AttachmentList", olmAttachmentItem("1", "u") + olmAttachmentItem("2", "v"));
        const QByteArray message = lists + olmCopy("Subject", "\xC3\xA9") +
                                   olmCopy("SentTime", "2014-11-12T01:08:04") +
                                   olmCopy("Body", "&lt;b&gt;\xC3\xA9");
        scan(olmEntry({"u", "1"}) + olmEntry({"v", "2"}) + olmMail("a", message));
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
    void previewOfBodyless()
    {
        scan(olmMail("a", from(olmAddress("a@x"))) + olmMail("a", from(olmAddress("b@x"))));
        const auto rows = olmRows(objMapName_FID.value("a"));
        const auto preview = previewOfOlmMessage(rows[1].offset, rows[1].length);
        QCOMPARE(shown(preview), QStringList{"bold:\na@x"});
        QCOMPARE(*preview->html, QString(""));
    }

    void html_data()
    {
        const DataTable row(
            [](const QByteArray &body, const QString &html) { QCOMPARE(olmBodyHtml(body), html); });
        row("plain", "a\nb", "a\nb");
        row("escaped", "&lt;p&gt;a&nbsp;b &amp; &quot;", "<p>a b & &quot;");
        row("escaped twice", "&amp;lt;b&amp;gt;", "&lt;b>");
        row("blank escaped twice", "&amp;nbsp;", " ");
        row("escaped three times", "&amp;amp;lt;", "<");
        row("zero byte", QByteArray("a\0b", 3), "a");
        row("invalid", "a\xFF", QString("a") + QChar(0xFFFD));
    }

    void html() { checkRow(); }

private:
    void scan(const QByteArray &archive) { m_run->scanArchive(archive); }

    QScopedPointer<ScanRun> m_run;
};

QTEST_GUILESS_MAIN(TestOlmBrowse)
#include "test_olm_browse.moc"
