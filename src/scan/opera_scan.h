#pragma once

#include "platform/read_ahead.h"
#include "scan/file_store_scan.h"
#include "scan/opera_message.h"
#include "text/opera_accounts.h"

/// The scan of an Opera Mail store: a folder, a message record and a file record for each .mbs file. Folders come
/// from the account's name and from a header in the file.
class OperaScan
{
public:
    /// Without all fields of the messages no message records are made.
    explicit OperaScan(OperaFields fields) : m_fields(fields) {}
    /// Searches the selected folder for message files (the store's list) and account names; false if that fails.
    bool find();
    /// Gives a file its folder and records. To be called for the files found, one after the other.
    FileStep take(const QString &path);

private:
    void TreeCreatorOperaMail(const QString &folder, const QString &path);

    OperaFields m_fields;
    std::optional<ReadAhead<OperaMessage>> m_messages;
    std::optional<OperaAccounts> m_accounts;
    TreePaths m_trees;
};
