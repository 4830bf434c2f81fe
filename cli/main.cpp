#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "cli/cli_options.h"
#include "cli/commands.h"

namespace orvane::cli {

namespace {

// Sends people to the help of the command that they asked for.
int Refuse(const CLI::App& app, const std::string& reason) {
    std::string command = "orvane-cli";
    for (const CLI::App* parsed : app.get_subcommands()) command += " " + parsed->get_name();
    PrintError(reason + "\nRun " + command + " --help to see what there is.");
    return exitUsage;
}

// The first word when it names no command; the parser would only say that one is missing.
bool NamesNoCommand(const CLI::App& app, const std::string& word) {
    const auto isNamed = [&](const CLI::App* command) { return command->get_name() == word; };
    return !word.starts_with('-') && app.get_subcommands(isNamed).empty();
}

// What stands behind the program's name, the last word first, as the parser wants it. To the
// parser "++" is a mark of its own; here it can only be a file's name.
std::vector<std::string> ReversedArguments(int count, char** words) {
    std::vector<std::string> arguments(words + std::min(count, 1), words + count);
    std::reverse(arguments.begin(), arguments.end());
    std::replace(arguments.begin(), arguments.end(), std::string("++"), std::string("./++"));
    return arguments;
}

int Run(int count, char** words) {
    CLI::App app("Calculates sheets of formulas.", "orvane-cli");
    app.set_version_flag("--version", "orvane-cli " ORVANE_VERSION);
    app.formatter(std::make_shared<HelpFormatter>());
    app.require_subcommand(0, 1);
    Action action;
    AddCalcCommand(app, action);
    AddTraceCommand(app, action);
    AddTreeCommand(app, action);
    AddCurvesCommand(app, action);
    AddKeywordsCommand(app, action);

    if (count > 1 && NamesNoCommand(app, words[1])) {
        return Refuse(app, "'" + std::string(words[1]) + "' is no command");
    }
    try {
        app.parse(ReversedArguments(count, words));
    } catch (const CLI::CallForHelp&) {
        return PrintOutput(app.help(), exitFine);
    } catch (const CLI::CallForVersion& version) {
        return PrintOutput(version.what() + std::string("\n"), exitFine);
    } catch (const CLI::ParseError& error) {
        return Refuse(app, error.what());
    }
    return action ? action() : Refuse(app, "a command is needed");
}

}  // namespace

}  // namespace orvane::cli

int main(int count, char** words) { return orvane::cli::Run(count, words); }
