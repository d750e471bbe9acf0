#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

/// A text as one word of a POSIX shell, whatever characters it holds.
QString shellQuoted(const QString &text);

/// Runs `find` through the shell for the files and folders below `folder` (itself included) whose name matches
/// `namePattern` (as fnmatch). Gives their paths in find's order, each trimmed, none empty. What find says on its
/// standard error ("find: '/x': Permission denied") stands among them. Names that hold a line feed or are no UTF-8 are
/// passed over. `listFile` is where the list is gathered meanwhile: in a folder of that name with a process's own running
/// number, which nobody else can read and which is gone afterwards. Where `goOn` gives false the search ends at once.
/// Nothing, and the reason in `error`, if the list can't be made or read whole.
std::optional<QStringList> findFiles(const QString &folder, const QString &namePattern,
                                     const QString &listFile, const std::function<bool()> &goOn,
                                     QString *error);
