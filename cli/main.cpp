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

// The first word of the command line that nothing took; empty if there is none.
std::string UnusedWord(const CLI::App& app, const std::vector<std::string>& reversedWords) {
    const std::vector<std::string> unused = app.remaining(true);
    const auto found =
        std::find_if(reversedWords.rbegin(), reversedWords.rend(), [&](const std::string& word) {
            return word != "--" && std::find(unused.begin(), unused.end(), word) != unused.end();
        });
    return found == reversedWords.rend() ? std::string() : *found;
}

// What is wrong with the command line, in place of the parser's words where those do not help.
std::string ReasonOf(const CLI::ParseError& error, const CLI::App& app,
                     const std::vector<std::string>& reversedWords) {
    const std::string reason = error.what();
    if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
        const std::string word = UnusedWord(app, reversedWords);
        if (word.starts_with('-') && word != "-") return "there is no option '" + word + "' here";
        if (app.get_subcommands().empty()) return "'" + word + "' is no command";
        return "'" + word + "' is one word too many";
    }
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) == nullptr) return reason;
    if (reason.find("flag override") != std::string::npos) {
        return "--" + reason.substr(0, reason.find(' ')) + " takes no value";
    }
    const std::size_t wanted = reason.find(" required ");
    const std::size_t end = reason.rfind(" missing");
    if (wanted != std::string::npos && end != std::string::npos) {
        constexpr std::size_t start = std::string_view(" required ").size();
        return reason.substr(0, reason.find(':')) + " needs a " +
               reason.substr(wanted + start, end - wanted - start);
    }
    return reason;
}

// What stands behind the program's name, the last word first, as the parser wants it. To the
// parser "++" is a mark of its own; here it can only be a file's name.
std::vector<std::string> ReversedArguments(int count, char** words) {
    std::vector<std::string> arguments(words + std::min(count, 1), words + count);
    std::reverse(arguments.begin(), arguments.end());
    std::replace(arguments.begin(), arguments.end(), std::string("++"), std::string("./++"));
    return arguments;
}

constexpr const char* statusText =
    "Exit status: 0 fine, 1 the sheet has an error, 2 wrong usage, an unreadable or empty sheet "
    "or\n"
    "an output that can't be written.";

int Run(int count, char** words) {
    CLI::App app("Calculates sheets of formulas.", "orvane-cli");
    app.set_version_flag("--version", "orvane-cli " ORVANE_VERSION);
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

    const std::vector<std::string> arguments = ReversedArguments(count, words);
    try {
        std::vector<std::string> parsed = arguments;
        app.parse(parsed);
    } catch (const CLI::CallForHelp&) {
        return PrintOutput(app.help(), exitFine);
    } catch (const CLI::CallForVersion& version) {
        return PrintOutput(version.what() + std::string("\n"), exitFine);
    } catch (const CLI::ParseError& error) {
        return Refuse(app, ReasonOf(error, app, arguments));
    }
    return action ? action() : Refuse(app, "a command is needed in front of everything else");
}

}  // namespace

}  // namespace orvane::cli

int main(int count, char** words) { return orvane::cli::Run(count, words); }
