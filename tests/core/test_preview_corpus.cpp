#include "browse/mime_walk.h"
#include "browse/preview.h"

#include "app/shared_state.h"
#include "browse/message_rows.h"
#include "scan/mbox_index.h"

#include <QDirIterator>
#include <QtTest>

// Every message of the real mail in VELMORA_CORPUS, through both previews. What is looked for is a finding of a
// sanitizer; what is printed is how many messages show no text.
class TestPreviewCorpus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_corpus = qEnvironmentVariable("VELMORA_CORPUS");
        if (m_corpus.isEmpty())
            QSKIP("VELMORA_CORPUS names no folder of real mail");
    }
    void init() { m_messages = m_noText = 0; }
    void cleanup()
    {
        qInfo("%d previews, %d without text", m_messages, m_noText);
        QVERIFY(m_messages > m_noText);
        freeMessages();
    }

    void files()
    {
        for (const char *folder : {"rfc822", "emlx", "mbs"})
            for (const QString &path : filesOf(folder))
                preview(contentsOf(path));
    }

    void mailboxes()
    {
        for (const QString &path : filesOf("mbox")) {
            freeMessages();
            GetAllFieldsForTree(path);
            const QByteArray bytes = contentsOf(path);
            for (const MessageRow &row : mailboxRows(path)) {
                previewOfMailboxMessage(path, row.offset, row.length);
                preview(bytes.mid(row.offset.toInt(), row.length.toInt()));
            }
        }
    }

private:
    QStringList filesOf(const QString &folder) const
    {
        QStringList files;
        QDirIterator walk(m_corpus + "/" + folder, QDir::Files, QDirIterator::Subdirectories);
        while (walk.hasNext())
            files.append(walk.next());
        return files;
    }

    static QByteArray contentsOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void preview(const QByteArray &bytes)
    {
        for (const PreviewDialect *dialect : {&filePreview, &mailboxPreview}) {
            ++m_messages;
            if (!previewOfBytes({bytes.constData(), size_t(bytes.size())}, *dialect).html)
                ++m_noText;
        }
    }

    QString m_corpus;
    int m_messages = 0;
    int m_noText = 0;
};

QTEST_APPLESS_MAIN(TestPreviewCorpus)
#include "test_preview_corpus.moc"
