#pragma once

#include <QString>

#include <optional>
#include <string_view>

// The header "X-Opera-Location: a/b/c:17", by which a message file of Opera Mail names its folder, "a/b/c". Scan and save
// read it each in its own way, which differ only in lines that hold more than this header.

constexpr std::string_view operaLocationMark = "X-Opera-Location:";

/// The scan's way: the first text in the line around the mark, trimmed; nothing if there is none. Of
/// "x X-Opera-Location: a" it is "x".
std::optional<QString> operaLocationAround(const QString &line);
/// The save's way: looks through lines for the mark; the last line with one sets `folder` to the folder that stands behind
/// it, which may be empty but not null; without one it stays.
void takeOperaFolderBehind(std::string_view lines, QString *folder);

/// The folder of a location: all up to its last ":", or all of it.
QString operaFolderOf(const QString &location);
/// The label of a location: the last "/"-separated piece of what stands before its last ":", or all of it where it
/// has no ":". Empty pieces don't count.
QString operaLabelOf(const QString &location);
