#pragma once

// The records of a scan: fixed, zero-filled blocks in singly linked lists, appended at the end, walked from
// the start, freed as a whole. Only the append and free functions here touch `next`; they also keep the
// indexes that save a search of the list for each folder or file.

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
    char16_t *path;    ///< absolute path, UTF-16, zero-terminated; belongs to the record
    qint32 pathLength; ///< bytes: twice the UTF-16 units, terminator not counted
    qint64 parentId;   ///< the folder that the file belongs to
    MailItemNode *next;
};

constexpr int headerFieldUnits = 255; ///< UTF-16 units of a header field, terminator included
constexpr int pathFieldUnits = 1024;  ///< UTF-16 units of the path field, terminator included
constexpr int labelFieldStart = 512;  ///< Opera Mail: the location label's place in the path field

/// One message of an mbox or .mbs file. Text is UTF-16, zero-terminated, zero-filled.
struct MboxMessageNode {
    qint64 length; ///< bytes, from its separator line to the next one or the end of the file
    qint64 offset; ///< bytes: where its separator line begins in its file
    char16_t subject[headerFieldUnits];
    char16_t from[headerFieldUnits];
    char16_t path[pathFieldUnits];
    MboxMessageNode *next;
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
void freeFolders();

/// Appends a file record.
MailItemNode *appendMailItem(const QString &path, qint64 parentId);
/// The file records of one folder, in list order.
const std::vector<const MailItemNode *> &mailItemsOfFolder(qint64 folderId);
void freeMailItems();
/// The record's path.
QString pathOf(const MailItemNode &item);

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
void freeMessages();

/// Stores text in a field of `units` UTF-16 units: cut so that a terminator always fits, on a whole unit; the
/// rest of the field is zero-filled.
void storeField(char16_t *field, int units, const QString &text);
/// The field's text, up to its terminator.
QString fieldText(const char16_t *field);
