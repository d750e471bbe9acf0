#pragma once

#include <QString>

/// The Finder's type and creator codes of a file, four bytes each.
struct FinderCodes {
    char type[4];
    char creator[4];
};

/// What a mailbox of the Outlook bundle carries, and one that Outlook's own mail was composed into.
constexpr FinderCodes outlookMailbox = {{'M', 'B', 'O', 'X'}, {'O', 'P', 'I', 'M'}};
/// What a mailbox of the Apple Mail bundle carries.
constexpr FinderCodes appleMailbox = {{0, 0, 0, 0}, {'O', 'P', 'I', 'M'}};

/// Stores the codes in the file's extended attribute of 32 bytes of Finder information, the rest of it zero. A
/// file system without such attributes is no error.
void setFinderInfo(const QString &path, const FinderCodes &codes);
