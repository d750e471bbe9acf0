#pragma once

#include "platform/folder_names.h"

#include <optional>
#include <vector>

/// Which files a reader takes; Mailbox stays the last.
enum class MailKind { AppleMbox, Emlx, MailMate, Outspring, Opera, Mailbox };
constexpr int mailKinds = static_cast<int>(MailKind::Mailbox) + 1;

/// What the names in and above a folder tell: that a client keeps its store here.
struct StoreMark {
    std::vector<MailKind> kinds; ///< which files below belong to that store; none: no mark
    int client = 0;              ///< client index, for MailKind::Mailbox, whose form tells of none
    int levelsUp = 0;            ///< the store is the folder so many levels above
    bool certain = false;        ///< by what only this client lays there; else by the folder's name alone
};

/// Looks for a client's mark at a folder, an absolute path:
///
///     /home/x/.thunderbird/abcd.default      holds prefs.js and Mail: a profile
///     /home/x/Library/Mail                   .emlx files, exported mailboxes
///     /home/x/.opera/mail/store              holds account1: the store is .opera/mail
///     /home/x/MailMate/Messages/IMAP         the store is MailMate
///     /home/x/Eudora, /home/x/Outspring Mail by the name
///
/// Reads nothing but, in a profile, the line of compatibility.ini that names the program it belongs to.
StoreMark markOfStore(const QByteArray &folder, const FolderNames &names);

/// True in one of the folders that Apple Mail takes for mailboxes, "Inbox.mbox". What else lies there belongs to the
/// mailbox: attachments, lists, caches.
bool isInAppleMailbox(const QByteArray &folder);
/// The same for MailMate, whose reader looks for ".mailbox" anywhere in the path.
bool isInMailMateMailbox(const QByteArray &folder);
/// False for a name that only a profile's mailbox may have.
bool mayHoldMail(const QByteArray &name);
/// What a message file is by its name and folder; nothing for a file that is none.
std::optional<MailKind> kindOfMessageFile(const QByteArray &folder, const QByteArray &name);
