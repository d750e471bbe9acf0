#pragma once

#include "save/bundle.h"

#include <QString>

/// Where mail goes: a folder of the bundle, and the mailbox in it.
struct MailboxTarget {
    QString folder; ///< absolute
    QString file;   ///< absolute
};

/// A target rule. `source` is what names the mailbox: the path of the mailbox file, or of the message file; for Opera
/// Mail and .olm a folder that the mail itself names. `selected` is the store, no trailing "/"; `saveFolder` the folder
/// that the bundle lies in. What would lead out of the bundle is changed (harmlessPath).
using TargetRule = MailboxTarget (*)(const QString &source, const QString &selected,
                                     const QString &saveFolder);

/// Opera Mail, "/account/folder": "/Work/INBOX" goes to "Mail/Work/INBOX/INBOX.mbox".
MailboxTarget operaToOutlook(const QString &source, const QString &selected, const QString &saveFolder);
/// The same in the Apple Mail bundle.
MailboxTarget operaToAppleMail(const QString &source, const QString &selected, const QString &saveFolder);
/// The folder path of an .olm record: "Inbox/Work" goes to "Mail/Inbox/Work/Work.mbox". A message outside all folders
/// ("") goes to "Mail/Folder1/Folder1.mbox".
MailboxTarget olmToAppleMail(const QString &source, const QString &selected, const QString &saveFolder);

/// The mailbox NAME.mbox in the folder "Mail" + `place` of a bundle; `place` ends with "/".
MailboxTarget targetInMail(const Bundle &bundle, const QString &saveFolder, const QString &place,
                           const QString &name);
