#include "cli/cli_options.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <limits>
#include <optional>

#include "storage/file_bytes.h"

namespace orvane::cli {

namespace {

// A decimal number with its sign. One that is too large for the type is taken as the nearest that
// is not: nothing tells them apart.
std::optional<std::int64_t> ReadWholeNumber(std::string_view text) {
    std::string_view digits = text;
    if (!digits.empty() && (digits.front() == '-' || digits.front() == '+')) {
        digits.remove_prefix(1);
    }
    const bool isNegative = text.starts_with('-');
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool isWhole = !digits.empty() && digits.front() != '-' &&
                         error != std::errc::invalid_argument &&
                         end == digits.data() + digits.size();
    if (!isWhole) return std::nullopt;
    if (error == std::errc::result_out_of_range) number = std::numeric_limits<std::int64_t>::max();
    return isNegative ? -number : number;
}

// "2", "0.5": digits, with a fraction or without. Nothing for anything else and for zero.
std::optional<double> ReadSeconds(std::string_view text) {
    if (text.empty() || text.find_first_not_of("0123456789.") != std::string_view::npos) {
        return std::nullopt;
    }
    double seconds = 0.0;
    const char* const textEnd = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), textEnd, seconds);
    if (error != std::errc() || end != textEnd || !(seconds > 0.0)) return std::nullopt;
    return seconds;
}

struct WholeNumberOption {
    const char* name;
    std::int64_t least;
    std::int64_t most;
    const char* range;  // for people
    const char* description;
};

// An option that takes one whole number; of several, the last one counts.
template <typename Number>
void AddWholeNumber(CLI::App& command, const WholeNumberOption& option, Number& target) {
    const auto read = [option, &target](const std::string& text) {
        const std::optional<std::int64_t> number = ReadWholeNumber(text);
        if (!number || *number < option.least || *number > option.most) {
            throw CLI::ValidationError(
                option.name, "'" + text + "' is no whole number" + std::string(option.range));
        }
        target = static_cast<Number>(*number);
    };
    command.add_option_function<std::string>(option.name, read, option.description)
        ->take_last()
        ->type_name(std::string("whole number") + option.range)
        ->option_text("N");
}

// A pair of options, or one, without a value; of several, the last one counts.
void AddSwitch(CLI::App& command, const std::string& names, bool& target,
               const std::string& description) {
    command.add_flag(names, target, description)->disable_flag_override();
}

constexpr WholeNumberOption bitsOption = {"--bits", smallestWordBits, largestWordBits,
                                          " from 2 to 53",
                                          "Word size of whole numbers, 2 to 53 (default: 32)"};
constexpr WholeNumberOption precisionOption = {
    "--precision", std::numeric_limits<std::int64_t>::min(),
    std::numeric_limits<std::int64_t>::max(), "",
    "Decimals; at most 32, and six when negative (default: 2)"};
constexpr WholeNumberOption locusFineOption = {
    "--locus-fine", 0, 19, " from 0 to 19",
    "How strongly curves are thinned, 0 to 19 (default: 0)"};

}  // namespace

bool ReadSize(std::string_view text, int longest, int& width, int& height) {
    const std::size_t cross = text.find('x');
    if (cross == std::string_view::npos) return false;
    int* const sides[] = {&width, &height};
    const std::string_view texts[] = {text.substr(0, cross), text.substr(cross + 1)};
    for (int at = 0; at < 2; ++at) {
        if (texts[at].empty() || texts[at].front() == '+') return false;
        const std::optional<std::int64_t> pixels = ReadWholeNumber(texts[at]);
        if (!pixels || *pixels < 1 || *pixels > longest) return false;
        *sides[at] = static_cast<int>(*pixels);
    }
    return true;
}

CalcParameters RunOptions::Parameters() const {
    constexpr std::int64_t least = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    CalcParameters parameters;
    parameters.systemBitsIndex = bits - smallestWordBits;
    parameters.floatPrecision = static_cast<std::int32_t>(std::clamp(precision, least, most));
    parameters.showSign = showSign;
    parameters.positionLine = positionLine;
    parameters.formulaBreak = formulaBreak;
    parameters.breakText = breakText;
    parameters.locusFine = locusFine;
    return parameters;
}

void AddSheetOptions(CLI::App& command, RunOptions& options) {
    command
        .add_option("FILE", options.file,
                    "The sheet; the standard input where there is none or it is -")
        ->option_text(" ")
        ->allow_extra_args(false);  // a name in brackets is a name like any other
    AddWholeNumber(command, bitsOption, options.bits);
    const auto readLimit = [&options](const std::string& text) {
        const std::optional<double> seconds = ReadSeconds(text);
        if (!seconds) {
            throw CLI::ValidationError(
                "--time-limit", "'" + text + "' is no number of seconds above 0, such as 2 or 0.5");
        }
        options.timeLimit = *seconds;
    };
    command
        .add_option_function<std::string>(
            "--time-limit", readLimit,
            "End the run after so many seconds, with what is finished (default: no limit)")
        ->take_last()
        ->type_name("number of seconds")
        ->option_text("SECONDS");
}

void AddRunOptions(CLI::App& command, RunOptions& options) {
    AddSheetOptions(command, options);
    AddWholeNumber(command, precisionOption, options.precision);
    AddSwitch(command, "--show-sign,!--no-show-sign", options.showSign,
              "A + in front of numbers that are not negative (default: on)");
    AddSwitch(command, "--position-line,!--no-position-line", options.positionLine,
              "A ruler above the report (default: off)");
    AddSwitch(command, "--formula-break,!--no-formula-break", options.formulaBreak,
              "A blank line behind each formula (default: off)");
    AddSwitch(command, "--break-text,!--no-break-text", options.breakText,
              "A blank line ahead of each text (default: on)");
    AddWholeNumber(command, locusFineOption, options.locusFine);
    const auto readScreen = [&options](const std::string& text) {
        constexpr int longest = std::numeric_limits<int>::max();
        if (ReadSize(text, longest, options.screenWidth, options.screenHeight)) return;
        throw CLI::ValidationError("--screen", "'" + text + "' is no size such as 1920x1080");
    };
    command
        .add_option_function<std::string>(
            "--screen", readScreen, "The screen that curves are thinned for (default: 1920x1080)")
        ->take_last()
        ->type_name("size such as 1920x1080")
        ->option_text("WxH");
}

void AddJsonOption(CLI::App& command, bool& json) {
    AddSwitch(command, "--json", json, "Print one JSON object, with exact values");
}

std::string HelpFormatter::make_option_name(const CLI::Option* option, bool isPositional) const {
    std::string name = Formatter::make_option_name(option, isPositional);
    for (std::size_t at = name.find("{false}"); at != std::string::npos;
         at = name.find("{false}")) {
        name.erase(at, std::string_view("{false}").size());
    }
    return name;
}

void AddVersion(CLI::App& app) {
    app.set_version_flag("--version", std::string(programName) + " " ORVANE_VERSION);
}

CLI::App& AddCommand(CLI::App& app, const std::string& name, const std::string& description) {
    CLI::App& command = *app.add_subcommand(name, description);
    command.group("Commands");
    AddVersion(command);
    return command;
}

void PrintError(const std::string& message) {
    std::string reason;
    WriteStream(stderr, std::string(programName) + ": " + message + "\n", reason);
}

void PrintedOutput::Print(std::string_view bytes) {
    if (reason.empty()) WriteStream(stdout, bytes, reason);
}

int PrintedOutput::Status(int statusWhenFine) const {
    if (reason.empty()) return statusWhenFine;
    PrintError("the output can't be written: " + reason);
    return exitUsage;
}

int PrintOutput(std::string_view bytes, int statusWhenFine) {
    PrintedOutput output;
    output.Print(bytes);
    return output.Status(statusWhenFine);
}

}  // namespace orvane::cli
