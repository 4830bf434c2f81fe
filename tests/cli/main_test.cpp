#include <gtest/gtest.h>

#include "tests/cli/tool_checks.h"

namespace orvane {
namespace {

using namespace orvane::test;

const std::vector<std::string> commands = {"calc", "trace", "tree", "curves", "keywords"};

TEST(Program, ListsItsCommandsInItsHelp) {
    const ToolResult result = RunTool({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_NE(result.output.find("orvane-cli"), std::string::npos);
    for (const std::string& command : commands) {
        EXPECT_NE(result.output.find("\n  " + command + " "), std::string::npos) << command;
    }
}

TEST(Program, GivesItsVersionAloneAndForEveryCommand) {
    const std::string version = "orvane-cli " ORVANE_VERSION "\n";
    EXPECT_EQ(OutputOf({"--version"}, ""), version);
    for (const std::string& command : commands) {
        SCOPED_TRACE(command);
        EXPECT_EQ(OutputOf({command, "--version"}, ""), version);
    }
}

struct HelpRow {
    std::string command;
    std::vector<std::string> words;
};
const std::vector<std::string> runWords = {"FILE",
                                           "--bits",
                                           "--precision",
                                           "--show-sign",
                                           "--no-show-sign",
                                           "--position-line",
                                           "--no-position-line",
                                           "--formula-break",
                                           "--no-formula-break",
                                           "--break-text",
                                           "--no-break-text",
                                           "--locus-fine",
                                           "--screen",
                                           "1920x1080",
                                           "--json",
                                           "--help",
                                           "--version"};
const HelpRow helpRows[] = {
    {"calc", runWords},
    {"trace", runWords},
    {"tree", {"FILE", "--help", "--version"}},
    {"keywords", {"PREFIX", "--json", "--help", "--version"}},
};

TEST(EveryCommand, NamesItsOptionsInItsHelp) {
    for (const auto& [command, words] : helpRows) {
        SCOPED_TRACE(command);
        const ToolResult result = RunTool({command, "--help"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.error, "");
        EXPECT_NE(result.output.find("orvane-cli " + command), std::string::npos);
        for (const std::string& word : words) {
            EXPECT_NE(result.output.find(word), std::string::npos) << word;
        }
    }
}

TEST(EveryCommand, ReadsNoSheetWhenItIsAskedForHelp) {
    for (const std::string& command : commands) {
        SCOPED_TRACE(command);
        const ToolResult result = RunTool({command, "/nonexistent/sheet", "--help"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.error, "");
        EXPECT_NE(result.output, "");
    }
}

TEST(Program, RefusesToRunWithoutACommand) {
    ExpectRefused(RunTool(ToolRun{}), {"command", "--help"});
}

TEST(Program, NamesACommandThatItDoesNotKnow) {
    for (const std::string word : {"nosuch", "Calc", "cal", "sheet.txt"}) {
        SCOPED_TRACE(word);
        ExpectRefused(RunTool({word}), {word, "--help"});
    }
}

TEST(Program, NamesAnOptionThatItDoesNotKnow) {
    for (const std::string option : {"--bogus", "-x", "--VERSION"}) {
        SCOPED_TRACE(option);
        ExpectRefused(RunTool({option}), {option, "--help"});
        ExpectRefused(RunTool({option, "calc"}, "1"), {option, "--help"});
    }
}

TEST(Program, RefusesTheOptionsOfACommandInFrontOfIt) {
    ExpectRefused(RunTool({"--json", "calc"}, "1"), {"--json", "--help"});
}

TEST(EveryCommand, RefusesAnOptionThatItDoesNotKnow) {
    // Neither other cases nor beginnings of an option's name are taken for it.
    const std::string unknown[] = {"--bogus", "--js", "--JSON", "-x", "--bits8"};
    for (const std::string& command : commands) {
        for (const std::string& option : unknown) {
            SCOPED_TRACE(command + " " + option);
            // The program's own help lists no option of a command.
            ExpectRefused(RunTool({command, option}, "1"),
                          {option, "orvane-cli " + command + " --help"});
        }
    }
}

TEST(EveryCommand, TakesOneFileOrPrefixAtMost) {
    for (const std::string& command : commands) {
        SCOPED_TRACE(command);
        ExpectRefused(RunTool({command, "-", "second"}, "1"), {"second", "--help"});
        ExpectRefused(RunTool({command, "--", "-", "third"}, "1"), {"third", "--help"});
    }
}

}  // namespace
}  // namespace orvane
