#include "save/olm_xml.h"

#include "app/problem_log.h"

#include <QRegularExpression>
#include <QTextCodec>
#include <QXmlStreamReader>

#include <algorithm>
#include <memory>
#include <optional>

namespace
{
constexpr qint64 pieceBytes = 16 * 1024;

/// Where the text of an element goes.
struct TextElement {
    const char *name;
    QString OlmMail::*text;
};
constexpr TextElement textElements[] = {
    {"OPFMessageCopySubject", &OlmMail::subject},
    {"OPFMessageCopyMessageID", &OlmMail::messageId},
    {"OPFMessageCopyInReplyTo", &OlmMail::inReplyTo},
    {"OPFMessageCopyReferences", &OlmMail::references},
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

bool isAllowed(uint character)
{
    if (character < ' ')
        return character == '\t' || character == '\n' || character == '\r';
    return !QChar::isSurrogate(character) && !QChar::isNonCharacter(character) &&
           character <= QChar::LastValidCodePoint;
}

// Makes XML of text that comes in pieces: what would end a strict reader is taken out or escaped.
class XmlCleaner
{
public:
    /// `isLast`: nothing follows.
    QString take(const QString &piece, bool isLast)
    {
        m_text += piece;
        QString xml;
        int at = 0;
        for (int start = 0; at < m_text.size(); start = at) {
            at = static_cast<int>(std::find_if(m_text.cbegin() + at, m_text.cend(), needsLook) -
                                  m_text.cbegin());
            xml += m_text.midRef(start, at - start);
            if (at == m_text.size() || (!isLast && m_text.size() - at < longestReference))
                break; // more of a reference may come
            at += takeCharacter(at, &xml);
        }
        m_text.remove(0, at);
        return xml;
    }

private:
    static constexpr int longestReference = 10; // "&#1114111;"

    static bool needsLook(QChar c)
    {
        return c == QLatin1Char('&') || c.unicode() >= 0xFFFE ||
               (c < QLatin1Char(' ') && !isAllowed(c.unicode()));
    }

    // Gives how many characters it took: those of a reference, or one. A "&" that starts none is escaped.
    int takeCharacter(int at, QString *xml) const
    {
        if (m_text.at(at) != QLatin1Char('&'))
            return 1;
        const int longest = std::min(longestReference, m_text.size() - at);
        const QStringRef text = m_text.midRef(at, longest);
        const QStringRef reference = text.left(text.indexOf(QLatin1Char(';')) + 1);
        const std::optional<QString> kept = keptReference(reference);
        *xml += kept.value_or(QStringLiteral("&amp;"));
        return kept ? reference.size() : 1;
    }

    // What stands for "&lt;" or "&#233;" in XML, nothing for a character that XML does not allow; none for "&x;".
    static std::optional<QString> keptReference(const QStringRef &reference)
    {
        static const QLatin1String known[] = {QLatin1String("&lt;"), QLatin1String("&gt;"),
                                              QLatin1String("&amp;"), QLatin1String("&quot;"),
                                              QLatin1String("&apos;")};
        if (std::find(std::begin(known), std::end(known), reference) != std::end(known))
            return reference.toString();
        if (reference == QLatin1String("&nbsp;"))
            return QString(QChar::Nbsp);
        if (!reference.startsWith(QLatin1String("&#")))
            return std::nullopt;
        const bool isHex = reference.startsWith(QLatin1String("&#x"));
        const QStringRef digits = reference.mid(isHex ? 3 : 2).chopped(1);
        bool isNumber = false;
        const uint character = digits.toUInt(&isNumber, isHex ? 16 : 10);
        if (!isNumber || !digits.at(0).isLetterOrNumber())
            return std::nullopt;
        return isAllowed(character) ? reference.toString() : QString();
    }

    QString m_text; ///< that has not been given yet
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

// "2014-11-12T01:08:04", in UTC where it names no zone.
QDateTime utcOf(const QString &value)
{
    constexpr int timeUnits = 19;
    const QString text = value.trimmed();
    const QString time = text.left(timeUnits);
    const QStringRef rest = text.midRef(time.size());
    const bool hasZone =
        rest.endsWith(QLatin1Char('Z')) || rest.contains(QLatin1Char('+')) || rest.contains(QLatin1Char('-'));
    return QDateTime::fromString(hasZone ? text : time + QLatin1Char('Z'), Qt::ISODate).toUTC();
}

class MailReader
{
public:
    MailReader(ByteSource *archive, qint64 start, qint64 end)
        : m_archive(archive),
          m_position(start),
          m_end(end),
          m_decoder(QTextCodec::codecForName("UTF-8")->makeDecoder())
    {
        m_xml.setNamespaceProcessing(false);
    }

    OlmMail read()
    {
        for (int depth = 0; !m_xml.hasError() && (depth > 0 || !m_xml.isEndElement());) {
            next();
            depth += m_xml.isStartElement() ? 1 : m_xml.isEndElement() ? -1 : 0;
            if (m_xml.isStartElement() && takeElement())
                --depth;
        }
        if (m_xml.hasError())
            m_mail.error = m_xml.errorString();
        return m_mail;
    }

private:
    // The next thing in the XML; the reader wants more bytes in the middle of anything.
    void next()
    {
        while (m_xml.readNext() == QXmlStreamReader::Invalid &&
               m_xml.error() == QXmlStreamReader::PrematureEndOfDocumentError && m_position < m_end) {
            QByteArray piece(static_cast<int>(std::min(pieceBytes, m_end - m_position)), Qt::Uninitialized);
            piece.truncate(static_cast<int>(m_archive->read(m_position, piece.data(), piece.size())));
            m_position = piece.isEmpty() ? m_end : m_position + piece.size();
            m_xml.addData(m_cleaner.take(m_decoder->toUnicode(piece), m_position == m_end));
        }
    }

    // True if it has read on to the element's end.
    bool takeElement()
    {
        const QStringRef name = m_xml.name();
        if (name == QLatin1String("emailAddress")) {
            if (m_people)
                m_people->append({attribute(m_xml, "OPFContactEmailAddressName"),
                                  attribute(m_xml, "OPFContactEmailAddressAddress")});
            return false;
        }
        const PeopleElement *people = rowOf(peopleElements, name);
        m_people = people ? &(m_mail.*people->people) : nullptr;
        if (name == QLatin1String("messageAttachment"))
            m_mail.attachments.append(
                {attribute(m_xml, "OPFAttachmentURL"), attribute(m_xml, "OPFAttachmentName"),
                 attribute(m_xml, "OPFAttachmentContentType"), attribute(m_xml, "OPFAttachmentContentID")});
        return takeText(name);
    }

    bool takeText(const QStringRef &name)
    {
        const TextElement *text = rowOf(textElements, name);
        const TimeElement *time = rowOf(timeElements, name);
        const bool isBody = name == QLatin1String("OPFMessageCopyBody");
        if (text)
            m_mail.*text->text = QString::fromUtf8(elementText());
        if (time)
            m_mail.*time->time = utcOf(QString::fromUtf8(elementText()));
        if (isBody)
            m_mail.body = elementText().replace("\r\n", "\n");
        return text || time || isBody;
    }

    // All text up to the end of the element.
    QByteArray elementText()
    {
        QByteArray text;
        for (int depth = 1; depth > 0 && !m_xml.hasError();) {
            next();
            depth += m_xml.isStartElement() ? 1 : m_xml.isEndElement() ? -1 : 0;
            if (m_xml.isCharacters())
                text += m_xml.text().toUtf8();
        }
        return text;
    }

    ByteSource *m_archive;
    qint64 m_position;
    qint64 m_end;
    std::unique_ptr<QTextDecoder> m_decoder;
    XmlCleaner m_cleaner;
    QXmlStreamReader m_xml;
    QList<MailPerson> *m_people = nullptr; ///< the list whose addresses are read
    OlmMail m_mail;
};

// Where the message's start tag stands; -1 without one.
qint64 startOfMessage(ByteSource *archive, qint64 offset, qint64 size)
{
    QByteArray head(static_cast<int>(qBound<qint64>(0, size, pieceBytes)), Qt::Uninitialized);
    head.truncate(static_cast<int>(archive->read(offset, head.data(), head.size())));
    static const QRegularExpression tag(QStringLiteral("<email[ >\t\r\n]"));
    const qint64 at = tag.match(QString::fromLatin1(head)).capturedStart();
    return at < 0 ? -1 : offset + at;
}
} // namespace

OlmMail readOlmMail(ByteSource *archive, qint64 offset, qint64 size)
{
    const qint64 start = startOfMessage(archive, offset, size);
    if (start >= 0)
        return MailReader(archive, start, offset + size).read();
    OlmMail none;
    none.error = Problem::tr("there is no message");
    return none;
}
