#include "save/olm_xml.h"

#include <QXmlStreamReader>

#include <algorithm>

namespace
{
/// Where the text of an element goes.
struct TextElement {
    const char *name;
    QString OlmMail::*text;
};
constexpr TextElement textElements[] = {
    {"OPFMessageCopySubject", &OlmMail::subject},     {"OPFMessageCopyMessageID", &OlmMail::messageId},
    {"OPFMessageCopyInReplyTo", &OlmMail::inReplyTo}, {"OPFMessageCopyReferences", &OlmMail::references},
    {"OPFMessageCopyBody", &OlmMail::body},
};
struct TimeElement {
    const char *name;
    QDateTime OlmMail::*time;
};
constexpr TimeElement timeElements[] = {
    {"OPFMessageCopySentTime", &OlmMail::sent},
    {"OPFMessageCopyReceivedTime", &OlmMail::received},
};
struct PeopleElement {
    const char *name;
    QList<MailPerson> OlmMail::*people;
};
constexpr PeopleElement peopleElements[] = {
    {"OPFMessageCopyFromAddresses", &OlmMail::from},
    {"OPFMessageCopyToAddresses", &OlmMail::to},
    {"OPFMessageCopyCCAddresses", &OlmMail::cc},
    {"OPFMessageCopyBCCAddresses", &OlmMail::bcc},
};

/// Entities of HTML that stand in such files without being declared.
class Entities : public QXmlStreamEntityResolver
{
    QString resolveUndeclaredEntity(const QString &name) override
    {
        return name == QLatin1String("nbsp") ? QString(QChar(0xA0)) : QStringLiteral("&amp;%1;").arg(name);
    }
};

template <typename Row, size_t Count>
const Row *rowOf(const Row (&rows)[Count], const QStringRef &name)
{
    const Row *end = rows + Count;
    const Row *row = std::find_if(rows, end, [&](const Row &r) { return name == QLatin1String(r.name); });
    return row == end ? nullptr : row;
}

QString attribute(const QXmlStreamReader &xml, const char *name)
{
    return xml.attributes().value(QLatin1String(name)).toString();
}

QDateTime utcOf(const QString &text)
{
    constexpr int timeUnits = 19; // "2014-11-12T01:08:04"
    QDateTime time = QDateTime::fromString(text.trimmed().left(timeUnits), Qt::ISODate);
    time.setTimeSpec(Qt::UTC);
    return time;
}

void readPeople(QXmlStreamReader *xml, QList<MailPerson> *people)
{
    while (xml->readNextStartElement()) {
        const QString address = attribute(*xml, "OPFContactEmailAddressAddress");
        const QString name = attribute(*xml, "OPFContactEmailAddressName");
        if (xml->name() == QLatin1String("emailAddress"))
            people->append({name, address});
        xml->skipCurrentElement();
    }
}

void readAttachments(QXmlStreamReader *xml, QList<OlmAttachmentLink> *attachments)
{
    while (xml->readNextStartElement()) {
        if (xml->name() == QLatin1String("messageAttachment"))
            attachments->append({attribute(*xml, "OPFAttachmentURL"), attribute(*xml, "OPFAttachmentName"),
                                 attribute(*xml, "OPFAttachmentContentType"),
                                 attribute(*xml, "OPFAttachmentContentID")});
        xml->skipCurrentElement();
    }
}

void readElement(QXmlStreamReader *xml, OlmMail *mail)
{
    const QStringRef name = xml->name();
    if (const TextElement *text = rowOf(textElements, name))
        mail->*text->text = xml->readElementText(QXmlStreamReader::IncludeChildElements);
    else if (const TimeElement *time = rowOf(timeElements, name))
        mail->*time->time = utcOf(xml->readElementText(QXmlStreamReader::IncludeChildElements));
    else if (const PeopleElement *people = rowOf(peopleElements, name))
        readPeople(xml, &(mail->*people->people));
    else if (name == QLatin1String("OPFMessageCopyAttachmentList"))
        readAttachments(xml, &mail->attachments);
}

// From the message's start tag on, in UTF-8 without what XML forbids.
QByteArray cleanXml(const QByteArray &bytes)
{
    int start = bytes.indexOf("<email>");
    if (start < 0)
        start = bytes.indexOf("<email ");
    QByteArray xml = QString::fromUtf8(bytes.mid(qMax(0, start))).toUtf8();
    const auto isForbidden = [](char c) { return c >= 0 && c < ' ' && c != '\t' && c != '\n' && c != '\r'; };
    xml.truncate(static_cast<int>(std::remove_if(xml.begin(), xml.end(), isForbidden) - xml.begin()));
    return xml;
}
} // namespace

OlmMail readOlmMail(const QByteArray &bytes)
{
    OlmMail mail;
    Entities entities;
    QXmlStreamReader xml(cleanXml(bytes));
    xml.setEntityResolver(&entities);
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement)
            readElement(&xml, &mail);
    if (xml.hasError())
        mail.error = xml.errorString();
    return mail;
}
