#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "app/calculation.h"
#include "functions/body_program_builder.h"
#include "locus/locus_store.h"
#include "tests/support/random_sweeps.h"
#include "tests/support/same_tree.h"
#include "tests/support/sheet_run.h"

// Sweeps over columns against sweeps by the tree alone, on random sheets. Everything that a run
// leaves behind must be the same, to the last bit.

namespace orvane {
namespace {

using test::RandomSweeps;
using test::SameBits;
using test::SweepWords;
using test::TreeDifference;

struct SweepRow {
    SweepWords words;
    int sheets;
};

constexpr SweepRow sweepRows[] = {
    {{"series", true}, 6000},
    {{"product", true}, 5000},
    {{"equation_root", false, 1, false, 1, 300}, 2400},
    {{"integral_area_xy", false, 1, true, 2, 300}, 4200},
    {{"integral_area_polar", false, 1, true, 2, 300}, 4200},
    {{"integral_area_parametric_xy", false, 2, true, 2, 300}, 4200},
    {{"integral_area_parametric_polar", false, 2, true, 2, 300}, 4200},
    {{"integral_curve_xy", false, 1, true, 2, 300}, 4200},
    {{"integral_curve_polar", false, 1, true, 2, 300}, 4200},
    {{"integral_curve_parametric", false, 2, true, 2, 300}, 4200},
    {{"locus_xy", false, 1, true}, 4200},
    {{"locus_polar", false, 1, true}, 4200},
    {{"locus_parametric", false, 2, true}, 4200},
};

// Counts the steps and takes the texts.
class Displays : public MessageDisplay, public ProgressDisplay, public ResultDisplay {
public:
    int steps = 0;

    void ShowMessage(std::string_view, std::string_view) override {}
    void Step() override { ++steps; }
    void Show() override {}
    void Hide() override {}
    void ShowTexts(const ColouredText&, const ColouredText&) override {}
};

// All that a run leaves behind.
struct Outcome {
    CalculationTexts texts;
    std::string errorText;
    SentenceList sentences;
    LocusStore curves;
    int progressSteps = 0;
};

Outcome RunSheet(const std::string& sheet, bool byColumns) {
    CalcParameters parameters;
    parameters.sweepByColumns = byColumns;
    Outcome outcome;
    Displays displays;
    RunWatchers watchers;
    watchers.wishes.keepTrees = true;
    watchers.finished = [&outcome](const FinishedRun& run) {
        outcome.errorText = run.errorText;
        outcome.sentences = std::move(run.sentences);
    };
    RunCalculation(sheet, parameters, {displays, displays, displays}, outcome.texts, watchers);
    outcome.curves = std::exchange(locusStore, LocusStore());
    outcome.progressSteps = displays.steps;
    return outcome;
}

// What differs; empty if nothing does.
std::string DifferenceOf(Sentence& left, Sentence& right) {
    if (left.error != right.error) return "errors: " + left.error + " and " + right.error;
    return TreeDifference(left.root, right.root);
}

std::string DifferenceOf(const LocusSet& left, const LocusSet& right) {
    if (left.kind != right.kind || left.sentenceIndex != right.sentenceIndex) return "curve";
    if (left.stoppedEarly != right.stoppedEarly) return "stoppedEarly";
    if (!SameBits(left.lastParameter, right.lastParameter)) return "lastParameter";
    if (left.droppedCount != right.droppedCount) return "droppedCount";
    if (!SameBits(left.minX, right.minX) || !SameBits(left.maxX, right.maxX) ||
        !SameBits(left.minY, right.minY) || !SameBits(left.maxY, right.maxY)) {
        return "ranges";
    }
    if (left.points.size() != right.points.size()) return "count of points";
    for (std::size_t i = 0; i < left.points.size(); ++i) {
        const LocusPoint& a = left.points[i];
        const LocusPoint& b = right.points[i];
        if (!SameBits(a.x, b.x) || !SameBits(a.y, b.y) || a.penUp != b.penUp) {
            return "point " + std::to_string(i);
        }
    }
    return "";
}

std::string DifferenceOf(Outcome& left, Outcome& right) {
    if (left.texts.resultText != right.texts.resultText) {
        return "reports:\n" + left.texts.resultText + "\nand\n" + right.texts.resultText;
    }
    if (left.texts.positionText != right.texts.positionText) return "position texts";
    if (left.errorText != right.errorText) return "compile errors";
    if (left.progressSteps != right.progressSteps) {
        return "progress steps: " + std::to_string(left.progressSteps) + " and " +
               std::to_string(right.progressSteps);
    }
    if (left.curves.Count() != right.curves.Count()) return "count of curves";
    for (int i = 0; i < left.curves.Count(); ++i) {
        const std::string difference = DifferenceOf(left.curves[i], right.curves[i]);
        if (!difference.empty()) return difference;
    }
    if (left.sentences.Count() != right.sentences.Count()) return "count of sentences";
    for (int i = 0; i < left.sentences.Count(); ++i) {
        const std::string difference = DifferenceOf(left.sentences[i], right.sentences[i]);
        if (!difference.empty()) return difference;
    }
    return "";
}

// The program with which the body of a sweep goes over columns; none where it can't. Its call is
// gone.
std::unique_ptr<BodyProgram> ProgramOf(FunctionNode& sweep) {
    const CalcParameters parameters;
    std::string errorText;
    const FamilyCall call{sweep, sweep.keyword, 0, parameters, errorText};
    if (sweep.children.size() < 5) return nullptr;
    return BodyProgramBuilder::Build(call, sweep.children[4], "x", NestedRule::inWholeBlocks);
}

class SweepDifference : public ::testing::TestWithParam<SweepRow> {};

TEST_P(SweepDifference, LeavesNothingThatTheTreeDoesNotLeave) {
    const auto& [words, sheets] = GetParam();
    RandomSweeps random(20240229 + words.name.size());
    int covered = 0;
    int nested = 0;
    int succeeded = 0;
    int broken = 0;
    for (int i = 0; i < sheets; ++i) {
        const std::string sheet = random.Sheet(words);
        Outcome byColumns = RunSheet(sheet, true);
        Outcome byTree = RunSheet(sheet, false);
        const std::string difference = DifferenceOf(byColumns, byTree);
        ASSERT_EQ(difference, "") << sheet;
        if (!byTree.errorText.empty()) {
            ++broken;
            continue;
        }
        Sentence& sweep = byTree.sentences[byTree.sentences.Count() - 1];
        if (sweep.error.empty()) ++succeeded;
        const auto program = ProgramOf(sweep.root);
        if (program == nullptr) continue;
        ++covered;
        if (program->Nested() != nullptr) ++nested;
    }
    // The sheets try what they are meant to try.
    EXPECT_EQ(broken, 0);
    EXPECT_GT(covered, sheets / 2);
    EXPECT_GT(nested, sheets / 20);
    EXPECT_GT(succeeded, sheets / 5);
    EXPECT_GT(sheets - succeeded, sheets / 5);
}

INSTANTIATE_TEST_SUITE_P(RandomSheets, SweepDifference, ::testing::ValuesIn(sweepRows),
                         [](const auto& row) { return std::string(row.param.words.name); });

}  // namespace
}  // namespace orvane
