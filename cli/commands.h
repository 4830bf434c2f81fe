#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

// The commands of the tool. Each adds itself to the program; when it is the one that was asked for,
// it puts what it has to do into `action`, which gives the exit status.

namespace orvane::cli {

using Action = std::function<int()>;

// The parser takes the word "++" for a mark of its own. On its way through the parser it has "./"
// in front, which changes no file's name; so has a word that already looks like this. Other names
// are put right again.
std::string WordForParser(const std::string& word);
std::string NameFromWord(const std::string& word);

void AddCalcCommand(CLI::App& app, Action& action);      // calc_command.cpp
void AddTraceCommand(CLI::App& app, Action& action);     // trace_command.cpp
void AddTreeCommand(CLI::App& app, Action& action);      // tree_command.cpp
void AddCurvesCommand(CLI::App& app, Action& action);    // curves_command.cpp
void AddKeywordsCommand(CLI::App& app, Action& action);  // keywords_command.cpp
void AddArchiveCommand(CLI::App& app, Action& action);   // archive_command.cpp

}  // namespace orvane::cli
