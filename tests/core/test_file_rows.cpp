#include "browse/message_rows.h"

#include "data_table.h"
#include "store_files.h"

class TestFileRows : public QObject
{
    Q_OBJECT

private slots:
    void text_data()
    {
        const DataTable row([this](const QByteArray &file, const QString &text) {
            const std::optional<MessageRow> read = rowOf(file);
            QVERIFY(read && read->offset.isEmpty() && read->length.isEmpty());
            QCOMPARE(read->text, text);
            QCOMPARE(read->path, m_dir.filePath("m.eml"));
        });
        row("plain: the sender keeps its line feed", "From: A <a@b>\nSubject: Hi\n\n", "A <a@b>\n\nHi");
        row("CR LF", "Subject: Hi\r\nFrom: A\r\n\r\n", "A\n\nHi");
        row("byte count and mark in front", "77\n\357\273\277From: A\nSubject: Hi", "A\n\nHi");
        row("folded", "From: =?UTF-8?Q?J=C3=B6?=\n =?UTF-8?Q?rg?=\nSubject: one\n two\n\tthree\nX: y\n",
            "J\xC3\xB6rg\none\n two\n\tthree");
        row("a fold with a header's name", "From: A\n Subject: no\nSubject: yes\n", "A\n Subject: no\n\nyes");
        row("any case; the sender's name in capitals stays", "FROM: A\nsubject: Hi\n", "FROM: A\n\nHi");
        row("first of each, in the body", "To: x\n\nSubject: a\nFrom: b\n\nFrom: c\nSubject: d\n", "b\n\na");
        row("not at a line's start", "X-From: no\n >From: no\nSubject: yes\nFrom: me\n", "me\n\nyes");
        row("only a subject", "Subject: Hi\n\nbody\n", "\nHi");
        row("only a sender", "From: A\n\nbody\n", "A\n");
        row("zero byte stays", QByteArray("From: A\0B\nSubject: x\n", 21),
            QString("A") + QChar(0) + "B\n\nx");
    }

    void text() { checkRow(); }

    void noRow()
    {
        bool opened = false;
        for (const char *file : {"", "To: x\n\nfrom me\nsubject\n", "Fro"})
            QVERIFY2(!rowOf(file, &opened) && opened, file);
        QVERIFY(!rowOfMessageFile(m_dir.filePath("gone.eml"), &opened) && !opened);
    }

    // Headers behind and across the blocks in which a file is read.
    void headersAcrossBlocks()
    {
        for (int before = 8180; before < 8200; ++before) {
            const QByteArray filler = "X: " + QByteArray(before, 'y') + "\n";
            const std::optional<MessageRow> row = rowOf(filler + "From: A\n b\nSubject: c\n d\n");
            QVERIFY(row);
            QCOMPARE(row->text, QString("A\n b\n\nc\n d"));
        }
    }

    void listed_data()
    {
        const DataTable row([](const QString &file, const QString &folder, bool listed) {
            QCOMPARE(isListed(file, folder), listed);
        });
        row("mailbox", "/s/a.mbox/Messages/1.emlx", "/s/a.mbox", true);
        row("its own directory", "/s/a.mbox/Messages/1.emlx", "/s/a.mbox/Messages", true);
        row("a directory above", "/s/x/y/1.eml", "/s/x", false);
        row("nested: the last mailbox", "/s/a.mbox/b.mbox/1.emlx", "/s/a.mbox", false);
        row("imap before the others", "/s/a.imapmbox/b.mailbox/c.mbox/1.emlx", "/s/a.imapmbox", true);
        row("mailbox before mbox", "/s/a.mailbox/c.mbox/1.emlx", "/s/a.mailbox", true);
        row("directory below a longer mailbox", "/s/a.mailbox/c.mbox/1.emlx", "/s/a.mailbox/c.mbox", true);
        row("case counts", "/s/A.mbox/1.emlx", "/s/a.mbox", false);
        row("no mailbox and no folder", "/1.eml", "", true);
        row("part", "/s/a.mbox/1.2.emlxpart", "/s/a.mbox", false);
        row("dat in a folder's name", "/s/x.data/1.eml", "/s/x.data", false);
        row("MacOS anywhere", "/s/MacOS things/1.eml", "/s/MacOS things", false);
        row("macos", "/s/macos/1.eml", "/s/macos", true);
    }

    void listed() { checkRow(); }

    void filesBelowFolder()
    {
        QTemporaryDir dir;
        writeFiles(dir.path(), {{"a/b/1.eml", ""}, {".hidden/2", ""}, {"3 ", ""}});
        static int folders;
        folders = 0;
        QStringList files = filesBelow(dir.path(), [] { ++folders; });
        files.sort();
        QCOMPARE(files,
                 QStringList({dir.filePath(".hidden/2"), dir.filePath("3"), dir.filePath("a/b/1.eml")}));
        QCOMPARE(folders, 3);
        QVERIFY(filesBelow(dir.filePath("missing")).isEmpty());
        QVERIFY(filesBelow(QString()).isEmpty());
    }

private:
    std::optional<MessageRow> rowOf(const QByteArray &file, bool *opened = nullptr)
    {
        writeFiles(m_dir.path(), {{"m.eml", file}});
        return rowOfMessageFile(m_dir.filePath("m.eml"), opened);
    }

    QTemporaryDir m_dir;
};

QTEST_APPLESS_MAIN(TestFileRows)
#include "test_file_rows.moc"
