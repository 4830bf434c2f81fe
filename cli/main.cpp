#include <CLI/CLI.hpp>
#include <memory>

#include "cli/cli_options.h"
#include "cli/command_line.h"
#include "cli/commands.h"

namespace orvane::cli {

namespace {

constexpr const char* statusText =
    "Exit status: 0 fine, 1 the sheet has an error or the archive refuses, 2 wrong usage, an\n"
    "unreadable file, an empty sheet or an output that can't be written, 3 the time limit is over.";

int Run(int count, char** words) {
    CLI::App app("Calculates sheets of formulas.", programName);
    AddVersion(app);
    const auto formatter = std::make_shared<HelpFormatter>();
    formatter->label("SUBCOMMAND", "COMMAND");
    app.formatter(formatter);
    app.footer(statusText);
    app.require_subcommand(0, 1);
    Action action;
    AddCalcCommand(app, action);
    AddTraceCommand(app, action);
    AddTreeCommand(app, action);
    AddCurvesCommand(app, action);
    AddKeywordsCommand(app, action);
    AddArchiveCommand(app, action);
    AddHelpCommand(app, action);
    return RunCommandLine(app, action, count, words);
}

}  // namespace

const char* const programName = "orvane-cli";

}  // namespace orvane::cli

int main(int count, char** words) { return orvane::cli::Run(count, words); }
