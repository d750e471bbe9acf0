#include "app/problem_log.h"
#include "save/mailbox_copy.h"

#include <QTemporaryDir>
#include <QtTest>

namespace
{
// The copy as a list of lines that are read by the toolkit, with all that the real one avoids.
class LineByLine
{
public:
    QByteArray copy(const QString &path, qint64 linesUntilStop)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
            return "can't be opened";
        bool stopped = false;
        while (!file.atEnd()) {
            const QByteArray bytes = file.readLine();
            QString line = QString::fromUtf8(bytes.constData(), bytes.size());
            if (line.isEmpty())
                continue;
            stopped = linesUntilStop-- == 0;
            if (stopped)
                break;
            repair(&line);
            m_previous = line;
            m_lines.append(line);
            if (m_lines.size() == 1000000) {
                write(m_lines.join(""));
                m_lines.clear();
            }
        }
        QStringList chunk;
        for (const QString &line : m_lines) {
            chunk.append(line);
            if (chunk.size() == 100000) {
                write(chunk.join(""));
                chunk.clear();
            }
            if (stopped)
                break;
        }
        write(chunk.join(""));
        return m_written;
    }

private:
    void repair(QString *line)
    {
        if (line->startsWith("Content-Type: text/plain;") || line->startsWith("Content-Type: text/html;"))
            m_inText = true;
        if (!m_inText || !line->startsWith("From ") || line->startsWith("From - "))
            return;
        const bool dashes = m_previous.startsWith("--");
        if ((dashes && m_previous.endsWith("--\n")) ||
            (m_previous.startsWith("\n") && m_previous.endsWith("\n")) ||
            (dashes && m_previous.endsWith("--\r\n")))
            m_inText = false;
        else
            line->prepend('>');
    }
    void write(const QString &chunk) { m_written += chunk.toLatin1() + '\n'; }

    bool m_inText = false;
    QString m_previous;
    QStringList m_lines;
    QByteArray m_written;
};

const QByteArray textPart = "From a\nContent-Type: text/plain; charset=utf-8\n\n";
} // namespace

class TestMailboxCopy : public QObject
{
    Q_OBJECT

private slots:
    void lines_data();
    void lines();
    void mixture();
    void chunks_data();
    void chunks();
    void unevenLines_data();
    void unevenLines();
    void markAtTheEnd();
    void stop_data();
    void stop();
    void refused_data();
    void refused();
    void appends();

private:
    QString write(const QByteArray &bytes);
    QByteArray copy(const QString &path, size_t block = 256 * 1024, int callsUntilStop = -1);
    QTemporaryDir m_folder;
};

QString TestMailboxCopy::write(const QByteArray &bytes)
{
    QFile file(m_folder.filePath("Inbox"));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return {};
    return file.fileName();
}

QByteArray TestMailboxCopy::copy(const QString &path, size_t block, int callsUntilStop)
{
    const QString to = m_folder.filePath("Inbox.mbox");
    QFile::remove(to);
    {
        MailboxCopy copy;
        copy.setBlockBytes(block);
        if (!copy.open(path))
            return "can't be opened";
        MailboxFile target;
        target.open(to, outlookMailbox);
        copy.copyTo(&target, [&](qint64, qint64) { return callsUntilStop-- != 0; });
    }
    QFile file(to);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no target");
}

void TestMailboxCopy::lines_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QByteArray>("target");
    const auto row = [](const char *name, const QByteArray &source, const QByteArray &target) {
        QTest::newRow(name) << source << target;
    };
    const QByteArray html = "From a\nContent-Type: text/html; x\n";
    row("no text part", "From a\nA: b\n\nx\nFrom b\nFrom c\n", "From a\nA: b\n\nx\nFrom b\nFrom c\n\n");
    row("body line", textPart + "x\nFrom b\n", textPart + "x\n>From b\n\n");
    row("html", html + "From b\n", html + ">From b\n\n");
    row("other case or subtype",
        "From a\ncontent-type: text/plain;\nContent-Type: text/plain\nContent-Type: text/enriched;\n "
        "Content-Type: text/html;\nFrom b\n",
        "From a\ncontent-type: text/plain;\nContent-Type: text/plain\nContent-Type: text/enriched;\n "
        "Content-Type: text/html;\nFrom b\n\n");
    row("behind an empty line", textPart + "x\n\nFrom b\nx\nFrom c\n",
        textPart + "x\n\nFrom b\nx\nFrom c\n\n");
    row("behind a blank line", textPart + " \nFrom b\n", textPart + " \n>From b\n\n");
    row("behind a closing boundary", textPart + "--x--\nFrom b\nFrom c\n",
        textPart + "--x--\nFrom b\nFrom c\n\n");
    row("behind an open boundary", textPart + "--x\nFrom b\n", textPart + "--x\n>From b\n\n");
    row("behind two dashes", textPart + "--\nFrom b\n", textPart + "--\nFrom b\n\n");
    row("behind dashes at the end only", textPart + "x--\nFrom b\n", textPart + "x--\n>From b\n\n");
    row("behind dashes and a blank", textPart + "--x-- \nFrom b\n", textPart + "--x-- \n>From b\n\n");
    row("behind a repaired line", textPart + "x\nFrom b\nFrom c\n", textPart + "x\n>From b\n>From c\n\n");
    row("From - stays and ends nothing", textPart + "From - b\nx\nFrom - c\nFrom d\n",
        textPart + "From - b\nx\nFrom - c\n>From d\n\n");
    row("directly behind the header line", html + "From b\n", html + ">From b\n\n");
    row("CR LF", "From a\r\nContent-Type: text/plain;\r\n\r\nx\r\nFrom b\r\n\r\nFrom c\r\n",
        "From a\nContent-Type: text/plain;\n\nx\n>From b\n\nFrom c\n\n");
    row("behind a boundary with two CR", textPart + "--x--\r\r\nFrom b\n", textPart + "--x--\r\nFrom b\n\n");
    row("behind CR CR LF", textPart + "x\n\r\r\nFrom b\n", textPart + "x\n\r\n>From b\n\n");
    row("single CR", textPart + "a\rFrom b\r\r\nc\r", textPart + "a\rFrom b\r\nc\r\n");
    row("mark before From",
        textPart + "x\n\xEF\xBB\xBF"
                   "From b\n",
        textPart + "x\n>From b\n\n");
    row("mark before the header line",
        "From a\n\xEF\xBB\xBF"
        "Content-Type: text/plain;\nFrom b\n",
        "From a\nContent-Type: text/plain;\n>From b\n\n");
    row("mark on the line before", textPart + "x\n\xEF\xBB\xBF\nFrom b\n", textPart + "x\n\nFrom b\n\n");
    row("mark within a line", "From a\xEF\xBB\xBF\n", "From a?\n\n");
    row("zero bytes", QByteArray("From \0a\n\0From b\n\0", 17), QByteArray("From \0a\n\0From b\n\0\n", 18));
    row("Latin-1", "From a\n\xC3\xA9\xC4\x80\xE2\x82\xAC\xF0\x9F\x98\x80\n", "From a\n\xE9????\n\n");
    row("invalid UTF-8", "From a\n\xE9t\xE9\xC3\n\xE2\x82\n\xED\xA0\x80\xC0\x80\r\n\xFF",
        "From a\n?t??\n??\n?????\n?\n");
    row("no last line feed", "From a\nb", "From a\nb\n");
    row("From alone", "From ", "From \n");
}

void TestMailboxCopy::lines()
{
    QFETCH(QByteArray, source);
    QFETCH(QByteArray, target);
    const QString path = write(source);
    QCOMPARE(LineByLine().copy(path, -1), target);
    // Padding moves each byte over the seam between two blocks.
    for (int padding = 0; padding < 130; ++padding) {
        const QByteArray pad = "From " + QByteArray(padding, 'p') + '\n';
        const QString padded = write(pad + source);
        QCOMPARE(copy(padded, 128), pad + target);
    }
    QCOMPARE(copy(write(source)), target);
}

// Every two pieces that are treated differently meet, in short and in very long lines.
void TestMailboxCopy::mixture()
{
    const QByteArray pieces[] = {"From ",
                                 "From - ",
                                 "Content-Type: text/plain;",
                                 "Content-Type: text/html;",
                                 "\n",
                                 "\r\n",
                                 "\r",
                                 "--",
                                 "-",
                                 "\xC3\xA9",
                                 "\xFF",
                                 "\xEF\xBB\xBF",
                                 "\xF0\x9F\x98\x80",
                                 "0123456789abcdefghi",
                                 QByteArray(150, 'x'),
                                 QByteArray(1, '\0')};
    quint32 seed = 7;
    for (int round = 0; round < 30; ++round) {
        QByteArray bytes = "From \n";
        for (int i = 0; i < 300; ++i) {
            seed = seed * 1664525 + 1013904223;
            bytes += pieces[(seed >> 16) % 16];
            if (seed >> 28 > 9)
                bytes += '\n';
        }
        const QString path = write(bytes);
        const QByteArray expected = LineByLine().copy(path, -1);
        for (const size_t block : {128, 129, 255, 4096, 256 * 1024})
            QCOMPARE(copy(path, block), expected);
    }
}

void TestMailboxCopy::chunks_data()
{
    QTest::addColumn<int>("lines");
    QTest::addColumn<bool>("lastFeed");
    for (const int lines : {99999, 100000, 250000, 999999, 1000000, 1100000})
        for (const bool lastFeed : {true, false})
            QTest::addRow("%d lines, %s", lines, lastFeed ? "whole" : "the last one without its end")
                << lines << lastFeed;
}

void TestMailboxCopy::chunks()
{
    QFETCH(int, lines);
    QFETCH(bool, lastFeed);
    QByteArray source =
        "From \n" + QByteArray("\xC3\xA9\r\n").repeated(lines - 2) + "\xE2\x82\xAC" + (lastFeed ? "\n" : "");
    // Line feeds that stand behind the lines, by the number of lines written before.
    QByteArray target = "From \n" + QByteArray("\xE9\n").repeated(lines - 2) + '?' + (lastFeed ? "\n" : "");
    QList<int> ends;
    int left = lines;
    for (; left >= 1000000; left -= 1000000)
        ends.append(lines - left + 1000000);
    for (; left >= 100000; left -= 100000)
        ends.append(lines - left + 100000);
    ends.append(lines);
    for (int i = ends.size() - 1; i >= 0; --i) {
        const int end = ends.at(i) == lines ? target.size() : 6 + 2 * (ends.at(i) - 1);
        target.insert(end, '\n');
    }
    const QByteArray copied = copy(write(source));
    QCOMPARE(copied.size(), target.size());
    QVERIFY(copied == target);
}

// Lines whose length changes behind the first hundred thousand, so that the number of those to come can't be told.
void TestMailboxCopy::unevenLines_data()
{
    QTest::addColumn<int>("before"); // lines of two bytes
    QTest::addColumn<int>("first");  // bytes of each of the next hundred thousand
    QTest::addColumn<int>("others"); // bytes of each line behind them
    QTest::addColumn<int>("lines");  // how many of those
    QTest::newRow("more than it seems") << 0 << 100 << 2 << 910000;
    QTest::newRow("just as many as one list") << 0 << 100 << 2 << 899999;
    QTest::newRow("fewer than it seems") << 0 << 2 << 100 << 350000;
    QTest::newRow("one too few") << 0 << 2 << 4 << 899999;
    QTest::newRow("fewer in the second list") << 1000000 << 2 << 30 << 850000;
}

void TestMailboxCopy::unevenLines()
{
    QFETCH(int, before);
    QFETCH(int, first);
    QFETCH(int, others);
    QFETCH(int, lines);
    const auto lineOf = [](int bytes) { return QByteArray(bytes - 1, 'x') + '\n'; };
    QByteArray source =
        lineOf(2).repeated(before) + lineOf(first).repeated(100000) + lineOf(others).repeated(lines);
    source.replace(0, 2, "From \n");
    const QString path = write(source);
    QVERIFY(copy(path) == LineByLine().copy(path, -1));
}

// A byte order mark that nothing follows is no line, and so does not fill a chunk.
void TestMailboxCopy::markAtTheEnd()
{
    const QByteArray lines = "From \n" + QByteArray("x\n").repeated(99998);
    QVERIFY(copy(write(lines + "\xEF\xBB\xBF")) == lines + '\n');
}

void TestMailboxCopy::stop_data()
{
    QTest::addColumn<int>("lines");
    QTest::addColumn<int>("callsUntilStop");
    QTest::addColumn<QByteArray>("end"); // behind the first million lines, where there are that many
    QTest::newRow("at once") << 10 << 0 << QByteArray("\n");
    QTest::newRow("within the only list") << 400000 << 2 << QByteArray("From \n\n");
    QTest::newRow("within the second list") << 1400000 << 10 << QByteArray("x\n\n");
}

void TestMailboxCopy::stop()
{
    QFETCH(int, lines);
    QFETCH(int, callsUntilStop);
    QFETCH(QByteArray, end);
    const QString path = write("From \n" + QByteArray("x\n").repeated(lines - 1));
    const QByteArray expected =
        lines < 1000000 ? end : "From \n" + QByteArray("x\n").repeated(999999) + '\n' + end;
    const QByteArray copied = copy(path, 256 * 1024, callsUntilStop);
    QCOMPARE(copied.size(), expected.size());
    QVERIFY(copied == expected);
}

void TestMailboxCopy::refused_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("short") << QByteArray("From");
    QTest::newRow("case") << QByteArray("FROM a\n");
    QTest::newRow("zero byte") << QByteArray("From\0 a", 7);
}

void TestMailboxCopy::refused()
{
    QFETCH(QByteArray, source);
    MailboxCopy copy;
    QVERIFY(!copy.open(write(source)));
    MailboxCopy folder;
    QVERIFY(!folder.open(m_folder.path()));
}

void TestMailboxCopy::appends()
{
    const QString path = write("From a\n");
    MailboxFile target;
    target.open(m_folder.filePath("two/Inbox.mbox"), outlookMailbox);
    for (int i = 0; i < 2; ++i) {
        MailboxCopy copy;
        QVERIFY(copy.open(path));
        copy.copyTo(&target, [](qint64, qint64) { return true; });
    }
    target.close();
    QFile file(target.path());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("From a\n\nFrom a\n\n"));
    QCOMPARE(takeProblems(), QStringList());
}

QTEST_APPLESS_MAIN(TestMailboxCopy)
#include "test_mailbox_copy.moc"
