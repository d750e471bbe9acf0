#pragma once

#include "text/mail_header.h"

#include <QDateTime>

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
    QString body; ///< escapes undone once
    QList<OlmAttachmentLink> attachments;
    QString error; ///< why the XML can't be read; "" where it can
};

/// Reads one message: bytes that hold its "<email>" start tag and all behind it up to its end tag. What XML does not allow
/// (control characters, broken UTF-8, "&nbsp;") is borne.
OlmMail readOlmMail(const QByteArray &xml);
