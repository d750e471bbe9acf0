#pragma once

#include "save/mailbox_file.h"

#include <QString>

#include <vector>

/// How a scan or save came to its end.
enum class Outcome { Finished, Nothing, Ended, Stopped };

/// The outcome's name in JSON: "finished".
QString outcomeName(Outcome outcome);

/// One folder as the scan thread sends it.
struct SentFolder {
    qint64 id;
    qint64 parent;
    QString name; ///< raw
    QString path; ///< in the file system, "" where it has none
    QString tree; ///< raw names from the top down to this folder, joined by "/"
};

/// What a scan came to.
struct ScanResult {
    Outcome outcome = Outcome::Nothing;
    std::vector<SentFolder> folders; ///< in the order in which they were sent
};

/// Makes SIGINT and SIGTERM act as the Stop button, once; a second one kills.
void catchStopSignals();
/// True after such a signal.
bool stopSignalled();

/// Shows a share of the work on standard error.
class ProgressLine
{
public:
    /// Shows nothing unless `wanted` is true and standard error is a terminal.
    ProgressLine(const QString &task, bool wanted);
    ~ProgressLine();
    ProgressLine(const ProgressLine &) = delete;
    ProgressLine &operator=(const ProgressLine &) = delete;
    /// How much of the whole task is done; writes only where the whole number is another.
    void show(double percent);

private:
    QString m_task;
    bool m_shown;
    int m_last = -1;
};

/// What a scan is for: a save needs no records of single messages.
enum class ScanFor { Browsing, Saving };

/// Runs the scan thread on m_selectedFile with the reader of a client, and makes the folder records.
ScanResult runScan(int client, ScanFor purpose, bool showProgress);
/// Runs the save thread on what is ticked; the target flags, saveDir and the bundle's place are set. `toDisk`: it
/// has ended only when the bundle is on the disk.
Outcome runSave(bool showProgress, SaveMode mode, bool toDisk);
