#include "browse/mime_walk.h"
#include "browse/preview.h"

#include "app/shared_state.h"
#include "browse/message_rows.h"
#include "scan/mbox_index.h"
#include "store_files.h"

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
            for (const QByteArray &file : readFiles(m_corpus + '/' + folder))
                preview(file);
    }

    void mailboxes()
    {
        const FileMap mailboxes = readFiles(m_corpus + "/mbox");
        for (const QString &name : mailboxes.keys()) {
            const QString path = m_corpus + "/mbox/" + name;
            freeMessages();
            GetAllFieldsForTree(path);
            for (const MessageRow &row : mailboxRows(path)) {
                previewOfMailboxMessage(path, row.offset, row.length);
                preview(mailboxes[name].mid(row.offset.toInt(), row.length.toInt()));
            }
        }
    }

private:
    void preview(const QByteArray &bytes)
    {
        for (const PreviewDialect *dialect : {&filePreview, &mailboxPreview}) {
            ++m_messages;
            m_noText += previewOfBytes(viewOf(bytes), *dialect).html ? 0 : 1;
        }
    }

    QString m_corpus;
    int m_messages = 0;
    int m_noText = 0;
};

QTEST_APPLESS_MAIN(TestPreviewCorpus)
#include "test_preview_corpus.moc"
