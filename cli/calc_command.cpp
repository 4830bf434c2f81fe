#include <memory>
#include <optional>
#include <string>

#include "cli/archive_access.h"
#include "cli/commands.h"
#include "cli/run_json.h"
#include "cli/sheet_run.h"

namespace orvane::cli {

namespace {

// Exactly the two texts; a terminal wants its prompt on a line of its own.
void PrintTexts(const CalculationTexts& texts, PrintedOutput& output) {
    output.Print(texts.positionText);
    output.Print(texts.resultText);
    const std::string& last = texts.resultText.empty() ? texts.positionText : texts.resultText;
    if (!last.empty() && last.back() != '\n') output.Print("\n");
}

struct CalcOptions {
    RunOptions run;
    std::optional<std::string> archive;
    bool hasName = false;  // of a sheet in the archive, where "-" is a name like any other
};

int RunSheetOf(const CalcOptions& options, const RunWatchers& watchers) {
    if (!options.archive) return RunSheet(options.run, watchers);
    if (!options.hasName) {
        PrintError(
            "--archive needs the name of a sheet in place of FILE\n"
            "Run orvane-cli calc --help to see what there is.");
        return exitUsage;
    }
    int status = exitFine;
    const std::optional<std::string> sheet = ReadStoredSheet(
        *options.archive, NameFromWord(options.run.file), ExchangeForm::utf8, status);
    return sheet ? RunSheetText(*sheet, options.run, watchers) : status;
}

int Calculate(const CalcOptions& options) {
    PrintedOutput output;
    RunWatchers watchers;
    watchers.finished = [&](const FinishedRun& run) {
        if (!options.run.json) {
            PrintTexts(run.texts, output);
            return;
        }
        PiecewiseText text([&](std::string_view piece) { output.Print(piece); });
        PrintRun(run, text);
    };
    const int status = RunSheetOf(options, watchers);
    return output.Status(status);
}

}  // namespace

void AddCalcCommand(CLI::App& app, Action& action) {
    CLI::App& command = AddCommand(app, "calc", "Calculate a sheet and print its report");
    const auto options = std::make_shared<CalcOptions>();
    AddRunOptions(command, options->run);
    AddJsonOption(command, options->run.json);
    command
        .add_option("--archive", options->archive,
                    "Calculate a sheet of this archive; FILE is then its name")
        ->take_last()
        ->type_name("file")
        ->option_text("ARCHIVE");
    const CLI::Option& sheet = *command.get_option("FILE");
    command.callback([&action, &sheet, options] {
        options->hasName = sheet.count() > 0;
        action = [options] { return Calculate(*options); };
    });
}

}  // namespace orvane::cli
