#include "scan/opera_scan.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "scan/folder_ids.h"
#include "scan/opera_message.h"
#include "scan/store_kinds.h"
#include "text/mailbox_paths.h"

#include <future>

namespace
{
// The message record of a file that has been read.
void GetAllFieldsForMbsCentarTree(const QString &path, const OperaMessage &message)
{
    MboxMessageNode *record = appendMessage();
    record->from = message.sender;
    record->subject = message.subject;
    record->path = cutField(path, operaFieldLimit);
    record->label = message.label;
    messageIndexOfLabel(operaAccountOf(record->path), record->label).push_back(record);
}
} // namespace

bool OperaScan::find()
{
    listOfPathOfOnlyMbs.clear();
    auto ini = std::async([] { return findInStore("accounts.ini", "/var/tmp/VelmoraKestrinINI"); });
    const std::optional<QStringList> messages = findInStore(operaStore.pattern, operaStore.listFile);
    if (!messages)
        return false;
    listOfPathOfOnlyMbs = *messages;
    const std::optional<QStringList> accounts = ini.get();
    if (!accounts)
        return false;
    m_messages.emplace(*messages,
                       [fields = m_fields](const QString &path) { return readOperaMessage(path, fields); });
    QString accountsFile = accounts->isEmpty() ? QString() : accounts->last();
    if (!accountsFile.isEmpty() && !accountsFile.startsWith(QLatin1Char('/'))) { // what find says of a folder
        reportUnread(Problem::tr("can't be searched: %1: %2").arg(m_selectedFile, accountsFile));
        accountsFile.clear();
    }
    m_accounts.emplace(accountsFile, scanAccounts);
    reportUnread(m_accounts->errorString());
    return true;
}

FileStep OperaScan::take(const QString &path)
{
    const QString account = m_accounts->nameOf(operaAccountOf(path));
    const OperaMessage message = m_messages->next();
    if (!message.error.isEmpty()) {
        reportUnreadable(path, message.error);
        return FileStep::Unreadable;
    }
    if (isNewsFeed(path))
        return FileStep::Taken;
    const QString folder = message.folder.value_or(QStringLiteral("Mails"));
    TreeCreatorOperaMail((QLatin1Char('/') + account + QLatin1Char('/') + folder).trimmed(), path);
    if (m_fields == OperaFields::All)
        GetAllFieldsForMbsCentarTree(path, message);
    ++noOfConvertedMessage;
    return FileStep::Taken;
}

// The folder "/account/folder" below "Mail", and the file record.
void OperaScan::TreeCreatorOperaMail(const QString &folder, const QString &path)
{
    const QString tree = QStringLiteral("Mail") + folder;
    m_trees.enter(tree, [&] { treeCreatorOperaMail(tree, path); });
    listOfPathOfOnlyForTree.append(path.trimmed());
    appendMailItem(path, llParentIdRunning);
}
