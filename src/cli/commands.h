#pragma once

#include "cli/arguments.h"

/// Runs the command that the arguments ask for: prints to standard output, says on standard error what went
/// wrong, and gives the exit status.
int runCommand(const Arguments &arguments);
