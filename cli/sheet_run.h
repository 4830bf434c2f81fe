#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "app/calculation.h"
#include "cli/cli_options.h"
#include "storage/file_bytes.h"

namespace orvane::cli {

// All bytes of a file, or of the standard input for "-"; of more than are `enough` only the start,
// which has more of them too. Nothing, with the reason on the standard error, where they can't be
// read.
std::optional<std::string> ReadInput(const std::string& file, std::size_t enough = largestFile);

// Reads the sheet that the options name and runs it, with a sign of life on the standard error
// when that is a terminal and the run takes over a second. Gives exitFine or exitSheetError for a
// sheet that ran, exitTimeLimit, with a message, for one that was ended, else exitUsage, with the
// reason on the standard error and no watcher called.
int RunSheet(const RunOptions& options, const RunWatchers& watchers);

// The same for a sheet that was read already.
int RunSheetText(const std::string& sheet, const RunOptions& options, const RunWatchers& watchers);

}  // namespace orvane::cli
