#pragma once

#include "app/shared_state.h"

/// One of the two bundles that a save makes.
struct Bundle {
    const char *name;            ///< of its folder, in the folder chosen for the save
    std::atomic<bool> *isTarget; ///< target flag
};

inline constexpr Bundle outlookBundle{"Main Identity.rge", &bForOutlookMail};
inline constexpr Bundle appleBundle{"Main Identity.mbox", &bForAppleMail};

/// Sets the target flag of a bundle and clears the other's.
void setTargetBundle(const Bundle &bundle);
/// The bundle's path in a folder.
QString bundlePath(const Bundle &bundle, const QString &folder);
/// Bytes that this user can still write in a folder, -1 where the system can't tell.
qint64 freeBytesIn(const QString &folder);
