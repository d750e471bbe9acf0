#pragma once

#include "cli/arguments.h"
#include "cli/worker_run.h"

/// Prints the result of a scan: the JSON document, or the folder tree with the number of messages.
void printScan(const Arguments &arguments, const ScanResult &scan);
