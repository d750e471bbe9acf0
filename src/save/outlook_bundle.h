#pragma once

#include "save/bundle.h"

/// The fixed parts of an Outlook 2011 backup bundle ("Main Identity.rge"): a package with PkgInfo, Info.plist and
/// Archive.xml. The mailboxes lie below its folder "Mail".

/// Writes Contents/PkgInfo, Contents/Info.plist and Archive.xml below `root`, the bundle's path. What can't be
/// written is reported as a problem and left out.
void CreateFilesInMainIdentity(const QString &root);
/// Makes the bundle's folder and its Contents, and the fixed files in them.
void prepareOutlookBundle(const QString &root);
/// Does so in saveDir if the bundle is Outlook's; Apple Mail's has no fixed parts.
void prepareBundle(const Bundle &bundle);
