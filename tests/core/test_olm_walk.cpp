#include "data_table.h"
#include "olm_files.h"
#include "scan/olm_walk.h"
#include "store_files.h"

namespace
{
const QByteArray element = "<emails x></emails>";
const QByteArray zeroCrcHeader = olmDirectory("d");
const QByteArray localHeader = olmDirectory("");
const QByteArray message = olmEntry({"Local/box/In/__message_attachment__.xml", "<m/>"});

// What the walk tells, line by line.
QStringList walk(ByteSource *archive, OlmWalkResult *result = nullptr)
{
    QStringList lines;
    OlmWalkEvents events;
    events.goOn = [](qint64) { return true; };
    events.attachment = [&](const QString &name, qint64 offset, qint64 size) {
        lines.append(QString("%1 at %2 of %3").arg(name).arg(offset).arg(size));
    };
    events.messages = [&](const OlmText &text) {
        lines.append(QString("messages [%1] in [%2] to %3")
                         .arg(QString::fromUtf8(*text.xml), text.folder)
                         .arg(text.end));
    };
    const OlmWalkResult walked = walkOlm(archive, events);
    if (result)
        *result = walked;
    return lines;
}

QStringList walk(const QByteArray &bytes, OlmWalkResult *result = nullptr)
{
    ByteSource archive = ByteSource::ofBytes(viewOf(bytes));
    return walk(&archive, result);
}
} // namespace

class TestOlmWalk : public QObject
{
    Q_OBJECT

private slots:
    void entries_data()
    {
        const DataTable row(
            [](const QByteArray &archive, const QStringList &told) { QCOMPARE(walk(archive), told); });
        const auto found = [](int at, const QByteArray &text = element) {
            return QString("messages [%1] in [] to %2").arg(QString(text)).arg(at + text.size());
        };
        const int e = zeroCrcHeader.size();

        row("empty file", "", {});
        row("no archive", "some text, <email and PK", {});
        row("directories", zeroCrcHeader + zeroCrcHeader + element, {found(2 * e)});
        row("element behind a header without sizes", zeroCrcHeader + element, {found(e)});
        row("other bytes behind such a header", zeroCrcHeader + "<x>PK" + element, {found(e + 5)});
        row("message", message, {QString("messages [<m/>] in [In] to %1").arg(message.size())});
        row("attachment", olmEntry({"Local/a", "12345"}), {"Local/a at 57 of 5"});
        row("attachment: longer extra field", olmEntry({"Local/a", "12345", 1, 30}), {"Local/a at 67 of 5"});
        const QByteArray mail = "Local/b/F/__message_attachment__.xml";
        row("message: it is read 20 bytes into the extra field", olmEntry({mail, "12345", 1, 22}),
            {"messages [xx123] in [F] to 93"});
        row("short extra field", olmEntry({"Local/a", "12345", 1, 4}), {"Local/a at 41 of 5"});
        row("short extra field, no sizes: the scan goes on behind the header",
            olmEntry({"Local/a", element, 1, 4, 0xFFFFFFFF}), {found(41)});
        row("one half of the mark", olmEntry({"L/__message_attachment__", "1"}) + olmEntry({"L/a.xml", "2"}),
            {"L/__message_attachment__ at 74 of 1", "L/a.xml at 132 of 1"});
        row("the mark in a folder's name", olmEntry({"__message_attachment__.xml/a", "1"}),
            {"__message_attachment__.xml/a at 78 of 1"});
        row("zero byte in a name", olmEntry({QByteArray("Local/a\0b", 9), "1"}), {"Local/a at 59 of 1"});
        for (const char *name : {"Accounts/a/b/Contacts.xml", "Notes.xml/__message_attachment__.xml",
                                 "Calendar.xml", "Tasks.xml", "x/Categories.xml/"})
            row(name, olmEntry({name, element}), {});
        row("passed over by name: case counts", olmEntry({"notes.xml", "1"}), {"notes.xml at 59 of 1"});
        row("zero bytes", olmEntry({mail, QByteArray("12\0003", 4)}), {"messages [12] in [F] to 90"});

        const QByteArray c = centralHeader();
        row("two central headers", c + c + element, {found(2 * c.size())});
        row("three central headers", c + c + c + element, {});
        row("other bytes between them don't count", c + "<x>" + c + "PK" + c + element, {});
        row("an element between them starts the count anew", c + c + element + c + c + element,
            {found(2 * c.size()), found(4 * c.size() + element.size())});
        row("an entry does", c + c + zeroCrcHeader + c + element, {found(3 * c.size() + e)});
        row("one just behind a header", zeroCrcHeader + c + c + c + element, {found(e + 3 * c.size())});
        row("signatures one byte apart", c.left(3) + c + c + c + element, {});

        row("tags", "<emails></emails><emailsx></emails><EMAILS ></EMAILS >" + element, {found(54)});
        for (const QByteArray other : {"notes", "tasks", "contacts", "appointments"})
            row(other, '<' + other + " >" + element + "</" + other + '>', {});
        row("a tag in an element is text", "<emails <emails <notes x></emails>" + element,
            {found(0, "<emails <emails <notes x></emails>"), found(34)});
        row("a header in an element", "<emails PK\3\4></emails>", {found(0, "<emails PK\3\4></emails>")});
        row("no end tag: past the end", "<emails </email>x", {"messages [<emails </email>x] in [] to 34"});
        row("no end tag ends the walk, whatever the element", "<notes " + element, {});
        row("cut off in its header", message.left(12), {});
        row("cut off in its data", message.left(message.size() - 2),
            {QString("messages [<m] in [In] to %1").arg(message.size())});
    }

    void entries() { checkRow(); }

    void folders_data()
    {
        const DataTable row(
            [](const QString &entry, const QString &folder) { QCOMPARE(olmFolderOfEntry(entry), folder); });
        row("local", "Local/box/Inbox/m", "Inbox");
        row("local, deep", "Local/box/Inbox/A/B/m", "Inbox/A/B");
        row("account", "Accounts/kind/name/Inbox/A/m", "Inbox/A");
        row("case counts", "local/box/Inbox/m", "");
        row("any other", "Other/box/Inbox/m", "");
        row("nothing between", "Local/box/m", "");
        row("too short", "Local/m", "");
        row("shorter still", "Accounts", "");
        row("empty components stay", "Local/box//a//m", "/a/");
        row("as they stand", "Local/box/../../etc/m", "../../etc");
    }

    void folders() { checkRow(); }

    // The same result wherever the pieces lie that are read at a time.
    void bufferSeams()
    {
        for (const int seam : {4096, 3 * 4096, 7 * 4096})
            for (int before = seam - 45; before <= seam + 5; ++before) {
                const QByteArray text = "<emails " + QByteArray(seam, 'x') + "</emails>";
                const QByteArray archive = QByteArray(before, '.') + text + QByteArray(before, '<') + message;
                const QStringList told = {
                    QString("messages [%1] in [] to %2").arg(QString(text)).arg(before + text.size()),
                    QString("messages [<m/>] in [In] to %1").arg(archive.size())};
                QCOMPARE(walk(archive), told);
            }
    }

    // No crash, no endless walk, and the message behind is found unless the entry claims to reach past the
    // end, with a size that a position can hold.
    void hostileSizes_data()
    {
        const DataTable row([](qint64 size, qint64 storedSize) {
            const bool beyondEnd = storedSize > 1000 && storedSize != std::numeric_limits<qint64>::max();
            for (const char *name : {"Local/a", "Local/b/F/__message_attachment__.xml"}) {
                QByteArray entry = olmEntry({name, "", 1, 20, 0, 0});
                entry.chop(16);
                entry += littleEndian(static_cast<quint64>(size), 8) +
                         littleEndian(static_cast<quint64>(storedSize), 8);
                QCOMPARE(!walk(entry + message).filter("[<m/>] in [In]").isEmpty(), !beyondEnd);
            }
        });
        constexpr qint64 most = std::numeric_limits<qint64>::max();
        constexpr qint64 negative = std::numeric_limits<qint64>::min();
        row("both beyond the end", (qint64{1} << 40), (qint64{1} << 40));
        for (const qint64 size : {most, negative, negative + 5, qint64{0}, qint64{-2}})
            for (const qint64 stored : {most, negative, most - 100, qint64{0}, qint64{-60}})
                row(QByteArray::number(size) + ", " + QByteArray::number(stored), size, stored);
    }

    void hostileSizes() { checkRow(); }

    void eachByteIsReadFewTimes_data()
    {
        // "reads": at most, for each 4 KiB
        const DataTable row([](const QByteArray &piece, int reads) {
            const QByteArray bytes = piece.repeated((8 << 20) / piece.size());
            ByteSource archive = ByteSource::ofBytes(viewOf(bytes));
            walk(&archive);
            QVERIFY2(archive.bytesRead() <= reads * archive.size(),
                     QByteArray::number(archive.bytesRead() / archive.size()));
        });
        row("nested elements", "<emails ", 3);
        row("almost elements", "<emails<notes<tasks", 2);
        row("almost signatures", "PK\1PK\3PKP<", 2);
        row("headers without sizes", zeroCrcHeader, 2);
        row("texts that claim the whole archive",
            olmEntry({"Local/b/F/__message_attachment__.xml", QByteArray(200, 'x'), 1, 20, 1 << 30}), 300);
    }

    void eachByteIsReadFewTimes() { checkRow(); }

    void attachmentsAreNotRead()
    {
        const QByteArray bytes = olmEntry({"Local/a", QByteArray(1 << 20, 'x')}).repeated(20);
        ByteSource archive = ByteSource::ofBytes(viewOf(bytes));
        QCOMPARE(walk(&archive).size(), 20);
        QVERIFY2(archive.bytesRead() < 40 * 5000, QByteArray::number(archive.bytesRead()));
    }

    // Whether an archive has its end: without it messages may be missing.
    void cutOff_data()
    {
        const DataTable row([](const QByteArray &archive, bool cutOff) {
            OlmWalkResult result;
            walk(archive, &result);
            QCOMPARE(result.cutOff, cutOff);
        });
        const QByteArray end = QByteArray("PK\5\6", 4) + QByteArray(18, '\0');
        row("no central directory", message, true);
        row("central directory", message + centralHeader(), false);
        row("cut within it", message + centralHeader() + centralHeader().left(40), true);
        row("with its end record and a comment", message + centralHeader() + end + "comment", false);
        row("empty, only an end record", end, false);
        row("cut within the end record", message + centralHeader() + end.left(20), true);
    }

    void cutOff() { checkRow(); }

    void readError()
    {
        const QByteArray bytes = message + message + "....";
        ByteSource archive = ByteSource::failing(viewOf(bytes), message.size() + 3, "/a.olm");
        QCOMPARE(walk(&archive).size(), 1);
        QVERIFY(archive.errorString().startsWith("/a.olm: "));
    }

    void stop()
    {
        const QByteArray bytes = message + message + message;
        ByteSource archive = ByteSource::ofBytes(viewOf(bytes));
        int told = 0;
        OlmWalkEvents events;
        events.goOn = [&](qint64) { return told < 2; };
        events.messages = [&](const OlmText &) { ++told; };
        QVERIFY(walkOlm(&archive, events).stopped);
        QCOMPARE(told, 2);
    }
};

QTEST_APPLESS_MAIN(TestOlmWalk)
#include "test_olm_walk.moc"
