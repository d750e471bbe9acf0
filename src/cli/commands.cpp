#include "cli/commands.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "browse/folder_tree.h"
#include "cli/browse_output.h"
#include "cli/json_writer.h"
#include "cli/report_output.h"
#include "cli/say.h"
#include "cli/scan_output.h"
#include "cli/worker_run.h"
#include "save/bundle.h"
#include "save/bundle_place.h"
#include "save/save_report.h"
#include "save/ticked_items.h"

#include <QFileInfo>
#include <QTextStream>

#include <algorithm>

namespace
{
// True if there was anything to say.
bool sayProblems()
{
    const QStringList problems = takeProblems();
    for (const QString &problem : problems)
        say(problem);
    return !problems.isEmpty();
}

void sayHowScanEnded(const Arguments &arguments, Outcome outcome)
{
    if (outcome == Outcome::Nothing) {
        const QString reason = takeProblems().join(QStringLiteral("; "));
        say(QStringLiteral("Selected file is either invalid or empty: ") + arguments.store +
            (reason.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(reason)));
    }
    const bool said = sayProblems();
    if (outcome == Outcome::Stopped)
        say(QStringLiteral("stopped while scanning ") + arguments.store);
    else if (outcome == Outcome::Ended && !said)
        say(QStringLiteral("the scan ended early: ") + arguments.store);
}

int statusOf(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Finished:
        break;
    case Outcome::Nothing:
        return ExitNothing;
    case Outcome::Ended:
        return ExitEndedEarly;
    case Outcome::Stopped:
        return ExitStopped;
    }
    return stopSignalled() ? ExitStopped : ExitDone;
}

// The folders that --folder names, in that order; false if one is not there.
bool chooseFolders(const Arguments &arguments, const ScanResult &scan, std::vector<SentFolder> *chosen)
{
    for (const QString &tree : arguments.folders) {
        const auto found = std::find_if(scan.folders.begin(), scan.folders.end(),
                                        [&](const SentFolder &folder) { return folder.tree == tree; });
        if (found == scan.folders.end()) {
            say(QStringLiteral("no such folder: ") + tree);
            return false;
        }
        chosen->push_back(*found);
    }
    return true;
}

void setTarget(const Arguments &arguments)
{
    saveDir = arguments.outDir;
    FileSavingPath = bundlePath(*arguments.bundle, saveDir);
    setTargetBundle(*arguments.bundle);
}

SaveReport newReport(const Arguments &arguments)
{
    SaveReport report;
    report.bundle = FileSavingPath;
    report.dryRun = arguments.dryRun;
    report.freeBytes = freeBytesIn(arguments.outDir);
    return report;
}

void printSaveJson(Outcome outcome, const SaveReport &report)
{
    JsonWriter json(stdout);
    json.beginObject();
    json.key("outcome").value(outcomeName(outcome));
    json.key("bundle").value(FileSavingPath);
    json.key("files").value(static_cast<qint64>(ulCount.load()));
    json.key("report");
    writeReport(&json, report, saveLedger);
    json.endObject();
}

void printSave(const Arguments &arguments, Outcome outcome, const SaveReport &report)
{
    if (arguments.json) {
        printSaveJson(outcome, report);
        return;
    }
    QTextStream out(stdout);
    out.setCodec("UTF-8");
    for (const QString &sentence : reportSentences(report, saveLedger))
        out << visible(sentence) << '\n';
}

// The end of a command whose save has not begun.
int endWithoutSave(const Arguments &arguments, Outcome outcome)
{
    if (arguments.json)
        printSaveJson(outcome, newReport(arguments));
    return statusOf(outcome);
}

// A stop counts in any case; all that the report calls lost, or that could not be read or written, is no good end.
Outcome outcomeOfSave(Outcome save, const ScanResult &scan, const SaveReport &report)
{
    const bool unread = takeUnread();
    const bool lost = takeUnwritten() || unread;
    const bool differs = report.check && !report.check->differences.isEmpty();
    if (stopSignalled())
        return Outcome::Stopped;
    const bool good = save == Outcome::Finished && scan.outcome == Outcome::Finished && !lost && !differs;
    return good && saveLedger.isComplete() && saveLedger.addsUp() ? Outcome::Finished : Outcome::Ended;
}

void fillReport(Outcome outcome, SaveReport *report)
{
    report->end = outcome == Outcome::Finished  ? SaveReport::End::Finished
                  : outcome == Outcome::Stopped ? SaveReport::End::Stopped
                                                : SaveReport::End::Ended;
    report->files = ulCount;
    report->bundleStands = BundlePlace::isThere(FileSavingPath);
}

std::optional<BundleCheck> checkSaved(const Arguments &arguments)
{
    if (!arguments.check || arguments.dryRun || stopSignalled())
        return std::nullopt;
    ProgressLine line(QStringLiteral("Reading the bundle again ..."), !arguments.quiet);
    return checkBundle(saveLedger, [&line](qint64 done, qint64 bytes) {
        line.show(static_cast<double>(done) * 100.0 / static_cast<double>(qMax<qint64>(1, bytes)));
        return !stopSignalled();
    });
}

// Writes the report that --report asks for; true if it is there, or none was asked for.
bool keepReport(const Arguments &arguments, const SaveReport &report)
{
    if (arguments.report.isEmpty())
        return true;
    const QString error = writeReportFile(arguments.report, report, saveLedger);
    if (!error.isEmpty())
        say(QStringLiteral("the report can't be written: %1: %2").arg(arguments.report, error));
    return error.isEmpty();
}

// Why no save can begin, "" if one can.
QString takePlace(const Arguments &arguments)
{
    if (arguments.dryRun)
        return {};
    const QString old = BundlePlace::oldPath(FileSavingPath);
    if (!arguments.replace && BundlePlace::isThere(FileSavingPath))
        return BundlePlace::isThere(old)
                   ? QStringLiteral(
                         "already exists, not finished (the bundle before it: %1), use --replace: %2")
                         .arg(old, FileSavingPath)
                   : QStringLiteral("already exists, use --replace: ") + FileSavingPath;
    return bundlePlace.open(FileSavingPath,
                            arguments.replace ? BundlePlace::Old::Replace : BundlePlace::Old::Refuse);
}

// What became of the save, when the old bundle has gone or stays.
Outcome endSave(Outcome save, const ScanResult &scan, const SaveReport &report)
{
    Outcome outcome = outcomeOfSave(save, scan, report);
    if (!bundlePlace.finish(outcome == Outcome::Finished) && outcome == Outcome::Finished)
        outcome = Outcome::Ended;
    const bool noRoom =
        outcome == Outcome::Ended && report.freeBytes >= 0 && report.freeBytes < tickedBytes();
    if (noRoom && BundlePlace::isThere(BundlePlace::oldPath(FileSavingPath)))
        reportProblem(
            QStringLiteral("both bundles may need more space than there is, removing the old one first "
                           "would help: ") +
            BundlePlace::oldPath(FileSavingPath));
    sayProblems();
    if (report.check && !report.check->differences.isEmpty())
        say(QStringLiteral("not as written, %1 difference(s): %2")
                .arg(report.check->differences.size())
                .arg(report.check->differences.first()));
    return outcome;
}

// True if the report would be written over a file that is read, or into the bundle.
bool reportIsInTheWay(const Arguments &arguments)
{
    if (!QFileInfo::exists(arguments.report))
        return false;
    const QString report = QFileInfo(arguments.report).canonicalFilePath();
    bool isRead = report == QFileInfo(arguments.store).canonicalFilePath();
    for (const MailItemNode *item = StartMailItem; item && !isRead; item = item->next)
        isRead = report == QFileInfo(item->path).canonicalFilePath();
    const QString bundle = QFileInfo(FileSavingPath).canonicalFilePath();
    return isRead || (!bundle.isEmpty() && report.startsWith(bundle + QLatin1Char('/')));
}

int saveTicked(const Arguments &arguments, const ScanResult &scan)
{
    if (reportIsInTheWay(arguments)) {
        say(QStringLiteral("the report would be written over mail: ") + arguments.report);
        return ExitUsage;
    }
    if (const QString problem = takePlace(arguments); !problem.isEmpty()) {
        say(problem);
        return endWithoutSave(arguments, Outcome::Ended);
    }
    SaveReport report = newReport(arguments);
    const Outcome save =
        runSave(!arguments.quiet, arguments.dryRun ? SaveMode::CountOnly : SaveMode::Write, arguments.check);
    report.check = checkSaved(arguments);
    Outcome outcome = endSave(save, scan, report);
    fillReport(outcome, &report);
    if (!keepReport(arguments, report) && outcome == Outcome::Finished)
        fillReport(outcome = Outcome::Ended, &report);
    printSave(arguments, outcome, report);
    return outcome == Outcome::Finished ? ExitDone : statusOf(outcome); // a stop that comes now stops nothing
}

int convert(const Arguments &arguments, const ScanResult &scan, const std::vector<SentFolder> &chosen)
{
    setTarget(arguments); // the scan clears its flags
    if (stopSignalled())
        return endWithoutSave(arguments, Outcome::Stopped);
    if (scan.folders.empty() && scan.outcome == Outcome::Ended)
        return endWithoutSave(arguments, Outcome::Ended);
    if (scan.folders.empty()) {
        say(QStringLiteral("no folder to save: ") + arguments.store);
        return ExitNothing;
    }
    if (arguments.folders.isEmpty())
        markFolder(llRootId, stateTicked);
    for (const SentFolder &folder : chosen)
        markFolder(folder.id, stateTicked);
    return saveTicked(arguments, scan);
}

// Why the store can't be read while the bundle is replaced, "" if it can.
QString conflictOf(const Arguments &arguments)
{
    if (arguments.command != Command::Convert || !arguments.replace || arguments.dryRun)
        return {};
    setTarget(arguments);
    return BundlePlace::conflict(arguments.store, FileSavingPath);
}
} // namespace

int runCommand(const Arguments &arguments)
{
    m_selectedFile = arguments.store;
    if (const QString conflict = conflictOf(arguments); !conflict.isEmpty()) {
        say(conflict);
        return ExitUsage;
    }
    bExactCopies = arguments.exact;
    const ScanFor purpose = arguments.command == Command::Convert ? ScanFor::Saving : ScanFor::Browsing;
    const ScanResult scan = runScan(arguments.kind->client, purpose, !arguments.quiet);
    sayHowScanEnded(arguments, scan.outcome);
    const int status = statusOf(scan.outcome);
    if (arguments.command == Command::Scan) {
        printScan(arguments, scan);
        return status;
    }
    if (status == ExitNothing)
        return status;
    std::vector<SentFolder> chosen;
    if (status != ExitStopped && !chooseFolders(arguments, scan, &chosen))
        return status == ExitDone ? ExitNothing : status;
    if (arguments.command == Command::Convert)
        return convert(arguments, scan, chosen);
    const std::vector<SentFolder> &shown = arguments.folders.isEmpty() ? scan.folders : chosen;
    if (arguments.command == Command::List)
        printLists(arguments, shown);
    else
        printPreviews(arguments, shown);
    sayProblems();
    if (stopSignalled())
        return ExitStopped;
    return takeUnread() ? ExitEndedEarly : status;
}
