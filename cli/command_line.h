#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

// From the words of a command line to an exit status, for every program of the command line.

namespace orvane::cli {

// What a command puts here is done when the whole command line was read; it gives the exit status.
using Action = std::function<int()>;

// The parser takes the word "++" for a mark of its own. On its way through the parser it has "./"
// in front, which changes no file's name; so has a word that already looks like this. Other names
// are put right again.
std::string WordForParser(const std::string& word);
std::string NameFromWord(const std::string& word);

// Sends people to the help of the command that they asked for, and gives exitUsage.
int Refuse(const CLI::App& app, const std::string& reason);

// Reads the words behind the program's own, prints help or version where one is asked for, and
// does the action. A command line that can't be read is refused.
int RunCommandLine(CLI::App& app, Action& action, int count, char** words);

}  // namespace orvane::cli
