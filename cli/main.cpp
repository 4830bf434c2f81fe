#include "cli/cli_options.h"
#include "cli/tool_commands.h"

namespace orvane::cli {

const char* const programName = "orvane-cli";

}  // namespace orvane::cli

int main(int count, char** words) {
    using namespace orvane::cli;
    CLI::App app("", programName);
    Action action;
    AddToolCommands(app, action);
    return RunCommandLine(app, action, count, words);
}
