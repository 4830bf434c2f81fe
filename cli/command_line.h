#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

// From the words of a command line to an exit status, for every program of the command line.

namespace orvane::cli {

// What a command puts here is done when the whole command line was read; it gives the exit status.
using Action = std::function<int()>;

// The parser takes the word "++" for a mark of its own. On its way through the parser it has "./"
// in front, which changes no file's name; so has a word that already looks like this. Other names
// are put right again.
std::string WordForParser(const std::string& word);
std::string NameFromWord(const std::string& word);

// What a command line asks for. Exactly one of the three is there.
struct CommandLine {
    Action action;        // the command, with its options
    std::string output;   // the help page or the version
    std::string refusal;  // why the words ask for nothing, and where there is help
};

// Reads the words behind the program's name. That opens no file and prints nothing. The commands of
// the app put what they do into `action`.
CommandLine ReadCommandLine(CLI::App& app, Action& action, const std::vector<std::string>& words);

// Sends people to the help of the command that they asked for, and gives exitUsage.
int Refuse(const CLI::App& app, const std::string& reason);

// Reads the words of a program and does what they ask for: prints help or version, or does the
// action. A command line that can't be read is refused.
int RunCommandLine(CLI::App& app, Action& action, int count, char** words);

}  // namespace orvane::cli
