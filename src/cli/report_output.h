#pragma once

#include "save/save_report.h"

class JsonWriter;

/// Writes the report as the value that comes next in a JSON document.
void writeReport(JsonWriter *json, const SaveReport &report, const SaveLedger &ledger);
/// Writes the report to a file: as a JSON document where its name ends in ".json", else as text. What stood there is
/// replaced. Gives why that failed, "" where it did not.
QString writeReportFile(const QString &path, const SaveReport &report, const SaveLedger &ledger);
