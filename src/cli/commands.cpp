#include "cli/commands.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "browse/folder_tree.h"
#include "cli/browse_output.h"
#include "cli/json_writer.h"
#include "cli/scan_output.h"
#include "cli/worker_run.h"
#include "save/old_bundle.h"

#include <QFileInfo>
#include <QTextStream>

#include <algorithm>
#include <cstdio>

namespace
{
void say(const QString &reason)
{
    std::fprintf(stderr, "velmora-convert: %s\n", reason.toUtf8().constData());
}

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
    const bool said = sayProblems();
    if (outcome == Outcome::Nothing)
        say(QStringLiteral("Selected file is either invalid or empty: ") + arguments.store);
    else if (outcome == Outcome::Stopped)
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

bool isThere(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

void setTarget(const Arguments &arguments)
{
    saveDir = arguments.outDir;
    FileSavingPath = saveDir + (arguments.toAppleMail ? QStringLiteral("/Main Identity.mbox")
                                                      : QStringLiteral("/Main Identity.rge"));
    bForAppleMail = arguments.toAppleMail;
    bForOutlookMail = !arguments.toAppleMail;
}

void printSaveJson(Outcome outcome)
{
    JsonWriter json(stdout);
    json.beginObject();
    json.key("outcome").value(outcomeName(outcome));
    json.key("bundle").value(FileSavingPath);
    json.key("files").value(static_cast<qint64>(ulCount.load()));
    json.endObject();
}

void printSave(const Arguments &arguments, Outcome outcome)
{
    if (arguments.json) {
        printSaveJson(outcome);
        return;
    }
    QTextStream out(stdout);
    out.setCodec("UTF-8");
    if (outcome == Outcome::Finished)
        out << "File saved successfully at location " << FileSavingPath << " (" << ulCount.load() << ")\n";
    else
        out << "What was saved so far is at location " << FileSavingPath << '\n';
}

// The end of a command whose save has not begun.
int endWithoutSave(const Arguments &arguments, Outcome outcome)
{
    if (arguments.json)
        printSaveJson(outcome);
    return statusOf(outcome);
}

int saveTicked(const Arguments &arguments, const ScanResult &scan)
{
    if (isThere(FileSavingPath)) {
        if (!arguments.replace) {
            say(QStringLiteral("already exists, use --replace: ") + FileSavingPath);
            return endWithoutSave(arguments, Outcome::Ended);
        }
        if (!removeOldBundle(FileSavingPath)) {
            say(QStringLiteral("can't be removed: ") + FileSavingPath);
            return endWithoutSave(arguments, Outcome::Ended);
        }
    }
    Outcome outcome = runSave(!arguments.quiet);
    sayProblems();
    if (outcome == Outcome::Finished && scan.outcome == Outcome::Ended)
        outcome = Outcome::Ended;
    printSave(arguments, outcome);
    const int status = statusOf(outcome);
    return status == ExitDone && takeUnwritten() ? ExitEndedEarly : status;
}

int convert(const Arguments &arguments, const ScanResult &scan, const std::vector<SentFolder> &chosen)
{
    setTarget(arguments);
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
} // namespace

int runCommand(const Arguments &arguments)
{
    m_selectedFile = arguments.store;
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
        return ExitNothing;
    if (arguments.command == Command::Convert)
        return convert(arguments, scan, chosen);
    const std::vector<SentFolder> &shown = arguments.folders.isEmpty() ? scan.folders : chosen;
    if (arguments.command == Command::List)
        printLists(arguments, shown);
    else
        printPreviews(arguments, shown);
    sayProblems();
    return stopSignalled() ? ExitStopped : status;
}
