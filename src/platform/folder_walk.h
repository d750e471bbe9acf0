#pragma once

#include <QString>

#include <functional>

/// Walks a folder depth first, in the order of the file system, hidden entries too: each folder is given to
/// `visit` before what is in it. Links are followed, but not one that leads back to a folder on the way to it.
/// What is neither file nor folder is passed over, as are names that are no UTF-8. Returns false if `folder` is no
/// existing folder. `visit` gets the entry's absolute path and whether it is a folder.
bool walkFolder(const QString &folder, const std::function<void(const QString &path, bool isFolder)> &visit);
