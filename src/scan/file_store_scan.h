#pragma once

#include "text/part_index.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

struct StoreScan;

/// What came of one file that the search found.
enum class FileStep {
    Taken,      ///< it has its place, or is none of the store's mail
    WrongStore, ///< it shows that the store is another client's
    Unreadable  ///< it can't be opened, which ends the scan
};

/// Finds files below the selected folder (findFiles); nothing, and a problem reported, if the list of the search
/// can't be read.
std::optional<QStringList> findInStore(const char *pattern, const char *listFile);
/// Reports why a file that the search named can't be opened. `error` tells path and reason. What the search itself
/// had to say stands among its results, and is reported as such.
void reportUnreadable(const QString &path, const QString &error);

/// The tree paths that a scan has made folders for. One object for each scan.
class TreePaths
{
public:
    /// Leaves the id of a tree path's last folder in llParentIdRunning; `create` makes the folders of one that is new.
    void enter(const QString &tree, const std::function<void()> &create);

private:
    QHash<QString, qint64> m_ids;
};

/// The scan of a store with a file for each message: folders and file records, one file after the other. The mail
/// itself is not read, only that it can be.
class FileStoreScan
{
public:
    /// The store with its rules; m_selectedFile is the folder chosen.
    explicit FileStoreScan(const StoreScan &store) : m_store(store), m_parts(QStringList()) {}

    /// Searches the selected folder for message files (the store's list) and parts; false if that fails.
    bool find();
    /// The .emlxpart files that messages have taken so far.
    const QSet<QString> &usedParts() const { return m_usedParts; }
    /// Gives a file its folder, and all files of the folder their records.
    FileStep take(const QString &path);

private:
    bool canPartsBeRead(const QString &path);

    const StoreScan &m_store;
    PartIndex m_parts;
    TreePaths m_trees;
    QSet<QString> m_walked;
    QSet<QString> m_usedParts;
};
