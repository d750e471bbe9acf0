#pragma once

#include <QString>

/// Removes what stands at a bundle's place, and nothing else: a folder with all that is in it (links in it are
/// removed as links), a file, or a symbolic link as a link. True if nothing stands there afterwards.
bool removeOldBundle(const QString &path);
