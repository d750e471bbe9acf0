#include "browse/mime_walk.h"
#include "browse/preview.h"

#include "app/shared_state.h"
#include "browse/message_rows.h"
#include "scan/mbox_index.h"

#include <QDirIterator>
#include <QtTest>

// Every message of the real mail in VELMORA_CORPUS, through both previews. What is looked for is a finding of a
// sanitizer; what is printed is how many messages show no text, and why.
class TestPreviewCorpus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void files();
    void mailboxes();

private:
    void count(const QByteArray &bytes, const PreviewDialect &dialect);
    QStringList filesOf(const QString &folder) const;
    void report(const char *what);

    QString m_corpus;
    int m_messages = 0;
    QMap<QString, int> m_noText;
};

void TestPreviewCorpus::initTestCase()
{
    m_corpus = qEnvironmentVariable("VELMORA_CORPUS");
    if (m_corpus.isEmpty())
        QSKIP("VELMORA_CORPUS names no folder of real mail");
}

QStringList TestPreviewCorpus::filesOf(const QString &folder) const
{
    QStringList files;
    QDirIterator walk(m_corpus + "/" + folder, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext())
        files.append(walk.next());
    files.sort();
    return files;
}

// Why a message has no text: the first of these that fits.
static QString reasonOf(const QByteArray &bytes, bool applicationEndsWalk)
{
    const QByteArray lower = bytes.toLower();
    if (bytes.size() <= 23)
        return "too short";
    if (!lower.contains("content-type: text/"))
        return "no text type at all";
    const int application = bytes.indexOf("Content-Type: application/");
    const int text = bytes.indexOf("Content-Type: text/plain;");
    if (applicationEndsWalk && application >= 0 && (text < 0 || application < text))
        return "application part first";
    if (lower.contains("content-type: text/plain\n") || lower.contains("content-type: text/plain\r"))
        return "text/plain without a semicolon";
    return "other spelling, or no blank line";
}

void TestPreviewCorpus::count(const QByteArray &bytes, const PreviewDialect &dialect)
{
    const PreviewText preview = previewOfBytes({bytes.constData(), size_t(bytes.size())}, dialect);
    ++m_messages;
    if (!preview.html)
        ++m_noText[reasonOf(bytes, dialect.ownsFile)];
}

void TestPreviewCorpus::report(const char *what)
{
    int noText = 0;
    for (auto reason = m_noText.constBegin(); reason != m_noText.constEnd(); ++reason) {
        qInfo("  %s: %d", qPrintable(reason.key()), reason.value());
        noText += reason.value();
    }
    qInfo("%s: %d messages, %d without text", what, m_messages, noText);
    QVERIFY(m_messages > noText);
    m_messages = 0;
    m_noText.clear();
}

void TestPreviewCorpus::files()
{
    for (const PreviewDialect *dialect : {&filePreview, &mailboxPreview}) {
        for (const char *folder : {"rfc822", "emlx", "mbs"}) {
            for (const QString &path : filesOf(folder)) {
                QFile file(path);
                QVERIFY(file.open(QIODevice::ReadOnly));
                count(file.readAll(), *dialect);
            }
        }
        report(dialect == &filePreview ? "files as files" : "files as mailbox messages");
    }
}

void TestPreviewCorpus::mailboxes()
{
    for (const PreviewDialect *dialect : {&mailboxPreview, &filePreview}) {
        for (const QString &path : filesOf("mbox")) {
            freeMessages();
            GetAllFieldsForTree(path);
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray bytes = file.readAll();
            for (const MessageRow &row : mailboxRows(path)) {
                previewOfMailboxMessage(path, row.offset, row.length);
                count(bytes.mid(row.offset.toInt(), row.length.toInt()), *dialect);
            }
        }
        freeMessages();
        report(dialect == &filePreview ? "mailbox messages as files" : "mailbox messages");
    }
}

QTEST_APPLESS_MAIN(TestPreviewCorpus)
#include "test_preview_corpus.moc"
