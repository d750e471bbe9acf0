#pragma once

#include "save/bundle.h"
#include "scan/store_kinds.h"

#include <QString>
#include <QStringList>

/// The first word of a command line, or the option that takes its place.
enum class Command { Scan, List, Preview, Convert, Find, Help, Version };

/// Exit statuses of velmora-convert.
enum ExitStatus { ExitDone = 0, ExitNothing = 1, ExitUsage = 2, ExitStopped = 3, ExitEndedEarly = 4 };

/// What the command line asked for, checked and made absolute.
struct Arguments {
    Command command = Command::Help;
    const StoreKind *kind = nullptr;
    QString store;       ///< absolute, no trailing "/"
    QStringList folders; ///< tree paths of --folder, in the order given, no trailing "/"
    QStringList places;  ///< find: the folders to look below, absolute; at least one
    bool json = false;
    bool quiet = false;
    bool replace = false;
    const Bundle *bundle = &outlookBundle; ///< convert: the target
    bool exact = false;                    ///< convert: every byte of every message is kept
    bool dryRun = false;                   ///< convert: nothing is written but the report
    bool check = false;                    ///< convert: the bundle is read again
    QString report;                        ///< convert: file for the report, "" for none
    QString outDir;                        ///< convert: existing folder, absolute, no trailing "/"
    QString error;                         ///< why this is a usage error; "" if it is none
};

/// Reads the command line (arguments[0] is the program). A mistake leaves its reason in `error`.
Arguments parseArguments(const QStringList &arguments);
/// The text of --help.
QString helpText();
