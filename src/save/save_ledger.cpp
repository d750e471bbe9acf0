#include "save/save_ledger.h"

#include "app/shared_state.h"

#include <algorithm>

namespace
{
constexpr const char *reasonNames[] = {"unreadable", "unwritable", "vanished",  "part",       "too-large",
                                       "stopped",    "order-mark", "not-taken", "not-reached"};
static_assert(std::size(reasonNames) == leftOutReasons);

constexpr const char *changeNames[] = {
    "lostCharacters",  "latin1",         "firstLine",        "quoted",  "tail",
    "droppedHeader",   "emptyParts",     "newMessageId",     "newDate", "lostField",
    "lostAttachments", "lostRecipients", "unreachableParts", "cutText"};
static_assert(std::size(changeNames) == changeKinds);

QString treeOfFolder(qint64 folderId)
{
    QStringList names;
    for (auto folder = objMapFID_Name.constFind(folderId); folder != objMapFID_Name.constEnd();
         folder = objMapFID_Name.constFind(objMapFID_PID.value(folder.key())))
        names.prepend(*folder);
    return names.join(QLatin1Char('/'));
}
} // namespace

const char *nameOf(LeftOutReason reason)
{
    return reasonNames[static_cast<size_t>(reason)];
}

const char *nameOf(ChangeKind kind)
{
    return changeNames[static_cast<size_t>(kind)];
}

void SaveLedger::clear()
{
    *this = SaveLedger();
}

void SaveLedger::enterFolder(qint64 folderId)
{
    const auto known = m_placeOfFolder.constFind(folderId);
    if (known != m_placeOfFolder.constEnd()) {
        m_current = *known;
        return;
    }
    m_current = m_folders.size();
    m_placeOfFolder.insert(folderId, m_current);
    FolderCount folder;
    folder.id = folderId;
    folder.tree = treeOfFolder(folderId);
    m_folders.push_back(folder);
}

template <typename Add>
void SaveLedger::add(Add change)
{
    if (m_current < m_folders.size())
        change(&m_folders[m_current]);
    change(&m_total);
}

void SaveLedger::addTarget(const QString &mailbox)
{
    FolderCount &folder = m_folders.at(m_current);
    std::vector<qint64> &folders = m_foldersOfTarget[mailbox];
    if (folders.empty())
        m_targets.append(mailbox);
    if (std::find(folders.begin(), folders.end(), folder.id) != folders.end())
        return;
    folders.push_back(folder.id);
    folder.mailboxes.append(mailbox);
}

void SaveLedger::addFound(qint64 messages)
{
    add([messages](FolderCount *folder) { folder->found += messages; });
}

void SaveLedger::addWritten(qint64 messages)
{
    add([messages](FolderCount *folder) { folder->written += messages; });
}

void SaveLedger::addJoined(qint64 messages)
{
    add([messages](FolderCount *folder) { folder->joined += messages; });
}

void SaveLedger::addLeftOut(const LeftOutItem &item)
{
    const qint64 messages = item.messages.value_or(0);
    add([messages](FolderCount *folder) { folder->leftOut += messages; });
    m_leftOutBy[static_cast<size_t>(item.reason)] += messages;
    if (m_leftOutItems.size() < mostItems)
        m_leftOutItems.push_back(item);
    else
        m_beyond[static_cast<size_t>(item.reason)] += messages;
}

void SaveLedger::addChange(ChangeKind kind, qint64 count, const QString &path, qint64 offset)
{
    ChangeCount &change = m_changes[static_cast<size_t>(kind)];
    if (change.messages == 0) {
        change.path = path;
        change.offset = offset;
    }
    ++change.messages;
    change.count += count;
}

void SaveLedger::addStrays(qint64 lines)
{
    m_strays += lines;
}

void SaveLedger::addBytes(qint64 bytes)
{
    m_bytes += bytes;
}

std::vector<SharedMailbox> SaveLedger::sharedMailboxes() const
{
    std::vector<SharedMailbox> shared;
    for (const QString &mailbox : m_targets)
        if (const std::vector<qint64> &folders = m_foldersOfTarget[mailbox]; folders.size() > 1)
            shared.push_back({mailbox, folders});
    return shared;
}

bool SaveLedger::addsUp() const
{
    const auto balanced = [](const FolderCount &folder) {
        return folder.found == folder.written + folder.joined + folder.leftOut;
    };
    return balanced(m_total) && std::all_of(m_folders.begin(), m_folders.end(), balanced);
}
