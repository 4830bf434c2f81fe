#pragma once

#include <string>
#include <string_view>
#include <vector>

// The lines of a terminal that help pages show: a <pre> whose first line begins with "$ ". Such a
// line is a command, and what it prints stands below it.

namespace orvane::test {

struct ConsoleCommand {
    std::string place;  // the page and the command, for messages
    std::string program;
    std::vector<std::string> arguments;
    std::string input;  // of an echo in front of it
    // As the page shows it, without blanks at the ends of its lines. A line of three dots stands
    // for any lines.
    std::vector<std::string> output;
};

struct ConsoleFile {
    std::string name;
    std::string text;
};

// A page shows the files that its commands read by the command cat.
struct HelpConsole {
    std::vector<ConsoleCommand> commands;
    std::vector<ConsoleFile> files;
};

// All of the pages, in their order.
HelpConsole ConsoleOfHelp();

// Whether the program printed what the page shows.
bool MatchesOutput(const std::vector<std::string>& shown, std::string_view printed);

}  // namespace orvane::test
