#pragma once

#include "scan/message_saving_thread.h"

#include <QString>

#include <atomic>
#include <vector>

/// What the Browse button of the selection dialog opens.
enum class BrowseFor { Nothing, Folder, File };

/// Which bundles a store may be saved to; where both, Outlook is the one that is checked.
enum class Targets { None, Outlook, AppleMail, Both };

/// One mail client: the row that the selection dialog, the scan thread, the target dialog and the command line
/// all read. The client index is the row's place.
struct StoreKind {
    int client;                  ///< client index, as in the selection dialog's combo box
    const char *cliName;         ///< name on the command line
    const char *label;           ///< text in the combo box
    const char *defaultLocation; ///< below the home folder; null where there is none
    BrowseFor browse;
    std::atomic<bool> *kindFlag; ///< store kind flag that a scan sets
    void (QMessageSavingThread::*reader)();
    Targets targets;
};

/// All clients in order of their index; row 0 is "Select Mail Client".
const std::vector<StoreKind> &storeKinds();
/// The row of a client index, or null if there is none.
const StoreKind *findStoreKind(int client);
/// The row of a command line name or a decimal client index of 1 or more, or null.
const StoreKind *findStoreKind(const QString &nameOrIndex);
