#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// One row of the message list: the texts of its columns 1 to 4. Numbers are decimal, bytes.
struct MessageRow {
    QString text;   ///< sender, newline, subject
    QString path;   ///< file of the message, "" for an .olm message
    QString offset; ///< "" where the message is a file of its own
    QString length; ///< likewise
};

/// Rows of a folder of an mbox store: the message records whose path equals the folder's. An empty path has
/// none.
std::vector<MessageRow> mailboxRows(const QString &folderPath);
/// Rows of an Opera Mail folder: same account as `folderPath`, and a location label equal to `folderName` (the
/// name shown).
std::vector<MessageRow> operaRows(const QString &folderPath, const QString &folderName);
/// Rows of a folder of an .olm file.
std::vector<MessageRow> olmRows(qint64 folderId);

/// Every file below a folder, depth first in the order of the file system, hidden ones too, each path trimmed.
/// `keepAlive`, if given, is called for each sub-folder. A missing folder has none.
QStringList filesBelow(const QString &folder, void (*keepAlive)() = nullptr);
/// True if a file found below a folder belongs to the list of the folder with this path: its mailbox or its
/// directory equals it, and it is no companion file.
bool isListed(const QString &file, const QString &folderPath);
/// The row of a message file, or nothing if it has neither sender nor subject or can't be opened; `opened` tells
/// which.
std::optional<MessageRow> rowOfMessageFile(const QString &file, bool *opened = nullptr);
