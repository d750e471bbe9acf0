#include "scan/store_kinds.h"

#include "app/shared_state.h"

const std::vector<StoreKind> &storeKinds()
{
    using Thread = QMessageSavingThread;
    static const std::vector<StoreKind> rows = {
        {0, "", "Select Mail Client", nullptr, BrowseFor::Nothing, nullptr, nullptr, Targets::None},
        {1, "apple-mbox", "Apple Mail (.mbox)", nullptr, BrowseFor::Folder, &bMboxFileFound,
         &Thread::PostBoxFileSearch, Targets::Outlook},
        {2, "apple-emlx", "Apple Mail (.emlx)", "/Library/Mail", BrowseFor::Folder, &bEmlxFileFound,
         &Thread::FileSearch, Targets::Outlook},
        {3, "thunderbird", "Thunderbird (.mbox)", "/Library/Thunderbird", BrowseFor::Folder, &bMboxFileFound,
         &Thread::PostBoxFileSearch, Targets::Both},
        {4, "postbox", "Postbox (.mbox)", "/Library/Application Support/Postbox", BrowseFor::Folder,
         &bMboxFileFound, &Thread::PostBoxFileSearch, Targets::Both},
        {5, "olm", "Outlook 2011 Backup File (.olm)", nullptr, BrowseFor::File, &bOlmFileFound,
         &Thread::CreateFile, Targets::AppleMail},
        {6, "eudora", "Eudora (.mbox)", "/Library/Thunderbird", BrowseFor::Folder, &bMboxFileFound,
         &Thread::PostBoxFileSearch, Targets::Both},
        {7, "seamonkey", "SeaMonkey (.mbox)", "/Library/Application Support/SeaMonkey", BrowseFor::Folder,
         &bMboxFileFound, &Thread::PostBoxFileSearch, Targets::Both},
        {8, "mailmate", "MailMate (.eml)", "/Library/Application Support/MailMate", BrowseFor::Folder,
         &bEmlFileFound, &Thread::FileSearchForEml, Targets::Both},
        {9, "outspring", "Outspring Mail (.eml, .f.eml)", "/Library/Application Support/Outspring Mail",
         BrowseFor::Folder, &bemlandfemlfileFound, &Thread::FileSearchForEmlandfEml, Targets::Both},
        {10, "opera", "Opera Mail (.mbs)", "/Library/Application Support/Opera Mail", BrowseFor::Folder,
         &bMbsFileFound, &Thread::FileSearchForMbs, Targets::Both},
    };
    return rows;
}

const StoreKind *findStoreKind(int client)
{
    const auto &rows = storeKinds();
    return client >= 0 && client < static_cast<int>(rows.size()) ? &rows[static_cast<size_t>(client)]
                                                                 : nullptr;
}

const StoreKind *findStoreKind(const QString &nameOrIndex)
{
    for (const StoreKind &row : storeKinds())
        if (row.client > 0 &&
            (nameOrIndex == QLatin1String(row.cliName) || nameOrIndex == QString::number(row.client)))
            return &row;
    return nullptr;
}
