#pragma once

#include "cli/arguments.h"

/// Runs `find`: prints the stores below the folders asked for, says on standard error what could not be looked
/// into, and gives the exit status.
int runFind(const Arguments &arguments);
