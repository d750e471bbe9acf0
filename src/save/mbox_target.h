#pragma once

#include <QString>

/// Where a source mailbox goes: a folder that is made, and the file in it.
struct MailboxTarget {
    QString folder; ///< absolute
    QString file;   ///< absolute
};

/// Target of a mailbox file of an mbox store in the Outlook bundle below `saveFolder`: a bundle's "mbox" by its
/// place below `selected`, any other file by what stands behind "/ImapMail/" or "/Mail/" in its path, or else by
/// its place below `selected`.
MailboxTarget outlookTargetOfMailbox(const QString &path, const QString &selected, const QString &saveFolder);
/// The same in the Apple Mail bundle, where each mailbox has a folder of its own.
MailboxTarget appleTargetOfMailbox(const QString &path, const QString &selected, const QString &saveFolder);
