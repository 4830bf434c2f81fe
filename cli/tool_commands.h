#pragma once

#include "cli/command_line.h"

namespace orvane::cli {

// Makes the app the command-line tool: its commands, each of which puts what it does into `action`,
// its version and the look of its help. The action must live as long as the app.
void AddToolCommands(CLI::App& app, Action& action);

}  // namespace orvane::cli
