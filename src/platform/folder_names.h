#pragma once

#include <QByteArray>

#include <vector>

/// What a folder holds, links left out: names as the file system's bytes, in its order.
struct FolderNames {
    std::vector<QByteArray> folders;
    std::vector<QByteArray> files; ///< regular ones
};

/// Reads a folder. False if that fails, errno tells why.
bool readFolder(const QByteArray &folder, FolderNames *names);
/// The path of a name in a folder.
QByteArray pathBelow(const QByteArray &folder, const QByteArray &name);
/// False for a name that is no text in UTF-8, which the toolkit could not lead back to its file.
bool isUtf8(const QByteArray &name);
