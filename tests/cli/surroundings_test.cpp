#include <gtest/gtest.h>
#include <locale.h>
#include <sys/resource.h>

#include <cstdlib>
#include <filesystem>

#include "tests/cli/tool_checks.h"

// The tool on full devices, under other locales and on a terminal.

namespace orvane {
namespace {

using namespace orvane::test;

const std::vector<std::vector<std::string>> allOutputs = {
    {"calc"},
    {"calc", "--json"},
    {"trace"},
    {"trace", "--json"},
    {"tree"},
    {"keywords"},
    {"keywords", "--json"},
    {"--help"},
    {"--version"},
    {"calc", "--help"},
    {"calc", "--version"},
};

TEST(UnwritableOutput, IsToldWithStatusTwo) {
    for (const auto& arguments : allOutputs) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        for (const auto output : {ToolRun::Output::fullDevice, ToolRun::Output::closed}) {
            ExpectRefused(RunTool({.arguments = arguments, .input = "1", .output = output}),
                          {"output"});
        }
    }
}

TEST(UnwritableOutput, CountsMoreThanAnErrorOfTheSheet) {
    ExpectRefused(
        RunTool({.arguments = {"calc"}, .input = "1+", .output = ToolRun::Output::fullDevice}),
        {"output"});
}

// A locale in a folder of its own that writes 1.5 as "1,5", whether or not the machine has one:
// its numbers in the form that the C library reads.
class CommaLocale {
public:
    static constexpr const char* name = "de_DE";

    CommaLocale() {
        std::filesystem::create_directory(folder.Path() + "/" + name);
        folder.Write(std::string(name) + "/LC_NUMERIC", numbers);
    }

    const std::string& Path() const { return folder.Path(); }

    // Whether a program that asks for it writes commas.
    bool IsUsable() const {
        setenv("LOCPATH", Path().c_str(), 1);
        const bool isUsed = setlocale(LC_NUMERIC, name) != nullptr &&
                            std::string_view(localeconv()->decimal_point) == ",";
        setlocale(LC_NUMERIC, "C");
        unsetenv("LOCPATH");
        return isUsed;
    }

private:
    // A mark, six fields and where each of them starts: point and separator, the grouping, both
    // again as wide characters, and the character set.
    static constexpr std::string_view numbers{
        "\x14\x11\x03\x20\6\0\0\0"
        "\x20\0\0\0\x22\0\0\0\x24\0\0\0\x28\0\0\0\x2c\0\0\0\x30\0\0\0"
        ",\0.\0\3\3\0\0,\0\0\0.\0\0\0ANSI_X3.4-1968\0",
        63};
    TemporaryFolder folder;
};

TEST(Locale, ChangesNothingThatIsReadOrPrinted) {
    const CommaLocale comma;
    ASSERT_TRUE(comma.IsUsable());
    const std::string_view sheet =
        "a = 1234567.5; point(1.25, -0.5); text: 1.5; hex: 2.5; percent: 0.25; ln(0);";
    using Environment = std::vector<std::pair<std::string, std::string>>;
    const Environment environments[] = {
        {{"LC_ALL", ""}, {"LOCPATH", comma.Path()}, {"LC_NUMERIC", CommaLocale::name}},
        {{"LC_ALL", "de_DE.UTF-8"}},
        {{"LC_ALL", ""}, {"LANG", "tr_TR.UTF-8"}},
        {{"LC_ALL", "xx_YY.nosuch"}},
    };
    for (const auto& arguments : allOutputs) {
        const ToolResult plain =
            RunTool({.arguments = arguments, .input = sheet, .environment = {{"LC_ALL", "C"}}});
        EXPECT_NE(plain.output, "");
        for (const Environment& environment : environments) {
            SCOPED_TRACE(testing::PrintToString(arguments) + testing::PrintToString(environment));
            const ToolResult result =
                RunTool({.arguments = arguments, .input = sheet, .environment = environment});
            EXPECT_EQ(result.status, plain.status);
            EXPECT_EQ(result.output, plain.output);
            EXPECT_EQ(result.error, plain.error);
        }
    }
}

std::string SheetOfSteps(double steps) {
    return "series(i, 1, 1, " + std::to_string(static_cast<long>(steps)) + ", tan(sin(i)))";
}

// The processor time of all tools that ran until now: other work on the machine does not count.
double ChildrenSeconds() {
    rusage usage = {};
    getrusage(RUSAGE_CHILDREN, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec) +
           static_cast<double>(usage.ru_utime.tv_usec) * 1e-6;
}

// With this build on this machine a run of the sheet takes some two seconds.
std::string SheetThatTakesSeconds() {
    double steps = 100'000;
    while (true) {
        const double before = ChildrenSeconds();
        RunTool({"calc"}, SheetOfSteps(steps));
        const double seconds = ChildrenSeconds() - before;
        if (seconds > 0.2) return SheetOfSteps(steps * 2.0 / seconds);
        steps *= 2;
    }
}

TEST(ProgressIndicator, ShowsOnATerminalAfterASecondAndCleansUpBehindIt) {
    const std::string sheet = SheetThatTakesSeconds();
    const ToolResult result =
        RunTool({.arguments = {"calc"}, .input = sheet, .error = ToolRun::Error::terminal});
    EXPECT_EQ(result.status, 0);
    ASSERT_NE(result.error, "");
    EXPECT_GE(result.untilError.count(), 1.0);
    EXPECT_NE(result.error.find("Calculating"), std::string::npos);
    EXPECT_EQ(ShownOnTerminal(result.error), "");
    // A sign of life, not a flood: a slow terminal must not hold up the run.
    EXPECT_LT(result.error.size(), 10'000u);

    const ToolResult piped = RunTool({"calc"}, sheet);
    EXPECT_EQ(piped.output, result.output);
    EXPECT_EQ(piped.error, "");
}

TEST(ProgressIndicator, StaysAwayWhenTheRunIsShort) {
    const ToolResult result = RunTool(
        {.arguments = {"calc"}, .input = SheetOfSteps(2000), .error = ToolRun::Error::terminal});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
}

TEST(Message, ReachesATerminalAsItReachesAFile) {
    const std::vector<std::string> arguments = {"calc", "/nonexistent/sheet"};
    const ToolResult shown = RunTool({.arguments = arguments, .error = ToolRun::Error::terminal});
    EXPECT_EQ(shown.error, RunTool(arguments).error);
    EXPECT_NE(shown.error, "");
}

}  // namespace
}  // namespace orvane
