#pragma once

#include <functional>
#include <string>

#include "cli/cli_options.h"
#include "locus/locus_store.h"

// What the programs have in common that write the curves of a sheet into files.

namespace orvane::cli {

// Writes one curve into the file at `path`. False, with the reason, when it can't be written.
using WriteCurve =
    std::function<bool(const LocusSet& curve, const std::string& path, std::string& reason)>;

// Runs the sheet, makes the folder where there are curves, and has each curve written into a file
// there: "3_polar.csv" for a curve of sentence 3 and the ending ".csv", "3_polar_2.csv" for the
// second one of its kind there. Prints the paths; what failed in the sheet goes to the standard
// error. Gives the exit status.
int RunForCurves(const RunOptions& run, const std::string& folder, const std::string& ending,
                 const WriteCurve& writeCurve);

}  // namespace orvane::cli
