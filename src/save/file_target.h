#pragma once

#include "save/mbox_target.h"

#include <QString>

/// What is done about the folder "Messages" that a mailbox's folder holds.
enum class MessagesFolder {
    Stays,
    LeavesSelection, ///< it goes from what the selection has below its mailbox
    CutsPath         ///< a mailbox's place that has it loses its first 15 characters, "/Messages/IMAP/"
};

/// How the path of a message file becomes the place of its mailbox in a bundle: a row for each writer of the
/// stores that keep one file for each message.
struct TargetRule {
    const char *base;         ///< where the mailboxes' places start below the save folder
    const char *mail;         ///< what goes before the place of a mailbox below the selection
    const char *suffix;       ///< of a mailbox's folder, besides ".mbox"; null: each folder is a mailbox
    MessagesFolder messages;  ///< see there
    bool insideExcludesBelow; ///< a mailbox around the selection is not also taken as one below it
};

// clang-format off
//                                        base                          mail      suffix       messages                         excludes
constexpr TargetRule emlxToOutlook       {"/Main Identity.rge",        "/Mail",  ".imapmbox", MessagesFolder::LeavesSelection, false};
constexpr TargetRule mailMateToOutlook   {"/Main Identity.rge",        "/Mail/", ".mailbox",  MessagesFolder::CutsPath,        true};
constexpr TargetRule outspringToOutlook  {"/Main Identity.rge",        "/Mail",  nullptr,     MessagesFolder::Stays,           false};
constexpr TargetRule mailMateToAppleMail {"/Main Identity.mbox/Mail/", "",       ".mailbox",  MessagesFolder::CutsPath,        true};
constexpr TargetRule outspringToAppleMail{"/Main Identity.mbox/Mail/", "",       nullptr,     MessagesFolder::Stays,           false};
// clang-format on

/// The mailbox that a message file lies in: its folder's path without the suffix. A file in no folder with a
/// suffix belongs to the folder that it lies in.
QString mailboxStem(const TargetRule &rule, const QString &path);
/// The target of all messages of the mailbox `stem`. `selected` is the store, no trailing "/".
MailboxTarget targetOfStem(const TargetRule &rule, const QString &stem, const QString &selected,
                           const QString &saveFolder);
