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

void SaveLedger::enterTarget(const QString &mailbox)
{
    const auto known = m_placeOfTarget.constFind(mailbox);
    if (known != m_placeOfTarget.constEnd()) {
        m_target = *known;
        return;
    }
    m_target = m_targets.size();
    m_placeOfTarget.insert(mailbox, m_target);
    TargetCount target;
    target.mailbox = mailbox;
    m_targets.push_back(target);
}

void SaveLedger::addTarget(const QString &mailbox)
{
    enterTarget(mailbox);
    if (m_current >= m_folders.size())
        return;
    FolderCount &folder = m_folders[m_current];
    std::vector<qint64> &folders = m_targets[m_target].folders;
    if (!folders.empty() && folders.back() == folder.id) // a folder's messages come together
        return;
    folders.push_back(folder.id);
    folder.mailboxes.append(mailbox);
}

void SaveLedger::addFromLines(qint64 lines)
{
    if (m_target < m_targets.size())
        m_targets[m_target].fromLines += lines;
}

void SaveLedger::addFound(qint64 messages)
{
    add([messages](FolderCount *folder) { folder->found += messages; });
}

void SaveLedger::addWritten(qint64 messages)
{
    add([messages](FolderCount *folder) { folder->written += messages; });
    addFromLines(messages);
}

void SaveLedger::addJoined(qint64 messages, const MessagePlace &first)
{
    if (m_total.joined == 0)
        m_firstJoined = first;
    add([messages](FolderCount *folder) { folder->joined += messages; });
}

void SaveLedger::addLeftOut(const LeftOutItem &item)
{
    const qint64 messages = item.messages.value_or(0);
    add([messages](FolderCount *folder) { folder->leftOut += messages; });
    ReasonCount &count = m_leftOutBy[static_cast<size_t>(item.reason)];
    ++count.items;
    count.messages += messages;
    if (LeftOutItem *known = itemLike(item); known && item.messages) {
        *known->messages += messages;
    } else if (m_leftOutItems.size() < mostItems) {
        m_leftOutItems.push_back(item);
    } else {
        ++count.itemsBeyond;
        m_messagesBeyond += messages;
    }
}

// One of the items told last that is of the same file and for the same reason, and has a number.
LeftOutItem *SaveLedger::itemLike(const LeftOutItem &item)
{
    for (auto last = m_leftOutItems.rbegin(); last != m_leftOutItems.rend() && last->path == item.path;
         ++last)
        if (last->reason == item.reason && last->messages)
            return &*last;
    return nullptr;
}

void SaveLedger::addChanged(qint64 messages)
{
    add([messages](FolderCount *folder) { folder->changed += messages; });
}

void SaveLedger::addChanges(ChangeKind kind, const ChangeCount &changes)
{
    ChangeCount &sum = m_changes[static_cast<size_t>(kind)];
    if (sum.messages == 0) {
        sum.path = changes.path;
        sum.offset = changes.offset;
    }
    sum.messages += changes.messages;
    sum.count += changes.count;
}

void SaveLedger::addStrays(qint64 lines, const MessagePlace &first)
{
    if (m_strays == 0)
        m_firstStray = first;
    m_strays += lines;
    addFromLines(lines);
}

void SaveLedger::addBytes(qint64 bytes)
{
    m_bytes += bytes;
    if (m_target < m_targets.size())
        m_targets[m_target].bytes += bytes;
}

std::optional<LeftOutItem> SaveLedger::itemsNotKept() const
{
    const auto most = std::max_element(
        m_leftOutBy.begin(), m_leftOutBy.end(),
        [](const ReasonCount &a, const ReasonCount &b) { return a.itemsBeyond < b.itemsBeyond; });
    if (most->itemsBeyond == 0)
        return std::nullopt;
    LeftOutItem rest;
    rest.messages = m_messagesBeyond;
    rest.reason = static_cast<LeftOutReason>(most - m_leftOutBy.begin());
    return rest;
}

bool SaveLedger::isComplete() const
{
    for (int i = 0; i < leftOutReasons; ++i) {
        const auto reason = static_cast<LeftOutReason>(i);
        if (reason != LeftOutReason::Stopped && reason != LeftOutReason::NotTaken && itemsLeftOut(reason) > 0)
            return false;
    }
    return true;
}

bool SaveLedger::addsUp() const
{
    const auto balanced = [](const FolderCount &folder) {
        return folder.found == folder.written + folder.joined + folder.leftOut;
    };
    return balanced(m_total) && std::all_of(m_folders.begin(), m_folders.end(), balanced);
}
