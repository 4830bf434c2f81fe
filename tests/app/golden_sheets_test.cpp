#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/sheet_files.h"
#include "tests/support/sheet_run.h"

// Whole runs: NAME.sheet gives NAME.report, byte for byte, the ruler in front of the report. Where
// a pair needs other options than those of a fresh program, NAME.options has them, one a line, as
// the command-line tool spells them.

namespace orvane {
namespace {

namespace fs = std::filesystem;

using test::NamesWith;
using test::ReadAll;

const fs::path sheetsFolder = ORVANE_SHEETS_FOLDER;

bool ReadNumber(std::string_view text, int& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

// False when there is no such option.
bool SetOption(std::string_view line, CalcParameters& parameters) {
    const std::size_t blank = line.find(' ');
    const std::string_view option = line.substr(0, blank);
    int number = 0;
    if (blank != std::string_view::npos) {
        if (!ReadNumber(line.substr(blank + 1), number)) return false;
        if (option == "--bits") parameters.systemBitsIndex = number - smallestWordBits;
        if (option == "--precision") parameters.floatPrecision = number;
        return option == "--bits" || option == "--precision";
    }
    if (option == "--no-show-sign") return !(parameters.showSign = false);
    if (option == "--no-break-text") return !(parameters.breakText = false);
    if (option == "--position-line") return parameters.positionLine = true;
    if (option == "--formula-break") return parameters.formulaBreak = true;
    return false;
}

CalcParameters ReadOptions(const fs::path& path) {
    CalcParameters parameters;
    if (!fs::exists(path)) return parameters;
    const std::string text = ReadAll(path);
    std::size_t start = 0;
    for (std::size_t end = text.find('\n'); end != std::string::npos;
         end = text.find('\n', start)) {
        const std::string_view line = std::string_view(text).substr(start, end - start);
        EXPECT_TRUE(SetOption(line, parameters)) << line;
        start = end + 1;
    }
    EXPECT_EQ(start, text.size()) << "the last line has no end";
    return parameters;
}

class GoldenSheet : public testing::TestWithParam<std::string> {};

TEST_P(GoldenSheet, GivesItsReport) {
    const std::string name = GetParam();
    const CalcParameters parameters = ReadOptions(sheetsFolder / (name + ".options"));
    const test::RanSheet ran = test::Run(ReadAll(sheetsFolder / (name + ".sheet")), parameters);
    EXPECT_EQ(ran.message, "");
    EXPECT_EQ(ran.positionText + ran.resultText, ReadAll(sheetsFolder / (name + ".report")));
}

INSTANTIATE_TEST_SUITE_P(Sheets, GoldenSheet, testing::ValuesIn(NamesWith(sheetsFolder, ".sheet")),
                         [](const auto& info) { return info.param; });

TEST(GoldenSheets, AreWholePairs) {
    const std::vector<std::string> sheets = NamesWith(sheetsFolder, ".sheet");
    EXPECT_FALSE(sheets.empty());
    EXPECT_EQ(NamesWith(sheetsFolder, ".report"), sheets);
    for (const std::string& name : NamesWith(sheetsFolder, ".options")) {
        EXPECT_TRUE(std::binary_search(sheets.begin(), sheets.end(), name)) << name;
    }
}

}  // namespace
}  // namespace orvane
