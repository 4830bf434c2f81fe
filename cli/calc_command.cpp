#include <memory>

#include "cli/commands.h"
#include "cli/run_json.h"
#include "cli/sheet_run.h"

namespace orvane::cli {

namespace {

// Exactly the two texts; a terminal wants its prompt on a line of its own.
std::string PlainOutput(const CalculationTexts& texts) {
    std::string output = texts.positionText + texts.resultText;
    if (!output.empty() && output.back() != '\n') output += '\n';
    return output;
}

int Calculate(const RunOptions& options) {
    std::string output;
    RunWatchers watchers;
    watchers.finished = [&](const FinishedRun& run) {
        output = options.json ? PrintRun(run) : PlainOutput(run.texts);
    };
    const int status = RunSheet(options, watchers);
    return status == exitUsage ? exitUsage : PrintOutput(output, status);
}

}  // namespace

void AddCalcCommand(CLI::App& app, Action& action) {
    CLI::App& command = AddCommand(app, "calc", "Calculate a sheet and print its report");
    const auto options = std::make_shared<RunOptions>();
    AddRunOptions(command, *options);
    AddJsonOption(command, options->json);
    command.callback([&action, options] { action = [options] { return Calculate(*options); }; });
}

}  // namespace orvane::cli
