#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/calc_parameters.h"

// What the commands share: the exit statuses, the options of a run and the form of messages.

namespace orvane::cli {

// A promise to scripts: these numbers never change their meaning.
enum ExitStatus : int {
    exitFine = 0,
    exitSheetError = 1,  // the sheet was read, and something in it failed
    exitRefused = 1,     // an archive or a sheet in one is not there, or a check refused a change
    exitUsage = 2,       // wrong usage, unreadable file, unwritable output, empty sheet
    exitTimeLimit = 3,   // the time limit was over before the run was
};

// What messages and versions begin with. Each program defines its own.
extern const char* const programName;

// The options of a command that runs a sheet, with the defaults of a fresh program.
struct RunOptions {
    std::string file = "-";  // "-" is the standard input
    int bits = 32;
    std::int64_t precision = 2;
    bool showSign = true;
    bool positionLine = false;
    bool formulaBreak = false;
    bool breakText = true;
    int locusFine = 0;
    int screenWidth = 1920;
    int screenHeight = 1080;
    double timeLimit = 0.0;  // seconds for a run; 0: no limit
    bool json = false;

    CalcParameters Parameters() const;
};

// "1920x1080": two sides from 1 to `longest`, without signs. False for anything else.
bool ReadSize(std::string_view text, int longest, int& width, int& height);

// Adds the sheet, the word size and the time limit, or all options of a run, to the command.
// `options` must live as long as the command does.
void AddSheetOptions(CLI::App& command, RunOptions& options);
void AddRunOptions(CLI::App& command, RunOptions& options);
void AddJsonOption(CLI::App& command, bool& json);

// Help pages without the parser's own mark behind options that switch something off.
class HelpFormatter : public CLI::Formatter {
public:
    std::string make_option_name(const CLI::Option* option, bool isPositional) const override;
};

// The option --version.
void AddVersion(CLI::App& app);

// A subcommand with help, version and the refusal of unknown options.
CLI::App& AddCommand(CLI::App& app, const std::string& name, const std::string& description);

// One line on the standard error: "orvane-cli: message", with the name of the program.
void PrintError(const std::string& message);

// The standard output of a command that prints piece by piece.
class PrintedOutput {
public:
    // Prints the bytes as they are. Nothing more is printed behind bytes that could not be.
    void Print(std::string_view bytes);
    // exitUsage, with the reason on the standard error, if a piece could not be printed.
    int Status(int statusWhenFine) const;

private:
    std::string reason;  // why not
};

// Prints the bytes as they are; exitUsage, with the reason on the standard error, if that fails.
int PrintOutput(std::string_view bytes, int statusWhenFine);

}  // namespace orvane::cli
