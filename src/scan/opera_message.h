#pragma once

#include <QString>

#include <optional>

/// What the scan takes from a message file of Opera Mail: label, sender and subject as a record holds them.
struct OperaMessage {
    std::optional<QString> folder; ///< of the last location line with a text; none without such a line
    QString label;                 ///< location label of the last location line, "Mails" where that is empty
    QString sender;                ///< decoded, header name off; "" if there is none
    QString subject;               ///< likewise
    QString error; ///< path and reason where the file can't be opened; then there is nothing else
};

/// All of a message, or only the folder that it lies in.
enum class OperaFields { All, Folder };

/// Reads a message file, sender and subject from its body too where the headers have none.
OperaMessage readOperaMessage(const QString &path, OperaFields fields);
