#include "cli/curves_run.h"

#include <optional>

#include "cli/sheet_run.h"
#include "locus/points_text.h"
#include "storage/file_bytes.h"

namespace orvane::cli {

namespace {

// One file for each curve of the last run. Gives what to print, or nothing after a failure.
std::optional<std::string> WriteCurves(const std::string& folder, const std::string& ending,
                                       const WriteCurve& writeCurve) {
    std::string reason;
    if (!MakeFolder(folder, reason)) {
        PrintError("the folder '" + folder + "' can't be made: " + reason);
        return std::nullopt;
    }
    std::string output;
    CurveNames names;
    for (int index = 0; index < locusStore.Count(); ++index) {
        const LocusSet& curve = locusStore[index];
        const std::string path = folder + "/" + names.NextName(curve) + ending;
        if (!writeCurve(curve, path, reason)) {
            PrintError("'" + path + "' can't be written: " + reason);
            return std::nullopt;
        }
        output.append(path).append(": ").append(std::to_string(curve.points.size()));
        output += curve.points.size() == 1 ? " point\n" : " points\n";
    }
    return output;
}

// What failed in the sheet goes to the standard error: the files hold the points up to there.
void PrintSheetErrors(const FinishedRun& run) {
    if (!run.errorText.empty()) PrintError(run.errorText);
    for (const Sentence* sentence : run.sentences) {
        if (!sentence->error.empty()) PrintError(sentence->error);
    }
}

}  // namespace

int RunForCurves(const RunOptions& run, const std::string& folder, const std::string& ending,
                 const WriteCurve& writeCurve) {
    RunWatchers watchers;
    watchers.finished = PrintSheetErrors;
    const int status = RunSheet(run, watchers);
    if (status == exitUsage) return exitUsage;
    if (locusStore.IsEmpty()) {
        PrintError("the sheet has no curves, so nothing was written");
        return status;
    }
    const std::optional<std::string> output = WriteCurves(folder, ending, writeCurve);
    return output ? PrintOutput(*output, status) : exitUsage;
}

}  // namespace orvane::cli
