#pragma once

#include "platform/byte_source.h"
#include "text/mail_header.h"
#include "text/transfer_encoding.h"

#include <QDateTime>

#include <functional>

/// An attachment as its message names it.
struct OlmAttachmentLink {
    QString url; ///< its entry's name in the archive
    QString name;
    QString type;
    QString contentId;
};

/// A message of an .olm file as its XML has it, nothing cut.
struct OlmMail {
    QList<MailPerson> from;
    QList<MailPerson> to;
    QList<MailPerson> cc;
    QList<MailPerson> bcc;
    QString subject;
    QString messageId;
    QString inReplyTo;
    QString references;
    QDateTime sent; ///< in UTC, as the next; invalid where there is none
    QDateTime received;
    QByteArray body; ///< in UTF-8, references undone once, lines end with a line feed; 1 MiB of it at most
    qint64 bodyBytes = 0; ///< of the whole body
    QList<OlmAttachmentLink> attachments;
    QString error; ///< why the XML can't be read; "" where it can
};

/// Reads one message: of these bytes of an archive, which hold its "<email>" start tag, all up to its end tag. What XML
/// does not allow (control characters, broken UTF-8, a bare "&", "&nbsp;") is borne. The XML is read in pieces; where
/// `goOn` gives false it ends there. A text has 16 MiB at most, but for the body's in front of all markup.
OlmMail readOlmMail(ByteSource *archive, qint64 offset, qint64 size, const std::function<bool()> &goOn);
/// The body of such a message in pieces, however long; false where it can't be read to its end any more.
bool readOlmBody(ByteSource *archive, qint64 offset, qint64 size, const std::function<bool()> &goOn,
                 const TakeBytes &take);
