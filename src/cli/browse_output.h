#pragma once

#include "browse/message_rows.h"
#include "cli/arguments.h"
#include "cli/worker_run.h"

#include <vector>

/// The message list of one folder, as the window would show it; the store kind flags of the scan decide where
/// the rows come from.
std::vector<MessageRow> rowsOfFolder(const SentFolder &folder);
/// Prints the message lists of folders. Ends early after a stop signal.
void printLists(const Arguments &arguments, const std::vector<SentFolder> &folders);
/// Prints the preview of each message of folders. Ends early after a stop signal.
void printPreviews(const Arguments &arguments, const std::vector<SentFolder> &folders);
