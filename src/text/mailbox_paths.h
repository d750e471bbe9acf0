#pragma once

#include <QString>

// What the path of a file tells of the mailbox that it lies in.

/// True if a file may be a mailbox by its path: it holds none of ".mbs", ".emlx", ".eml", ".olm" anywhere and
/// does not end in ".mbox" (case-sensitive).
bool mayBeMailbox(const QString &path);

/// True for the feeds that Apple Mail keeps beside the mail; no store takes them.
bool isNewsFeed(const QString &path);

/// Path of the mailbox folder that a message file lies in, suffix off: of "/a/INBOX.mbox/Messages/1.emlx" it is
/// "/a/INBOX". A folder that ends in `suffix` (".imapmbox", ".mailbox") counts before one that ends in ".mbox", then the
/// innermost. "" where there is no such folder.
QString mailboxStem(const QString &path, const QString &suffix);
/// The same, but where there is no such folder it is the folder that the file lies in. Without a suffix (empty) it always
/// is: each folder is a mailbox then.
QString mailboxStemOrFolder(const QString &path, const QString &suffix);
