#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/cli/tool_checks.h"

namespace orvane {
namespace {

using namespace orvane::test;
using namespace std::string_view_literals;

const std::vector<std::string> sheetCommands = {"calc", "trace", "tree"};

TEST(SheetSource, IsTheNamedFile) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("a sheet.txt", "a = 1;\r\ntext:\xe4;");
    EXPECT_EQ(OutputOf({"calc", file}, "2"), "a = +1 \t\n\n\xe4\n");
    const ToolResult result = RunTool({.arguments = {"calc", file}, .inputClosed = true});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "a = +1 \t\n\n\xe4\n");
}

TEST(SheetSource, IsTheStandardInputForADashAndForNothing) {
    EXPECT_EQ(OutputOf({"calc"}, "1"), "+1 \t\n");
    EXPECT_EQ(OutputOf({"calc", "-"}, "1"), "+1 \t\n");
    EXPECT_EQ(OutputOf({"calc", "--", "-"}, "1"), "+1 \t\n");
    EXPECT_EQ(OutputOf({"calc", "--"}, "1"), "+1 \t\n");
}

TEST(SheetSource, MayBeginWithADashBehindADoubleDash) {
    const TemporaryFolder folder;
    for (const std::string name : {"-x", "--json", "--bits", "--", "-1"}) {
        SCOPED_TRACE(name);
        folder.Write(name, "7");
        const ToolResult result =
            RunTool({.arguments = {"calc", "--no-show-sign", "--", name}, .folder = folder.Path()});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.output, "7 \t\n");
        EXPECT_EQ(result.error, "");
    }
}

TEST(SheetSource, IsTakenByItsNameAsItStands) {
    const TemporaryFolder folder;
    for (const std::string name : {"calc", "[a]", "++", "a b", "a,b", "\"q\"", "\xe4", "%", "#"}) {
        SCOPED_TRACE(name);
        folder.Write(name, "7");
        const ToolResult result = RunTool({.arguments = {"calc", name}, .folder = folder.Path()});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.output, "+7 \t\n");
        EXPECT_EQ(result.error, "");
    }
}

TEST(SheetSource, IsNamedWhenItCanNotBeRead) {
    const TemporaryFolder folder;
    // Reading this process's memory from its start fails for everybody.
    for (const std::string& file :
         {folder.Path(), folder.Path() + "/missing", std::string("/proc/self/mem")}) {
        for (const std::string& command : sheetCommands) {
            SCOPED_TRACE(command + " " + file);
            ExpectRefused(RunTool({command, file}), {file});
        }
    }
    ExpectRefused(RunTool({"calc", ""}), {"''"});
    for (const std::string& command : sheetCommands) {
        SCOPED_TRACE(command);
        ExpectRefused(RunTool({.arguments = {command}, .inputClosed = true}), {"standard input"});
    }
}

TEST(SheetSource, IsRefusedWithoutTheRightToReadIt) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("secret", "1");
    ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
    ASSERT_EQ(chmod(file.c_str(), 0444), 0);
    const ToolRun run = {.arguments = {"calc", file}, .withoutRights = true};
    EXPECT_EQ(RunTool(run).output, "+1 \t\n");
    ASSERT_EQ(chmod(file.c_str(), 0), 0);
    ExpectRefused(RunTool(run), {file, "Permission denied"});
}

TEST(EmptySheet, GivesTheMessageOfTheWindowAndNothingElse) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("empty", "");
    const std::string message = "orvane-cli: Please input formulas for calculation.\n";
    for (const std::string& command : sheetCommands) {
        SCOPED_TRACE(command);
        for (const ToolResult& result :
             {RunTool({command}), RunTool({command, file}), RunTool({command}, "\0 1+1"sv)}) {
            ExpectRefused(result, {});
            EXPECT_EQ(result.error, message);
        }
    }
    for (const std::string command : {"calc", "trace"}) {
        SCOPED_TRACE(command);
        const ToolResult result = RunTool({command, "--json"});
        ExpectRefused(result, {});
        EXPECT_EQ(result.error, message);
    }
}

TEST(SheetOfBlanks, RunsAndPrintsNothing) {
    for (const std::string_view sheet : {" ", "\n", "\t\r\n ", "// 1", " ; ;"}) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(OutputOf({"calc"}, sheet), "");
        EXPECT_EQ(OutputOf({"tree"}, sheet), "");
    }
}

TEST(NulByte, EndsTheSheet) {
    EXPECT_EQ(OutputOf({"calc"}, "1+1\0;2;(\""sv), "+2 \t\n");
    EXPECT_EQ(OutputOf({"calc"}, "text:a\0b"sv), "\na\n");
}

}  // namespace
}  // namespace orvane
