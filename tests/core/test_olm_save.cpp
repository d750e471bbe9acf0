#include "app/olm_records.h"
#include "browse/folder_tree.h"
#include "data_table.h"
#include "olm_files.h"
#include "save/mail_saving.h"
#include "save/olm_message.h"
#include "scan_run.h"

#include <QSignalSpy>

namespace
{
const OlmMarks marks = {QDateTime(QDate(2020, 2, 3), QTime(4, 5, 6)), "ID", 777};

QByteArray composed(const MailMLRC &record, const QByteArray &archive = QByteArray(), bool *whole = nullptr)
{
    ByteSource bytes = ByteSource::ofBytes(viewOf(archive));
    OlmComposer composer(&bytes);
    std::string written;
    const bool all = composer.compose(record, marks, [&](std::string_view piece) { written.append(piece); });
    if (whole)
        *whole = all;
    return QByteArray::fromStdString(written);
}

// A record whose attachments have these names, ids and so on, and lie at these places.
MailMLRC recordWithAttachments(const QByteArray &texts, const QByteArray &offsets, const QByteArray &sizes)
{
    MailMLRC record;
    record.iIsOutgoing = 9; // writes no date
    record.pAttachContentIds = record.pAttachContentTypes = record.pAttachNames = record.pAttachUrls = texts;
    record.pAttachOffsets = offsets;
    record.pAttachSizes = sizes;
    return record;
}
} // namespace

class TestOlmSave : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_run.reset(new ScanRun(5));
        saveDir = m_run->path("out");
    }

    // Without a date the present time, without a body two line feeds; nothing for a body below no length.
    void emptyRecord()
    {
        MailMLRC record;
        const QByteArray end = "X-MS-Has-Attach: \nMime-version: 1.1\n";
        const QByteArray dates =
            "From ???@??? Mon Feb 3 04:05:06 2020\nDate: Mon, 03 Feb 2020 04:05:06 +0530\n";
        QCOMPARE(composed(record), dates + end + "\n\n");
        record.iIsOutgoing = 9;
        record.llBodySize = -3;
        QCOMPARE(composed(record), end);
    }

    void html()
    {
        QCOMPARE(olmHtml("a\nb\r\nc\xE9"), QByteArray("<html>a b  c\xE9</html>"));
        QCOMPARE(olmHtml("&lt;HTML&gt;\n&lt;/Html&gt;\r\n"), QByteArray("<HTML>\n</Html>\r\n"));
        QCOMPARE(olmHtml("</html> <html x\n"), QByteArray("</html> <html x\n"));
        QCOMPARE(olmHtml("<html>\n"), QByteArray("<html><html> </html>"));
        // One pass gives what one replacement after the other gives.
        const QByteArray pieces[] = {"&", "amp;", "lt;", "gt;", "nbsp;", "&amp;", "a", ";"};
        for (int code = 0; code < 8 * 8 * 8 * 8 * 8; ++code) {
            QByteArray body;
            for (int rest = code, i = 0; i < 5; ++i, rest /= 8)
                body += pieces[rest % 8];
            QByteArray expected = body;
            expected.replace("&amp;gt;", ">").replace("&amp;lt;", "<").replace("&gt;", ">");
            expected.replace("&lt;", "<").replace("&amp;", "&").replace("&nbsp;", " ");
            QCOMPARE(olmHtml(body), "<html>" + expected + "</html>");
        }
    }

    void boundaries_data()
    {
        const DataTable row(
            [](const QString &id, const QByteArray &quote, const QByteArray &outer, const QByteArray &inner) {
                MailMLRC record;
                record.iIsOutgoing = 9;
                record.szMessageId.set(id);
                record.llBodySize = 1;
                QByteArray message =
                    "X-MS-Has-Attach: \nMime-version: 1.1\nContent-type: multipart/mixed;\n"
                    "\tboundary=@OUTER@\n\n--OUTER\nContent-type: multipart/alternative;\n"
                    "\tboundary=@INNER@\n\n--INNER\nContent-type: text/html;charset=\"UTF-8\"\n"
                    "Content-transfer-encoding: quoted-printable\n\n<html>x</html>\n\n--INNER--\n\n";
                message.replace("@", quote).replace("OUTER", outer).replace("INNER", inner);
                QCOMPARE(composed(record, "x"), (id.isEmpty() ? "" : "Message-ID: ID\n") + message);
            });
        row("generated", "0123456789abcdef", "", "0123456789abcdef", "0123456787779abcdef");
        row("in brackets", "<0123456789@x>", "\"", "0123456789@x", "0123456777789@x");
        row("short", "abc", "", "abc", "abc      777");
        row("empty", "", "", "", "         777");
    }

    void boundaries() { checkRow(); }

    void wholeMessage()
    {
        const QByteArray archive = "..bodyAAABB..";
        MailMLRC record = recordWithAttachments("u;v;", "6;9;", "3;2;");
        record.szMessageId.set("0123456789");
        record.llBodyOffset = 2;
        record.llBodySize = 4;
        record.pAttachContentIds = "no;b@x;";
        record.pAttachContentTypes = "text/plain;image/png;";
        record.pAttachNames = "a.txt;b.png;";
        const auto attachment = [](const QByteArray &type, const QByteArray &name) {
            return "--0123456789\nContent-type: " + type + "; name=\"" + name +
                   "\"\nContent-Description: " + name + "\nContent-Disposition: attachment; filename=\"" +
                   name + "\";\nContent-Transfer-Encoding: base64\n";
        };
        const QByteArray attached = attachment("text/plain", "a.txt") + "\nQUFB\n\n" +
                                    attachment("image/png", "b.png") +
                                    "Content-ID: <b@x>\n\nQkI=\n\n--0123456789--\n";
        const QByteArray start = "Message-ID: ID\nX-MS-Has-Attach: yes\nMime-version: 1.1\n";
        const QByteArray written = composed(record, archive);
        QVERIFY(written.startsWith(start + "Content-type: multipart/mixed;\n"));
        QVERIFY(written.endsWith("<html>body</html>\n\n--0123456787779--\n\n" + attached));
        // Without a body the attachments follow the header at once, and two line feeds close the message.
        record.llBodySize = 0;
        QCOMPARE(composed(record, archive), start + attached + "\n\n");
        // One list missing: no attachments.
        record.pAttachSizes = QByteArray();
        QCOMPARE(composed(record, archive), start + "\n\n");
    }

    // Data longer than what is read at a time are one line, as if encoded at once.
    void base64Pieces()
    {
        for (const int size : {196607, 196608, 196609, 393216, 500000}) {
            QByteArray archive(size, Qt::Uninitialized);
            for (int i = 0; i < size; ++i)
                archive[i] = static_cast<char>(i * 7 + i / 251);
            const MailMLRC record = recordWithAttachments("x;", "0;", QByteArray::number(size) + ';');
            QVERIFY(composed(record, archive).contains("\n\n" + archive.toBase64() + "\n\n----\n"));
        }
    }

    // A body ends where the archive ends; what is missing of an attachment are zero bytes.
    void shortArchive()
    {
        MailMLRC record = recordWithAttachments("x;y;", "0;7;", "5;5;");
        record.llBodyOffset = 8;
        record.llBodySize = 9;
        bool whole = true;
        const QByteArray written = composed(record, "0123456789", &whole);
        QVERIFY(written.contains("<html>89</html>"));
        QVERIFY(written.contains("\n\n" + QByteArray("789\0\0", 5).toBase64() + "\n\n"));
        QVERIFY(!whole);
        record.llBodySize = 0;
        whole = true;
        composed(record, "0123456789", &whole);
        QVERIFY(!whole);

        const QByteArray outside = composed(
            recordWithAttachments("1;2;3;4;", "0;-5;9223372036854775800;0;", "9223372036854775807;3;4;-9;"),
            "0123456789");
        QCOMPARE(outside.count("base64\nContent-ID"), 4);
        QVERIFY(outside.size() < 2000);
        // Two that lie in the archive and together are longer than it.
        const QByteArray both = composed(recordWithAttachments("1;2;", "0;0;", "8;3;"), "0123456789");
        QVERIFY(both.contains(QByteArray("01234567").toBase64() + '\n'));
        QVERIFY(!both.contains(QByteArray("012").toBase64() + '\n'));
    }

    void bundle()
    {
        scan(withSubject("Inbox", "1") + withSubject("Sent Items", "2") + withSubject("Inbox/Work", "3") +
             withSubject("Inbox", "4") + olmXml({"no folder"}));
        QCOMPARE(MailItemCount, 5u);
        save();
        QCOMPARE(ulCount.load(), quint64(4));
        QCOMPARE(mailboxes().keys(),
                 QStringList({"Inbox/Inbox.mbox", "Inbox/Work/Work.mbox", "Sent Items/Sent Items.mbox"}));
        const QByteArray inbox = mailboxes().value("Inbox/Inbox.mbox");
        QCOMPARE(inbox.count("From ???@???"), 2);
        QVERIFY(inbox.indexOf(QByteArray("1").toBase64()) < inbox.indexOf(QByteArray("4").toBase64()));
        QVERIFY(!hasProblems());
        // A folder that is not ticked writes nothing.
        QVERIFY(QDir(saveDir).removeRecursively());
        markFolder(llRootId, stateNotTicked);
        save();
        QVERIFY(mailboxes().isEmpty());
    }

    void hostileFolders()
    {
        QByteArray archive;
        for (const char *folder : {"../../../evil", "..", "/etc", ".", "a/../../../evil"})
            archive += withSubject(folder, "");
        scan(archive);
        save();
        QCOMPARE(readFiles(m_run->path()).size(), 6);
        QCOMPARE(mailboxes().size(), 5);
    }

    void stopBetweenMessages()
    {
        scan(entry + entry + entry + withSubject("Work", ""));
        QMailSaving saving;
        QSignalSpy finished(&saving, &QMailSaving::FinishSaving);
        connect(
            &saving, &QMailSaving::OnIndivisibleProgressvalue, &saving,
            [](double percent) { bStopFlag = percent >= 50; }, Qt::DirectConnection);
        QVERIFY(runToEnd(&saving));
        QCOMPARE(finished.size(), 0);
        QCOMPARE(mailboxes().keys(), QStringList{"Inbox/Inbox.mbox"});
        QVERIFY(mailboxes().first().count("<html>text</html>") == 2 &&
                mailboxes().first().endsWith("--\n\n"));
    }

    void vanishedAndShrunk()
    {
        scan(entry + entry);
        QVERIFY(QFile::resize(m_selectedFile, entry.size()));
        save();
        QVERIFY(readFiles(saveDir).isEmpty());
        QVERIFY(onlyProblem().contains("another file"));
        QVERIFY(QFile::remove(m_selectedFile));
        save();
        QVERIFY(readFiles(saveDir).isEmpty());
        QVERIFY(onlyProblem().contains(m_selectedFile + ": No such file"));
    }

private:
    static QByteArray withSubject(const QByteArray &folder, const QByteArray &subject)
    {
        return olmMail(folder, olmCopy("Subject", subject));
    }

    void scan(const QByteArray &archive)
    {
        m_run->scanArchive(archive);
        for (auto folder = objMapFID_PID.constBegin(); folder != objMapFID_PID.constEnd(); ++folder)
            addFolderRecord(folder.key(), folder.value());
        markFolder(llRootId, stateTicked);
        bForAppleMail = true;
    }

    void save()
    {
        QMailSaving save;
        QVERIFY(runToEnd(&save));
    }

    static FileMap mailboxes() { return readFiles(saveDir + "/Main Identity.mbox/Mail"); }

    QScopedPointer<ScanRun> m_run;
    const QByteArray entry = olmMail("Inbox", olmCopy("Body", "text"));
};

QTEST_GUILESS_MAIN(TestOlmSave)
#include "test_olm_save.moc"
