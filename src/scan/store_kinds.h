#pragma once

#include "app/shared_state.h"
#include "scan/file_tree_path.h"
#include "scan/message_saving_thread.h"

#include <QString>

#include <atomic>

/// What ".mailbox" in a path, or its lack, says of a store.
enum class StoreTest { None, NeedsMailbox, RefusesMailbox };

/// One kind of store and how it is scanned. What is not set belongs to a store that is not searched for files.
struct StoreScan {
    /// Where a message file belongs; `selected`: the folder chosen.
    using TreeRule = FilePlace (*)(const QString &path, const QString &selected);

    std::atomic<bool> *kindFlag;            ///< store kind flag that a scan sets
    void (QMessageSavingThread::*reader)(); ///< goes through such a store
    const char *pattern = nullptr;          ///< names of message files
    const char *listFile = nullptr;         ///< where the search gathers them
    QStringList *found = nullptr;           ///< the shared list of them
    const char *partPattern = nullptr;      ///< names of files with parts of messages
    StoreTest test = StoreTest::None;       ///< made for each file; one that fails ends the scan
    TreeRule tree = nullptr;                ///< null: each message names its folder
};

// clang-format off
inline constexpr StoreScan
    // store       kindFlag               reader                                          pattern   listFile                             found                  partPattern    test                       tree
    mboxStore     {&bMboxFileFound,       &QMessageSavingThread::PostBoxFileSearch},
    emlxStore     {&bEmlxFileFound,       &QMessageSavingThread::FileSearch,              "*.emlx", "/var/tmp/VelmoraKestrinEmlx",       &listOfPathOfOnlyEmlx, "*.emlxpart",  StoreTest::None,           TreeCreatorForAppleMail},
    mailMateStore {&bEmlFileFound,        &QMessageSavingThread::FileSearchForEml,        "*.eml",  "/var/tmp/VelmoraKestrinEml",        &listOfPathOfOnlyEml,  nullptr,       StoreTest::NeedsMailbox,   TreeCreatorForMailMate},
    outspringStore{&bemlandfemlfileFound, &QMessageSavingThread::FileSearchForEmlandfEml, "*.eml",  "/var/tmp/VelmoraKestrinEmlandfEml", &listOfPathOfOnlyEml,  nullptr,       StoreTest::RefusesMailbox, TreeCreatorForOutSpring},
    operaStore    {&bMbsFileFound,        &QMessageSavingThread::FileSearchForMbs,        "*.mbs",  "/var/tmp/VelmoraKestrinMbs",        &listOfPathOfOnlyMbs},
    olmStore      {&bOlmFileFound,        &QMessageSavingThread::CreateFile};
// clang-format on

/// Which bundles a store may be saved to; where both, Outlook is the one that is checked.
enum class Targets { None, Outlook, AppleMail, Both };

/// One mail client: the row that the selection dialog, the scan thread, the target dialog and the command line
/// all read. The client index is the row's place.
struct StoreKind {
    int client;                  ///< client index, as in the selection dialog's combo box
    const char *cliName;         ///< name on the command line
    const char *label;           ///< text in the combo box
    const char *defaultLocation; ///< below the home folder; null where there is none
    const StoreScan *store;      ///< null: no client is chosen
    Targets targets;
};

// clang-format off
/// All clients in order of their index.
inline constexpr StoreKind storeKinds[] = {
    { 0, "",            "Select Mail Client",              nullptr,                                       nullptr,         Targets::None},
    { 1, "apple-mbox",  "Apple Mail (.mbox)",              nullptr,                                       &mboxStore,      Targets::Outlook},
    { 2, "apple-emlx",  "Apple Mail (.emlx)",              "/Library/Mail",                               &emlxStore,      Targets::Outlook},
    { 3, "thunderbird", "Thunderbird (.mbox)",             "/Library/Thunderbird",                        &mboxStore,      Targets::Both},
    { 4, "postbox",     "Postbox (.mbox)",                 "/Library/Application Support/Postbox",        &mboxStore,      Targets::Both},
    { 5, "olm",         "Outlook 2011 Backup File (.olm)", nullptr,                                       &olmStore,       Targets::AppleMail},
    { 6, "eudora",      "Eudora (.mbox)",                  "/Library/Thunderbird",                        &mboxStore,      Targets::Both},
    { 7, "seamonkey",   "SeaMonkey (.mbox)",               "/Library/Application Support/SeaMonkey",      &mboxStore,      Targets::Both},
    { 8, "mailmate",    "MailMate (.eml)",                 "/Library/Application Support/MailMate",       &mailMateStore,  Targets::Both},
    { 9, "outspring",   "Outspring Mail (.eml, .f.eml)",   "/Library/Application Support/Outspring Mail", &outspringStore, Targets::Both},
    {10, "opera",       "Opera Mail (.mbs)",               "/Library/Application Support/Opera Mail",     &operaStore,     Targets::Both},
};
// clang-format on

/// The row of a client index, or null if there is none.
const StoreKind *findStoreKind(int client);
/// The row of a command line name or a decimal client index of 1 or more, or null.
const StoreKind *findStoreKind(const QString &nameOrIndex);
