#include "data_table.h"
#include "olm_files.h"
#include "scan/olm_record.h"

#include <QtTest>

namespace
{
/// The records of a text, each read on its own.
struct Reading {
    std::vector<MailMLRC> records;
    QString names;
    QString offsets;
    QString sizes;

    void pend(const QString &name, qint64 offset, qint64 size) { pending().add(name, offset, size); }
    OlmPendingAttachments pending() { return {names, offsets, sizes}; }
    Reading &read(const QByteArray &xml, qint64 end)
    {
        OlmPendingAttachments all = pending();
        const QByteArray text = olmText(xml);
        forEachOlmMessage(text, end, [&](std::string_view message, qint64 start) {
            MailMLRC record;
            readOlmMessage(message, start, &all, &record);
            records.push_back(std::move(record));
        });
        return *this;
    }
};

MailMLRC recordOf(const QByteArray &message)
{
    Reading reading;
    reading.read(olmXml({message}), 0);
    return reading.records.at(0);
}

bool isGenerated(const QByteArray &id)
{
    return QRegularExpression("^[0-9a-f]{32}$").match(id).hasMatch();
}

QByteArray fieldOf(const MailMLRC &record, const QString &name)
{
    const QMap<QString, QByteArray> fields = {
        {"FromName", record.szFromName.bytes()},     {"FromAddress", record.szFromAddress.bytes()},
        {"ToName", record.szToName.bytes()},         {"ToAddress", record.szToAddress.bytes()},
        {"CcName", record.szCcName.bytes()},         {"CcAddress", record.szCcAddress.bytes()},
        {"BccAddress", record.szBccAddress.bytes()}, {"SentTime", record.szSentTime.bytes()},
        {"Received", record.szReceivedTime.bytes()}, {"Subject", record.szSubject.bytes()},
        {"Topic", record.szThreadTopic.bytes()},     {"MessageId", record.szMessageId.bytes()},
        {"References", record.szReferences.bytes()}, {"InReplyTo", record.szInReplyTo.bytes()},
        {"Priority", record.szPriority.bytes()},     {"Outgoing", QByteArray::number(record.iIsOutgoing)},
    };
    return fields.value(name, "no such field");
}
} // namespace

class TestOlmRecord : public QObject
{
    Q_OBJECT

private slots:
    void values_data()
    {
        const DataTable<QByteArray, QString, QByteArray> row("element", "field", "value");
        const QByteArray copy = "OPFMessageCopy";
        row("subject", olmElement(copy + "Subject", " a &amp;lt;b&nbsp;&lt;c&gt; &quot;\n"), "Subject",
            "a &lt;b <c&gt; &quot;");
        row("subject: four line feeds", olmElement(copy + "Subject", "a\n\n\n\nb\n\n\n\n\nc"), "Subject",
            "a b \nc");
        row("subject: characters outside Latin-1",
            olmElement(copy + "Subject", "Z\xC3\xBCrich \xE2\x82\xAC\xF0\x9F\x98\x80"), "Subject",
            "Z\xFCrich ???");
        row("topic: no entities", olmElement(copy + "ThreadTopic", "a &lt;\n\n\n\nb"), "Topic", "a &lt; b");
        row("references: no entities", olmElement(copy + "References", "&lt;a>\n"), "References", "&lt;a>");
        row("in reply to", olmElement(copy + "InReplyTo", "&lt;a>\n"), "InReplyTo", "<a>");
        row("sent", olmElement(copy + "SentTime", "2014-11-12T09:08:04"), "SentTime",
            "Wed, 12 Nov 2014 22:53:04 +1345");
        row("received: a letter spoils the seconds",
            olmElement(copy + "ReceivedTime", "2014-06-12T09:08:04Z"), "Received",
            "Thu, 12 Jun 2014 21:53:00 +1245");
        row("sent: too long", olmElement(copy + "SentTime", "2014-11-12T09:08:04" + QByteArray(13, '0')),
            "SentTime", "");
        row("outgoing", olmElement("OPFMessageIsOutgoing", " 1 "), "Outgoing", "1");
        row("outgoing: no number", olmElement("OPFMessageIsOutgoing", "yes"), "Outgoing", "0");
        row("outgoing: missing", "", "Outgoing", "0");
        row("priority", olmElement("OPFMessageGetPriority", "2"), "Priority", "2");
        row("priority: four bytes at most", olmElement("OPFMessageGetPriority", "normal"), "Priority",
            "norm");
        row("no end tag", "<OPFMessageCopySubject xml:space=\"preserve\">a", "Subject", "");
        row("no start tag", "a</OPFMessageCopySubject>", "Subject", "");
        row("the first of two", olmElement(copy + "Subject", "a") + olmElement(copy + "Subject", "b"),
            "Subject", "a");
        row("22 bytes behind the name, whatever they are",
            "<OPFMessageCopySubject1234567890123456789012a</OPFMessageCopySubject>", "Subject", "a");
    }

    void values()
    {
        QFETCH(QByteArray, element);
        QFETCH(QString, field);
        QTEST(fieldOf(recordOf(element), field), "value");
    }

    void limits_data()
    {
        const DataTable<QByteArray, QString, int> table("element", "field", "limit");
        const auto row = [&](const char *element, const char *field, int limit) {
            table(field, QByteArray("OPFMessageCopy") + element, field, limit);
        };
        row("Subject", "Subject", 1023);
        row("ThreadTopic", "Topic", 99);
        row("References", "References", 99);
        row("InReplyTo", "InReplyTo", 99);
        row("FromAddresses", "FromAddress", 99);
        row("FromAddresses", "FromName", 99);
        row("ToAddresses", "ToAddress", 2999);
        row("ToAddresses", "ToName", 2999);
        row("CCAddresses", "CcAddress", 3000);
        row("CCAddresses", "CcName", 3000);
        row("BCCAddresses", "BccAddress", 2049);
    }

    void limits()
    {
        QFETCH(QByteArray, element);
        QFETCH(QString, field);
        QFETCH(int, limit);
        // A text of n characters of two bytes each, or a list of them with its ";".
        const auto stored = [&](int n) {
            const QByteArray text = QString(n, QChar(0xFC)).toUtf8();
            const QByteArray item = text.left(text.size() - 2);
            const QByteArray value = field.endsWith("Address") ? olmAddress(item, "n")
                                     : field.endsWith("Name")  ? olmAddress("a", item)
                                                               : text;
            return fieldOf(recordOf(olmElement(element, value)), field).size();
        };
        QCOMPARE(stored(limit), limit);
        QCOMPARE(stored(limit + 1), 0);
    }

    void addresses_data()
    {
        const DataTable<QString, QByteArray, QByteArray, QByteArray> row("kind", "items", "addresses",
                                                                         "names");
        const QByteArray ann = olmAddress("ann@x", "Ann");
        const QByteArray bob = olmAddress("bob@x", "Bob");
        const QByteArray nameless = olmAddress("carla@x");
        row("from", "From", ann, "ann@x;", "Ann;");
        row("from: the last, once for each", "From", ann + nameless + bob, "bob@x;bob@x;bob@x;",
            "Bob;Bob;Bob;");
        row("from without a name", "From", ann + nameless, "carla@x;carla@x;", "");
        row("to", "To", ann + nameless + bob, "ann@x;carla@x;bob@x;", "Ann;Unknown Name;Bob;");
        row("cc", "CC", nameless, "carla@x;", "Unknown Name;");
        row("bcc", "BCC", ann + nameless, "ann@x;carla@x;", "");
        row("entities stay", "To", olmAddress("a&amp;b", "&lt;&quot;"), "a&amp;b;", "&lt;&quot;;");
        row("empty values", "To", olmAddress("", ""), ";", ";");
        row("what follows the last item is none", "To",
            ann + "<emailAddress OPFContactEmailAddressAddress=\"x\"", "ann@x;", "Ann;");
        row("no items", "To", "", "", "");
        // The length of a nameless address is reckoned from an item that begins at a fixed distance.
        const auto shortStart = [](const QByteArray &address) {
            return "<e OPFContactEmailAddressAddress=\"" + address +
                   "\" OPFContactEmailAddressType=\"0\"></emailAddress>";
        };
        row("nameless: a shorter start shortens it", "To",
            shortStart("forty.characters.long.address@example.or"), "forty.ch;", "Unknown Name;");
        row("nameless: less than no length runs to the end", "To", shortStart("a@b"),
            "a@b\" OPFContactEmailAddressType=\"0\">;", "Unknown Name;");
        row("other order", "To",
            "<e OPFContactEmailAddressName=\"n\" OPFContactEmailAddressAddress=\"a\" "
            "OPFContactEmailAddressType=\"0\"></emailAddress>" +
                ann,
            "ann@x;", "Ann;");
        row("address is missing", "To", "<e OPFContactEmailAddressType=\"0\"></emailAddress>" + ann, "ann@x;",
            "Ann;");
        row("type is missing", "From", ann + "<e OPFContactEmailAddressAddress=\"a\"></emailAddress>", "",
            "");
    }

    void addresses()
    {
        QFETCH(QString, kind);
        QFETCH(QByteArray, items);
        const MailMLRC record = recordOf(olmElement("OPFMessageCopy" + kind.toLatin1() + "Addresses", items));
        const QString field = kind.left(1) + kind.mid(1).toLower();
        QTEST(fieldOf(record, field + "Address"), "addresses");
        if (kind != "BCC")
            QTEST(fieldOf(record, field + "Name"), "names");
    }

    void messageIds_data()
    {
        // "id": null: a generated one
        const DataTable<QByteArray, QByteArray> row("message", "id");
        const QByteArray id = olmElement("OPFMessageCopyMessageID", "&lt;a@b>");
        const QByteArray subject = olmElement("OPFMessageCopySubject", "s");
        row("alone", id, "<a@b>");
        row("read after what stands behind it", id + subject, "<a@b>");
        row("its last character is no bracket", olmElement("OPFMessageCopyMessageID", "abc"), "ab");
        row("empty", olmElement("OPFMessageCopyMessageID", "  "), QByteArray());
        row("as long as the field", olmElement("OPFMessageCopyMessageID", QByteArray(253, 'a') + ">"),
            QByteArray(253, 'a') + ">");
        row("too long, alone", olmElement("OPFMessageCopyMessageID", QByteArray(254, 'a') + ">"), "");
        row("too long, with a subject",
            subject + olmElement("OPFMessageCopyMessageID", QByteArray(254, 'a') + ">"), QByteArray());
        for (const char *later :
             {"CopyReferences", "CopyInReplyTo", "CopyReceivedTime", "IsOutgoing", "GetPriority"}) {
            const QByteArray element = QByteArray("OPFMessage") + later;
            row(later, olmElement(element, "1") + id, QByteArray());
            QTest::addRow("%s, empty", later) << olmElement(element, "") + id << QByteArray();
        }
        row("lists ask for none", olmElement("OPFMessageCopyToAddresses", olmAddress("a")), "");
        row("body alone", olmElement("OPFMessageCopyBody", ""), QByteArray());
    }

    void messageIds()
    {
        QFETCH(QByteArray, message);
        QFETCH(QByteArray, id);
        const QByteArray stored = recordOf(message).szMessageId.bytes();
        if (id.isNull())
            QVERIFY2(isGenerated(stored), stored);
        else
            QCOMPARE(stored, id);
    }

    void attachments_data()
    {
        // "lists": ids, types, names, URLs; empty: none
        const DataTable<QByteArray, QStringList, QByteArrayList> row("items", "pending", "lists");
        const QByteArray two =
            olmAttachmentItem("a.txt", "u/a") + olmAttachmentItem("b.png", "u/b", "image/png", "b@x");
        row("two", two, {"u/a", "u/b"}, {"no;b@x;", "text/plain;image/png;", "a.txt;b.png;", "u/a;u/b;"});
        row("one is pending", two, {"u/a"}, {});
        row("three are pending", two, {"u/0", "u/a", "u/b"}, {});
        row("other order", two, {"u/b", "u/a"}, {});
        row("case counts", two, {"U/a", "u/b"}, {});
        row("none pending", two, {}, {});
        row("entities", olmAttachmentItem("a&lt;&amp;b", "u/&amp;a&nbsp;c"), {"u/&a c"},
            {"no;", "text/plain;", "a<&b;", "u/&a c;"});
        row("quotes in the URL go", olmAttachmentItem("a", "u/\"a\""), {"u/a"},
            {"no;", "text/plain;", "a;", "u/a;"});
        row("a semicolon in the name", olmAttachmentItem("a;b", "u/a"), {"u/a"}, {});
        row("an entity that keeps its semicolon", olmAttachmentItem("a&quot;", "u/a"), {"u/a"}, {});
        row("a semicolon in name and entry", olmAttachmentItem("a", "u;a"), {"u;a"}, {});
        row("empty type and id", olmAttachmentItem("a", "u", "", ""), {"u"}, {";", ";", "a;", "u;"});
        row("no type",
            "<messageAttachment OPFAttachmentName=\"a\" OPFAttachmentURL=\"u\"></messageAttachment>", {"u"},
            {});
        row("other attributes",
            "<m OPFAttachmentURL=\"u\" OPFAttachmentName=\"a\" "
            "OPFAttachmentContentType=\"t\"></messageAttachment>",
            {"u"}, {});
    }

    void attachments()
    {
        QFETCH(QByteArray, items);
        QFETCH(QStringList, pending);
        QFETCH(QByteArrayList, lists);
        Reading reading;
        for (int i = 0; i < pending.size(); ++i)
            reading.pend(pending.at(i), 100 + i, 10 + i);
        reading.read(olmXml({olmElement("OPFMessageCopyAttachmentList", items)}), 0);
        const MailMLRC &record = reading.records.at(0);
        QVERIFY(reading.names.isEmpty() && reading.offsets.isEmpty() && reading.sizes.isEmpty());
        const QByteArrayList stored = {record.pAttachContentIds, record.pAttachContentTypes,
                                       record.pAttachNames, record.pAttachUrls};
        QCOMPARE(record.pAttachContentIds.isNull(), lists.isEmpty());
        if (lists.isEmpty())
            return;
        QCOMPARE(stored, lists);
        QCOMPARE(record.pAttachOffsets, QByteArray(pending.size() == 2 ? "100;101;" : "100;"));
        QCOMPARE(record.pAttachSizes, QByteArray(pending.size() == 2 ? "10;11;" : "10;"));
    }

    // Pending attachments wait for the next message that has a list.
    void pendingLists()
    {
        const QByteArray list = olmElement("OPFMessageCopyAttachmentList", olmAttachmentItem("a", "u"));
        Reading reading;
        reading.pend("u", 5, 6);
        reading.read("no message", 0).read(olmXml({olmElement("OPFMessageCopySubject", "s"), list, list}), 0);
        QVERIFY(reading.records.at(0).pAttachNames.isNull());
        QCOMPARE(reading.records.at(1).pAttachNames, QByteArray("a;"));
        QVERIFY(reading.records.at(2).pAttachNames.isNull());
        reading.pend("u", 5, 6);
        reading.read(olmXml({olmElement("OPFMessageCopyAttachmentList", "")}), 0);
        QVERIFY(reading.names.isEmpty());
    }

    void bodyPlaces_data()
    {
        const DataTable<QByteArray, QByteArrayList> row("before", "bodies");
        row("one", QByteArray(), {"Hello"});
        row("empty", QByteArray(), {""});
        row("three", QByteArray(), {"a", "bb", "ccc"});
        row("blanks and entities count", QByteArray(), {" \n&lt;\xC3\xA9 "});
        row("a byte order mark before it doesn't", "\xEF\xBB\xBF", {"a", "b"});
    }

    // Where bodies lie in an archive is counted back from the end of their text.
    void bodyPlaces()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArrayList, bodies);
        QByteArrayList messages;
        for (const QByteArray &body : bodies)
            messages.append(olmElement("OPFMessageCopySubject", "\xC3\xBC") +
                            olmElement("OPFMessageCopyBody", body));
        const QByteArray archive = QByteArray(50, '.') + before + olmXml(messages);
        Reading reading;
        reading.read(archive.mid(50), archive.size());
        QCOMPARE(reading.records.size(), static_cast<size_t>(bodies.size()));
        for (int i = 0; i < bodies.size(); ++i) {
            const MailMLRC &record = reading.records.at(static_cast<size_t>(i));
            QCOMPARE(record.llBodySize, qint64(bodies.at(i).size()));
            QCOMPARE(archive.mid(static_cast<int>(record.llBodyOffset), bodies.at(i).size()), bodies.at(i));
        }
    }

    void closeTags()
    {
        // Nearer than the start tag should be long: a body of less than no length, a value that runs to the end.
        const MailMLRC record = recordOf("<OPFMessageCopyBody>x</OPFMessageCopyBody>"
                                         "<OPFMessageCopySubject>y</OPFMessageCopySubject>tail");
        QCOMPARE(record.llBodySize, qint64(-20));
        QCOMPARE(record.szSubject.bytes(), QByteArray("ect>tail"));
        // An invalid byte counts three, so that what comes before it seems to lie further to the front.
        Reading reading;
        reading.read(olmXml({olmElement("OPFMessageCopyBody", "ab") + "\xFF"}), 1000);
        QCOMPARE(reading.records[0].llBodyOffset, qint64(1000 - 9 - 8 - 3 - 21 - 2));
        // What stands behind the last message is not looked at.
        Reading tail;
        tail.read(olmXml({olmElement("OPFMessageCopyBody", "ab")}) + "12345", 1000);
        QCOMPARE(tail.records[0].llBodyOffset, qint64(1000 - 9 - 8 - 21 - 2));
    }

    void noMessage()
    {
        for (const char *text : {"", "<emails ></emails>", "<email>", "</EMAIL>", "</email"})
            QVERIFY(Reading().read(text, 0).records.empty());
        QCOMPARE(Reading().read("</email></email>", 0).records.size(), size_t(2));
    }

    // A list that is dropped in the end is not made first.
    void manySenders()
    {
        const QByteArray items = olmAddress("a").repeated(100000) + olmAddress(QByteArray(1 << 20, 'b'), "n");
        const MailMLRC record = recordOf(olmElement("OPFMessageCopyFromAddresses", items));
        QVERIFY(record.szFromAddress.isEmpty());
        QVERIFY(record.szFromName.isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestOlmRecord)
#include "test_olm_record.moc"
