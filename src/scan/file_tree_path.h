#pragma once

#include <QString>

/// Where a message file belongs.
struct FilePlace {
    QString tree;   ///< tree path: folder names from "Mail" on, "/"-separated; "" if the file belongs nowhere
    QString folder; ///< the directory whose message files, at any depth, belong to that folder

    bool operator==(const FilePlace &other) const { return tree == other.tree && folder == other.folder; }
};

// The tree rules of the stores with a file for each message. They give the place of a message file (absolute path),
// `selected` being the folder that was chosen. The tree names the folders between the chosen folder and the mailbox, or
// the mailbox alone where the chosen folder is it or lies in it.

/// A mailbox is a directory ".imapmbox" or ".mbox": with /store chosen, /store/IMAP-me/INBOX.mbox/Messages/1.emlx is in
/// "Mail/IMAP-me/INBOX.mbox".
FilePlace TreeCreatorForAppleMail(const QString &path, const QString &selected);
/// A mailbox is a directory ".mailbox" or ".mbox", the latter without its suffix in the tree: /store/a/In.mailbox/1.eml is
/// in "Mail/a/In.mailbox", /store/a/In.mbox/1.eml in "Mail/a/In".
FilePlace TreeCreatorForMailMate(const QString &path, const QString &selected);
/// Each directory is a folder, ".mbox" goes from all names: /store/Work.mbox/1.eml is in "Mail/Work".
FilePlace TreeCreatorForOutSpring(const QString &path, const QString &selected);
