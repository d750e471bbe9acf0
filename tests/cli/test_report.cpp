#include "convert_run.h"
#include "data_table.h"
#include "olm_files.h"
#include "store_files.h"

#include <csignal>

class TestReport : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir.reset(new QTemporaryDir);
        writeFiles(m_dir->path(), {{"profile/Mail/A", "From a\nx\n"},
                                   {"profile/Mail/B", "From b\nContent-Type: text/plain; x\n\n\xC3\xA9\n"
                                                      "From c Mon d\n\xE2\x82\xAC\nFrom - x\n"}});
        QVERIFY(QDir().mkpath(out()));
    }

    void json()
    {
        const Run run = convertStore({"--json", "--check"});
        QCOMPARE(run.status, 0);
        QJsonObject report = run.json()["report"].toObject();
        QVERIFY(report.take("free").toDouble() > 0);
        const QString box = bundle() + "/Mail/B/B.mbox";
        const QJsonArray folders = report.take("folders").toArray();
        QCOMPARE(folders.size(), 2);
        const QJsonValue folder = folders[folders[0].toObject()["tree"] == "Mail/A" ? 1 : 0];
        QCOMPARE(folder.toObject(), (QJsonObject{{"id", folder["id"]},
                                                 {"tree", "Mail/B"},
                                                 {"found", 2},
                                                 {"written", 1},
                                                 {"joined", 1},
                                                 {"leftOut", 0},
                                                 {"mailboxes", QJsonArray{box}}}));
        const auto change = [this](const char *kind, int count, int offset) {
            return QJsonObject{
                {"kind", kind},
                {"messages", 1},
                {"count", count},
                {"example", QJsonObject{{"path", m_dir->filePath("profile/Mail/B")}, {"offset", offset}}}};
        };
        const int bytes = readFiles(bundle()).value("Mail/A/A.mbox").size() +
                          readFiles(bundle()).value("Mail/B/B.mbox").size();
        QCOMPARE(report, (QJsonObject{
                             {"found", 3},
                             {"written", 2},
                             {"joined", 1},
                             {"leftOut", 0},
                             {"strays", 1},
                             {"leftOutItems", QJsonArray()},
                             {"changed", QJsonArray{change("lostCharacters", 1, 39), change("latin1", 1, 0)}},
                             {"sharedMailboxes", QJsonArray()},
                             {"passedOver", QJsonArray()},
                             {"otherFiles", 0},
                             {"bytes", bytes},
                             {"checked", QJsonObject{{"mailboxes", 2},
                                                     {"separators", 3},
                                                     {"bytes", bytes},
                                                     {"differences", QJsonArray()}}}}));
    }

    void text()
    {
        const Run run = convertStore({"--report", m_dir->filePath("report.txt")});
        QCOMPARE(run.status, 0);
        const QByteArray place = bundle().toUtf8();
        QVERIFY2(
            run.out.startsWith("File saved successfully at location " + place +
                               " (2)\n"
                               "Messages found: 3, written: 2, joined to the one before: 1, left out: 0;"),
            run.out);
        QCOMPARE(run.out.count('\n'), 6); // and what is joined, what a reader may split, two changes
        QVERIFY(readFiles(m_dir->path()).value("report.txt").startsWith(run.out));
    }

    void dryRun()
    {
        writeFiles(out(), {{"Main Identity.rge/old", "kept"}});
        const FileMap before = readFiles(out());
        const Run run = convertStore({"--dry-run", "--check", "--report", m_dir->filePath("report.json")});
        QCOMPARE(run.status, 0);
        QVERIFY2(run.out.startsWith("Nothing was written"), run.out);
        QCOMPARE(readFiles(out()), before);
        const auto report = QJsonDocument::fromJson(readFiles(m_dir->path()).value("report.json")).object();
        QCOMPARE(report["written"].toInt(), 2);
        QCOMPARE(report["checked"], QJsonValue());
    }

    // What the exit status, the outcome and the first line say.
    void ends_data()
    {
        const DataTable row([this](const FileMap &files, const QStringList &options, int status,
                                   const QString &outcome, const QByteArray &firstLine) {
            QVERIFY(QDir(m_dir->filePath("profile")).removeRecursively());
            writeFiles(m_dir->filePath("profile"), files);
            const Run text = convertStore(options);
            QCOMPARE(text.status, status);
            QVERIFY2(text.out.startsWith(firstLine), text.out);
            const Run json = convertStore(options + QStringList{"--json", "--replace"});
            QCOMPARE(json.status, status);
            QCOMPARE(json.json()["outcome"].toString(), outcome);
        });
        const FileMap one{{"Mail/A", "From a\nx\n"}};
        row("well", one, {}, 0, "finished", "File saved successfully");
        row("one line", {{"Mail/A", "From a\n"}}, {}, 0, "finished", "File saved successfully");
        row("order mark",
            {{"Mail/A", "From a\nx\n"},
             {"Mail/B", "\xEF\xBB\xBF"
                        "From b\nx\n"}},
            {}, 4, "ended", "What was saved so far");
        row("all left out",
            {{"Mail/B", "\xEF\xBB\xBF"
                        "From b\nx\n"}},
            {}, 4, "ended", "Nothing was saved");
        row("no folder for the report", one, {"--report", "/nowhere/report"}, 4, "ended",
            "What was saved so far");
    }

    void ends() { checkRow(); }

    // A stop within a mailbox: which one is told.
    void stopped()
    {
        QFile large(m_dir->filePath("profile/Mail/Large"));
        QVERIFY(large.open(QIODevice::WriteOnly));
        const QByteArray message = "From a Mon b\n" + QByteArray("x\n").repeated(500000);
        for (int i = 0; i < 200; ++i)
            large.write(message);
        large.close();
        QProcess process;
        process.start(qEnvironmentVariable("VELMORA_CONVERT"),
                      {"convert", "--client", "3", "--out", out(), m_dir->filePath("profile")});
        QVERIFY(process.waitForStarted());
        while (process.state() == QProcess::Running &&
               QFileInfo(bundle() + "/Mail/Large/Large.mbox").size() == 0)
            process.waitForFinished(1);
        ::kill(static_cast<pid_t>(process.processId()), SIGINT);
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitCode(), 3);
        const QByteArray said = process.readAllStandardOutput();
        QVERIFY2(!said.contains("successfully") && said.contains("profile/Mail/Large"), said);
    }

private:
    Run convertStore(const QStringList &options) const
    {
        return convert(QStringList{"convert", "--client", "3", "--out", out()} + options +
                       QStringList{m_dir->filePath("profile")});
    }
    QString out() const { return m_dir->filePath("out"); }
    QString bundle() const { return out() + "/Main Identity.rge"; }

    QScopedPointer<QTemporaryDir> m_dir;
};

QTEST_GUILESS_MAIN(TestReport)
#include "test_report.moc"
