#pragma once

#include "scan/file_tree_path.h"
#include "text/part_index.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

/// What came of one file that the search found.
enum class FileStep {
    Taken,      ///< it has its place, or is none of the store's mail
    WrongStore, ///< it shows that the store is another client's
    Unreadable  ///< it can't be opened, which ends the scan
};

/// A store with a file for each message. What differs between the stores stands in the rows (fileStores).
struct FileStore {
    enum class Mailboxes { Any, Needed, Refused };

    const char *pattern;  ///< names of message files
    const char *listFile; ///< where the search gathers them
    Mailboxes mailboxes;  ///< what a ".mailbox" in a path, or its lack, says about the store
    bool hasParts;        ///< partial messages have their parts in files of their own
    QStringList *found;   ///< the shared list of message files
    FilePlace (*place)(const QString &path, const QString &selected);
};

extern const FileStore appleMailStore;
extern const FileStore mailMateStore;
extern const FileStore outspringStore;

/// Finds files below the selected folder (findFiles); nothing, and a problem reported, if the list of the search
/// can't be read.
std::optional<QStringList> findInStore(const char *pattern, const char *listFile);
/// True for the feeds that Apple Mail keeps beside the mail; no store takes them.
bool isNewsFeed(const QString &path);
/// Reports why a file that the search named can't be opened. `error` tells path and reason. What the search itself
/// had to say stands among its results, and is reported as such.
void reportUnreadable(const QString &path, const QString &error);
/// Leaves the id of a tree path's last folder in llParentIdRunning; `create` makes the folders of one that is new.
/// One object for each scan.
class TreePaths
{
public:
    void enter(const QString &tree, const std::function<void()> &create);

private:
    QHash<QString, qint64> m_ids;
};

/// The scan of a store with a file for each message: folders and file records, one file after the other. The mail
/// itself is not read, only that it can be.
class FileStoreScan
{
public:
    explicit FileStoreScan(const FileStore &store) : m_store(store), m_parts(QStringList()) {}

    /// Searches the selected folder; false if that fails.
    bool find();
    /// The message files found, in the order of the search.
    const QStringList &paths() const { return *m_store.found; }
    /// The .emlxpart files that messages have taken so far.
    const QSet<QString> &usedParts() const { return m_usedParts; }
    /// Gives a file its folder, and all files of the folder their records.
    FileStep take(const QString &path);

private:
    bool canPartsBeRead(const QString &path);

    const FileStore &m_store;
    PartIndex m_parts;
    TreePaths m_trees;
    QSet<QString> m_walked;
    QSet<QString> m_usedParts;
};
