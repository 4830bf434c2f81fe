#include <gtest/gtest.h>

#include "tests/cli/tool_checks.h"

namespace orvane {
namespace {

using namespace orvane::test;

std::vector<std::string> Calc(std::vector<std::string> options) {
    options.insert(options.begin(), "calc");
    return options;
}

TEST(RunOptions, AreThoseOfAFreshProgramByDefault) {
    EXPECT_EQ(OutputOf({"calc"}, "a = 1/3; text:T; hex: b = 0-1;"),
              "a =         +0.33 \t\n"
              "\n"
              "T\n"
              "b = 0hFFFFFFFF    \t\n");
}

TEST(Bits, SetTheWordSizeFromTwoToFiftyThree) {
    for (int bits = 2; bits <= 53; ++bits) {
        SCOPED_TRACE(bits);
        EXPECT_EQ(OutputOf(Calc({"--bits", std::to_string(bits)}), "bin: 0-1"),
                  "0b" + std::string(static_cast<std::size_t>(bits), '1') + " \t\n");
    }
}

TEST(Bits, AreReadAsADecimalNumber) {
    EXPECT_EQ(OutputOf(Calc({"--bits=010"}), "bin: 0-1"), "0b1111111111 \t\n");
}

TEST(Bits, RefuseEverythingElseAndSayWhatTheyTake) {
    // The last two would be 2 in 32 and in 64 bits.
    const std::string rows[] = {
        "1",  "54",  "0",   "-1", "-8",    "abc",        "8x",
        "x8", "8.5", "8.0", "",   "1e1",   "4294967298", "18446744073709551618",
        "8 ", "--",  "-",   "8,", "--json"};
    for (const std::string& row : rows) {
        SCOPED_TRACE(row);
        ExpectRefused(RunTool(Calc({"--bits", row}), "1"), {"--bits", "2", "53", "--help"});
    }
}

struct PrecisionRow {
    std::string precision;
    std::string report;
};
const PrecisionRow precisionRows[] = {
    {"0", "+ \t\n"},
    {"1", "+0.3 \t\n"},
    {"2", "+0.33 \t\n"},
    {"+5", "+0.33333 \t\n"},
    {"010", "+0.3333333333 \t\n"},
    {"31", "+0.3333333333333333148296162562474 \t\n"},
    {"32", "+0.33333333333333331482961625624739 \t\n"},
    // Past the finest one there is only the finest one, at any size of the number.
    {"33", "+0.33333333333333331482961625624739 \t\n"},
    {"2147483647", "+0.33333333333333331482961625624739 \t\n"},
    {"2147483648", "+0.33333333333333331482961625624739 \t\n"},
    {"4294967296", "+0.33333333333333331482961625624739 \t\n"},
    {"99999999999999999999999999", "+0.33333333333333331482961625624739 \t\n"},
    // A negative one counts as none given.
    {"-1", "+0.333333 \t\n"},
    {"-2147483648", "+0.333333 \t\n"},
    {"-2147483649", "+0.333333 \t\n"},
    {"-4294967296", "+0.333333 \t\n"},
    {"-99999999999999999999999999", "+0.333333 \t\n"},
};

TEST(Precision, TakesAnyWholeNumber) {
    for (const auto& [precision, report] : precisionRows) {
        SCOPED_TRACE(precision);
        EXPECT_EQ(OutputOf(Calc({"--precision", precision}), "1/3"), report);
        EXPECT_EQ(OutputOf(Calc({"--precision=" + precision}), "1/3"), report);
    }
}

TEST(Precision, RefusesWhatIsNoWholeNumber) {
    const std::string rows[] = {"",    "x",      "5x",   "x5",  "1.5", "5 ", "1e3",
                                "0xg", "--json", "true", "--1", "+-1", "-",  "--"};
    for (const std::string& row : rows) {
        SCOPED_TRACE(row);
        ExpectRefused(RunTool(Calc({"--precision", row}), "1"),
                      {"--precision", "whole number", "--help"});
    }
}

struct FlagRow {
    std::vector<std::string> options;
    std::string report;
};
const FlagRow flagRows[] = {
    {{}, "a = +1 \t\n\nT\n"},
    {{"--show-sign"}, "a = +1 \t\n\nT\n"},
    {{"--no-show-sign"}, "a = 1 \t\n\nT\n"},
    {{"--position-line"}, "    21\r\n    --\r\na = +1 \t\n\nT\n"},
    {{"--no-position-line"}, "a = +1 \t\n\nT\n"},
    {{"--formula-break"}, "a = +1 \t\n\n\nT\n"},
    {{"--no-formula-break"}, "a = +1 \t\n\nT\n"},
    {{"--break-text"}, "a = +1 \t\n\nT\n"},
    {{"--no-break-text"}, "a = +1 \t\nT\n"},
    {{"--no-show-sign", "--position-line", "--formula-break", "--no-break-text"},
     "    1\r\n    -\r\na = 1 \t\n\nT\n"},
    // The last one counts.
    {{"--show-sign", "--no-show-sign"}, "a = 1 \t\n\nT\n"},
    {{"--no-show-sign", "--show-sign"}, "a = +1 \t\n\nT\n"},
    {{"--no-show-sign", "--show-sign", "--no-show-sign"}, "a = 1 \t\n\nT\n"},
    {{"--position-line", "--no-position-line"}, "a = +1 \t\n\nT\n"},
    {{"--no-position-line", "--position-line"}, "    21\r\n    --\r\na = +1 \t\n\nT\n"},
    {{"--formula-break", "--no-formula-break"}, "a = +1 \t\n\nT\n"},
    {{"--no-formula-break", "--formula-break"}, "a = +1 \t\n\n\nT\n"},
    {{"--no-break-text", "--break-text"}, "a = +1 \t\n\nT\n"},
    {{"--break-text", "--no-break-text"}, "a = +1 \t\nT\n"},
    {{"--no-show-sign", "--no-show-sign"}, "a = 1 \t\n\nT\n"},
};

TEST(Flags, SwitchOneThingEach) {
    for (const auto& [options, report] : flagRows) {
        SCOPED_TRACE(testing::PrintToString(options));
        EXPECT_EQ(OutputOf(Calc(options), "a=1;text:T;"), report);
    }
}

TEST(Flags, RefuseAValueThatIsNone) {
    ExpectRefused(RunTool({"calc", "--show-sign=maybe"}, "1"), {"--show-sign", "--help"});
}

struct LastRow {
    std::vector<std::string> options;
    std::string report;
};
const LastRow lastRows[] = {
    {{"--bits", "8", "--bits", "16"}, "0hFFFF \t\n"},
    {{"--bits=16", "--bits=8"}, "0hFF \t\n"},
    {{"--bits", "4", "--precision", "4", "--precision", "3"}, "0hF \t\n"},
    {{"--bits", "4", "--locus-fine", "4", "--locus-fine", "3"}, "0hF \t\n"},
    {{"--bits", "4", "--screen", "4x4", "--screen", "3x3"}, "0hF \t\n"},
};

TEST(RunOptions, TakeTheLastOfSeveralValues) {
    for (const auto& [options, report] : lastRows) {
        SCOPED_TRACE(testing::PrintToString(options));
        EXPECT_EQ(OutputOf(Calc(options), "hex: 0-1"), report);
    }
    EXPECT_EQ(OutputOf(Calc({"--precision", "4", "--precision", "3"}), "1/3"), "+0.333 \t\n");
}

TEST(RunOptions, NameTheOptionWhoseValueIsMissing) {
    for (const std::string option : {"--bits", "--precision", "--locus-fine", "--screen"}) {
        SCOPED_TRACE(option);
        ExpectRefused(RunTool({"calc", option}, "1"), {option, "--help"});
        ExpectRefused(RunTool({"calc", option + "="}, "1"), {option, "--help"});
    }
}

TEST(RunOptions, MayStandBehindTheFile) {
    EXPECT_EQ(OutputOf({"calc", "-", "--no-show-sign"}, "1"), "1 \t\n");
}

// A corner of single steps: `width` of them to the right, then `height` up.
std::string Corner(int width, int height) {
    const std::string steps = std::to_string(width + height);
    const std::string turn = std::to_string(width);
    return "locus_parametric(t, 0, " + steps + ", " + steps + ", min(t, " + turn + "), max(t - " +
           turn + ", 0))";
}

struct KeptPoints {
    int along = 0;
    int up = 0;
    int dropped = 0;
};

KeptPoints KeptOf(const std::vector<std::string>& options, const std::string& sheet) {
    std::vector<std::string> arguments = Calc(options);
    arguments.emplace_back("--json");
    const Json curve = JsonOf(arguments, sheet).at("curves").at(0);
    KeptPoints kept;
    for (const Json& point : curve.at("points")) {
        ++(point.at(1) == 0.0 ? kept.along : kept.up);
    }
    kept.dropped = curve.at("dropped").get<int>();
    return kept;
}

struct ScreenRow {
    std::vector<std::string> options;
    int width, height;  // of the corner
    int along, up;      // points that stay
};
const ScreenRow screenRows[] = {
    // Two steps a pixel to the right and three upward, on the screen that is taken for granted.
    {{}, 3840, 3240, 1921, 1080},
    {{"--screen", "1920x1080"}, 3840, 3240, 1921, 1080},
    {{"--screen", "960x3240"}, 3840, 3240, 961, 3240},
    {{"--screen", "3840x540"}, 3840, 3240, 3841, 540},
    {{"--screen=1x1"}, 3840, 3240, 2, 1},
    {{"--screen", "2147483647x2147483647"}, 3840, 3240, 3841, 3240},
    {{"--screen", "1x1", "--screen", "960x3240"}, 3840, 3240, 961, 3240},
    // One pixel of distance and one more for each step of the thinning.
    {{"--screen", "1000x1000"}, 2000, 2000, 1001, 1000},
    {{"--screen", "1000x1000", "--locus-fine", "0"}, 2000, 2000, 1001, 1000},
    {{"--screen", "1000x1000", "--locus-fine", "1"}, 2000, 2000, 501, 500},
    {{"--screen", "1000x1000", "--locus-fine=4"}, 2000, 2000, 201, 200},
    {{"--screen", "1000x1000", "--locus-fine", "19"}, 2000, 2000, 51, 50},
    {{"--screen", "1000x1000", "--locus-fine", "19", "--locus-fine", "4"}, 2000, 2000, 201, 200},
};

TEST(ScreenAndLocusFine, ThinTheCurves) {
    for (const auto& [options, width, height, along, up] : screenRows) {
        SCOPED_TRACE(testing::PrintToString(options));
        const KeptPoints kept = KeptOf(options, Corner(width, height));
        EXPECT_EQ(kept.along, along);
        EXPECT_EQ(kept.up, up);
        EXPECT_EQ(kept.dropped, width + height + 1 - along - up);
    }
}

TEST(LocusFine, RefusesWhatIsNotFromZeroToNineteen) {
    for (const std::string row : {"-1", "20", "abc", "", "1.5", "4294967296", "--json"}) {
        SCOPED_TRACE(row);
        ExpectRefused(RunTool({"calc", "--locus-fine", row}, "1"),
                      {"--locus-fine", "0", "19", "--help"});
    }
}

TEST(Screen, RefusesWhatIsNoSize) {
    const std::string rows[] = {"",    "x",        "1920",          "1920x",        "x1080",
                                "0x5", "5x0",      "-1x5",          "5x-1",         "+1x5",
                                "1X5", "1920*5",   "1920 x 1080",   "1920x1080x2",  "1.5x2",
                                "axb", "1920x10 ", "2147483648x10", "10x9999999999"};
    for (const std::string& row : rows) {
        SCOPED_TRACE(row);
        ExpectRefused(RunTool({"calc", "--screen", row}, "1"), {"--screen", "1920x1080", "--help"});
    }
}

TEST(Trace, TakesTheOptionsOfCalc) {
    const std::vector<std::string> all = {"trace",
                                          "--bits",
                                          "8",
                                          "--precision",
                                          "-1",
                                          "--show-sign",
                                          "--no-show-sign",
                                          "--json",
                                          "--screen",
                                          "800x600",
                                          "--position-line",
                                          "--formula-break",
                                          "--break-text",
                                          "--locus-fine",
                                          "3",
                                          "--no-position-line",
                                          "--no-formula-break",
                                          "--no-break-text"};
    JsonOf(all, "1");
    ExpectRefused(RunTool({"trace", "--bits", "1"}, "1"), {"--bits", "2", "53", "--help"});
}

}  // namespace
}  // namespace orvane
