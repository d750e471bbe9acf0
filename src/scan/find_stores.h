#pragma once

#include <QStringList>

#include <functional>
#include <vector>

/// A store of mail that lies on this machine.
struct FoundStore {
    int client = 0;   ///< client index (storeKinds)
    QString path;     ///< the folder, or the .olm file, that the client's reader takes; absolute
    qint64 files = 0; ///< mailboxes, or message files where each message is a file; an .olm file is one
    qint64 bytes = 0; ///< of those files together
};

/// What a search for stores has found.
struct FoundStores {
    std::vector<FoundStore> stores; ///< in the order of their paths, each once
    QStringList problems;           ///< sentences: what could not be looked into, with the path
};

/// Looks below folders (absolute paths) for stores of all clients, in one walk that follows no link. A folder that
/// is itself a store counts. Stores are told by the names of folders and files, mailboxes by their first bytes; no
/// file is read further. Where a client has left no mark, its store is the largest folder that holds nothing but its
/// message files. `stopped` is asked before each folder; after a true the stores found so far are given.
FoundStores findStores(const QStringList &folders, const std::function<bool()> &stopped = nullptr);
/// The store with the most bytes, of whatever client; null without one.
const FoundStore *largestStore(const FoundStores &found);
