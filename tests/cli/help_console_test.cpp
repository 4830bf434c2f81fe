#include "tests/support/help_console.h"

#include <gtest/gtest.h>

#include "tests/cli/tool_checks.h"

namespace orvane {
namespace {

using namespace orvane::test;

TEST(HelpConsole, ShowsWhatTheToolPrints) {
    const TemporaryFolder folder;
    const HelpConsole console = ConsoleOfHelp();
    for (const ConsoleFile& file : console.files) folder.Write(file.name, file.text);
    int count = 0;
    for (const ConsoleCommand& command : console.commands) {
        if (command.program == "orvane-plot") continue;  // has its own test
        SCOPED_TRACE(command.place);
        ASSERT_EQ(command.program, "orvane-cli");
        ++count;
        ToolRun run;
        run.arguments = command.arguments;
        run.input = command.input;
        run.folder = folder.Path();
        const ToolResult result = RunTool(run);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.error, "");
        EXPECT_TRUE(MatchesOutput(command.output, result.output)) << result.output;
    }
    EXPECT_GE(count, 4);
}

TEST(HelpConsole, ComparesLineByLineButWhereDotsStand) {
    EXPECT_TRUE(MatchesOutput({"a", "b"}, "a \t\nb\n"));
    EXPECT_FALSE(MatchesOutput({"a"}, "a\nb\n"));
    EXPECT_FALSE(MatchesOutput({"a", "b"}, "a\n"));
    EXPECT_FALSE(MatchesOutput({"a", "c"}, "a\nb\nc\n"));
    EXPECT_TRUE(MatchesOutput({"...", "b", "..."}, "a\nb\nc\nd\n"));
    EXPECT_FALSE(MatchesOutput({"...", "x", "..."}, "a\nb\n"));
    EXPECT_FALSE(MatchesOutput({"...", "b"}, "a\nb\nc\n"));
}

}  // namespace
}  // namespace orvane
