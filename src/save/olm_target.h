#pragma once

#include "save/mbox_target.h"

/// Target of a folder of an .olm file in the Apple Mail bundle below `saveFolder`; a message outside all folders
/// goes to "Folder1". A component of the path that isn't a name (empty, "." or "..") gets one that no folder of an
/// .olm file can have, so that nothing is written outside the bundle and no two folders become one.
MailboxTarget appleTargetOfOlmFolder(const QString &folderPath, const QString &saveFolder);
