#include "data_table.h"
#include "save/olm_xml.h"

class TestOlmXml : public QObject
{
    Q_OBJECT

private slots:
    // What the XML reader would hold, or go into, without an end.
    void limits_data()
    {
        const DataTable row([](const QByteArray &inside, bool goesOn, const QString &error) {
            const QByteArray xml = "<email>" + inside + "</email>";
            ByteSource archive = ByteSource::ofBytes({xml.constData(), size_t(xml.size())});
            QCOMPARE(readOlmMail(&archive, 0, archive.size(), [=] { return goesOn; }).error, error);
        });
        const auto element = [](const QByteArray &name, const QByteArray &text) {
            return "<OPFMessageCopy" + name + '>' + text + "</OPFMessageCopy" + name + '>';
        };
        const QByteArray large(33 * 1024 * 1024, 'x');
        row("nested", QByteArray("<b>").repeated(900) + QByteArray("</b>").repeated(900), true, QString());
        row("nested too deep", QByteArray("<b>").repeated(2000), true, "nested too deep");
        row("long comment", "<!--" + large + "-->", true, "a text in it is too long");
        row("long body", element("Body", large), true, QString());
        row("stopped", element("Body", large), false, "Premature end of document.");
    }
    void limits() { checkRow(); }

    // A body that is too long to be held is read once more, which may fail then.
    void longBody()
    {
        const QByteArray body = QByteArray("a &amp; b\r\n").repeated(200000);
        const QByteArray xml = "<email><OPFMessageCopyBody>" + body + "</OPFMessageCopyBody></email>";
        const QByteArray whole = QByteArray("a & b\n").repeated(200000);
        const std::string_view bytes(xml.constData(), size_t(xml.size()));
        const auto goOn = [] { return true; };
        QByteArray got;
        const TakeBytes take = [&](std::string_view piece) { got.append(piece.data(), int(piece.size())); };
        ByteSource archive = ByteSource::ofBytes(bytes);
        const OlmMail mail = readOlmMail(&archive, 0, archive.size(), goOn);
        QCOMPARE(mail.bodyBytes, qint64(whole.size()));
        QVERIFY(mail.body.size() == 1024 * 1024 && whole.startsWith(mail.body));
        QVERIFY(readOlmBody(&archive, 0, archive.size(), goOn, take));
        QVERIFY(got == whole);
        ByteSource failing = ByteSource::failing(bytes, xml.size() / 2);
        QVERIFY(!readOlmBody(&failing, 0, failing.size(), goOn, take));
    }
};

QTEST_GUILESS_MAIN(TestOlmXml)
#include "test_olm_xml.moc"
