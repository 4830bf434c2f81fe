#include "cli/sheet_run.h"

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <optional>

#include "cli/time_limit.h"
#include "core/number_literal.h"
#include "locus/locus_store.h"

namespace orvane::cli {

namespace {

// A mark that turns while a run takes its time.
class TerminalProgress : public ProgressDisplay {
public:
    void Show() override { nextTurn = Clock::now() + patience; }

    void Step() override {
        if (!onTerminal || Clock::now() < nextTurn) return;
        constexpr std::string_view marks = "|/-\\";
        std::string line = "\rCalculating  ";
        line.back() = marks[turns++ % marks.size()];
        Print(line);
        nextTurn = Clock::now() + turnTime;
    }

    void Hide() override {
        if (turns > 0) Print("\r              \r");
        turns = 0;
    }

private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds patience{1000};
    static constexpr std::chrono::milliseconds turnTime{150};

    static void Print(std::string_view text) {
        std::string reason;
        WriteStream(stderr, text, reason);
    }

    const bool onTerminal = isatty(STDERR_FILENO) != 0;
    Clock::time_point nextTurn;
    std::size_t turns = 0;
};

class ErrorMessage : public MessageDisplay {
public:
    void ShowMessage(std::string_view message, std::string_view) override {
        PrintError(std::string(message));
    }
};

// The commands print when the run has ended; until then there is nothing to look at.
class NoPane : public ResultDisplay {
public:
    void ShowTexts(const ColouredText&, const ColouredText&) override {}
};

int StatusOf(const FinishedRun& run) {
    if (run.stopped) return exitTimeLimit;
    return run.succeeded ? exitFine : exitSheetError;
}

void PrintTimeIsOver(double seconds) {
    const std::string number = FormatStripped(seconds, 9, false);
    PrintError("the time limit of " + number + (seconds == 1.0 ? " second" : " seconds") +
               " is over");
}

}  // namespace

std::optional<std::string> ReadInput(const std::string& file, std::size_t enough) {
    if (file == "-" && isatty(STDIN_FILENO) != 0) {
        PrintError("reading the sheet from the terminal; Ctrl+D on a line of its own ends it");
    }
    std::string reason;
    std::optional<std::string> sheet =
        file == "-" ? ReadStream(stdin, reason, enough) : ReadFile(file, reason, enough);
    if (!sheet) {
        const std::string name = file == "-" ? "the standard input" : "'" + file + "'";
        PrintError(name + " can't be read: " + reason);
    }
    return sheet;
}

int RunSheet(const RunOptions& options, const RunWatchers& watchers) {
    const std::optional<std::string> sheet = ReadInput(options.file, largestSheet);
    return sheet ? RunSheetText(*sheet, options, watchers) : exitUsage;
}

int RunSheetText(const std::string& sheet, const RunOptions& options, const RunWatchers& watchers) {
    int status = exitUsage;
    RunWatchers watching = watchers;
    watching.finished = [&](const FinishedRun& run) {
        status = StatusOf(run);
        if (watchers.finished) watchers.finished(run);
    };
    calcParameters = options.Parameters();
    locusStore.screenWidth = options.screenWidth;
    locusStore.screenHeight = options.screenHeight;
    ErrorMessage message;
    TerminalProgress progress;
    NoPane pane;
    CalculationTexts texts;
    const TimeLimit limit(options.timeLimit);
    calcParameters.stop = limit.Stop();
    RunCalculation(sheet, calcParameters, {message, progress, pane}, texts, watching);
    calcParameters.stop = nullptr;
    if (status == exitTimeLimit) PrintTimeIsOver(options.timeLimit);
    return status;
}

}  // namespace orvane::cli
