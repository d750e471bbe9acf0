#include "save/olm_xml.h"

#include "app/problem_log.h"
#include "save/olm_xml_text.h"
#include "text/vector_search.h"

#include <QTextCodec>
#include <QXmlStreamReader>

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

namespace
{
constexpr qint64 pieceBytes = 16 * 1024;
constexpr int mostUnfed = 64 * 1024;
constexpr int deepest = 1000;
constexpr int longestThing = 16 * 1024 * 1024; // which the XML reader holds several times
constexpr int longestHeldBody = 1024 * 1024;
constexpr char bodyElement[] = "OPFMessageCopyBody";

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

// Reads a message of XML. The XML reader gets all of it but the body's text, which it would hold as a whole and go
// through byte by byte.
class MailReader
{
public:
    /// `takeBody` gets the body in pieces.
    MailReader(ByteSource *archive, qint64 start, qint64 end, std::function<bool()> goOn, TakeBytes takeBody)
        : m_archive(archive),
          m_position(start),
          m_end(end),
          m_goOn(std::move(goOn)),
          m_takeBody(std::move(takeBody)),
          m_decoder(QTextCodec::codecForName("UTF-8")->makeDecoder(QTextCodec::IgnoreHeader))
    {
        m_xml.setNamespaceProcessing(false);
    }

    OlmMail read()
    {
        do {
            next();
            if (m_xml.isStartElement())
                takeElement();
        } while (!m_xml.hasError() && (m_depth > 0 || !m_xml.isEndElement()));
        if (m_xml.hasError())
            m_mail.error = m_xml.errorString();
        return m_mail;
    }

private:
    // The next thing in the XML. The reader wants more bytes in the middle of anything, and goes through a comment from
    // its start again each time. It gets as many as it has had so far, so that a comment of 16 MiB is gone through ten
    // times and not a thousand.
    void next()
    {
        int fed = 0;
        while (m_xml.readNext() == QXmlStreamReader::Invalid &&
               m_xml.error() == QXmlStreamReader::PrematureEndOfDocumentError) {
            if (fed > longestThing)
                return m_xml.raiseError(Problem::tr("a text in it is too long"));
            const int bytes = feed(fed);
            if (bytes == 0)
                return;
            fed += bytes;
        }
        m_depth += m_xml.isStartElement() ? 1 : m_xml.isEndElement() ? -1 : 0;
        if (m_depth > deepest)
            m_xml.raiseError(Problem::tr("nested too deep"));
    }

    // Gives the XML reader what has come up to the body's start tag, or up to the last tag; so many bytes at least where
    // there are. Gives how many, 0 at the end.
    int feed(int least)
    {
        static const QByteArray bodyTag = QByteArray("<") + bodyElement;
        // Fed again without an element in between: what ended the last feed was no body tag, or its ">" stood in an
        // attribute. The XML reader takes the rest of such a message, body and all.
        m_cutsAtBodyTag = m_cutsAtBodyTag && !m_isBehindBodyTag;
        while (m_unfed.size() < least && readPiece())
            ;
        for (;;) {
            const int tag = m_cutsAtBodyTag ? m_unfed.indexOf(bodyTag) : -1;
            int end = (tag < 0 ? m_unfed.lastIndexOf('>') : m_unfed.indexOf('>', tag)) + 1;
            m_isBehindBodyTag = tag >= 0 && end > 0 && m_unfed.at(end - 2) != '/';
            if (end == 0 && m_unfed.size() < mostUnfed && readPiece())
                continue;
            if (end == 0) // a text of any length, or the rest
                end = m_unfed.lastIndexOf('<') > 0 ? m_unfed.lastIndexOf('<') : m_unfed.size();
            if (end == 0)
                return 0;
            const bool isWhole = m_unfed.at(end - 1) == '>' || m_position == m_end;
            m_xml.addData(m_xmlText.take(taken(end), isWhole));
            return end;
        }
    }

    // Takes the next bytes of the archive; false behind the last one.
    bool readPiece()
    {
        if (!m_goOn())
            m_position = m_end;
        QByteArray piece(static_cast<int>(std::min(pieceBytes, m_end - m_position)), Qt::Uninitialized);
        piece.truncate(static_cast<int>(m_archive->read(m_position, piece.data(), piece.size())));
        m_position = piece.isEmpty() ? m_end : m_position + piece.size();
        m_unfed += validUtf8(piece);
        return !piece.isEmpty();
    }

    // Broken UTF-8 as U+FFFD; a character that the piece ends in comes with the next one.
    QByteArray validUtf8(const QByteArray &piece)
    {
        const auto isHigh = [](auto byte) { return byte < '\0'; };
        const bool isAscii = findByte(piece.begin(), piece.end(), isHigh) == piece.end();
        return isAscii && !m_decoder->needsMoreData() ? piece : m_decoder->toUnicode(piece).toUtf8();
    }

    // The first bytes of what has come, which are dealt with then.
    QByteArray taken(int count)
    {
        const QByteArray bytes = m_unfed.left(count);
        m_unfed.remove(0, count);
        return bytes;
    }

    void takeElement()
    {
        const QStringRef name = m_xml.name();
        if (name == QLatin1String("emailAddress")) {
            if (m_people)
                m_people->append({attribute(m_xml, "OPFContactEmailAddressName"),
                                  attribute(m_xml, "OPFContactEmailAddressAddress")});
            return;
        }
        const PeopleElement *people = rowOf(peopleElements, name);
        m_people = people ? &(m_mail.*people->people) : nullptr;
        if (name == QLatin1String("messageAttachment"))
            m_mail.attachments.append(
                {attribute(m_xml, "OPFAttachmentURL"), attribute(m_xml, "OPFAttachmentName"),
                 attribute(m_xml, "OPFAttachmentContentType"), attribute(m_xml, "OPFAttachmentContentID")});
        const bool isBodyTag = name.startsWith(QLatin1String(bodyElement));
        takeText(name, isBodyTag && std::exchange(m_isBehindBodyTag, false));
    }

    // `isCut`: the XML reader has got nothing behind the start tag.
    void takeText(const QStringRef &name, bool isCut)
    {
        const TextElement *text = rowOf(textElements, name);
        const TimeElement *time = rowOf(timeElements, name);
        const bool isBody = name == QLatin1String(bodyElement);
        if (text)
            m_mail.*text->text = QString::fromUtf8(elementText());
        if (time)
            m_mail.*time->time = utcOf(QString::fromUtf8(elementText()));
        if (isBody)
            takeBody(isCut);
    }

    // The text is taken up to the next tag; only where that is not the end tag, the XML reader takes the rest.
    void takeBody(bool isCut)
    {
        OlmXmlText text(OlmXmlText::Form::Plain);
        for (bool isWhole = !isCut; !isWhole;) {
            if (m_unfed.isEmpty())
                readPiece();
            const int tag = m_unfed.indexOf('<');
            isWhole = tag >= 0 || m_unfed.isEmpty();
            giveBody(text.take(taken(tag >= 0 ? tag : m_unfed.size()), isWhole));
        }
        readText([this](const QByteArray &piece) { giveBody(QByteArray(piece).replace("\r\n", "\n")); });
        if (std::exchange(m_heldCr, false))
            giveBytes("\r");
    }

    // A CR at the end waits for a line feed, which may stand behind a tag.
    void giveBody(const QByteArray &bytes)
    {
        if (bytes.isEmpty())
            return;
        if (m_heldCr && bytes.at(0) != '\n')
            giveBytes("\r");
        m_heldCr = bytes.endsWith('\r');
        giveBytes({bytes.constData(), static_cast<size_t>(bytes.size() - (m_heldCr ? 1 : 0))});
    }

    void giveBytes(std::string_view bytes)
    {
        m_mail.bodyBytes += static_cast<qint64>(bytes.size());
        for (; !bytes.empty(); bytes.remove_prefix(std::min<size_t>(pieceBytes, bytes.size())))
            m_takeBody(bytes.substr(0, pieceBytes));
    }

    // All text up to the end of the element.
    QByteArray elementText()
    {
        QByteArray text;
        readText([&](const QByteArray &piece) {
            text += piece;
            if (text.size() > longestThing)
                m_xml.raiseError(Problem::tr("a text in it is too long"));
        });
        return text;
    }

    template <typename Use>
    void readText(Use use)
    {
        for (const int outside = m_depth - 1; m_depth > outside && !m_xml.hasError();) {
            next();
            if (m_xml.isCharacters())
                use(m_xml.text().toUtf8());
        }
    }

    ByteSource *m_archive;
    qint64 m_position;
    qint64 m_end;
    std::function<bool()> m_goOn;
    TakeBytes m_takeBody;
    std::unique_ptr<QTextDecoder> m_decoder;
    QByteArray m_unfed; ///< has come from the archive and is not dealt with
    bool m_cutsAtBodyTag = true;
    bool m_isBehindBodyTag = false; ///< what the XML reader got last ends in the body's start tag
    OlmXmlText m_xmlText{OlmXmlText::Form::Xml};
    QXmlStreamReader m_xml;
    bool m_heldCr = false;                 ///< the body's
    int m_depth = 0;                       ///< elements that are open
    QList<MailPerson> *m_people = nullptr; ///< the list whose addresses are read
    OlmMail m_mail;
};

// Where the message's start tag stands; -1 without one.
qint64 startOfMessage(ByteSource *archive, qint64 offset, qint64 size)
{
    QByteArray head(static_cast<int>(qBound<qint64>(0, size, pieceBytes)), Qt::Uninitialized);
    head.truncate(static_cast<int>(archive->read(offset, head.data(), head.size())));
    constexpr char tag[] = "<email"; // not "<emails", which may hold it
    int at = head.indexOf(tag);
    while (at >= 0 && !QByteArray(" >\t\r\n").contains(head.mid(at + 6, 1)))
        at = head.indexOf(tag, at + 1);
    return at < 0 ? -1 : offset + at;
}

OlmMail readMail(ByteSource *archive, qint64 offset, qint64 size, const std::function<bool()> &goOn,
                 const TakeBytes &takeBody)
{
    const qint64 start = startOfMessage(archive, offset, size);
    if (start >= 0)
        return MailReader(archive, start, offset + size, goOn, takeBody).read();
    OlmMail none;
    none.error = Problem::tr("there is no message");
    return none;
}
} // namespace

OlmMail readOlmMail(ByteSource *archive, qint64 offset, qint64 size, const std::function<bool()> &goOn)
{
    QByteArray body;
    OlmMail mail = readMail(archive, offset, size, goOn, [&body](std::string_view bytes) {
        const size_t room = static_cast<size_t>(longestHeldBody - body.size());
        body.append(bytes.data(), static_cast<int>(std::min(bytes.size(), room)));
    });
    mail.body = body;
    return mail;
}

bool readOlmBody(ByteSource *archive, qint64 offset, qint64 size, const std::function<bool()> &goOn,
                 const TakeBytes &take)
{
    return readMail(archive, offset, size, goOn, take).error.isEmpty();
}
