#pragma once

#include "save/mbox_target.h"

#include <QHash>
#include <QString>

#include <string_view>

/// The display names of the accounts of an Opera Mail store, from its accounts.ini, which is looked for once.
class OperaAccounts
{
public:
    /// `store`: the selected folder.
    explicit OperaAccounts(const QString &store) : m_store(store) {}
    /// The name of the account that a message file lies in; its key, the folder's name, where the file names none.
    /// Empty without a key.
    QString nameFor(const QString &path);

private:
    QString readName(const QString &key);

    QString m_store;
    QString m_iniPath;
    QHash<QString, QString> m_nameOfKey;
};

/// Looks through lines of a message file for "X-Opera-Location:" headers. The last one sets `location` to the folder
/// that it names, empty perhaps; without one it stays.
void takeOperaLocation(std::string_view lines, QString *location);

/// Where a message goes: the mailbox "/account/location", the location null for "Mails". `bundle` is the bundle's
/// path.
MailboxTarget operaTarget(const QString &account, const QString &location, const QString &bundle);
