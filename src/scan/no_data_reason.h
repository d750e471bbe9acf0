#pragma once

#include <QString>

/// Why a scan found nothing in the selected store, as a sentence that names a path: no such folder, a store of another
/// client and where it lies, a file where a folder is wanted, no file in it, or what lies there instead of this client's
/// mail, by the names of the files.
/// `followsLinks`: whether the scan would have followed a link to the store.
QString noDataReason(const QString &store, bool followsLinks);

/// Adds that reason to the problems of the scan, where they don't tell already what refused the store.
void reportNoData(bool followsLinks);
