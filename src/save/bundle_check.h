#pragma once

#include "save/save_ledger.h"

#include <functional>

/// What a look at a finished bundle has found.
struct BundleCheck {
    qint64 mailboxes = 0;
    qint64 separators = 0;   ///< lines that start with "From "
    qint64 bytes = 0;        ///< of the mailboxes
    QStringList differences; ///< sentences, each naming a mailbox that is not as it was written
    bool stopped = false;    ///< by the caller: what is behind was not looked at
};

/// Brings each target mailbox of a save to the disk, reads it again and counts it against what the save has told of it.
/// `goOn`, if given, gets the bytes read so far and those to be read, often; where it gives false the check ends.
/// Changes nothing.
BundleCheck checkBundle(const SaveLedger &ledger,
                        const std::function<bool(qint64 done, qint64 bytes)> &goOn = nullptr);
