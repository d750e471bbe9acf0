#include "save/olm_composer.h"

#include "app/problem_log.h"
#include "save/exact_text.h"
#include "save/mail_separator.h"
#include "save/olm_xml.h"
#include "text/transfer_encoding.h"

#include <QCryptographicHash>
#include <QLocale>
#include <QRegularExpression>

#include <algorithm>
#include <vector>

namespace
{
constexpr qint64 blockBytes = 57 * 1024; // whole lines of base64
constexpr int longestTag = 4096;

std::string_view view(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<size_t>(bytes.size())};
}

/// An attachment and where its bytes stand.
struct Attachment {
    OlmAttachmentLink link;
    OlmEntryPlace place;
    bool isMessage = false;
};

QByteArray dateHeader(const OlmMail &mail)
{
    const QDateTime &date = mail.sent.isValid() ? mail.sent : mail.received;
    if (!date.isValid())
        return {};
    return "Date: " + QLocale::c().toString(date, QStringLiteral("ddd, d MMM yyyy HH:mm:ss")).toLatin1() +
           " +0000\n";
}

// True if a text holds a tag of HTML: "<p>", "</td>", "<a href=...>", "<br/>", "<!--". An address in "<>" is none.
bool holdsTag(const QByteArray &body)
{
    static const QRegularExpression tag(QStringLiteral("^(/?[a-z][a-z0-9]*(\\s[^<>]*)?/?>|!--|!doctype\\s)"),
                                        QRegularExpression::CaseInsensitiveOption);
    for (int at = body.indexOf('<'); at >= 0; at = body.indexOf('<', at + 1)) {
        const int end = std::min(body.size(), at + longestTag);
        const auto close = std::find_if(body.begin() + at + 1, body.begin() + end,
                                        [](char c) { return c == '<' || c == '>'; });
        const auto length = static_cast<int>(close - body.begin()) - at;
        if (tag.match(QString::fromLatin1(body.constData() + at + 1, length)).hasMatch())
            return true;
    }
    return false;
}

// A type that a base64 part can have; what is none, or would need parts of its own, is just bytes.
QByteArray contentType(const Attachment &attachment)
{
    static const QRegularExpression form(QStringLiteral("^[A-Za-z0-9!#$&^_.+-]+/[A-Za-z0-9!#$&^_.+-]+$"));
    const QString type = attachment.link.type.trimmed();
    const bool composite =
        type.startsWith(QLatin1String("multipart/"), Qt::CaseInsensitive) ||
        (type.startsWith(QLatin1String("message/"), Qt::CaseInsensitive) && !attachment.isMessage);
    return form.match(type).hasMatch() && !composite ? type.toLatin1()
                                                     : QByteArray("application/octet-stream");
}

QByteArray attachmentHeaders(const Attachment &attachment)
{
    const QString &name = attachment.link.name;
    QByteArray headers = "Content-Type: " + contentType(attachment);
    headers += name.isEmpty() ? QByteArray() : headerParameter("name", name);
    headers += "\nContent-Transfer-Encoding: ";
    headers += attachment.isMessage ? "8bit" : "base64";
    headers += "\nContent-Disposition: attachment";
    headers += name.isEmpty() ? QByteArray() : headerParameter("filename", name);
    headers += '\n';
    return headers + idsHeader("Content-ID", attachment.link.contentId) + '\n';
}

class OlmComposer
{
public:
    OlmComposer(const MailMLRC &record, ByteSource *archive, const std::function<bool()> &goOn,
                const TakeBytes &give)
        : m_record(record),
          m_archive(archive),
          m_goOn(goOn),
          m_give(give),
          m_text(give, ExactText::Quoting::Mboxrd)
    {
    }

    ComposedMessage run()
    {
        const QString errorBefore = m_archive->errorString();
        m_mail = readOlmMail(m_archive, m_record.llXmlOffset, m_record.llXmlSize, m_goOn);
        if (m_mail.error.isEmpty())
            compose();
        else
            m_result.end = ExactEnd::Unreadable;
        const bool isFirstError = errorBefore != m_archive->errorString();
        m_result.partError = isFirstError || m_mail.error.isEmpty() ? m_archive->errorString() : m_mail.error;
        if (!m_goOn())
            m_result.end = ExactEnd::Stopped;
        return {m_result, m_problems};
    }

private:
    void compose()
    {
        findAttachments();
        m_give(view(separator()));
        take(headers());
        const QByteArray boundary = m_attachments.empty() ? QByteArray() : freeBoundary();
        if (!boundary.isEmpty())
            take("Content-Type: multipart/mixed; boundary=\"" + boundary + "\"\n\n--" + boundary + '\n');
        writeBody();
        for (const Attachment &attachment : m_attachments) {
            take("\n--" + boundary + '\n' + attachmentHeaders(attachment));
            writeContent(attachment);
        }
        if (!boundary.isEmpty())
            take("\n--" + boundary + "--\n");
        m_text.end();
        m_give("\n");
        m_result.quotedLines = m_text.quotedLines();
    }

    void take(const QByteArray &bytes) { m_text.take(view(bytes)); }

    QByteArray separator() const
    {
        QDateTime date = m_mail.sent.isValid() ? m_mail.sent : m_mail.received;
        if (!date.isValid())
            date = QDateTime::fromMSecsSinceEpoch(m_archive->stamp().changed / 1000000, Qt::UTC);
        const QString address = m_mail.from.isEmpty() ? QString() : m_mail.from.first().address.trimmed();
        return separatorLine('<' + address.toUtf8() + '>', date);
    }

    QByteArray headers() const
    {
        return peopleHeader("From", m_mail.from) + peopleHeader("To", m_mail.to) +
               peopleHeader("Cc", m_mail.cc) + peopleHeader("Bcc", m_mail.bcc) +
               (m_mail.subject.isEmpty() ? QByteArray() : textHeader("Subject", m_mail.subject)) +
               dateHeader(m_mail) + idsHeader("Message-ID", m_mail.messageId) +
               idsHeader("In-Reply-To", m_mail.inReplyTo) + idsHeader("References", m_mail.references) +
               "MIME-Version: 1.0\n";
    }

    void findAttachments()
    {
        for (const OlmAttachmentLink &link : m_mail.attachments) {
            const OlmEntryPlace place = olmEntryPlace(link.url, m_record.llXmlOffset);
            const bool isThere =
                place.offset >= 0 && place.size >= 0 && place.offset <= m_archive->size() - place.size;
            if (isThere) {
                const bool isMessage =
                    link.type.trimmed().compare(QLatin1String("message/rfc822"), Qt::CaseInsensitive) == 0;
                m_attachments.push_back({link, place, isMessage});
                continue;
            }
            ++m_result.emptyParts;
            m_problems.append(
                Problem::tr("an attachment that is not in the archive was left out of its message: %1/%2")
                    .arg(m_archive->path(), link.url));
        }
    }

    void writeBody()
    {
        take(QByteArray("Content-Type: text/") + (bodyHoldsTag() ? "html" : "plain") +
             "; charset=UTF-8\nContent-Transfer-Encoding: quoted-printable\n\n");
        TransferEncoder encoder(TransferEncoder::Form::QuotedPrintable,
                                [this](std::string_view bytes) { m_text.take(bytes); });
        readBody([&](std::string_view bytes) { encoder.take(bytes); });
        encoder.end();
    }

    // A body that is too long to be held is read once more.
    void readBody(const TakeBytes &use)
    {
        if (m_mail.body.size() == m_mail.bodyBytes)
            use(view(m_mail.body));
        else if (!readOlmBody(m_archive, m_record.llXmlOffset, m_record.llXmlSize, m_goOn, use))
            m_result.end = ExactEnd::Unreadable;
    }

    bool bodyHoldsTag()
    {
        QByteArray text = m_mail.body;
        bool found = holdsTag(text);
        if (found || text.size() == m_mail.bodyBytes)
            return found;
        text.clear();
        readBody([&](std::string_view bytes) {
            if (!found)
                text.append(bytes.data(), static_cast<int>(bytes.size()));
            if (found || text.size() < blockBytes)
                return;
            found = holdsTag(text);
            text = text.right(longestTag);
        });
        return found || holdsTag(text);
    }

    // Calls `use` for the bytes of an attachment, in pieces.
    template <typename Use>
    void read(const OlmEntryPlace &place, Use use)
    {
        std::vector<char> block(static_cast<size_t>(std::min(blockBytes, place.size)));
        for (qint64 done = 0; done < place.size && m_result.end == ExactEnd::Whole;) {
            const qint64 wanted = std::min(blockBytes, place.size - done);
            const qint64 got = m_archive->read(place.offset + done, block.data(), wanted);
            if (got <= 0)
                m_result.end = ExactEnd::Unreadable;
            if (got <= 0 || !m_goOn())
                return;
            use(std::string_view(block.data(), static_cast<size_t>(got)));
            done += got;
        }
    }

    void writeContent(const Attachment &attachment)
    {
        if (attachment.isMessage)
            return read(attachment.place, [this](std::string_view bytes) { m_text.take(bytes); });
        TransferEncoder encoder(TransferEncoder::Form::Base64,
                                [this](std::string_view bytes) { m_text.takePlain(bytes); });
        read(attachment.place, [&](std::string_view bytes) { encoder.take(bytes); });
        encoder.end();
    }

    // A boundary that no part holds: neither base64 nor quoted-printable has "=_", so that only messages are looked at.
    QByteArray freeBoundary()
    {
        for (int number = 0;; ++number) {
            const QByteArray seed = QByteArray::number(m_record.llXmlOffset) + '/' +
                                    QByteArray::number(number) + m_mail.messageId.toUtf8();
            const QByteArray boundary =
                "=_" + QCryptographicHash::hash(seed, QCryptographicHash::Sha256).toHex().left(40);
            if (std::none_of(m_attachments.begin(), m_attachments.end(), [&](const Attachment &attachment) {
                    return attachment.isMessage && holds(attachment.place, boundary);
                }))
                return boundary;
        }
    }

    bool holds(const OlmEntryPlace &place, const QByteArray &text)
    {
        bool found = false;
        QByteArray tail;
        read(place, [&](std::string_view bytes) {
            tail += QByteArray(bytes.data(), static_cast<int>(bytes.size()));
            found = found || tail.contains(text);
            tail = tail.right(text.size());
        });
        return found;
    }

    const MailMLRC &m_record;
    ByteSource *m_archive;
    const std::function<bool()> &m_goOn;
    const TakeBytes &m_give;
    ExactText m_text;
    OlmMail m_mail;
    std::vector<Attachment> m_attachments;
    ExactMessageCopy m_result;
    QStringList m_problems;
};
} // namespace

ComposedMessage composeOlmMessage(const MailMLRC &record, ByteSource *archive,
                                  const std::function<bool()> &goOn, const TakeBytes &give)
{
    return OlmComposer(record, archive, goOn, give).run();
}
