#include "convert_run.h"
#include "data_table.h"
#include "store_files.h"

#include <csignal>

namespace
{
#ifdef __has_feature
constexpr bool holdsSignalsBack = __has_feature(thread_sanitizer);
#else
constexpr bool holdsSignalsBack = false;
#endif

const QByteArray mailbox =
    "From - Mon Jan  1 00:00:00 2007\nFrom: A\x1B[31m <a@b>\nSubject: x\x07y\xC2\x9Bz\n"
    "Content-Type: text/plain; charset=utf-8\n\none\x1B]0;title\x07\n\ttwo\n";

// A number behind a name in a file of the process below /proc, -1 without the process.
qint64 processNumber(const QProcess &process, const char *file, const QByteArray &name, int base)
{
    QFile numbers(QStringLiteral("/proc/%1/%2").arg(process.processId()).arg(file));
    if (!numbers.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray text = numbers.readAll();
    const int start = text.indexOf(name) + name.size();
    return text.mid(start, text.indexOf('\n', start) - start).trimmed().toLongLong(nullptr, base);
}

bool catches(const QProcess &process, int signal)
{
    return (processNumber(process, "status", "SigCgt:", 16) >> (signal - 1) & 1) != 0;
}
} // namespace

// What a person at a terminal gets to see.
class TestTerminal : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        writeFiles(store(), {{"Mail/In\x1B[2J", mailbox}});
        writeFiles(m_dir.filePath("large"), {{"Mail/In", mailbox.repeated(5000)}});
    }

    void texts_data()
    {
        const DataTable row([this](const QString &command, const QByteArray &text) {
            const Run run = convert({command, "--client", "3", store()});
            QCOMPARE(run.status, 0);
            QCOMPARE(run.out, text);
        });
        row("folders", "scan", "Mail\n  In\\x1b[2J (1)\n");
        row("rows", "list", "Mail (0)\nMail/In\\x1b[2J (1)\n    A\\x1b[31m <a@b>  |  x\\x07y\\x9bz\n");
        row("message", "preview",
            "A\\x1b[31m <a@b>\nx\\x07y\\x9bz\n\n\n\none\\x1b]0;title\\x07\n\ttwo\n\n\n");
    }

    void texts() { checkRow(); }

    // A name of a file as it is told, in one line.
    void sentences()
    {
        const Run run = convert({"scan", "--client", "3", "/no\x1B[2J\nwhere"});
        QVERIFY2(run.err.startsWith(
                     "velmora-convert: Selected file is either invalid or empty: /no\\x1b[2J\\x0awhere"),
                 run.err);
        QVERIFY(!run.err.contains('\x1B'));
        writeFiles(m_dir.filePath("odd"), {{"Mail/In", mailbox}, {"Mail/a.eml", mailbox}});
        QVERIFY(
            convert({"scan", "--client", "3", m_dir.filePath("odd")})
                .err.endsWith("odd/Mail/a.eml: begins as a mailbox, but has the name of something else\n"));
    }

    void fullDevice_data()
    {
        const DataTable row([](const QStringList &arguments) {
            QProcess process;
            process.setStandardOutputFile("/dev/full");
            process.start(qEnvironmentVariable("VELMORA_CONVERT"), arguments);
            QVERIFY(process.waitForFinished());
            QCOMPARE(process.exitCode(), 4);
            const QByteArray said = process.readAllStandardError();
            QVERIFY2(said.endsWith("standard output can't be written: No space left on device\n"), said);
        });
        const QStringList list{"list", "--client", "3", store()};
        row("text", list);
        row("JSON", list + QStringList{"--json"});
        row("help", {"--help"});
        row("stores found", {"find", store(), "--json"});
    }

    void fullDevice() { checkRow(); }

    void progress_data()
    {
        const DataTable row([this](const QString &options, const QString &shown) {
            const QString command = QString("'%1' scan --client 3 %2 '%3' 2>&1 >/dev/null")
                                        .arg(qEnvironmentVariable("VELMORA_CONVERT"), options, store());
            QProcess terminal; // that of the command's standard error
            terminal.start("script", {"-qec", command, "/dev/null"});
            QVERIFY(terminal.waitForFinished());
            QCOMPARE(terminal.exitCode(), 0);
            const QByteArray said = terminal.readAllStandardOutput();
            QVERIFY2(QRegularExpression(shown).match(said).hasMatch(), said);
        });
        row("shown", "", "^(\\rScanning Database File ... +\\d+ %)+(?<=100 %)\\r\\n$");
        row("quiet", "-q", "^$");
    }

    void progress() { checkRow(); }

    // The first signal asks for a stop; who reads nothing of what is printed holds that up, until the second one.
    void secondSignal_data()
    {
        const DataTable row([this](int first, int second) {
            QProcess process;
            QProcess reader;
            process.setStandardOutputProcess(&reader);
            process.start(qEnvironmentVariable("VELMORA_CONVERT"),
                          {"list", "--client", "3", "--json", m_dir.filePath("large")});
            reader.start("sleep", {"60"});
            QTRY_VERIFY(processNumber(process, "io", "wchar:", 10) >= 64 * 1024);
            ::kill(static_cast<pid_t>(process.processId()), first);
            QTRY_VERIFY(!catches(process, second));
            QCOMPARE(process.state(), QProcess::Running);
            ::kill(static_cast<pid_t>(process.processId()), second);
            QVERIFY(process.waitForFinished());
            QCOMPARE(process.exitStatus(), QProcess::CrashExit);
            QCOMPARE(process.exitCode(), second);
            reader.kill();
            QVERIFY(reader.waitForFinished());
        });
        row("terminate twice", SIGTERM, SIGTERM);
        row("terminate, then interrupt", SIGTERM, SIGINT);
    }

    void secondSignal()
    {
        if (holdsSignalsBack)
            QSKIP("The thread sanitizer holds signals back and may deliver one twice.");
        checkRow();
    }

    // Each option that --help tells of.
    void completions()
    {
        const QString help = QString::fromUtf8(convert({"--help"}).out);
        for (const char *file : {"velmora-convert.bash", "_velmora-convert", "velmora-convert.fish"}) {
            QFile completion(qEnvironmentVariable("VELMORA_SOURCE") + "/packaging/completions/" + file);
            QVERIFY(completion.open(QIODevice::ReadOnly));
            const QByteArray text = completion.readAll();
            auto words = QRegularExpression("--([a-z-]+)|\n  ([a-z-]+) +\\d+  ").globalMatch(help);
            QVERIFY(words.hasNext());
            while (words.hasNext()) {
                const QRegularExpressionMatch word = words.next();
                const QString name = word.captured(1) + word.captured(2);
                QVERIFY2(text.contains(name.toUtf8()), qPrintable(QString(file) + " lacks " + name));
            }
        }
    }

private:
    QString store() const { return m_dir.filePath("profile"); }

    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(TestTerminal)
#include "test_terminal.moc"
