#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "cli/commands.h"
#include "cli/sheet_run.h"
#include "core/number_literal.h"
#include "locus/locus_store.h"
#include "storage/file_bytes.h"

namespace orvane::cli {

namespace {

struct CurvesOptions {
    RunOptions run;
    std::optional<std::string> folder;
};

// The curve as text, some thousand points at a time: a heading, then x, y and whether the pen is up
// on its way to the point.
NextPiece CurvePieces(const LocusSet& curve) {
    return [&curve, next = std::size_t{0}, isFirst = true]() mutable {
        constexpr std::size_t pointsPerPiece = 4096;
        std::string piece = isFirst ? "x,y,pen_up\n" : "";
        isFirst = false;
        const std::size_t end = std::min(curve.points.size(), next + pointsPerPiece);
        for (; next < end; ++next) {
            const LocusPoint& point = curve.points[next];
            piece.append(FormatShortest(point.x)).append(",").append(FormatShortest(point.y));
            piece += point.penUp ? ",1\n" : ",0\n";
        }
        return piece;
    };
}

// "3_polar.csv" for a curve of sentence 3, "3_polar_2.csv" for the second one of its kind there.
class CurveNames {
public:
    std::string NameOf(const LocusSet& curve) {
        std::string name = std::to_string(curve.sentenceIndex + 1);
        name.append("_").append(LocusKindName(curve.kind));
        const int number = ++uses[name];
        if (number > 1) name.append("_").append(std::to_string(number));
        return name + ".csv";
    }

private:
    std::map<std::string, int> uses;
};

// One file for each curve of the last run. Gives what to print, or nothing after a failure.
std::optional<std::string> WriteCurves(const std::string& folder) {
    std::string reason;
    if (!MakeFolder(folder, reason)) {
        PrintError("the folder '" + folder + "' can't be made: " + reason);
        return std::nullopt;
    }
    std::string output;
    CurveNames names;
    for (int index = 0; index < locusStore.Count(); ++index) {
        const LocusSet& curve = locusStore[index];
        const std::string path = folder + "/" + names.NameOf(curve);
        if (!WriteFile(path, CurvePieces(curve), reason)) {
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
    for (const auto& sentence : run.sentences) {
        if (!sentence->error.empty()) PrintError(sentence->error);
    }
}

int SaveCurves(const CurvesOptions& options) {
    // Asked here and not by the parser, which would see this before a word that is spelled wrong.
    if (!options.folder) {
        PrintError("--csv DIR is needed\nRun orvane-cli curves --help to see what there is.");
        return exitUsage;
    }
    RunWatchers watchers;
    watchers.finished = PrintSheetErrors;
    const int status = RunSheet(options.run, watchers);
    if (status == exitUsage) return exitUsage;
    if (locusStore.IsEmpty()) {
        PrintError("the sheet has no curves, so nothing was written");
        return status;
    }
    const std::optional<std::string> output = WriteCurves(*options.folder);
    return output ? PrintOutput(*output, status) : exitUsage;
}

}  // namespace

void AddCurvesCommand(CLI::App& app, Action& action) {
    CLI::App& command = AddCommand(app, "curves", "Write the points of a sheet's curves to files");
    const auto options = std::make_shared<CurvesOptions>();
    AddRunOptions(command, options->run);
    command.add_option("--csv", options->folder, "The folder that gets a CSV file for each curve")
        ->take_last()
        ->type_name("folder")
        ->option_text("DIR (needed)");
    command.callback([&action, options] { action = [options] { return SaveCurves(*options); }; });
}

}  // namespace orvane::cli
