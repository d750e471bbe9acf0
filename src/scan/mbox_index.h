#pragma once

#include <QString>

#include <functional>

/// Cuts a mailbox file (mbox, RFC 4155) into messages and appends a record for each: where it lies, its decoded
/// sender and subject. A message begins at a line that starts with "From " and holds the name of a weekday
/// between blanks; the first one at the file's first line, which need only start with "From ". The sender and
/// subject are the first ones found, in the body too where the headers have none. A file that can't be opened or
/// whose first line doesn't start with "From " adds nothing; false then.
///
/// Offsets are the file position behind the separator line less the line's length in UTF-16 units, so that they
/// lie one byte behind the line's start where lines end in CR LF.
///
/// `progress`, if given, gets the bytes read so far and the file's size, for each whole per cent.
bool GetAllFieldsForTree(const QString &path,
                         const std::function<void(qint64 done, qint64 size)> &progress = nullptr);

/// What stands at the start of a file.
enum class MailboxStart {
    Separator, ///< "From ", behind a byte order mark too
    Other,
    NoFile,    ///< a folder, or nothing any more
    Unreadable ///< told as a problem, where the path may be a mailbox's
};
/// Looks at the first bytes of a file, or of what has its name.
MailboxStart lookAtMailbox(const QString &path);
