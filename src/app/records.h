#pragma once

// The records of a scan: values in singly linked lists, appended at the end, walked from the start, freed as a whole.
// Only the append and free functions here touch `next`; they also keep the indexes that save a search of the list
// for each folder or file.

#include <QString>

#include <vector>

constexpr quint8 stateTicked = 1;
constexpr quint8 statePartlyTicked = 2;
constexpr quint8 stateNotTicked = 3;

/// One folder of the tree, the root included.
struct FolderAttribNode {
    quint8 state;    ///< stateTicked, statePartlyTicked or stateNotTicked
    qint64 parentId; ///< 0 for the root
    qint64 folderId;
    FolderAttribNode *next;
};

/// One source file that holds mail.
struct MailItemNode {
    QString path;    ///< absolute
    qint64 parentId; ///< the folder that the file belongs to
    MailItemNode *next;
    qint64 size = 0; ///< a mailbox: bytes, at the scan

    /// Bytes of the path as UTF-16.
    qint32 pathLength() const { return path.size() * static_cast<qint32>(sizeof(QChar)); }
};

constexpr int headerFieldLimit = 254; ///< longest subject or sender in a record, UTF-16 units
constexpr int pathFieldLimit = 1023;  ///< longest path of a mailbox file in a record, UTF-16 units
constexpr int operaFieldLimit = 511;  ///< Opera Mail: longest path, and longest location label, UTF-16 units

/// One message of an mbox or .mbs file. Its texts are cut at the limits above (cutField).
struct MboxMessageNode {
    qint64 length = 0; ///< bytes, from its separator line to the next one or the end of the file
    qint64 offset = 0; ///< bytes: where its separator line begins in its file
    QString subject;
    QString from;
    QString path;  ///< its text is shared by the messages of a file; "" in the last record of an index
    QString label; ///< Opera Mail: the location label
    MboxMessageNode *next = nullptr;
};

inline FolderAttribNode *StartFldrAtrib = nullptr;
inline FolderAttribNode *EndFldrAtrib = nullptr;
inline MailItemNode *StartMailItem = nullptr;
inline MailItemNode *EndMailItem = nullptr;
inline MboxMessageNode *TmpMboxMbxPtrStart = nullptr;
inline MboxMessageNode *TmpMboxMbxPtrEnd = nullptr;

/// Appends a folder record with the state "not ticked".
FolderAttribNode *appendFolder(qint64 folderId, qint64 parentId);
/// The record of a folder, or null.
FolderAttribNode *findFolder(qint64 folderId);
/// The records of a folder's direct children, in list order.
const std::vector<FolderAttribNode *> &childFolders(qint64 folderId);
/// Frees all folder records.
void freeFolders();

/// Appends a file record.
MailItemNode *appendMailItem(const QString &path, qint64 parentId);
/// The file records of one folder, in list order.
const std::vector<const MailItemNode *> &mailItemsOfFolder(qint64 folderId);
/// Frees all file records.
void freeMailItems();

/// Appends an empty message record and returns it.
MboxMessageNode *appendMessage();
/// The index entry of a mailbox file: whoever completes a record of that file adds it here. Valid until the
/// next call.
std::vector<const MboxMessageNode *> &messageIndexOf(const QString &path);
/// The message records whose path field equals `path`, in list order. An empty path has none.
const std::vector<const MboxMessageNode *> &messagesOfPath(const QString &path);
/// The index entry of an Opera Mail account's location label: whoever completes a record adds it here. Valid until
/// the next call.
std::vector<const MboxMessageNode *> &messageIndexOfLabel(const QString &account, const QString &label);
/// The message records of an account's location label, in list order; both are compared case-sensitively.
const std::vector<const MboxMessageNode *> &messagesOfLabel(const QString &account, const QString &label);
/// Frees all message records.
void freeMessages();

/// What a record keeps of a text: all up to its first zero character, `limit` UTF-16 units at most (a surrogate pair
/// may lose its second half), in memory of just that size.
QString cutField(const QString &text, int limit);
