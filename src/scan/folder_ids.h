#pragma once

#include <QString>

/// Turns "/"-separated tree paths into folder ids in the four folder maps (shared_state.h): finds what is
/// there, makes what is missing. The id of the path's last folder is left in llParentIdRunning; an empty path
/// does nothing.

/// Sets `*id` and returns true if a folder of that name exists below that parent.
bool GetParentId(const QString &name, qint64 parent, qint64 *id);
/// For stores on disk: each folder made below the top also gets its place in the file system, taken from
/// `filePath`: the components up to the first that equals the folder's name in any case.
void treeCreator(const QString &treePath, const QString &filePath);
/// For .olm: no file system paths.
void treeCreatorforOlm(const QString &treePath);
/// For Opera Mail: each folder made gets `filePath` itself.
void treeCreatorOperaMail(const QString &treePath, const QString &filePath);
