#include "app/records.h"

#include <QHash>

#include <algorithm>
#include <utility>

namespace
{
QHash<qint64, FolderAttribNode *> folderById;
QHash<qint64, std::vector<FolderAttribNode *>> foldersByParent;
QHash<qint64, std::vector<const MailItemNode *>> itemsByFolder;
QHash<QString, std::vector<const MboxMessageNode *>> messagesByPath;
QHash<QPair<QString, QString>, std::vector<const MboxMessageNode *>> messagesByLabel; ///< account, label

template <typename Node>
Node *appendNode(Node *node, Node *&start, Node *&end)
{
    if (start)
        end->next = node;
    else
        start = node;
    end = node;
    return node;
}

template <typename Node>
void freeNodes(Node *&start, Node *&end)
{
    while (start)
        delete std::exchange(start, start->next);
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
    FolderAttribNode *node = appendNode(new FolderAttribNode{stateNotTicked, parentId, folderId, nullptr},
                                        StartFldrAtrib, EndFldrAtrib);
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
    freeNodes(StartFldrAtrib, EndFldrAtrib);
}

MailItemNode *appendMailItem(const QString &path, qint64 parentId)
{
    MailItemNode *node = appendNode(new MailItemNode{path, parentId, nullptr}, StartMailItem, EndMailItem);
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
    freeNodes(StartMailItem, EndMailItem);
}

MboxMessageNode *appendMessage()
{
    return appendNode(new MboxMessageNode, TmpMboxMbxPtrStart, TmpMboxMbxPtrEnd);
}

std::vector<const MboxMessageNode *> &messageIndexOf(const QString &path)
{
    return messagesByPath[path.left(pathFieldLimit)];
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
    freeNodes(TmpMboxMbxPtrStart, TmpMboxMbxPtrEnd);
}

QString cutField(const QString &text, int limit)
{
    const int zero = text.indexOf(QChar::Null);
    return QString(text.constData(), std::min(zero < 0 ? text.size() : zero, limit));
}
