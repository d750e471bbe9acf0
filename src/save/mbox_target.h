#pragma once

#include "save/mailbox_target.h"

/// Target rule of mbox stores for Outlook: a bundle's "mbox" by its place below the store, any other file by what stands
/// behind "/ImapMail/" or "/Mail/" in its path, or else by its place below the store. With /store chosen,
/// /store/A/In.mbox/mbox goes to "Mail//A/In/In.mbox", /store/Mail/host/In to "Mail/host/In.mbox".
MailboxTarget mboxToOutlook(const QString &path, const QString &selected, const QString &saveFolder);
/// The same for Apple Mail, where each mailbox has a folder of its own: /store/Mail/host/In goes to
/// "Mail/host/In/In.mbox". The folder told is the one that the fixed rule makes, not always the file's own.
MailboxTarget mboxToAppleMail(const QString &path, const QString &selected, const QString &saveFolder);
