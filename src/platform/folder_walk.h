#pragma once

#include <QString>

#include <functional>

/// What a walk through a folder tells. Paths are absolute.
struct FolderVisit {
    /// A file or folder; a folder comes before what is in it.
    std::function<void(const QString &path, bool isFolder)> entry;
    /// One whose name is no UTF-8, as the toolkit decodes it; what is in such a folder is not told. May be empty.
    std::function<void(const QString &path, bool isFolder)> oddName = nullptr;
    /// A folder that can't be read, and the system's reason. May be empty.
    std::function<void(const QString &path, const QString &error)> unreadable = nullptr;
    /// False: a link that leads to a folder is passed over, so that the walk does not leave the folder it began in.
    bool followsFolderLinks = true;
    /// Asked before each entry: a true ends the walk. May be empty.
    std::function<bool()> stopped = nullptr;
};

/// Walks a folder depth first, in the order of the file system, hidden entries too. Links are followed, but not one that
/// leads back to a folder on the way to it. What is neither file nor folder is passed over. Returns false if `folder` is
/// no existing folder.
bool walkFolder(const QString &folder, const FolderVisit &visit);
