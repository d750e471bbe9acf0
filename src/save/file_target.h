#pragma once

#include "save/mailbox_target.h"

// The target rules of the stores whose messages are files, one for each of their writers. The mailbox of a message file is
// the folder with a mailbox's suffix that it lies in (mailboxStemOrFolder), and keeps its place below the store; a mailbox
// that the store is, or lies in, stands alone. With /store chosen:
//
//     /store/V2/me/INBOX.mbox/Messages/1.emlx        goes to   Mail/V2/me/INBOX/INBOX.mbox
//     /store/Messages/IMAP/me/In.mailbox/1.eml       goes to   Mail/me/In/In.mbox (MailMate)
//     /store/Work/1.eml                              goes to   Mail/Work/Work.mbox (Outspring Mail)

/// Each takes the path of a message file (TargetRule).
MailboxTarget emlxToOutlook(const QString &path, const QString &selected, const QString &saveFolder);
MailboxTarget mailMateToOutlook(const QString &path, const QString &selected, const QString &saveFolder);
MailboxTarget mailMateToAppleMail(const QString &path, const QString &selected, const QString &saveFolder);
MailboxTarget outspringToOutlook(const QString &path, const QString &selected, const QString &saveFolder);
MailboxTarget outspringToAppleMail(const QString &path, const QString &selected, const QString &saveFolder);
