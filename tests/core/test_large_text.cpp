#include "browse/body_text.h"
#include "browse/preview.h"
#include "store_files.h"
#include "text/base64.h"
#include "text/codecs.h"
#include "text/quoted_printable.h"

#include <QRandomGenerator>
#include <QTextCodec>

namespace
{
// `size` random ones of these bytes.
QByteArray randomText(QRandomGenerator *random, const QByteArray &bytes, int size)
{
    QByteArray text;
    for (int i = 0; i < size; ++i)
        text += bytes[random->bounded(bytes.size())];
    return text;
}
} // namespace

/// What works on many bytes at a time gives the same as one by one.
class TestLargeText : public QObject
{
    Q_OBJECT

private slots:
    void base64()
    {
        QRandomGenerator random(1);
        for (int size = 0; size < 400; ++size) {
            // Mostly whole groups, with what may stand between digits.
            QByteArray text =
                randomText(&random, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/", size);
            for (int noise = size % 5; noise > 0 && size > 0; --noise)
                text.insert(random.bounded(size),
                            randomText(&random, QByteArray("\r\n=-_ \0\x80\xFF", 9), 2));
            QCOMPARE(decodeBase64(viewOf(text)), QByteArray::fromBase64(text));
        }
    }

    void utf8InPieces()
    {
        const QByteArray pieces[] = {
            "a",        " ",   "\n", "\xC3\xA9", "\xED\x95\x9C", "\xEF\xBB\xBF", "\xF0\x9F\x98\x80",
            "\xE2\x82", "\xFF"};
        QRandomGenerator random(2);
        for (const int ascii : {3, 0}) { // without a byte of ASCII there is no place to part the text
            QByteArray bytes = "\xEF\xBB\xBF";
            while (bytes.size() < 200000)
                bytes += pieces[ascii == 3 ? random.bounded(9) : random.bounded(3, 9)];
            bytes += '\0';
            bytes += "\xE2\x82";
            QCOMPARE(textOf(bytes, nullptr), QString::fromUtf8(bytes.constData(), bytes.size()));
            QTextCodec *codec = QTextCodec::codecForName("UTF-8");
            QCOMPARE(textOf(bytes, codec), codec->toUnicode(bytes));
        }
    }

    void everyPlaceInAVector()
    {
        const QByteArray head = "\nX: y\nContent-Type: text/html; charset=\"utf-8\"\n"
                                "Content-Transfer-Encoding: quoted-printable\n\n";
        const QByteArray tail =
            "\n\n--b\nContent-Type: image/png; filename=\"a\"\nC: x\n<?xml version=\"1.0\"?>\n";
        for (int size = 1; size < 70; ++size) {
            const QByteArray text = QByteArray(size, 'C');
            const QByteArray message = head + text + "=3D=\n<?=C3=A9\n" + text + tail;
            const std::vector<char> block(message.begin(), message.end());
            for (const PreviewDialect *dialect : {&filePreview, &mailboxPreview}) {
                const PreviewText preview = previewOfBytes({block.data(), block.size()}, *dialect);
                QCOMPARE(preview.html.value_or(""), QString::fromUtf8(text + "=<?\xC3\xA9" + text));
                QCOMPARE(preview.header.back().text, QString("\nAttachments: a"));
            }
            const QByteArray list =
                text + "\nb <?xml version=\"1.0\" encoding=\"UTF-8\"?> c\n" + text + "\nd\n";
            QCOMPARE(int(endOfText(viewOf(list), filePreview)), list.size() - size - 3);
            QCOMPARE(int(endOfText(viewOf(list), mailboxPreview)), list.size());
            QCOMPARE(QDecode(text + "=4" + text + "="), text + "L" + text.mid(1) + QByteArray(1, '\0'));
        }
    }
};

QTEST_APPLESS_MAIN(TestLargeText)
#include "test_large_text.moc"
