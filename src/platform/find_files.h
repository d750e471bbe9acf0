#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// A text as one word of a POSIX shell, whatever characters it holds.
QString shellQuoted(const QString &text);

/// Runs `find` through the shell for the files and folders below `folder` (itself included) whose name matches
/// `namePattern` (as fnmatch). Gives their paths in find's order, each trimmed, none empty. What find says on its
/// standard error stands among them as it is one stream with the paths. `listFile` is where the list is gathered
/// meanwhile: a process's own running number is appended, and the file is removed before and after. Names that
/// hold a line feed or are no UTF-8 are passed over. Nothing if the list can't be read.
std::optional<QStringList> findFiles(const QString &folder, const QString &namePattern,
                                     const QString &listFile);
