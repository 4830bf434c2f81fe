#pragma once

#include <CLI/CLI.hpp>

#include "cli/command_line.h"

// The commands of the tool. Each adds itself to the program; when it is the one that was asked for,
// it puts what it has to do into `action`, which gives the exit status.

namespace orvane::cli {

void AddCalcCommand(CLI::App& app, Action& action);      // calc_command.cpp
void AddTraceCommand(CLI::App& app, Action& action);     // trace_command.cpp
void AddTreeCommand(CLI::App& app, Action& action);      // tree_command.cpp
void AddCurvesCommand(CLI::App& app, Action& action);    // curves_command.cpp
void AddKeywordsCommand(CLI::App& app, Action& action);  // keywords_command.cpp
void AddArchiveCommand(CLI::App& app, Action& action);   // archive_command.cpp
void AddHelpCommand(CLI::App& app, Action& action);      // help_command.cpp

}  // namespace orvane::cli
