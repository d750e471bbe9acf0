#pragma once

#include <QtGlobal>

/// How much mail the last scan has found.
struct ScanCount {
    qint64 messages = 0;
    qint64 folders = 0; ///< with at least one message
};

/// Counts it by the scan's records.
ScanCount countScan();
