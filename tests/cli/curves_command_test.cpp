#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <set>

#include "tests/cli/tool_checks.h"
#include "tests/support/written_files.h"

// orvane-cli curves: the points of each curve in a file of its own.

namespace orvane::test {
namespace {

ToolResult Curves(const std::string& folder, std::string_view sheet) {
    return RunTool({"curves", "--csv", folder}, sheet);
}

TEST(Curves, AreFilesNamedBySentenceAndKind) {
    const TemporaryFolder folder;
    const ToolResult result =
        Curves(folder.Path(),
               "a = 1; locus_xy(x,0,1,2,x); locus_polar(t,0,1,3,t);\n"
               "locus_parametric(t,0,1,4,t,t) + locus_parametric(t,0,1,1,t,t);");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.output, folder.Path() + "/2_xy.csv: 3 points\n" + folder.Path() +
                                 "/3_polar.csv: 4 points\n" + folder.Path() +
                                 "/4_parametric.csv: 5 points\n" + folder.Path() +
                                 "/4_parametric_2.csv: 2 points\n");
    EXPECT_EQ(FilesOf(folder.Path()),
              (std::set<std::string>{"2_xy.csv", "3_polar.csv", "4_parametric.csv",
                                     "4_parametric_2.csv"}));
}

TEST(Curves, HoldXYAndThePenPointByPoint) {
    const TemporaryFolder folder;
    // At 0 there is no point, so the pen is up on its way to the next one.
    Curves(folder.Path(), "locus_xy(x,-1,1,4,inv(x)+0*ln(abs(x)))");
    Curves(folder.Path(), "locus_xy(x,-1,1,4,if(equals(x,0),2000000,x/4))");
    EXPECT_EQ(BytesOfFile(folder.Path() + "/1_xy.csv"),
              "x,y,pen_up\n-1,-0.25,1\n-0.5,-0.125,0\n0.5,0.125,1\n1,0.25,0\n");
}

TEST(Curves, ReadBackAsTheSameNumbers) {
    const TemporaryFolder folder;
    Curves(folder.Path(), "locus_xy(x,0,1,7000,sin(x*1000)*50)");
    const std::string bytes = BytesOfFile(folder.Path() + "/1_xy.csv");
    const Json points = JsonOf({"calc", "--json"}, "locus_xy(x,0,1,7000,sin(x*1000)*50)")
                            .at("curves")
                            .at(0)
                            .at("points");
    ASSERT_EQ(std::count(bytes.begin(), bytes.end(), '\n'),
              static_cast<std::ptrdiff_t>(points.size()) + 1);
    std::size_t at = bytes.find('\n') + 1;
    for (const Json& point : points) {
        double x = 0.0;
        double y = 0.0;
        const char* const end = bytes.data() + bytes.size();
        const auto xEnd = std::from_chars(bytes.data() + at, end, x);
        const auto yEnd = std::from_chars(xEnd.ptr + 1, end, y);
        ASSERT_EQ(x, point.at(0).get<double>());
        ASSERT_EQ(y, point.at(1).get<double>());
        ASSERT_EQ(yEnd.ptr[1] == '1', point.at(2).get<bool>());
        at = bytes.find('\n', at) + 1;
    }
}

TEST(Curves, MakeTheFolderAndReplaceWhatIsThere) {
    const TemporaryFolder folder;
    const std::string deeper = folder.Path() + "/a/b";
    EXPECT_EQ(Curves(deeper, "locus_xy(x,0,1,5,x)").status, 0);
    EXPECT_EQ(Curves(deeper, "locus_xy(x,0,1,1,x)").status, 0);
    EXPECT_EQ(BytesOfFile(deeper + "/1_xy.csv"), "x,y,pen_up\n0,0,1\n1,1,0\n");
}

TEST(Curves, KeepThePointsInFrontOfAFailure) {
    const TemporaryFolder folder;
    const ToolResult result = Curves(folder.Path(), "locus_xy(x,-2,2,4,1/x)");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.error.find("E009-41 sentence  1: function \"divide\""), std::string::npos);
    EXPECT_EQ(BytesOfFile(folder.Path() + "/1_xy.csv"), "x,y,pen_up\n-2,-0.5,1\n-1,-1,0\n");
}

TEST(Curves, MayHaveNoPoints) {
    const TemporaryFolder folder;
    EXPECT_EQ(Curves(folder.Path(), "locus_xy(x,0,1,4,x+5,1)").output,
              folder.Path() + "/1_xy.csv: 0 points\n");
    EXPECT_EQ(BytesOfFile(folder.Path() + "/1_xy.csv"), "x,y,pen_up\n");
}

TEST(Curves, AreThinnedAsTheOptionsSay) {
    const TemporaryFolder folder;
    const ToolResult result =
        RunTool({"curves", "--csv", folder.Path(), "--screen", "10x10", "--locus-fine", "4"},
                "locus_xy(x,0,1,999,x)");
    EXPECT_EQ(result.output, folder.Path() + "/1_xy.csv: 2 points\n");
}

TEST(Curves, AreMissedWhereASheetHasNone) {
    const TemporaryFolder folder;
    const ToolResult result = Curves(folder.Path(), "1");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_NE(result.error.find("no curves"), std::string::npos);
    EXPECT_TRUE(FilesOf(folder.Path()).empty());
}

TEST(Curves, TellWhyTheyCanNotBeWritten) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("file", "");
    const std::string sheet = "locus_xy(x,0,1,4,x)";
    ExpectRefused(Curves(file, sheet), {file, "can't be made"});
    ExpectRefused(Curves(file + "/deeper", sheet), {file, "can't be made"});
    ExpectRefused(Curves("/proc/nowhere", sheet), {"/proc/nowhere", "can't be made"});
    // A folder stands where the file would be.
    std::filesystem::create_directory(folder.Path() + "/1_xy.csv");
    ExpectRefused(Curves(folder.Path(), sheet), {"1_xy.csv", "can't be written"});
    // The device is full.
    const TemporaryFolder other;
    std::filesystem::create_symlink("/dev/full", other.Path() + "/1_xy.csv");
    ExpectRefused(Curves(other.Path(), sheet), {"1_xy.csv", "No space left on device"});
}

TEST(Curves, NeedAFolder) {
    ExpectRefused(RunTool({"curves"}, "1"), {"--csv", "orvane-cli curves --help"});
    ExpectRefused(RunTool({"curves", "--csv"}, "1"), {"--csv"});
    ExpectRefused(RunTool({"curves", "--csv", ""}, "locus_xy(x,0,1,4,x)"), {"can't be made"});
}

TEST(Curves, OfASheetThatCanNotBeReadAreNone) {
    const TemporaryFolder folder;
    const ToolResult result = Curves(folder.Path(), "locus_xy(x,0,1,4,x);1+");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.error.find("C002-10"), std::string::npos);
    EXPECT_TRUE(FilesOf(folder.Path()).empty());
    ExpectRefused(Curves(folder.Path(), ""), {"Please input formulas for calculation."});
}

}  // namespace
}  // namespace orvane::test
