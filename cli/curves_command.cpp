#include <memory>
#include <optional>
#include <string>

#include "cli/commands.h"
#include "cli/curves_run.h"
#include "locus/points_text.h"
#include "storage/file_bytes.h"

namespace orvane::cli {

namespace {

struct CurvesOptions {
    RunOptions run;
    std::optional<std::string> folder;
};

int SaveCurves(const CurvesOptions& options) {
    // Asked here and not by the parser, which would see this before a word that is spelled wrong.
    if (!options.folder) {
        PrintError("--csv DIR is needed\nRun orvane-cli curves --help to see what there is.");
        return exitUsage;
    }
    const auto writePoints = [](const LocusSet& curve, const std::string& path,
                                std::string& reason) {
        return WriteFile(path, PointsText(curve), reason);
    };
    return RunForCurves(options.run, *options.folder, ".csv", writePoints);
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
