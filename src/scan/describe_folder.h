#pragma once

#include "scan/find_stores.h"

/// Why a folder, or file, that was chosen for a client holds nothing for it.
struct FolderAnswer {
    enum class Kind {
        Missing,    ///< there is no such file or folder
        Unreadable, ///< `text` tells why
        NotAFolder, ///< a file, where the client keeps a folder
        NotAFile,   ///< a folder, where the client keeps a file
        OtherStore, ///< `store` lies in it
        Maildir,    ///< `path`: a folder of the form Maildir, which no client here reads
        NamedMbox,  ///< `path`: a mailbox file with a name in ".mbox", which no reader takes
        Mailboxes,  ///< `path`: a mailbox file of no client
        NoMail
    };
    Kind kind = Kind::NoMail;
    FoundStore store;
    QString path;
    QString text;
};

/// Looks what a path holds instead of a store of `client` (client index): by the search of findStores, then for mail
/// that is no client's store. A store of the same client counts where it is another folder than the one chosen.
/// `stopped` is asked before each folder; after a true the answer is that of what was seen.
FolderAnswer describeFolder(const QString &path, int client, const std::function<bool()> &stopped = nullptr);
/// The answer as a sentence without a full stop, in the user's language: "it holds a store of Thunderbird (.mbox) in
/// /home/x/.thunderbird/abcd.default".
QString sentenceOf(const FolderAnswer &answer);
