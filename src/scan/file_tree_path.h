#pragma once

#include <QString>

/// Where a message file belongs.
struct FilePlace {
    QString tree;   ///< tree path: folder names from "Mail" on, "/"-separated; "" if the file belongs nowhere
    QString folder; ///< the directory whose message files, at any depth, belong to that folder

    bool operator==(const FilePlace &other) const { return tree == other.tree && folder == other.folder; }
};

/// The place of a message file (absolute path) of a store, `selected` being the folder that was chosen. A mailbox
/// of Apple Mail is a directory ".mbox" or ".imapmbox", one of MailMate a ".mailbox"; the tree names the folders
/// between the chosen folder and the mailbox, or the mailbox alone where the chosen folder is it or lies in it.
FilePlace appleMailPlace(const QString &path, const QString &selected);
FilePlace mailMatePlace(const QString &path, const QString &selected);
/// Outspring Mail has no mailboxes: each directory is a folder.
FilePlace outspringPlace(const QString &path, const QString &selected);
