#pragma once

#include "save/bundle_check.h"
#include "save/save_ledger.h"

#include <QStringList>

#include <optional>

/// What is told of a save when it has ended, besides its account (saveLedger).
struct SaveReport {
    enum class End { Finished, Ended, Stopped };

    End end = End::Finished;
    QString bundle;                   ///< absolute path
    bool bundleStands = true;         ///< false: nothing was made there
    bool dryRun = false;              ///< nothing was to be made
    quint64 files = 0;                ///< source files (.olm: messages) that were to be saved
    qint64 freeBytes = 0;             ///< where the bundle goes, when the save began
    std::optional<BundleCheck> check; ///< nothing: the bundle was not read again
};

/// The report in plain words, a sentence for each line: how the save ended and where its bundle stands, a line of
/// totals, then a sentence for each thing to know that is not zero, with its number and an example.
QStringList reportSentences(const SaveReport &report, const SaveLedger &ledger);
/// The sentences, and behind them a line for each folder, each file or message that was left out, and each file of the
/// store that stands in no folder.
QString wholeReportText(const SaveReport &report, const SaveLedger &ledger);
