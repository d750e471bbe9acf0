#include "app/shared_state.h"

#include "platform/zero_memory.h"

#include <QHash>

#include <cstdlib>
#include <cstring>
#include <string>

namespace
{
QHash<qint64, FolderAttribNode *> folderById;
QHash<qint64, std::vector<FolderAttribNode *>> foldersByParent;
QHash<qint64, std::vector<const MailItemNode *>> itemsByFolder;
QHash<QString, std::vector<const MboxMessageNode *>> messagesByPath;
QHash<QPair<QString, QString>, std::vector<const MboxMessageNode *>> messagesByLabel; ///< account, label

ZeroMemory messageMemory;

template <typename Node>
Node *linkNode(Node *node, Node *&start, Node *&end)
{
    if (!start)
        start = node;
    else
        end->next = node;
    end = node;
    return node;
}

template <typename Node>
Node *appendNode(Node *&start, Node *&end)
{
    auto *node = static_cast<Node *>(std::calloc(1, sizeof(Node)));
    Q_CHECK_PTR(node);
    return linkNode(node, start, end);
}

template <typename Node, typename Release>
void freeNodes(Node *&start, Node *&end, Release release)
{
    while (start) {
        Node *next = start->next;
        release(start);
        std::free(start);
        start = next;
    }
    end = nullptr;
}

template <typename Key, typename Value>
const Value &lookUp(const QHash<Key, Value> &index, const Key &key)
{
    static const Value none;
    const auto found = index.constFind(key);
    return found == index.constEnd() ? none : *found;
}
} // namespace

FolderAttribNode *appendFolder(qint64 folderId, qint64 parentId)
{
    FolderAttribNode *node = appendNode(StartFldrAtrib, EndFldrAtrib);
    node->state = stateNotTicked;
    node->parentId = parentId;
    node->folderId = folderId;
    folderById.insert(folderId, node);
    foldersByParent[parentId].push_back(node);
    return node;
}

FolderAttribNode *findFolder(qint64 folderId)
{
    return folderById.value(folderId, nullptr);
}

const std::vector<FolderAttribNode *> &childFolders(qint64 folderId)
{
    return lookUp(foldersByParent, folderId);
}

void freeFolders()
{
    folderById.clear();
    foldersByParent.clear();
    freeNodes(StartFldrAtrib, EndFldrAtrib, [](FolderAttribNode *) {});
}

MailItemNode *appendMailItem(const QString &path, qint64 parentId)
{
    MailItemNode *node = appendNode(StartMailItem, EndMailItem);
    const size_t bytes = static_cast<size_t>(path.size()) * sizeof(char16_t);
    node->path = static_cast<char16_t *>(std::calloc(static_cast<size_t>(path.size()) + 1, sizeof(char16_t)));
    Q_CHECK_PTR(node->path);
    std::memcpy(node->path, path.utf16(), bytes);
    node->pathLength = static_cast<qint32>(bytes);
    node->parentId = parentId;
    itemsByFolder[parentId].push_back(node);
    return node;
}

const std::vector<const MailItemNode *> &mailItemsOfFolder(qint64 folderId)
{
    return lookUp(itemsByFolder, folderId);
}

void freeMailItems()
{
    itemsByFolder.clear();
    freeNodes(StartMailItem, EndMailItem, [](MailItemNode *node) { std::free(node->path); });
}

QString pathOf(const MailItemNode &item)
{
    // Not by fromUtf16, which takes a byte order mark at the front for a sign and not for text.
    return QString(reinterpret_cast<const QChar *>(item.path),
                   item.pathLength / static_cast<int>(sizeof(char16_t)));
}

MboxMessageNode *appendMessage()
{
    return linkNode(static_cast<MboxMessageNode *>(messageMemory.take(sizeof(MboxMessageNode))),
                    TmpMboxMbxPtrStart, TmpMboxMbxPtrEnd);
}

std::vector<const MboxMessageNode *> &messageIndexOf(const QString &path)
{
    return messagesByPath[path.left(pathFieldUnits - 1)];
}

const std::vector<const MboxMessageNode *> &messagesOfPath(const QString &path)
{
    return lookUp(messagesByPath, path);
}

std::vector<const MboxMessageNode *> &messageIndexOfLabel(const QString &account, const QString &label)
{
    return messagesByLabel[{account, label}];
}

const std::vector<const MboxMessageNode *> &messagesOfLabel(const QString &account, const QString &label)
{
    return lookUp(messagesByLabel, qMakePair(account, label));
}

void freeMessages()
{
    messagesByPath.clear();
    messagesByLabel.clear();
    messageMemory.release();
    TmpMboxMbxPtrStart = TmpMboxMbxPtrEnd = nullptr;
}

void storeField(char16_t *field, int units, const QString &text)
{
    const int length = qMin(text.size(), units - 1);
    std::memset(field, 0, static_cast<size_t>(units) * sizeof(char16_t));
    std::memcpy(field, text.utf16(), static_cast<size_t>(length) * sizeof(char16_t));
}

QString fieldText(const char16_t *field)
{
    return QString(reinterpret_cast<const QChar *>(field),
                   static_cast<int>(std::char_traits<char16_t>::length(field)));
}

void setStoreKind(std::atomic<bool> *kind)
{
    for (std::atomic<bool> *flag : {&bMboxFileFound, &bEmlxFileFound, &bOlmFileFound, &bEmlFileFound,
                                    &bemlandfemlfileFound, &bMbsFileFound})
        *flag = flag == kind;
}

void CleanLinkedList()
{
    freeMessages();
    objMapName_FID.clear();
    objMapFID_PID.clear();
    objMapFID_Name.clear();
    MapLeftTreePath.clear();
    folderByPlace.clear();
}

void discardScanResult()
{
    freeFolders();
    freeMailItems();
    listOfPathOfOnlyForTree.clear();
}
