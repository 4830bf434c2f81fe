#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tests/cli/archive_checks.h"
#include "tests/cli/tool_checks.h"

// Runs that would take hours or years and are ended by their time limit. None of them would come to
// its end by itself in the life of a test.

namespace orvane {
namespace {

using namespace orvane::test;

std::string Repeat(std::string_view piece, int count) {
    std::string text;
    for (int at = 0; at < count; ++at) text += piece;
    return text;
}

std::string Numbers(int count) {
    std::string text = "1";
    for (int number = 2; number <= count; ++number) {
        text.append(",").append(std::to_string(number % 97 + 1));
    }
    return text;
}

// A column times a row of that many numbers, named m.
std::string Table(int size) {
    const std::string numbers = Numbers(size);
    std::string sheet = "hide: c = point(";
    sheet.append(numbers).append("); hide: r = vector_row(").append(numbers);
    return sheet.append("); hide: m = c * r; ");
}

// The rows of a square matrix that is not singular.
std::string Matrix(int size) {
    std::string rows;
    for (int row = 0; row < size; ++row) {
        rows.append(row > 0 ? ",point(" : "point(");
        for (int cell = 0; cell < size; ++cell) {
            if (cell > 0) rows.append(",");
            rows.append(std::to_string(row * cell % 61 + (row == cell ? 3 : 0)));
        }
        rows.append(")");
    }
    return rows;
}

const std::string_view endless = "series(i,0,1,2000000000,series(j,0,1,2000000000,i*j))";

void ExpectEnded(const ToolResult& result, std::string_view output, std::string_view limit) {
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.output, output);
    EXPECT_EQ(result.error, "orvane-cli: the time limit of " + std::string(limit) + " is over\n");
}

TEST(TimeLimit, EndsASheetOfAnyKindWithItsFinishedSentences) {
    const std::string sheets[] = {
        std::string(endless),
        "series(i,0,1,2000000000,tan(sin(i)))",
        "product(i,1,1,2000000000,1+0*tan(sin(i)))",
        "integral_area_xy(x,0,1,2000000000,tan(sin(x)))",
        "equation_root(x,-1,1,2000000000,2+sin(tan(sin(x))))",
        "series(i,0,1,2000000000,series(j,0,1,2000000000,5))",
        "product(i,1,1,2000000000,product(j,1,1,2000000000,1))",
        "integral_area_xy(x,0,1,2000000000,series(j,0,1,2000000000,j))",
        "integral_curve_polar(x,0,1,2000000000,series(j,0,1,2000000000,j))",
        "equation_root(x,-1,1,2000000000,series(j,0,1,2000000000,sin(j)-0.5))",
        "locus_xy(x,0,1,2000000000,series(j,0,1,2000000000,j))",
        Table(400) + "b = matrix_adj(m)",
        "series(i,1,1,2000000000,matrix_rank(matrix_inv(" + Matrix(60) + "))+i)",
    };
    for (const std::string& sheet : sheets) {
        SCOPED_TRACE(sheet.substr(0, 60));
        ExpectEnded(RunTool({"calc", "--time-limit", "0.3"}, "a = 7; " + sheet + "; z = 8"),
                    "a = +7 \t\n", "0.3 seconds");
    }
}

TEST(TimeLimit, EndsTheReadingOfALargeSheetWithoutAReport) {
    // Each of them takes many times the limit up to its first value.
    const std::string sheets[] = {Repeat("1;", 4'000'000), Repeat("a+", 15'000'000) + "a",
                                  "max(" + Repeat("1,", 8'000'000) + "1)"};
    for (const std::string& sheet : sheets) {
        SCOPED_TRACE(sheet.substr(0, 10));
        ExpectEnded(RunTool({"calc", "--time-limit", "0.001"}, sheet), "", "0.001 seconds");
    }
}

TEST(TimeLimit, LeavesARunAloneThatEndsInTime) {
    for (const std::string limit : {"60", "0060.5", "100000000000000000000000000"}) {
        SCOPED_TRACE(limit);
        EXPECT_EQ(OutputOf({"calc", "--time-limit", limit}, "a = 7"), "a = +7 \t\n");
        EXPECT_EQ(OutputOf({"calc", "--time-limit", limit}, "1+", 1),
                  "sentence 1  was not calculated.\n"
                  "C002-10: operator \"+\" is used incorrect in sentence 1.\n");
    }
}

TEST(TimeLimit, IsANumberOfSecondsAboveZero) {
    for (const std::string limit :
         {"", "0", "0.0", "-1", "+1", "1e3", "inf", "nan", "1,5", "1.2.3", ".", "2s", " 2"}) {
        SCOPED_TRACE(limit);
        ExpectRefused(RunTool({"calc", "--time-limit=" + limit}, "1"), {"--time-limit"});
    }
    ExpectRefused(RunTool({"calc", "--time-limit"}, "1"), {"--time-limit", "number of seconds"});
}

TEST(TimeLimit, CountsTheLastOneAndKnowsOneSecond) {
    ExpectEnded(RunTool({"calc", "--time-limit", "5000", "--time-limit", "1"}, endless), "",
                "1 second");
}

TEST(TimeLimit, LeavesTheFinishedSentencesInTheJsonObject) {
    const std::string sheet =
        "a = 7; locus_xy(x,0,1,10,x); point(locus_xy(x,0,1,10,x)," + std::string(endless) + "); 1";
    const ToolResult result = RunTool({"calc", "--json", "--time-limit", "0.3"}, sheet);
    EXPECT_EQ(result.status, 3);
    const Json run = Json::parse(result.output);
    EXPECT_EQ(run["errorText"], "");
    ASSERT_EQ(run["sentences"].size(), 2u);
    EXPECT_EQ(run["sentences"][0]["rows"], Json::parse("[[7.0]]"));
    EXPECT_EQ(run["sentences"][1]["evaluated"], true);
    // The curve of the sentence that was under way went with it.
    ASSERT_EQ(run["curves"].size(), 1u);
    EXPECT_EQ(run["curves"][0]["sentence"], 2);
}

TEST(TimeLimit, HoldsForTheOtherCommandsOnSheets) {
    const std::string sheet = "a = 7; locus_xy(x,0,1,10,x); " + std::string(endless);
    const ToolResult tree =
        RunTool({"tree", "--time-limit", "0.3"}, "a = 7; " + std::string(endless));
    ExpectEnded(tree, "Sentence 1, a\n  number = 7\n", "0.3 seconds");

    const ToolResult trace = RunTool({"trace", "--json", "--time-limit", "0.3"}, sheet);
    EXPECT_EQ(trace.status, 3);
    EXPECT_EQ(Json::parse(trace.output)["stages"].size(), 5u);

    const TemporaryFolder folder;
    const ToolResult curves =
        RunTool({"curves", "--time-limit", "0.3", "--csv", folder.Path()}, sheet);
    ExpectEnded(curves, folder.Path() + "/2_xy.csv: 11 points\n", "0.3 seconds");
}

TEST(TimeLimit, HoldsForASheetOfAnArchive) {
    const ArchiveFolder folder;
    folder.Done("add", {"long"}, "a = 7; " + std::string(endless));
    ExpectEnded(RunTool({"calc", "--time-limit", "0.3", "--archive", folder.Archive(), "long"}),
                "a = +7 \t\n", "0.3 seconds");
}

}  // namespace
}  // namespace orvane
