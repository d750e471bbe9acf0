#include "app/problem_log.h"
#include "data_table.h"
#include "line_by_line.h"
#include "save/mailbox_copy.h"
#include "store_files.h"

#include <csignal>

#include <sys/resource.h>

namespace
{
// Messages of a mailbox, line by line.
int messagesIn(const QByteArray &mailbox)
{
    static const QRegularExpression separator("^From (.* )?(Mon|Tue|Wed|Thu|Fri|Sat|Sun) ");
    int messages = 0;
    for (const QByteArray &line : mailbox.split('\n')) {
        const bool separates =
            messages == 0 || separator.match(QString::fromUtf8(line.constData())).hasMatch();
        messages += separates ? 1 : 0;
    }
    return messages;
}

int fromLines(const QByteArray &mailbox)
{
    return mailbox.count("\nFrom ") + (mailbox.startsWith("From ") ? 1 : 0);
}

const QByteArray mark = "\xEF\xBB\xBF"; // UTF-8's byte order mark
} // namespace

class TestMailboxCopy : public QObject
{
    Q_OBJECT

private slots:
    void lines_data()
    {
        const DataTable row([this](const QByteArray &source, const QByteArray &target) {
            const QString path = write(source);
            QCOMPARE(LineByLine().copy(path), target);
            // Padding moves each byte over the seam between two blocks; one target takes all of them.
            QByteArray padded;
            {
                QFile::remove(m_folder.filePath("Inbox.mbox"));
                MailboxFile all;
                all.open(m_folder.filePath("Inbox.mbox"), outlookMailbox);
                for (int padding = 0; padding < 130; ++padding) {
                    const QByteArray pad = "From " + QByteArray(padding, 'p') + '\n';
                    const QByteArray bytes = pad + source;
                    MailboxCopy copy;
                    copy.setBlockBytes(128);
                    QVERIFY(copy.open(ByteSource::ofBytes(viewOf(bytes))));
                    copy.copyTo(&all, [](qint64, qint64) { return true; });
                    padded += pad + target;
                }
            }
            QCOMPARE(readFiles(m_folder.path()).value("Inbox.mbox"), padded);
            QCOMPARE(copy(write(source)), target);
        });
        const auto text = [&row](const char *name, const QByteArray &source, const QByteArray &target) {
            const QByteArray head = "From a\nContent-Type: text/plain; charset=utf-8\n\n";
            row(name, head + source, head + target);
        };
        const QByteArray html = "From a\nContent-Type: text/html; x\n";
        const QByteArray noText =
            "From a\ncontent-type: text/plain;\nContent-Type: text/plain\nContent-Type: "
            "text/enriched;\n Content-Type: text/html;\nx\nFrom b\nFrom c\n";
        row("no text part", noText, noText + "\n");
        row("html", html + "From b\n", html + ">From b\n\n");
        text("body line", "x\nFrom b\n", "x\n>From b\n\n");
        text("behind an empty line", "x\n\nFrom b\nx\nFrom c\n", "x\n\nFrom b\nx\nFrom c\n\n");
        text("behind a blank line", " \nFrom b\n", " \n>From b\n\n");
        text("behind a closing boundary", "--x--\nFrom b\nFrom c\n", "--x--\nFrom b\nFrom c\n\n");
        text("behind an open boundary", "--x\nFrom b\n", "--x\n>From b\n\n");
        text("behind two dashes", "--\nFrom b\n", "--\nFrom b\n\n");
        text("behind dashes at the end only", "x--\nFrom b\n", "x--\n>From b\n\n");
        text("behind dashes and a blank", "--x-- \nFrom b\n", "--x-- \n>From b\n\n");
        text("behind a repaired line", "x\nFrom b\nFrom c\n", "x\n>From b\n>From c\n\n");
        text("From -", "From - b\nx\nFrom - c\nFrom d\n", "From - b\nx\nFrom - c\n>From d\n\n");
        row("CR LF", "From a\r\nContent-Type: text/plain;\r\n\r\nx\r\nFrom b\r\n\r\nFrom c\r\n",
            "From a\nContent-Type: text/plain;\n\nx\n>From b\n\nFrom c\n\n");
        text("behind a boundary with two CR", "--x--\r\r\nFrom b\n", "--x--\r\nFrom b\n\n");
        text("behind CR CR LF", "x\n\r\r\nFrom b\n", "x\n\r\n>From b\n\n");
        text("single CR", "a\rFrom b\r\r\nc\r", "a\rFrom b\r\nc\r\n");
        text("mark before From", "x\n" + mark + "From b\n", "x\n>From b\n\n");
        row("mark before the header line", "From a\n" + mark + "Content-Type: text/plain;\nFrom b\n",
            "From a\nContent-Type: text/plain;\n>From b\n\n");
        text("mark on the line before", "x\n" + mark + "\nFrom b\n", "x\n\nFrom b\n\n");
        row("mark within a line", "From a" + mark + "\n", "From a?\n\n");
        const QByteArray zeroes("From \0a\n\0From b\n\0", 17);
        row("zero bytes", zeroes, zeroes + '\n');
        row("Latin-1", "From a\n\xC3\xA9\xC4\x80\xE2\x82\xAC\xF0\x9F\x98\x80\n", "From a\n\xE9????\n\n");
        row("invalid", "From a\n\xE9t\xE9\xC3\n\xE2\x82\n\xED\xA0\x80\xC0\x80\r\n\xFF",
            "From a\n?t??\n??\n?????\n?\n");
        row("stray bytes behind a character",
            "From a\n" + QByteArray("\xC6\xAE\xBB\x88\xBE\xBB").repeated(40),
            "From a\n" + QByteArray(200, '?') + "\n");
        row("line longer than a block", "From a\n" + QByteArray("\xE2\x82\xAC").repeated(90),
            "From a\n" + QByteArray(90, '?') + '\n');
        QByteArray characters = "From a\n", latin1 = characters, boundaries = characters;
        for (int i = 0; i < 9; ++i) { // the end of the first block at each place in them
            characters +=
                QByteArray(i, 'y') + QByteArray("\xF0\x9F\x98\x80\xC3\xA9\xE2\x82\xAC").repeated(20) + '\n';
            latin1 += QByteArray(i, 'y') + QByteArray("??\xE9?").repeated(20) + '\n';
            boundaries += "Content-Type: text/html; x\n--" + QByteArray(116 + i, 'x') + "--\r\nFrom b\n";
        }
        row("characters in long lines", characters, latin1 + '\n');
        row("long boundaries", boundaries, QByteArray(boundaries).replace("\r\n", "\n") + '\n');
        row("From alone", "From ", "From \n");
    }

    void lines() { checkRow(); }

    // Every two pieces that are treated differently meet, in short and in very long lines.
    void mixture()
    {
        // clang-format off
        const QByteArray pieces[] = {
            "From ", "From - ", "Content-Type: text/plain;", "Content-Type: text/html;", "\n", "\r\n", "\r", "--", "-",
            "\xC3\xA9", "\xFF", mark, "\xF0\x9F\x98\x80", "0123456789abcdefghi", QByteArray(150, 'x'),
            QByteArray(1, '\0')};
        // clang-format on
        quint32 seed = 7;
        for (int round = 0; round < 30; ++round) {
            const QString path = write("From \n" + ::mixture(pieces, &seed));
            const QByteArray expected = LineByLine().copy(path);
            for (const size_t block : {128U, 129U, 255U, 4096U, 256U * 1024})
                QCOMPARE(copy(path, block), expected);
        }
    }

    // The source fails, the user stops, the target fails: each "From " line of the target is a whole message's, or a stray.
    void faults()
    {
        // clang-format off
        const QByteArray pieces[] = {
            "From a Mon b", "From - x", "Content-Type: text/plain;", "\n\nFrom a Tue ", "\n", "\r\n", "\r", "--x--\n",
            "From b Sun", "\xC3\xA9", "\xFF", mark, "\n" + mark + "From c Wed d", "\nFrom e\n", QByteArray(150, 'x'),
            QByteArray(1, '\0')};
        // clang-format on
        quint32 seed = 5;
        for (int round = 0; round < 10; ++round) {
            const QByteArray bytes = "From \n" + ::mixture(pieces, &seed);
            for (int end = 7; end < bytes.size(); end += 101)
                for (const size_t block : {128U, 4096U}) {
                    const MailboxTally tally = copyOf(ByteSource::failing(viewOf(bytes), end), block, -1);
                    QCOMPARE(tally.found(), qint64(messagesIn(bytes.left(end))));
                }
            for (int calls = 0; calls < 20; ++calls)
                copyOf(ByteSource::ofBytes(viewOf(bytes)), 128, calls);
        }
        const QByteArray large =
            "From \n" + ("x\n" + QByteArray(98, 'y') + "\n\nFrom a Mon b\n").repeated(300000);
        for (const rlim_t limit : {0U, 700000U, 29000000U}) {
            const MailboxTally tally = copyOf(ByteSource::ofBytes(viewOf(large)), 256 * 1024, -1, limit);
            QCOMPARE(tally.found(), qint64(300001));
            QCOMPARE(tally.leftOut() == 300001, limit < 29000000);
        }
        takeProblems();
    }

    // Lines come in lists of a million, and go in chunks of a hundred thousand with a line feed behind each.
    // Where their length changes, the number of those to come can't be told.
    void chunks_data()
    {
        const DataTable row([this](const QByteArray &line, int lines, const QByteArray &other, int others,
                                   const QByteArray &last) {
            const QString path = write("From \n" + line.repeated(lines) + other.repeated(others) + last);
            QVERIFY(copy(path) == LineByLine().copy(path));
        });
        for (const int lines : {99999, 250000, 999999, 1100000})
            row(QByteArray::number(lines), "\xC3\xA9\r\n", lines - 2, "", 0, "\xE2\x82\xAC\n");
        for (const int lines : {100000, 1000000})
            row(QByteArray::number(lines) + ", no end", "\xC3\xA9\r\n", lines - 2, "", 0, "\xE2\x82\xAC");
        const auto lineOf = [](int bytes) { return QByteArray(bytes - 1, 'x') + '\n'; };
        row("more than it seems", lineOf(100), 99999, lineOf(2), 910000, "");
        row("just as many as one list", lineOf(100), 99999, lineOf(2), 900000, "");
        row("fewer than it seems", lineOf(2), 99999, lineOf(100), 350000, "");
        row("one too few", lineOf(2), 99999, lineOf(4), 899999, "");
        row("fewer in the second list", lineOf(2), 1099999, lineOf(30), 850000, "");
    }

    void chunks() { checkRow(); }

    // A byte order mark that nothing follows is no line, and so does not fill a chunk.
    void markAtTheEnd()
    {
        const QByteArray lines = "From \n" + QByteArray("x\n").repeated(99998);
        QVERIFY(copy(write(lines + mark)) == lines + '\n');
        QVERIFY(copy(write(lines + "x\n" + mark)) == lines + "x\n\n\n");
    }

    void stop_data()
    {
        const DataTable row([this](int lines, int callsUntilStop, const QByteArray &end) {
            const QString path = write("From \n" + QByteArray("x\n").repeated(lines - 1));
            const QByteArray expected =
                lines < 1000000 ? end : "From \n" + QByteArray("x\n").repeated(999999) + '\n' + end;
            const QByteArray copied = copy(path, 256 * 1024, callsUntilStop);
            QCOMPARE(copied.size(), expected.size());
            QVERIFY(copied == expected);
        });
        row("at once", 10, 0, "\n");
        row("within the only list", 400000, 2, "From \n\n");
        row("within the second list", 1400000, 10, "x\n\n");
    }

    void stop() { checkRow(); }

    void refused()
    {
        const QByteArray zeroByte("From\0 a", 7);
        for (const QByteArray &source : {QByteArray(), QByteArray("From"), QByteArray("FROM a\n"), zeroByte})
            QVERIFY2(!MailboxCopy().open(write(source)), source);
        QVERIFY(!MailboxCopy().open(m_folder.path()));
    }

    void appends()
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
        QCOMPARE(readFiles(m_folder.filePath("two")), (FileMap{{"Inbox.mbox", "From a\n\nFrom a\n\n"}}));
        QCOMPARE(takeProblems(), QStringList());
    }

private:
    QString write(const QByteArray &bytes)
    {
        writeFiles(m_folder.path(), {{"Inbox", bytes}});
        return m_folder.filePath("Inbox");
    }

    // Copies with a fault and counts the lines of the target.
    MailboxTally copyOf(ByteSource source, size_t block, int callsUntilStop, rlim_t limit = RLIM_INFINITY)
    {
        const QString to = m_folder.filePath("Inbox.mbox");
        QFile::remove(to);
        MailboxCopy copy;
        copy.setBlockBytes(block);
        if (!copy.open(std::move(source)))
            QTest::qFail("can't be opened", __FILE__, __LINE__);
        const rlimit limited{limit, RLIM_INFINITY};
        const rlimit unlimited{RLIM_INFINITY, RLIM_INFINITY};
        std::signal(SIGXFSZ, SIG_IGN);
        ::setrlimit(RLIMIT_FSIZE, &limited);
        MailboxFile target;
        target.open(to, outlookMailbox);
        copy.copyTo(&target, [&](qint64, qint64) { return callsUntilStop-- != 0; });
        target.close();
        ::setrlimit(RLIMIT_FSIZE, &unlimited);
        const MailboxTally &tally = copy.tally();
        const int lines = fromLines(readFiles(m_folder.path()).value("Inbox.mbox"));
        if (tally.written() + tally.strays() != lines)
            QTest::qFail(
                qPrintable(QString("%1 + %2, but %3").arg(tally.written()).arg(tally.strays()).arg(lines)),
                __FILE__, __LINE__);
        return tally;
    }

    QByteArray copy(const QString &path, size_t block = 256 * 1024, int callsUntilStop = -1)
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
        return readFiles(m_folder.path()).value("Inbox.mbox", "no target");
    }

    QTemporaryDir m_folder;
};

QTEST_APPLESS_MAIN(TestMailboxCopy)
#include "test_mailbox_copy.moc"
