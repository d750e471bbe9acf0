#include "browse/body_text.h"
#include "browse/preview.h"

#include "data_table.h"
#include "store_files.h"

namespace
{
PreviewText shown(const QByteArray &bytes, const PreviewDialect &dialect)
{
    // A block of exactly the message's size, so that a read beyond it is noticed.
    const std::vector<char> block(bytes.begin(), bytes.end());
    return previewOfBytes({block.data(), block.size()}, dialect);
}

QStringList headerOf(const PreviewText &preview)
{
    QStringList lines;
    for (const HeaderLine &line : preview.header)
        lines.append(line.text);
    return lines;
}

// A closed web view is a null text.
QString htmlOf(const PreviewText &preview)
{
    return preview.html.value_or(QString());
}

QByteArray crLf(QByteArray text)
{
    return text.replace('\n', "\r\n");
}

const QString closed;
const QByteArray filler = "X-Filler: long enough for the walk\n";
} // namespace

class TestPreview : public QObject
{
    Q_OBJECT

private slots:
    void header_data()
    {
        const DataTable row(
            [](const QByteArray &message, const QStringList &file, const QStringList &mailbox) {
                QCOMPARE(headerOf(shown(message, filePreview)), file);
                QCOMPARE(headerOf(shown(message, mailboxPreview)), mailbox);
            });

        const auto both = [&](const char *name, const QByteArray &message, const QStringList &lines) {
            row(name, message, lines, lines);
        };
        both("empty", "", {});
        both("23 bytes", "\nTo: a\n1234567890123456", {});
        both("24 bytes", "\nTo: a\n12345678901234567", {"To: a\n"});
        both("order of the pane, not of the message",
             "\nBcc: b@x\nDate: 5 Mar 2012 14:07:09\nSubject: s\nCc: c@x\nTo: t@x\nX: y\n" + filler,
             {"To: t@x\n", "Cc:  c@x\n", "s\n", "Date: 05 Mar 2012 02:07:09 PM", "\nBcc:  b@x\n"});
        both("first line is not seen", "To: t@x\nX: y\n" + filler, {});
        both("first of two", "\nTo: a@x\nTo: b@x\n" + filler, {"To: a@x\n"});
        both("folds", "\nTo: a@x,\n\tb@x,\n c@x\nX: y\n" + filler, {"To: a@x,\n\tb@x,\n c@x\n"});
        both("headers of a later part", filler + "\n\nSubject: of the body\n" + filler, {"of the body\n"});
        both("zero byte in a value", QByteArray("\nTo: a\0b\nX: y\n", 14) + filler, {"To: a"});
        both("behind a zero byte nothing is read",
             QByteArray("\0\nTo: a\nCc: b\nSubject: s\nDate: 5 Mar 2012 14:07:09\n", 51) + filler,
             {"To:", "Cc: ", "", ""});
        both("no date at all", "\nDate:\n" + filler, {""});
        both("blank date", "\nDate: \n" + filler, {"Date: "});
        both("date of a CR", "\nDate:\r\n" + filler, {"Date: "});
        both("subject loses its CR", "\r\nSubject: a\r\n b\r\nTo: t\r\n" + filler, {"To: t\r\n", "a\n b\n"});

        row("sender", "\nFrom: Ann\n <a@x>\nX: y\n" + filler, {"Ann\n <a@x>\n"}, {"Ann"});
        row("CC: the last one counts", "\nCC: a\nCC: b\n" + filler, {"CC:  b\n"}, {});
        row("recipients below the text's type",
            "\nSubject: s\nContent-Type: text/plain;\nTo: t@x\nCc: c@x\nFrom: f\n\n" + filler, {"f\n", "s\n"},
            {"f", "To: t@x\n", "Cc:  c@x\n", "s\n"});
        row("names in quotation marks",
            filler + "a; filename=\"one.pdf\"\nb; filename=\"two.pdf\"\n" + filler,
            {"\nAttachments: one.pdf\ntwo.pdf"}, {"\nAttachments: one.pdf, two.pdf"});
        row("both kinds of names", filler + "a; filename=\"one\"\nb; filename=two; x=y\n" + filler,
            {"\nAttachments: one\ntwo; x=y\n"}, {"\nAttachments: one, two; x", "\nAttachments: one, two; x"});
        row("quoted name on a fold", filler + "a; filename=\n \"one\"\nX: y\n" + filler,
            {"\nAttachments: one"}, {"\nAttachments: \n"});
        row("empty name", filler + "a; filename=\"\"\n" + filler, {"\nAttachments: "}, {"\nAttachments: "});
        row("empty name and another", filler + "a; filename=\"\"\nb; filename=\"two\"\n" + filler,
            {"\nAttachments: two"}, {"\nAttachments: , two"});
        row("name behind the walk's end", filler + filler + "filename=\"one\"\n", {"\nAttachments: one"}, {});
        row("name in a text", filler + "Content-Type: text/html; filename=\"one\"\n\n" + filler, {}, {});
        row("name behind a zero byte", QByteArray("\0", 1) + filler + "filename=\"one\"\n" + filler,
            {"\nAttachments: \"one\"\n"}, {"\nAttachments: one"});
    }

    void header() { checkRow(); }

    void senderIsBold()
    {
        const PreviewText preview = shown("\nTo: t\nFrom: f\n" + filler, mailboxPreview);
        QCOMPARE(preview.header.size(), size_t(2));
        QVERIFY(preview.header[0].bold);
        QVERIFY(!preview.header[1].bold);
    }

    // Which section is the text, and where it begins.
    void section_data()
    {
        const DataTable row([](const QByteArray &message, const QString &file, const QString &mailbox) {
            QCOMPARE(htmlOf(shown(filler + message, filePreview)), file);
            QCOMPARE(htmlOf(shown(filler + message, mailboxPreview)), mailbox);
        });

        const auto both = [&](const char *name, const QByteArray &message, const QString &html) {
            row(name, message, html, html);
        };
        const QByteArray plain = "Content-Type: text/plain;\n\nplain one\n";
        both("no section", "\nbody\n" + filler, closed);
        both("no semicolon", "Content-Type: text/plain\n\nbody\n" + filler, closed);
        both("capitals", "CONTENT-TYPE: text/html\n\nbody\n" + filler, closed);
        both("no blank line", "Content-Type: text/html\nbody\n" + filler, closed);
        both("nothing behind the blank line", "Content-Type: text/html\n\n", "\n\n");
        both("HTML behind", plain + "\n--b\nContent-Type: text/html\n\n<b>h</b>\n\n--b--\n", "\n\n<b>h</b>");
        both("blank line of CR LF", crLf("Content-Type: text/html\n\nh\n"), "\r\n\r\nh\r\n");
        both("not cut", plain + "\n--b--\n" + filler, QString::fromUtf8("\n\nplain one\n\n--b--\n" + filler));

        row("two plain", plain + "\n--b\nContent-Type: text/plain;\n\ntwo\n\n--b--\n",
            "\n\nplain one\n\n--b\nContent-Type: text/plain;\n\ntwo", "\n\ntwo\n\n--b--\n");
        row("HTML then plain", "Content-Type: text/html\n\nh\n\n--b\n" + plain + "\n--b--\n",
            "\n\nh\n\n--b\nContent-Type: text/plain;\n\nplain one", "\n\nplain one");
        row("application first", "Content-Type: application/pdf\n\n--b\n" + plain + filler, closed,
            QString::fromUtf8("\n\nplain one\n" + filler));
        row("application behind plain", plain + "\n--b\nContent-Type: application/pdf\n\nJVBERi0x\n" + filler,
            "\n\nplain one", "\n\nplain one\n\n--b\n");
        for (const char *type : {"Content-type: text/plain;", "Content-Type: Text/Plain;",
                                 "Content-Type: TEXT/HTML\n", "Content-Type: text\r\n"}) {
            const QByteArray rest = QByteArray(type).endsWith('\n') ? "X: y\n\nbody\n" : "\n\nbody\n";
            row(type, QByteArray(type) + rest + filler, QString::fromUtf8("\n\nbody\n" + filler), closed);
        }
        for (const char *type :
             {"Content-type: text/html;", "Content-Type: TEXT/HTML;", "Content-Type: TEXT/PLAIN;"})
            both(type, QByteArray(type) + "\n\nbody\n" + filler, QString::fromUtf8("\n\nbody\n" + filler));
        row("capitals, HTML", "Content-Type: text/html\n\nh\n\n--b\nContent-Type: TEXT/PLAIN;\n\np\n",
            "\n\nh", "\n\nh");
    }

    void section() { checkRow(); }

    // Transfer encoding and charset.
    void decoding_data()
    {
        const DataTable row(
            [](const QByteArray &head, const QByteArray &body, const QString &file, const QString &mailbox) {
                const QByteArray end = head.endsWith("\r\n") ? "\r\n" : "\n";
                QCOMPARE(htmlOf(shown(filler + head + end + body, filePreview)), file);
                QCOMPARE(htmlOf(shown(filler + head + end + body, mailboxPreview)), mailbox);
            });

        const auto both = [&](const char *name, const QByteArray &head, const QByteArray &body,
                              const char *text) {
            row(name, head, body, QString::fromUtf8(text), QString::fromUtf8(text));
        };
        const QByteArray plain = "Content-Type: text/plain; charset=";
        const QByteArray html = "Content-Type: text/html; charset=";
        const QByteArray utf8 = plain + "\"utf-8\"\n";
        const QByteArray encoding = "Content-Transfer-Encoding: ";
        const QByteArray quotedPrintable = encoding + "quoted-printable\n";
        const QByteArray base64 = encoding + "base64\n";

        both("8bit is Latin-1", plain + "utf-8\n", "\xC3\xA9\n", "\n\nÃ©\n");
        both("up to a zero byte", plain + "utf-8\n", QByteArray("a\0b\n", 4), "\n\na");
        both("lines are joined", plain + "utf-8\n" + quotedPrintable, "a=\nb\nc\n", "abc");
        both("last line without an end", plain + "utf-8\n" + quotedPrintable, "a\nbc", "ab");
        both("QP, unknown charset", plain + "\"nothing\"\n" + quotedPrintable, "=C3=A9\n", "é");
        both("QP, windows-1252", html + "windows-1252\n" + quotedPrintable, "=80\n", "€");
        both("QP, Korean", plain + "\"ks_c_5601-1987\"\n" + quotedPrintable, "=C7=D1=B1=DB\n", "한글");
        both("QP, Korean in HTML", html + "ks_c_5601-1987\n" + quotedPrintable, "=C7=D1=B1=DB\n", "한글");
        both("base64, UTF-8 in quotation marks", utf8 + base64, "w6k=\n", "é");
        both("base64, UTF-8 at the line's end", plain + "utf-8\n" + base64, "w6k=\n", "é");
        both("base64, capitals, plain", plain + "\"UTF-8\"\n" + base64, "w6k=\n", "Ã©");
        both("base64, other parameter behind", plain + "utf-8; format=flowed\n" + base64, "w6k=\n", "Ã©");
        both("base64 over lines, CR LF", crLf(plain + "utf-8\n" + base64), crLf("QUJD\nREVG\n"), "ABCDEF");

        row("base64, capitals, HTML", html + "\"UTF-8\"\n" + base64, "w6k=\n", "é", "Ã©");
        row("base64, line's end, HTML", html + "utf-8\n" + base64, "w6k=\n", "é", "Ã©");
        row("base64, CR LF, HTML", crLf(html + "utf-8\n" + base64), "w6k=\r\n", "Ã©", "Ã©");
        row("base64 to a boundary", html + "\"utf-8\"\n" + base64, "QUJD\nREVG\n\n--b--\n", "ABCDEF",
            "ABCDEF");
        row("base64 in HTML, blank line, no boundary", crLf(html + "\"utf-8\"\n" + base64),
            "QUJD\r\n\r\nREVG\r\n", "ABCDEF", "ABC");
        for (const char *name : {"Base64", "BASE64"})
            row(name, utf8 + encoding + name + '\n', "QUJD\n", "ABC", "\n\nQUJD\n");
        for (const char *name : {"Quoted-printable", "QUOTED-PRINTABLE", "Quoted-Printable"})
            row(name, utf8 + encoding + name + '\n', "=41\n", "A", "\n\n=41\n");
        row("second header", utf8 + "Content-transfer-encoding: base64\n", "QUJD\n", "ABC", "\n\nQUJD\n");
        row("third header", utf8 + "content-transfer-encoding: base64\n", "QUJD\n", "\n\nQUJD\n", "ABC");
        row("charset above the text", "X: charset=\"ISO-8859-1\"\n" + plain.left(26) + "\n" + quotedPrintable,
            "=E9\n", "é", QString(QChar(0xFFFD)));
        row("encoding of a later part", utf8, "a\nb\n" + quotedPrintable,
            "abContent-Transfer-Encoding: quoted-printable", "\n\na\nb\n" + quotedPrintable);
        // The lines read are counted without their CR, so more of them are read than stand before the cut.
        row("QP in HTML, CR LF, reads beyond the cut", crLf(html + "utf-8\n" + quotedPrintable),
            crLf("a\nb\nc\n\n--b--\n"), "abc--b--", "abc--b--");
    }

    void decoding() { checkRow(); }

    // What stands behind the text, and how much of the body is left: from its first line to the second.
    void textEnd_data()
    {
        const DataTable table([](const QByteArray &line, bool file, bool mailbox) {
            const QByteArray body = "\r\ntext\r\n" + line;
            QCOMPARE(int(endOfText(viewOf(body), filePreview)), file ? 8 : body.size());
            QCOMPARE(int(endOfText(viewOf(body), mailboxPreview)), mailbox ? 8 : body.size());
        });

        const auto row = [&](const QByteArray &line, bool file, bool mailbox) {
            table(line, line, file, mailbox);
        };
        row("Content-Type: text/x-vcard;\n", true, true);
        row("Content-Type: application/pdf\n", true, true);
        row("Content-Disposition: attachment;\n", true, true);
        row("Content-Disposition: Inline;\r\n", true, true);
        row("Content-Disposition: attachment; filename=a\n", false, false);
        row("Content-Disposition: attachment;", false, false);
        row("Content-Type: text/x; name=\"a\"\n", true, true);
        row("Content-Type: image/png\n", true, true);
        row("content-type: text/placeholder;\n", true, true);
        row("Content-Type: message/rfc822\n", true, false);
        row("content-type: image/png\n", false, false);
        row(" Content-Type: image/png\n", false, false);
        row(QByteArray("Content-Type: \0image/png\n", 25), false, false);
    }

    void textEnd() { checkRow(); }

    // Every pattern cut off at every byte.
    void everyPrefix()
    {
        const QByteArray message =
            "X: charset=\n\nFrom: \"=?UTF-8?B?QQ==?=\" <a>\nTo: =?UTF-8?Q?=\nSubject: =?UTF-8?Q?a?=\n "
            "=?UTF-8?Q?=4\n"
            "Cc: c\nCC: d\nBcc: e\nDate: Mon, 5 Mar 2012 14:07:09 +0000\nContent-Transfer-Encoding: BASE64\n"
            "filename=\"a\"\nfilename=b\nContent-Type: text/plain; "
            "charset=\"utf-8\n\na=\r\n=C3\n\n--b\nContent-Type: "
            "text/html\nContent-Transfer-Encoding: base64\r\n\r\nQUJD\r\n\r\nContent-Type: application/";
        for (int size = 0; size <= message.size(); ++size) {
            shown(message.left(size), filePreview);
            shown(message.left(size), mailboxPreview);
        }
    }

    // The cost of a message must not grow with the square of its size; the names shown have a limit.
    void manyNamesOnOneLine()
    {
        const QByteArray marks = QByteArray("filename=charset").repeated(100000);
        const QByteArray name(1000, 'n');
        for (const QByteArray &end : {QByteArray("\n"), QByteArray("\"" + name + "\"\n")}) {
            for (const PreviewDialect *dialect : {&filePreview, &mailboxPreview}) {
                const PreviewText preview = shown(filler + marks + end + filler, *dialect);
                QVERIFY(!preview.header.empty());
                QVERIFY(preview.header[0].text.size() < 3 * 1024 * 1024);
            }
        }
        const PreviewText preview =
            shown("\nSubject: =?UTF-8?Q?" + QByteArray("?=").repeated(500000) + "\n" + filler, filePreview);
        QCOMPARE(headerOf(preview), QStringList(""));
    }

    // Offset and length come from the list's texts, and the file may not be what it was.
    void spans_data()
    {
        const DataTable row([](const QString &offset, const QString &length, const QStringList &lines) {
            QTemporaryDir dir;
            const QByteArray padding(40 - 8, 'x');
            writeFiles(dir.path(),
                       {{"box", "\nTo: a\n\n" + padding.left(31) + "\n" + "\nTo: b\n\n" + padding}});
            QCOMPARE(headerOf(previewOfMailboxMessage(dir.filePath("box"), offset, length)), lines);
            QVERIFY(previewOfMailboxMessage(dir.filePath("gone"), offset, length).header.empty());
            QVERIFY(previewOfFile(dir.path()).header.empty());
        });

        const QStringList first{"To: a\n"};
        row("whole", "0", "40", first);
        row("second", "40", "40", {"To: b\n"});
        row("length beyond the end", "40", "9223372036854775807", {"To: b\n"});
        row("offset beyond the end", "9223372036854775807", "40", {});
        row("negative offset", "-9223372036854775808", "40", {});
        row("negative length", "0", "-1", {});
        row("no numbers", "", "x", {});
    }

    void spans() { checkRow(); }
};

QTEST_APPLESS_MAIN(TestPreview)
#include "test_preview.moc"
