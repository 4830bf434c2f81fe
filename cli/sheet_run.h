#pragma once

#include <optional>
#include <string>

#include "app/calculation.h"
#include "cli/cli_options.h"

namespace orvane::cli {

// All bytes of a file, or of the standard input for "-". Nothing, with the reason on the standard
// error, where they can't be read.
std::optional<std::string> ReadInput(const std::string& file);

// Reads the sheet that the options name and runs it, with a sign of life on the standard error
// when that is a terminal and the run takes over a second. Gives exitFine or exitSheetError for a
// sheet that ran, exitTimeLimit, with a message, for one that was ended, else exitUsage, with the
// reason on the standard error and no watcher called.
int RunSheet(const RunOptions& options, const RunWatchers& watchers);

// The same for a sheet that was read already.
int RunSheetText(const std::string& sheet, const RunOptions& options, const RunWatchers& watchers);

}  // namespace orvane::cli
