#include "data_table.h"
#include "store_files.h"
#include "text/line_reader.h"
#include "text/message_text.h"

namespace
{
const QByteArray mark = "\xEF\xBB\xBF"; // UTF-8's byte order mark
const char declaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";

QByteArray convert(const QString &path, LineRule rule, size_t blockBytes)
{
    LineReader reader(LineReader::Mode::Bytes);
    reader.setBlockBytes(blockBytes);
    if (!reader.open(path))
        return "can't be opened";
    MessageText text(rule);
    text.start();
    QByteArray out;
    for (auto lines = reader.readLines(); !lines.empty() && !text.hasEnded(); lines = reader.readLines()) {
        // In a block of its own, so that a sanitizer sees a byte read too many.
        const std::vector<char> exact(lines.begin(), lines.end());
        const auto piece = text.take({exact.data(), exact.size()});
        out.append(piece.data(), int(piece.size()));
    }
    const int fromLines = out.count("\nFrom ") + (out.startsWith("From ") ? 1 : 0);
    return text.changes().fromLines == fromLines ? out : "lines that start with From are miscounted";
}

// The same the slow way, list by list.
QByteArray convertLineByLine(const QString &path, LineRule rule)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly | QIODevice::Text);
    const auto next = [&] {
        const QByteArray line = file.readLine();
        return QString::fromUtf8(line.constData(), line.size());
    };
    QStringList lines;
    while (!file.atEnd()) {
        QString line = next();
        if (rule == LineRule::Filtered) {
            if (line.startsWith("From "))
                line.prepend('>');
            if (line.isEmpty())
                continue;
            if (line.contains(declaration))
                break;
            if (line.startsWith("Received-Spf:")) {
                do
                    line = next();
                while (line.startsWith(' '));
            }
        }
        lines.append(line);
    }
    if (!lines.isEmpty())
        lines.removeFirst();
    QString text = lines.join("");
    if (rule == LineRule::FromColonQuoted)
        text.replace("From : ", ">From : ");
    return text.toLatin1();
}
} // namespace

class TestMessageText : public QObject
{
    Q_OBJECT

private slots:
    void messages_data()
    {
        const DataTable row([this](LineRule rule, const QByteArray &bytes, const QByteArray &text) {
            const QString path = write(bytes);
            QCOMPARE(convertLineByLine(path, rule), text);
            for (int block = 1; block <= bytes.size() + 1; ++block)
                QCOMPARE(convert(path, rule, size_t(block)), text);
        });
        const auto filtered = [&](const char *name, const QByteArray &bytes, const QByteArray &text) {
            row(name, LineRule::Filtered, bytes, text);
        };
        const QByteArray list = QByteArray(declaration) + "\n<plist/>\n";
        filtered("empty", "", "");
        filtered("property list", "12\nA: b\n\nbody\n" + list, "A: b\n\nbody\n");
        filtered("no property list", "12\nA: b\n\nbody", "A: b\n\nbody");
        filtered("declaration within a line", "12\nA: b\nquoted " + list + "more\n", "A: b\n");
        filtered("declaration in the first line", "12 " + list + "A: b\n", "");
        filtered("nearly", "12\n<?xml version=\"1.0\"?>\n<?<?x\n<?", "<?xml version=\"1.0\"?>\n<?<?x\n<?");
        filtered("From", "12\nFrom a\nfrom b\n From c\nFroma\nFrom \n",
                 ">From a\nfrom b\n From c\nFroma\n>From \n");
        filtered("From at the end", "12\nA\nFrom ", "A\n>From ");
        filtered("From behind a mark", "12\n" + mark + "From a\n", ">From a\n");
        filtered("From behind two marks", "12\n" + mark + mark + "From a\n", "?From a\n");
        filtered("Received-Spf", "12\nA: b\nReceived-Spf: pass\n folded\n  more\nC: d\n", "A: b\nC: d\n");
        filtered("folded by a tab", "12\nReceived-Spf: pass\n\tfolded\n more\nC\n", "\tfolded\n more\nC\n");
        filtered("twice", "12\nReceived-Spf: a\nReceived-Spf: b\n c\nD\n", "Received-Spf: b\n c\nD\n");
        filtered("Received-Spf then a declaration", "12\nReceived-Spf: a\n" + list + "B\n", list + "B\n");
        filtered("Received-Spf with a declaration", "12\nA\nReceived-Spf: " + list + "B\n", "A\n");
        filtered("declaration in a fold", "12\nReceived-Spf: a\n " + list + "B\n", "<plist/>\nB\n");
        filtered("Received-Spf first", "Received-Spf: a\n b\nC\nD\n", "D\n");
        filtered("Received-Spf last", "12\nA\nReceived-Spf: a\n b", "A\n");
        filtered("behind a mark", "12\n" + mark + "Received-Spf: a\n" + mark + " b\n" + mark + "C\n", "C\n");
        filtered("CR LF", "12\r\nA: b\r\n\r\nFrom c\r\nd\r\r\ne\rf\r", "A: b\n\n>From c\nd\r\ne\rf\r");
        filtered("zero bytes", QByteArray("12\nA\0b\n\0From c\nFrom \0d\n", 23),
                 QByteArray("A\0b\n\0From c\n>From \0d\n", 21));
        filtered("Latin-1", "12\n\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80 \xEF\xBB\xBF.\n", "\xE9 ? ?? ?.\n");
        filtered("invalid UTF-8", "12\n\xE9 \xC3\n\xE2\x82\r\nFrom \xFF\n\xC3\xA9\n",
                 "? ?\n??\n>From ?\n\xE9\n");
        filtered("mark as first line", "\xEF\xBB\xBF\nA\n", "A\n");

        const QByteArray plain = "A: b\nFrom c\nReceived-Spf: d\n e\n" + list;
        row("stay: all but the first line", LineRule::Stay, "X: first\n" + plain, plain);
        row("stay: first line whatever it is", LineRule::Stay, QByteArray(declaration) + "\nB", "B");
        row("stay: odd bytes", LineRule::Stay, mark + "A\r\n" + mark + "B\xFF\r\n\r\n\xC3\xA9", "B?\n\n\xE9");
        row("quoted", LineRule::FromColonQuoted,
            "From : a\nFrom : b From : From : c\nfrom : \nFrom :\nFrom d\n",
            ">From : b >From : >From : c\nfrom : \nFrom :\nFrom d\n");
    }

    void messages() { checkRow(); }

    // Every pair of pieces that a reader treats differently meets here, in runs of all lengths.
    void longMessage()
    {
        const QByteArray zero(1, '\0');
        const QByteArray pieces[] = {
            "From ", "Received-Spf: x",     "\n", "\r\n", "\r", " ", "<?", "<?xml ", "\xC3\xA9", "\xFF",
            mark,    "0123456789abcdefghi", "R",  "F",    "\t", zero};
        quint32 seed = 1;
        for (int round = 0; round < 30; ++round) {
            const QString path = write("12\n" + mixture(pieces, &seed));
            for (const LineRule rule : {LineRule::Filtered, LineRule::Stay, LineRule::FromColonQuoted}) {
                const QByteArray text = convertLineByLine(path, rule);
                for (const size_t block : {1U, 16U, 100U, 256U * 1024})
                    QCOMPARE(convert(path, rule, block), text);
            }
        }
    }

    void partPlaces_data()
    {
        const DataTable row([](const QByteArray &text, const std::vector<qint64> &places) {
            QCOMPARE(::partPlaces(viewOf(text)), places);
        });
        const QByteArray header = "X-Apple-Content-Length: 9\n"; // 26 bytes
        row("none", "A: b\n\nX-Apple-Content-Length:9\n\n", {});
        row("one", "A\n\n" + header + "B\n\nC\n\n", {32});
        row("header line ends the headers", header + "\nC", {27});
        row("two", header + "\n" + header + "\n\n", {27, 54});
        row("no empty line", header + "B\n" + header + "\n" + header, {-1, 55, -1});
        row("twice in a line", "X-Apple-Content-Length: " + header + "\n", {-1, 51});
    }

    void partPlaces() { checkRow(); }

    void partLines_data()
    {
        const DataTable row([](const QByteArray &lines, const QByteArray &content) {
            std::vector<char> out;
            appendPartLines(viewOf(lines), &out);
            QCOMPARE(QByteArray(out.data(), int(out.size())), content);
        });
        row("plain", "YWJj\n\nZGVm", "YWJj\n\nZGVm");
        row("CR LF", "YWJj\r\nZ\r\r\nG\rV\r", "YWJj\nZ\r\nG\rV\r");
        row("zero bytes", QByteArray("ab\0cd\nef\n\0\ng\0\r\nh", 17), "abef\ngh");
        row("high bytes", "\xC3\xA9\xFF\n", "\xC3\xA9\xFF\n");
    }

    void partLines() { checkRow(); }

    // A line longer than any sane one comes in pieces, and memory stays bounded. The file is sparse.
    void longestLine()
    {
        QFile file(m_folder.filePath("long.emlx"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(qint64(1) << 28));
        file.close();
        LineReader reader(LineReader::Mode::Bytes);
        QVERIFY(reader.open(file.fileName()));
        qint64 read = 0;
        for (auto lines = reader.readLines(); !lines.empty(); lines = reader.readLines()) {
            QVERIFY(lines.size() <= 2 * LineReader::longestLine);
            read += qint64(lines.size());
        }
        QCOMPARE(read, qint64(1) << 28);
    }

private:
    QString write(const QByteArray &bytes)
    {
        writeFiles(m_folder.path(), {{"1.emlx", bytes}});
        return m_folder.filePath("1.emlx");
    }

    QTemporaryDir m_folder;
};

QTEST_APPLESS_MAIN(TestMessageText)
#include "test_message_text.moc"
