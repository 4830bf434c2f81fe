#include "cli/tool_commands.h"

#include <memory>

#include "cli/cli_options.h"
#include "cli/commands.h"

namespace orvane::cli {

namespace {

constexpr const char* statusText =
    "Exit status: 0 fine, 1 the sheet has an error or the archive refuses, 2 wrong usage, an\n"
    "unreadable file, an empty sheet or an output that can't be written, 3 the time limit is over.";

}  // namespace

void AddToolCommands(CLI::App& app, Action& action) {
    app.description("Calculates sheets of formulas.");
    AddVersion(app);
    const auto formatter = std::make_shared<HelpFormatter>();
    formatter->label("SUBCOMMAND", "COMMAND");
    app.formatter(formatter);
    app.footer(statusText);
    app.require_subcommand(0, 1);
    AddCalcCommand(app, action);
    AddTraceCommand(app, action);
    AddTreeCommand(app, action);
    AddCurvesCommand(app, action);
    AddKeywordsCommand(app, action);
    AddArchiveCommand(app, action);
    AddHelpCommand(app, action);
}

}  // namespace orvane::cli
