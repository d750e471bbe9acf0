#include "convert_run.h"
#include "data_table.h"
#include "olm_files.h"
#include "store_files.h"

#include <csignal>

namespace
{
// True while the process has a file of that name open: it is at work on it.
bool holdsOpen(const QProcess &process, const QString &name)
{
    const QDir descriptors(QStringLiteral("/proc/%1/fd").arg(process.processId()));
    for (const QFileInfo &descriptor : descriptors.entryInfoList(QDir::Files | QDir::System))
        if (QFile::symLinkTarget(descriptor.filePath()).endsWith("/" + name))
            return true;
    return false;
}

const QByteArray mailbox = "From - Mon Jan  1 00:00:00 2007\nFrom: Ann <ann@example.org>\n"
                           "Subject: A \"quote\", a \\ and a tab\there\n\nHello\n";
} // namespace

class TestCli : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir.reset(new QTemporaryDir);
        writeFiles(store(), {{"Mail/Local Folders/Inbox", mailbox}, {"Mail/Local Folders/Sent", mailbox}});
        QVERIFY(QDir().mkpath(out()));
    }

    void usage_data()
    {
        const DataTable row([](const QStringList &arguments) {
            const Run run = convert(arguments);
            QCOMPARE(run.status, 2);
            QCOMPARE(run.out, QByteArray());
            QVERIFY2(run.err.startsWith("velmora-convert: "), run.err);
            QCOMPARE(run.err.count('\n'), 1);
        });
        row("nothing", {});
        for (const char *arguments :
             {"sing --client 3 /tmp", "scan /tmp", "scan --client 0 /tmp", "scan --client mutt /tmp",
              "scan --client 3", "scan --client 3 /tmp /usr", "scan --client 3 --fast /tmp",
              "scan --client 3 --replace /tmp", "scan --client 3 --exact /tmp",
              "list --client 3 --report x /tmp", "convert --client 3 /tmp",
              "convert --client 3 --out /nowhere/at/all /tmp", "convert --client 3 --to mutt --out /tmp /tmp",
              "convert --client apple-mbox --to apple-mail --out /tmp /tmp",
              "convert --client olm --to outlook --out /tmp /tmp"})
            row(arguments, QString(arguments).split(' '));
    }

    void usage() { checkRow(); }

    void helpAndVersion()
    {
        const Run help = convert({"--help"});
        QCOMPARE(help.status, 0);
        QCOMPARE(convert({"-h"}).out, help.out);
        for (const char *client : {"apple-mbox", "outspring", "opera"})
            QVERIFY2(help.out.contains(client), client);
        QCOMPARE(convert({"-v"}).out, QByteArray("velmora-convert " VELMORA_VERSION "\n"));
    }

    void nothingToRead()
    {
        for (const QString &nothing : {out(), m_dir->filePath("missing")}) {
            const Run scan = convert({"scan", "--client", "thunderbird", "--json", nothing});
            QCOMPARE(scan.status, 1);
            QCOMPARE(scan.json()["outcome"].toString(), QString("nothing"));
            QCOMPARE(convert({"list", "--client", "thunderbird", nothing}).status, 1);
            QCOMPARE(convert({"convert", "--client", "thunderbird", "--out", out(), nothing}).status, 1);
        }
        QVERIFY(readFiles(out()).isEmpty());
    }

    void scanJson()
    {
        const Run run = convert({"scan", "--client", "3", "--json", store() + "/"});
        QCOMPARE(run.status, 0);
        QVERIFY2(run.err.isEmpty(), run.err);
        const QJsonValue scan = run.json();
        QCOMPARE(scan["client"].toInt(), 3);
        QCOMPARE(scan["store"].toString(), store());
        QCOMPARE(scan["outcome"].toString(), QString("finished"));
        QCOMPARE(scan["folders"].toArray().size(), 4);
        const QJsonObject top{
            {"id", 502}, {"parent", 501}, {"name", "Mail"}, {"display", "Mail"}, {"path", ""}};
        QCOMPARE(scan["folders"][0].toObject(), top);
        QCOMPARE(scan["files"].toArray().size(), 2);
        QCOMPARE(scan["messages"].toArray().size(), 2);
        const QJsonObject message = scan["messages"][0].toObject();
        QCOMPARE(message["length"].toInt(), mailbox.size());
        QCOMPARE(message["subject"].toString(), QString("A \"quote\", a \\ and a tab\there\n"));
        QVERIFY(!message.contains("label"));
    }

    void listAndFolder()
    {
        const Run all = convert({"list", "--client", "3", "--json", store()});
        QCOMPARE(all.status, 0);
        QCOMPARE(all.json()["folders"].toArray().size(), 4);

        const Run one =
            convert({"list", "--client", "3", "--json", "--folder", "Mail/Local Folders/Sent/", store()});
        QCOMPARE(one.json()["folders"].toArray().size(), 1);
        const QJsonValue folder = one.json()["folders"][0];
        QCOMPARE(folder["tree"].toString(), QString("Mail/Local Folders/Sent"));
        QCOMPARE(folder["count"].toInt(), 1);
        const QJsonValue row = folder["rows"][0];
        QCOMPARE(row["text"].toString(), QString("Ann <ann@example.org>\nA \"quote\", a \\ and a tab\there"));
        QCOMPARE(row["offset"].toString(), QString("0"));

        const Run none = convert({"list", "--client", "3", "--folder", "Mail/Elsewhere", store()});
        QCOMPARE(none.status, 1);
        QVERIFY2(none.err.contains("Mail/Elsewhere"), none.err);
    }

    void convertAndReplace()
    {
        QStringList one{"convert", "--client", "3", "--json", "--folder", "Mail/Local Folders/Inbox"};
        one << "-o" << out() << store();
        const Run first = convert(one);
        QCOMPARE(first.status, 0);
        QCOMPARE(first.json()["outcome"].toString(), QString("finished"));
        QCOMPARE(first.json()["bundle"].toString(), bundle());
        QCOMPARE(first.json()["files"].toInt(), 1);
        const FileMap written = readFiles(bundle());
        QCOMPARE(written.value("Mail/Local Folders/Inbox.mbox"), mailbox + "\n");
        QCOMPARE(written.size(), 4);

        const Run again = convert(one);
        QCOMPARE(again.status, 4);
        QCOMPARE(again.json()["outcome"].toString(), QString("ended"));
        QVERIFY2(again.err.contains("Main Identity.rge"), again.err);
        QCOMPARE(readFiles(bundle()), written);

        QCOMPARE(convert(one + QStringList{"--replace"}).status, 0);
        QCOMPARE(readFiles(bundle()), written);

        QCOMPARE(
            convert({"convert", "--client", "3", "--to", "apple-mail", "--output", out(), store()}).status,
            0);
        QCOMPARE(readFiles(out() + "/Main Identity.mbox").keys(),
                 (QStringList{"Mail/Local Folders/Inbox/Inbox.mbox", "Mail/Local Folders/Sent/Sent.mbox"}));
    }

    void linkAtTheBundlesPlace()
    {
        writeFiles(out(), {{"elsewhere/precious", "kept"}});
        const QStringList arguments = {"convert", "--client", "3", "--out", out(), store()};
        for (const char *folder : {"/gone", "/elsewhere"}) {
            QVERIFY(QFile::link(out() + folder, bundle()));
            QCOMPARE(convert(arguments).status, 4);
            QCOMPARE(convert(arguments + QStringList{"--replace"}).status, 0);
            QVERIFY2(!QFileInfo(bundle()).isSymLink(), "the link goes, and only the link");
            QVERIFY(QDir(bundle()).removeRecursively());
        }
        QCOMPARE(readFiles(out() + "/elsewhere"), (FileMap{{"precious", "kept"}}));
    }

    // Refused before anything is read: what would go is the store.
    void bundleIsTheStore()
    {
        const FileMap files{{"Mail/Local Folders/Inbox", mailbox}};
        writeFiles(bundle(), files);
        QVERIFY(QFile::link(bundle(), out() + "/link"));
        for (const QString &way : {bundle(), bundle() + "/Mail", out() + "/link"}) {
            const Run run = convert({"convert", "--client", "3", "--replace", "--out", out(), way});
            QCOMPARE(run.status, 2);
            QVERIFY2(run.err.contains("Main Identity.rge") && run.err.count('\n') == 1, run.err);
            QCOMPARE(readFiles(bundle()), files);
        }
    }

    void unwritableTarget()
    {
        const QString name(252, 'x'); // with ".mbox" behind it longer than a file name may be
        writeFiles(store(), {{"Mail/Local Folders/" + name, mailbox}});
        const Run run = convert({"convert", "--client", "3", "--json", "--out", out(), store()});
        QCOMPARE(run.status, 4);
        QVERIFY2(run.err.contains("xxx.mbox"), run.err);
        QCOMPARE(run.err.count('\n'), 1);
        QCOMPARE(run.json()["files"].toInt(), 3);
        QCOMPARE(readFiles(bundle()).value("Mail/Local Folders/Inbox.mbox"), mailbox + "\n");
    }

    void stopSignal()
    {
        writeFiles(store(), {{"Mail/Local Folders/Large", mailbox.repeated(400000)}});
        QProcess process;
        process.start(qEnvironmentVariable("VELMORA_CONVERT"), {"scan", "--client", "3", "--json", store()});
        QVERIFY(process.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(holdsOpen(process, "Large"), 30000);
        ::kill(static_cast<pid_t>(process.processId()), SIGTERM);
        QVERIFY(process.waitForFinished(120000));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 3);
        QVERIFY(QJsonDocument::fromJson(process.readAllStandardOutput()).object().contains("folders"));
    }

    // An interrupt from the terminal, which the search gets as well, while the n-th search runs.
    void interruptedSearch_data()
    {
        const DataTable row([this](const QStringList &arguments, int search, const QByteArray &printed,
                                   const QByteArray &saved) {
            const QByteArray message = "1\nX-Apple-Content-Length: 1\n\n--end\n";
            writeFiles(store(), {{"A.mbox/1.partial.emlx", message},
                                 {"A.mbox/1.2.emlxpart", "part\n"},
                                 {"A.mbox/2.partial.emlx", message},
                                 {"A.mbox/2.2.emlxpart", "part\n"}});
            writeFiles(m_dir->path(), {{"find", "#!/bin/sh\n"
                                                "echo >> searches\n"
                                                "[ $(wc -l < searches) != $INTERRUPTED ] || kill -INT 0\n"
                                                "PATH=${PATH#*:} exec find \"$@\"\n"}});
            QVERIFY(QFile::setPermissions(m_dir->filePath("find"), QFile::ReadOwner | QFile::ExeOwner));
            QProcess process;
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert("PATH", m_dir->path() + ":" + environment.value("PATH"));
            environment.insert("INTERRUPTED", QString::number(search));
            process.setProcessEnvironment(environment);
            process.setWorkingDirectory(m_dir->path());
            // A session of its own, or the tests would be interrupted too.
            process.start("setsid", QStringList{qEnvironmentVariable("VELMORA_CONVERT")} + arguments +
                                        QStringList{"--json", "--client", "apple-emlx", store()});
            QVERIFY(process.waitForFinished());
            QCOMPARE(process.exitStatus(), QProcess::NormalExit);
            QCOMPARE(process.exitCode(), 3);
            const QByteArray result = process.readAllStandardOutput();
            QVERIFY2(result.contains(printed), result);
            QCOMPARE(readFiles(bundle()).value("Mail/A/A.mbox", ""), saved);
        });
        const QStringList save = {"convert", "--out", "out"};
        row("of a scan", {"scan"}, 1, "\"outcome\":\"stopped\"", "");
        row("of a list, the folder not reached", {"list", "--folder", "Mail/A.mbox"}, 1, "{\"folders\":[]}",
            "");
        row("before a save", save, 1, "\"outcome\":\"stopped\"", "");
        row("in a save", save, 3, "\"outcome\":\"stopped\"", "");
    }

    void interruptedSearch() { checkRow(); }

    void olmRecords()
    {
        const QString archive = m_olmDir.filePath("records.olm");
        writeFiles(m_olmDir.path(),
                   {{"records.olm", olmXml({olmCopy("Subject", "\xC3\xA9") + olmCopy("Body", "12")}) +
                                        QByteArray("PK\5\6", 4) + QByteArray(18, '\0')}});
        const QJsonValue scan = convert({"scan", "--json", "--client", "olm", archive}).json();
        QCOMPARE(scan["outcome"].toString(), QString("finished"));
        QCOMPARE(scan["records"].toArray().size(), 1);
        QJsonObject record = scan["records"][0].toObject();
        QCOMPARE(record.take("szMessageId").toString().size(), 32);
        QJsonObject expected{{"szSubject", "\u00e9"}, {"llBodySize", 2}, {"llBodyOffset", 143}};
        expected.insert("llParentId", 4294967294.0);
        expected.insert("iIsOutgoing", 0);
        for (const char *text : {"szFromName", "szFromAddress", "szToAddress", "szCcAddress", "szCcName",
                                 "szBccAddress", "szReceivedTime", "szInReplyTo", "szReferences", "szToName",
                                 "szThreadTopic", "szSentTime", "szFolderPath", "szPriority"})
            expected.insert(text, "");
        for (const char *list : {"pAttachContentIds", "pAttachContentTypes", "pAttachNames", "pAttachUrls",
                                 "pAttachOffsets", "pAttachSizes"})
            expected.insert(list, QJsonValue());
        QCOMPARE(record, expected);
    }

    void olmSample()
    {
        const QString sample = qEnvironmentVariable("VELMORA_SOURCE") + "/samples/outlook-2011/backup.olm";
        const QJsonValue list = convert({"list", "--json", "--client", "5", sample}).json();
        QStringList folders;
        for (const QJsonValue &folder : list["folders"].toArray())
            folders.append(QString("%1: %2").arg(folder["tree"].toString()).arg(folder["count"].toInt()));
        QCOMPARE(folders, QStringList({"Inbox: 2", "Inbox/Clients: 1", "Sent Items: 1", "Drafts: 1"}));

        const Run preview = convert({"preview", "--json", "--client", "olm", "--folder", "Inbox", sample});
        QCOMPARE(preview.json()["messages"].toArray().size(), 2);
        QCOMPARE(preview.json()["messages"][1]["html"].toString(),
                 QString("Train at nine.\nPlatform 4 & bring an umbrella.\n"));
    }

    // Each byte next to each other one, so that every escape stands at every place of a block.
    void previewOfEveryByte()
    {
        QByteArray text;
        for (int first = 1; first < 256; ++first)
            for (int second = 1; second < 256; ++second)
                text.append(char(first)).append(char(second));
        writeFiles(out(),
                   {{"Mail/Box", "From - Mon Jan  1 00:00:00 2007\nContent-Type: text/plain;\n\n" + text}});
        const Run run = convert({"preview", "--client", "3", "--json", out()});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.json()["messages"][0]["html"].toString(), QString::fromLatin1("\n\n" + text));

        // The text goes out in pieces; none of them tears a character apart.
        writeFiles(out(), {{"Mail/Box",
                            "From - Mon Jan  1 00:00:00 2007\nContent-Type: text/plain; charset=\"utf-8\"\n"
                            "Content-Transfer-Encoding: quoted-printable\n\nx" +
                                QByteArray("=F0=9F=98=80").repeated(20000)}});
        const Run pairs = convert({"preview", "--client", "3", "--json", out()});
        QCOMPARE(pairs.json()["messages"][0]["html"].toString(), 'x' + QString("\U0001F600").repeated(20000));
    }

    void unreadableOlm_data()
    {
        const DataTable row([this](const QString &path, int status, const QString &outcome) {
            const Run scan = convert({"scan", "--json", "--client", "olm", path});
            QCOMPARE(scan.status, status);
            QCOMPARE(scan.json()["outcome"].toString(), outcome);
            QVERIFY2(scan.err.startsWith("velmora-convert: ") && scan.err.contains(path.toUtf8()), scan.err);
            QCOMPARE(scan.json()["records"].toArray().size(), 0);
            QCOMPARE(convert({"convert", "--client", "olm", "--out", m_olmDir.path(), path}).status, status);
        });
        row("missing", m_olmDir.filePath("missing"), 4, "ended");
        row("folder", m_olmDir.path(), 1, "nothing");
        row("no archive", qEnvironmentVariable("VELMORA_SOURCE") + "/LICENSE", 4, "ended");
    }

    void unreadableOlm() { checkRow(); }

private:
    QString store() const { return m_dir->filePath("profile"); }
    QString out() const { return m_dir->filePath("out"); }
    QString bundle() const { return out() + "/Main Identity.rge"; }

    QScopedPointer<QTemporaryDir> m_dir;
    QTemporaryDir m_olmDir;
};

QTEST_GUILESS_MAIN(TestCli)
#include "test_cli.moc"
