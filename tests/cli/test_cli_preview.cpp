#include "convert_run.h"
#include "store_files.h"

#include <QJsonArray>
#include <QTemporaryDir>
#include <QtTest>

class TestCliPreview : public QObject
{
    Q_OBJECT

private slots:
    void everyByteOfALargeText();
};

// Each byte next to each other one, so that every escape stands at every place of a block.
void TestCliPreview::everyByteOfALargeText()
{
    QByteArray text;
    for (int first = 1; first < 256; ++first)
        for (int second = 1; second < 256; ++second)
            text.append(char(first)).append(char(second));
    QTemporaryDir dir;
    writeFiles(
        dir.path(),
        {{"Mail/Box", "From - Mon Jan  1 00:00:00 2007\nSubject: s\nContent-Type: text/plain;\n\n" + text}});
    const Run run = convert({"preview", "--client", "3", "--json", dir.path()});
    QCOMPARE(run.status, 0);
    const QJsonObject message = run.json()["messages"].toArray()[0].toObject();
    QCOMPARE(message["html"].toString(), QString::fromLatin1("\n\n" + text));
}

QTEST_APPLESS_MAIN(TestCliPreview)
#include "test_cli_preview.moc"
