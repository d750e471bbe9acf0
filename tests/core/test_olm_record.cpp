#include "data_table.h"
#include "olm_files.h"
#include "scan/olm_record.h"

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
        const DataTable row([](const QByteArray &element, const QString &field, const QByteArray &value) {
            QCOMPARE(fieldOf(recordOf(element), field), value);
        });
        const auto copy = [&row](const char *name, const QByteArray &element, const QByteArray &text,
                                 const char *field,
                                 const char *value) { row(name, olmCopy(element, text), field, value); };
        copy("text", "Subject", " a &amp;lt;b&nbsp;&lt;c&gt; &quot;\n", "Subject", "a &lt;b <c&gt; &quot;");
        copy("four line feeds", "Subject", "a\n\n\n\nb\n\n\n\n\nc", "Subject", "a b \nc");
        copy("outside Latin-1", "Subject", "Z\xC3\xBC \xE2\x82\xAC\xF0\x9F\x98\x80", "Subject", "Z\xFC ???");
        copy("topic: no entities", "ThreadTopic", "a &lt;\n\n\n\nb", "Topic", "a &lt; b");
        copy("references: no entities", "References", "&lt;a>\n", "References", "&lt;a>");
        copy("in reply to", "InReplyTo", "&lt;a>\n", "InReplyTo", "<a>");
        copy("sent", "SentTime", "2014-11-12T09:08:04", "SentTime", "Wed, 12 Nov 2014 22:53:04 +1345");
        copy("received: a letter spoils the seconds", "ReceivedTime", "2014-06-12T09:08:04Z", "Received",
             "Thu, 12 Jun 2014 21:53:00 +1245");
        copy("sent: too long", "SentTime", "2014-11-12T09:08:04" + QByteArray(13, '0'), "SentTime", "");
        row("outgoing", olmElement("OPFMessageIsOutgoing", " 1 "), "Outgoing", "1");
        row("outgoing: no number", olmElement("OPFMessageIsOutgoing", "yes"), "Outgoing", "0");
        row("outgoing: missing", "", "Outgoing", "0");
        row("priority: four bytes", olmElement("OPFMessageGetPriority", "normal"), "Priority", "norm");
        row("no end tag", "<OPFMessageCopySubject xml:space=\"preserve\">a", "Subject", "");
        row("no start tag", "a</OPFMessageCopySubject>", "Subject", "");
        const QByteArray two = olmCopy("Subject", "a") + olmCopy("Subject", "b");
        row("the first of two", two, "Subject", "a");
        row("22 bytes behind the name, whatever they are",
            "<OPFMessageCopySubject1234567890123456789012a</OPFMessageCopySubject>", "Subject", "a");
    }

    void values() { checkRow(); }

    void limits_data()
    {
        const DataTable row([](const QByteArray &element, const QString &field, int limit) {
            // A text of n characters of two bytes each, or a list of them with its ";".
            const auto stored = [&](int n) {
                const QByteArray text = QString(n, QChar(0xFC)).toUtf8();
                const QByteArray item = text.left(text.size() - 2);
                const QByteArray value = field.endsWith("Address") ? olmAddress(item, "n")
                                         : field.endsWith("Name")  ? olmAddress("a", item)
                                                                   : text;
                return fieldOf(recordOf(olmCopy(element, value)), field).size();
            };
            QCOMPARE(stored(limit), limit);
            QCOMPARE(stored(limit + 1), 0);
        });
        row("Subject", "Subject", "Subject", 1023);
        row("Topic", "ThreadTopic", "Topic", 99);
        row("References", "References", "References", 99);
        row("InReplyTo", "InReplyTo", "InReplyTo", 99);
        row("FromAddress", "FromAddresses", "FromAddress", 99);
        row("FromName", "FromAddresses", "FromName", 99);
        row("ToAddress", "ToAddresses", "ToAddress", 2999);
        row("ToName", "ToAddresses", "ToName", 2999);
        row("CcAddress", "CCAddresses", "CcAddress", 3000);
        row("CcName", "CCAddresses", "CcName", 3000);
        row("BccAddress", "BCCAddresses", "BccAddress", 2049);
    }

    void limits() { checkRow(); }

    void addresses_data()
    {
        const DataTable row([](const QString &kind, const QByteArray &items, const QByteArray &addresses,
                               const QByteArray &names) {
            const MailMLRC record = recordOf(olmCopy(kind.toLatin1() + "Addresses", items));
            const QString field = kind.left(1) + kind.mid(1).toLower();
            QCOMPARE(fieldOf(record, field + "Address"), addresses);
            if (kind != "BCC")
                QCOMPARE(fieldOf(record, field + "Name"), names);
        });
        const QByteArray ann = olmAddress("ann@x", "Ann");
        const QByteArray bob = olmAddress("bob@x", "Bob");
        const QByteArray nameless = olmAddress("carla@x");
        row("from", "From", ann, "ann@x;", "Ann;");
        row("from: last, for each", "From", ann + nameless + bob, "bob@x;bob@x;bob@x;", "Bob;Bob;Bob;");
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
        const QByteArray start = "<e OPFContactEmailAddressAddress=\"";
        const QByteArray end = "\" OPFContactEmailAddressType=\"0\"></emailAddress>";
        row("nameless: a shorter start shortens it", "To",
            start + "forty.characters.long.address@example.or" + end, "forty.ch;", "Unknown Name;");
        row("nameless: less than no length runs to the end", "To", start + "a@b" + end,
            "a@b\" OPFContactEmailAddressType=\"0\">;", "Unknown Name;");
        row("other order", "To", "<e OPFContactEmailAddressName=\"n\" " + start.mid(3) + "a" + end + ann,
            "ann@x;", "Ann;");
        row("address is missing", "To", "<e x=\"" + end + ann, "ann@x;", "Ann;");
        row("type is missing", "From", ann + start + "a\"></emailAddress>", "", "");
    }

    void addresses() { checkRow(); }

    void messageIds_data()
    {
        // "id": null: a generated one
        const DataTable row([](const QByteArray &message, const QByteArray &id) {
            const QByteArray stored = recordOf(message).szMessageId.bytes();
            if (id.isNull())
                QVERIFY2(isGenerated(stored), stored);
            else
                QCOMPARE(stored, id);
        });
        const QByteArray id = olmCopy("MessageID", "&lt;a@b>");
        const QByteArray subject = olmCopy("Subject", "s");
        const auto idOf = [](const QByteArray &text) { return olmCopy("MessageID", text); };
        row("alone", id, "<a@b>");
        row("read after what stands behind it", id + subject, "<a@b>");
        row("its last character is no bracket", idOf("abc"), "ab");
        row("empty", idOf("  "), QByteArray());
        row("as long as the field", idOf(QByteArray(253, 'a') + ">"), QByteArray(253, 'a') + ">");
        row("too long, alone", idOf(QByteArray(254, 'a') + ">"), "");
        row("too long, with a subject", subject + idOf(QByteArray(254, 'a') + ">"), QByteArray());
        for (const char *later :
             {"CopyReferences", "CopyInReplyTo", "CopyReceivedTime", "IsOutgoing", "GetPriority"}) {
            const QByteArray element = QByteArray("OPFMessage") + later;
            row(later, olmElement(element, "1") + id, QByteArray());
            row(element + ", empty", olmElement(element, "") + id, QByteArray());
        }
        row("lists ask for none", olmCopy("ToAddresses", olmAddress("a")), "");
        row("body alone", olmCopy("Body", ""), QByteArray());
    }

    void messageIds() { checkRow(); }

    void attachments_data()
    {
        const DataTable row([](const QByteArray &items, const QStringList &pending,
                               const QByteArrayList &lists) {
            Reading reading;
            for (int i = 0; i < pending.size(); ++i)
                reading.pend(pending.at(i), 100 + i, 10 + i);
            reading.read(olmXml({olmCopy("AttachmentList", items)}), 0);
            const MailMLRC &record = reading.records.at(0);
            QVERIFY(reading.names.isEmpty() && reading.offsets.isEmpty() && reading.sizes.isEmpty());
            const bool two = pending.size() == 2;
            const QByteArrayList all =
                lists.isEmpty() ? QByteArrayList{{}, {}, {}, {}, {}, {}}
                                : lists + QByteArrayList{two ? "100;101;" : "100;", two ? "10;11;" : "10;"};
            const QByteArrayList stored = {record.pAttachContentIds, record.pAttachContentTypes,
                                           record.pAttachNames,      record.pAttachUrls,
                                           record.pAttachOffsets,    record.pAttachSizes};
            QCOMPARE(stored, all);
            QCOMPARE(record.pAttachContentIds.isNull(), lists.isEmpty());
        });
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
        row("quotes go", olmAttachmentItem("a", "u/\"a\""), {"u/a"}, {"no;", "text/plain;", "a;", "u/a;"});
        row("a semicolon in the name", olmAttachmentItem("a;b", "u/a"), {"u/a"}, {});
        row("an entity that keeps its semicolon", olmAttachmentItem("a&quot;", "u/a"), {"u/a"}, {});
        row("a semicolon in name and entry", olmAttachmentItem("a", "u;a"), {"u;a"}, {});
        row("empty type and id", olmAttachmentItem("a", "u", "", ""), {"u"}, {";", ";", "a;", "u;"});
        const QByteArray nameAndUrl = "<m OPFAttachmentName=\"a\" OPFAttachmentURL=\"u\"";
        row("no type", nameAndUrl + "></messageAttachment>", {"u"}, {});
        row("type last", nameAndUrl + " OPFAttachmentContentType=\"t\"></messageAttachment>", {"u"}, {});
    }

    void attachments() { checkRow(); }

    // Pending attachments wait for the next message that has a list.
    void pendingLists()
    {
        const QByteArray list = olmCopy("AttachmentList", olmAttachmentItem("a", "u"));
        Reading reading;
        reading.pend("u", 5, 6);
        reading.read("no message", 0).read(olmXml({olmCopy("Subject", "s"), list, list}), 0);
        QVERIFY(reading.records.at(0).pAttachNames.isNull());
        QCOMPARE(reading.records.at(1).pAttachNames, QByteArray("a;"));
        QVERIFY(reading.records.at(2).pAttachNames.isNull());
        reading.pend("u", 5, 6);
        reading.read(olmXml({olmCopy("AttachmentList", "")}), 0);
        QVERIFY(reading.names.isEmpty());
    }

    // Where bodies lie in an archive is counted back from the end of their text.
    void bodyPlaces_data()
    {
        const DataTable row([](const QByteArray &before, const QByteArrayList &bodies) {
            QByteArrayList messages;
            for (const QByteArray &body : bodies)
                messages.append(olmCopy("Subject", "\xC3\xBC") + olmCopy("Body", body));
            const QByteArray archive = QByteArray(50, '.') + before + olmXml(messages);
            Reading reading;
            reading.read(archive.mid(50), archive.size());
            QCOMPARE(reading.records.size(), static_cast<size_t>(bodies.size()));
            for (int i = 0; i < bodies.size(); ++i) {
                const MailMLRC &record = reading.records.at(static_cast<size_t>(i));
                QCOMPARE(record.llBodySize, qint64(bodies.at(i).size()));
                QCOMPARE(archive.mid(static_cast<int>(record.llBodyOffset), bodies.at(i).size()),
                         bodies.at(i));
            }
        });
        row("one", QByteArray(), {"Hello"});
        row("empty", QByteArray(), {""});
        row("three", QByteArray(), {"a", "bb", "ccc"});
        row("blanks and entities count", QByteArray(), {" \n&lt;\xC3\xA9 "});
        row("a byte order mark before it doesn't", "\xEF\xBB\xBF", {"a", "b"});
    }

    void bodyPlaces() { checkRow(); }

    void closeTags()
    {
        // Nearer than the start tag should be long: a body of less than no length, a value up to the end.
        const MailMLRC record = recordOf("<OPFMessageCopyBody>x</OPFMessageCopyBody>"
                                         "<OPFMessageCopySubject>y</OPFMessageCopySubject>tail");
        QCOMPARE(record.llBodySize, qint64(-20));
        QCOMPARE(record.szSubject.bytes(), QByteArray("ect>tail"));
        // An invalid byte counts three, so that what comes before it seems to lie further to the front.
        Reading reading;
        reading.read(olmXml({olmCopy("Body", "ab") + "\xFF"}), 1000);
        QCOMPARE(reading.records[0].llBodyOffset, qint64(1000 - 9 - 8 - 3 - 21 - 2));
        // What stands behind the last message is not looked at.
        Reading tail;
        tail.read(olmXml({olmCopy("Body", "ab")}) + "12345", 1000);
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
        const MailMLRC record = recordOf(olmCopy("FromAddresses", items));
        QVERIFY(record.szFromAddress.isEmpty());
        QVERIFY(record.szFromName.isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestOlmRecord)
#include "test_olm_record.moc"
