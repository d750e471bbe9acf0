#include "convert_run.h"
#include "olm_files.h"
#include "store_files.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

class TestCliOlm : public QObject
{
    Q_OBJECT

private slots:
    void records();
    void sample();
    void unreadable_data();
    void unreadable();

private:
    QString sampleArchive() const
    {
        return qEnvironmentVariable("VELMORA_SOURCE") + "/samples/outlook-2011/backup.olm";
    }

    QTemporaryDir m_dir;
};

void TestCliOlm::records()
{
    const QString archive = m_dir.filePath("records.olm");
    const QByteArray message =
        olmElement("OPFMessageCopySubject", "\xC3\xA9") + olmElement("OPFMessageCopyBody", "12");
    writeFiles(m_dir.path(), {{"records.olm", olmXml({message})}});
    const QJsonObject scan = convert({"scan", "--json", "--client", "olm", archive}).json();
    QCOMPARE(scan["outcome"].toString(), QString("finished"));
    QCOMPARE(scan["records"].toArray().size(), 1);
    QJsonObject record = scan["records"].toArray().at(0).toObject();
    QCOMPARE(record.take("szMessageId").toString().size(), 32);
    QJsonObject expected = {{"szSubject", QString::fromUtf8("\xC3\xA9")},
                            {"llBodySize", 2},
                            {"llBodyOffset", 143},
                            {"llParentId", 4294967294.0},
                            {"iIsOutgoing", 0}};
    for (const char *text : {"szFromName", "szFromAddress", "szToAddress", "szCcAddress", "szCcName",
                             "szBccAddress", "szReceivedTime", "szInReplyTo", "szReferences", "szToName",
                             "szThreadTopic", "szSentTime", "szFolderPath", "szPriority"})
        expected.insert(text, "");
    for (const char *list : {"pAttachContentIds", "pAttachContentTypes", "pAttachNames", "pAttachUrls",
                             "pAttachOffsets", "pAttachSizes"})
        expected.insert(list, QJsonValue());
    QCOMPARE(record, expected);
}

void TestCliOlm::sample()
{
    const QJsonObject list = convert({"list", "--json", "--client", "5", sampleArchive()}).json();
    QStringList folders;
    for (const QJsonValue &folder : list["folders"].toArray())
        folders.append(QString("%1: %2").arg(folder["tree"].toString()).arg(folder["count"].toInt()));
    QCOMPARE(folders, QStringList({"Inbox: 2", "Inbox/Clients: 1", "Sent Items: 1", "Drafts: 1"}));

    const QJsonArray previews =
        convert({"preview", "--json", "--client", "olm", "--folder", "Inbox", sampleArchive()})
            .json()["messages"]
            .toArray();
    QCOMPARE(previews.size(), 2);
    QCOMPARE(previews[1].toObject()["html"].toString(),
             QString("Train at nine.\nPlatform 4 & bring an umbrella.\n"));

    const Run save = convert({"convert", "--json", "--client", "olm", "--folder", "Inbox", "--out",
                              m_dir.path(), sampleArchive()});
    QCOMPARE(save.status, 0);
    QCOMPARE(save.json()["files"].toInt(), 3);
    QCOMPARE(readFiles(save.json()["bundle"].toString()).keys(),
             QStringList({"Mail/Inbox/Clients/Clients.mbox", "Mail/Inbox/Inbox.mbox"}));
}

void TestCliOlm::unreadable_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("outcome");
    QTest::newRow("missing") << m_dir.filePath("missing") << 4 << "ended";
    QTest::newRow("folder") << m_dir.path() << 1 << "nothing";
    QTest::newRow("no archive") << qEnvironmentVariable("VELMORA_SOURCE") + "/LICENSE" << 1 << "nothing";
}

void TestCliOlm::unreadable()
{
    QFETCH(QString, path);
    QFETCH(int, status);
    const Run scan = convert({"scan", "--json", "--client", "olm", path});
    QCOMPARE(scan.status, status);
    QTEST(scan.json()["outcome"].toString(), "outcome");
    QVERIFY2(scan.err.startsWith("velmora-convert: ") && scan.err.contains(path.toUtf8()), scan.err);
    QCOMPARE(scan.json()["records"].toArray().size(), 0);
    QCOMPARE(convert({"convert", "--client", "olm", "--out", m_dir.path(), path}).status, status);
}

QTEST_GUILESS_MAIN(TestCliOlm)
#include "test_cli_olm.moc"
