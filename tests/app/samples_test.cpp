#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "locus/locus_store.h"
#include "tests/support/sheet_files.h"
#include "tests/support/sheet_run.h"

// The sheets that ship with the program, as a fresh program shows them: samples/NAME.sheet gives
// tests/samples/NAME.report, byte for byte.

namespace orvane {
namespace {

namespace fs = std::filesystem;

using test::NamesWith;
using test::ReadAll;

const fs::path sheetsFolder = ORVANE_SAMPLES_FOLDER;
const fs::path reportsFolder = ORVANE_SAMPLE_REPORTS_FOLDER;

constexpr std::size_t widestLine = 89;

// The strokes of each curve that a sheet records, in the order of its curves. All other sheets
// record none.
const std::map<std::string, std::vector<int>> strokesOfSheets = {
    {"archimedean_spiral", {1, 1}},
    {"bell_curve", {1}},
    {"cardioid", {1, 1, 1}},
    {"curve_with_a_pole", {2, 5, 1, 1}},  // a new stroke behind each pole
    {"cycloid", {1, 1, 1}},
    {"hanging_cable", {1, 1}},
    {"lissajous", {1, 1, 1, 1, 1}},
    {"rlc_circuit", {1}},
    {"rose_curve", {1, 1, 1}},
    {"tax_brackets", {1}},
    {"thrown_ball", {1}},
};

// The strokes of each curve of the last run.
std::vector<int> RecordedStrokes() {
    std::vector<int> strokes;
    for (int index = 0; index < locusStore.Count(); ++index) {
        const std::vector<LocusPoint>& points = locusStore[index].points;
        strokes.push_back(static_cast<int>(std::count_if(
            points.begin(), points.end(), [](const LocusPoint& point) { return point.penUp; })));
    }
    return strokes;
}

// Runs with an empty store and leaves it empty.
class Sample : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override { locusStore = LocusStore(); }
    void TearDown() override { locusStore = LocusStore(); }

    static std::string Sheet() { return ReadAll(sheetsFolder / (GetParam() + ".sheet")); }
};

TEST_P(Sample, GivesItsReport) {
    const test::RanSheet ran = test::Run(Sheet());
    EXPECT_EQ(ran.message, "");
    EXPECT_EQ(ran.positionText + ran.resultText, ReadAll(reportsFolder / (GetParam() + ".report")));
}

TEST_P(Sample, CalculatesEveryFormula) {
    const test::CompiledSheet compiled = test::Compile(Sheet());
    EXPECT_EQ(compiled.errorText, "");
    EXPECT_TRUE(compiled.succeeded);
    for (std::int32_t index = 0; index < compiled.sentences.Count(); ++index) {
        const Sentence& sentence = compiled.sentences[index];
        SCOPED_TRACE(sentence.source);
        EXPECT_EQ(sentence.error, "");
        EXPECT_EQ(sentence.root.evaluated, sentence.IsCalculation());
    }
}

TEST_P(Sample, RecordsItsCurves) {
    test::Run(Sheet());
    const auto found = strokesOfSheets.find(GetParam());
    const bool hasCurves = found != strokesOfSheets.end();
    EXPECT_EQ(RecordedStrokes(), hasCurves ? found->second : std::vector<int>());
}

// Code pages differ above 127, and a line should fit the editor.
TEST_P(Sample, IsPlainTextInShortLines) {
    const std::string sheet = Sheet();
    ASSERT_FALSE(sheet.empty());
    EXPECT_EQ(sheet.back(), '\n');
    std::size_t start = 0;
    for (std::size_t end = sheet.find('\n'); end != std::string::npos;
         end = sheet.find('\n', start)) {
        const std::string_view line = std::string_view(sheet).substr(start, end - start);
        SCOPED_TRACE(line);
        EXPECT_LE(line.size(), widestLine);
        EXPECT_TRUE(
            std::all_of(line.begin(), line.end(), [](char c) { return c >= ' ' && c <= '~'; }));
        start = end + 1;
    }
}

INSTANTIATE_TEST_SUITE_P(Sheets, Sample, testing::ValuesIn(NamesWith(sheetsFolder, ".sheet")),
                         [](const auto& info) { return info.param; });

TEST(Samples, AreWholePairs) {
    const std::vector<std::string> sheets = NamesWith(sheetsFolder, ".sheet");
    EXPECT_FALSE(sheets.empty());
    EXPECT_EQ(NamesWith(reportsFolder, ".report"), sheets);
    for (const auto& [name, strokes] : strokesOfSheets) {
        EXPECT_TRUE(std::binary_search(sheets.begin(), sheets.end(), name)) << name;
    }
}

}  // namespace
}  // namespace orvane
