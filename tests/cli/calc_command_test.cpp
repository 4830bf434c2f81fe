#include <gtest/gtest.h>

#include "tests/cli/tool_checks.h"
#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

using namespace orvane::test;

struct OutputRow {
    std::string_view sheet;
    std::string_view output;
    int status;
};
const OutputRow outputRows[] = {
    {"1", "+1 \t\n", 0},
    {"text: T", "\n T\n", 0},
    {"text:", "\n\n", 0},
    {"text:\n", "\n\n\n", 0},
    {"1;2;", "+1 \t\n+2 \t\n", 0},
    // Nothing to print is nothing, not an empty line.
    {"hide: 1", "", 0},
    {"define: a = 1", "", 0},
    {"// nothing", "", 0},
    {" \t\r\n\n", "", 0},
    {";;;", "", 0},
    // A formula without a value and without an error is none of the sheet's errors.
    {"x", "sentence 1  was not calculated.\n", 0},
    // The message of a compile error has no end of line of its own.
    {"1+;2",
     "sentence 1  was not calculated.\n"
     "sentence 2  was not calculated.\n"
     "C002-10: operator \"+\" is used incorrect in sentence 1.\n",
     1},
    {"\"", "C001-01: string in line 1 is not matched properly.\n", 1},
    {"text: a\n; foo: 1",
     "\n a\n\nsentence 2  was not calculated.\n"
     "C001-02: header \"foo\" of sentence 2 is unrecognized.\n",
     1},
    // An error of one sentence leaves the others alone.
    {"nosuchname(1);2", "E001-01 sentence  1: function \"nosuchname\": unknown function.\n+2 \t\n",
     1},
    {"2;hide: inv(0)",
     "+2 \t\nE006-10 sentence  2: function \"inv\": generates an infinite or unaccepted number.\n",
     1},
    {"y = x; z = y + 1",
     "y = sentence 1  was not calculated.\n"
     "z = sentence 1 was not calculated because it uses formula name \"y\"\n",
     1},
    // Bytes above 127 come out as they went in.
    {"text:\x80\xe4\xff", "\n\x80\xe4\xff\n", 0},
    {"\xe4",
     "sentence 1  was not calculated.\nC002-02: the symbol \"\xe4\" is unrecognized in "
     "sentence 1.\n",
     1},
    {"define: d = d+1; d",
     "sentence 2  was not calculated.\n"
     "C001-09: define substitution in sentence 2 does not end.\n",
     1},
};

TEST(Calc, PrintsTheReportAndTellsByItsStatusWhetherTheSheetHasAnError) {
    for (const auto& [sheet, output, status] : outputRows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(OutputOf({"calc"}, sheet, status), output);
    }
}

TEST(Calc, PrintsExactlyTheTwoTextsOfTheRun) {
    const std::string_view sheets[] = {
        "a=1/3;text:T;hex:b=300.25;matrix(point(1,2),point(3,4));complex(1,2);percent:0.25;",
        "define: k = 2; text: The answer; hex: a = k^3 + 1; // comment\n b = a * pi;",
        "1;2;text:only\ntwo lines\n\n;12345.678",
        "1;(((",
        "text: no number",
    };
    CalcParameters parameters;
    parameters.positionLine = true;
    parameters.formulaBreak = true;
    for (const std::string_view sheet : sheets) {
        SCOPED_TRACE(sheet);
        const RanSheet ran = test::Run(sheet, parameters);
        std::string both = ran.positionText + ran.resultText;
        if (!both.ends_with('\n')) both += '\n';
        const ToolResult result = RunTool({"calc", "--position-line", "--formula-break"}, sheet);
        EXPECT_EQ(result.output, both);
        EXPECT_EQ(result.error, "");
    }
}

struct StatusRow {
    std::string_view sheet;
    int status;
};
const StatusRow statusRows[] = {{"1", 0}, {" ", 0}, {"x", 0}, {"1;ln(0);2", 1}, {"1 2", 1}};

TEST(Calc, GivesTheSameStatusWithJson) {
    for (const auto& [sheet, status] : statusRows) {
        SCOPED_TRACE(sheet);
        JsonOf({"calc", "--json"}, sheet, status);
    }
}

TEST(Calc, GivesTheSameOutputEveryTime) {
    const std::string_view sheet = "a = 1/3; locus_xy(x, 0, 1, 200, sin(x)); b = a * rad(a);";
    const std::string first = OutputOf({"calc", "--json"}, sheet);
    EXPECT_EQ(OutputOf({"calc", "--json"}, sheet), first);
}

TEST(Calc, PassesASheetAndAReportOfMegabytes) {
    constexpr int count = 100'000;
    std::string sheet;
    std::string report;
    for (int number = 0; number < count; ++number) {
        sheet += "1;";
        report += "+1 \t\n";
    }
    // Not by EXPECT_EQ: it would lay texts of so many lines side by side to show where they differ.
    EXPECT_TRUE(OutputOf({"calc"}, sheet) == report);
}

TEST(Calc, EndsAReportThatNoMemoryHolds) {
    // A million numbers of 301 digits.
    const std::string_view sheet =
        "define: t = 1,1,1,1,1,1,1,1,1,1; define: h = t,t,t,t,t,t,t,t,t,t;"
        "define: k = h,h,h,h,h,h,h,h,h,h; a = 7; point(k)*vector_row(k)*10^300; b = 8";
    EXPECT_EQ(OutputOf({"calc"}, sheet, 1),
              "a = +7 \t\n"
              "the report is too long: sentence 5 and what follows are not shown.\n");
}

}  // namespace
}  // namespace orvane
