#include "cli/command_line.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "cli/cli_options.h"

namespace orvane::cli {

namespace {

// Whether this is "++" with any number of "./" in front.
bool LooksLikeMark(std::string_view word) {
    while (word.starts_with("./")) word.remove_prefix(2);
    return word == "++";
}

// The command that was asked for; where it has commands of its own, the one of those.
std::vector<const CLI::App*> AskedCommands(const CLI::App& app) {
    std::vector<const CLI::App*> commands = {&app};
    while (!commands.back()->get_subcommands().empty()) {
        commands.push_back(commands.back()->get_subcommands().front());
    }
    return commands;
}

bool HasCommands(const CLI::App& app) {
    return !app.get_subcommands([](const CLI::App*) { return true; }).empty();
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
        const CLI::App& asked = *AskedCommands(app).back();
        if (HasCommands(asked)) {
            return "'" + word + "' is no command" +
                   (&asked == &app ? "" : " of " + asked.get_name());
        }
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

// The last word first, as the parser wants it.
std::vector<std::string> ReversedArguments(const std::vector<std::string>& words) {
    std::vector<std::string> arguments(words.rbegin(), words.rend());
    std::transform(arguments.begin(), arguments.end(), arguments.begin(), WordForParser);
    return arguments;
}

// What is missing where a command ends too soon.
std::string MissingCommand(const CLI::App& app) {
    const CLI::App& asked = *AskedCommands(app).back();
    if (&asked != &app) return asked.get_name() + " needs one of its commands behind it";
    return "a command is needed in front of everything else";
}

std::string RefusalText(const CLI::App& app, const std::string& reason) {
    std::string command;
    for (const CLI::App* asked : AskedCommands(app)) command += asked->get_name() + " ";
    return reason + "\nRun " + command + "--help to see what there is.";
}

}  // namespace

std::string WordForParser(const std::string& word) {
    return LooksLikeMark(word) ? "./" + word : word;
}

std::string NameFromWord(const std::string& word) {
    return LooksLikeMark(word) ? word.substr(2) : word;
}

CommandLine ReadCommandLine(CLI::App& app, Action& action, const std::vector<std::string>& words) {
    const std::vector<std::string> arguments = ReversedArguments(words);
    try {
        std::vector<std::string> parsed = arguments;
        app.parse(parsed);
    } catch (const CLI::CallForHelp&) {
        return {{}, app.help(), {}};
    } catch (const CLI::CallForVersion& version) {
        return {{}, version.what() + std::string("\n"), {}};
    } catch (const CLI::ParseError& error) {
        return {{}, {}, RefusalText(app, ReasonOf(error, app, arguments))};
    }
    if (!action) return {{}, {}, RefusalText(app, MissingCommand(app))};
    return {action, {}, {}};
}

int Refuse(const CLI::App& app, const std::string& reason) {
    PrintError(RefusalText(app, reason));
    return exitUsage;
}

int RunCommandLine(CLI::App& app, Action& action, int count, char** words) {
    const CommandLine line =
        ReadCommandLine(app, action, {words + std::min(count, 1), words + count});
    if (line.action) return line.action();
    if (line.refusal.empty()) return PrintOutput(line.output, exitFine);
    PrintError(line.refusal);
    return exitUsage;
}

}  // namespace orvane::cli
