#include "functions/nested_sweeps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "core/run_stop.h"
#include "functions/body_program_builder.h"
#include "tests/functions/sweep_body.h"
#include "tests/support/same_tree.h"
#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

using test::SweepBody;

struct NestRow {
    const char* body;
    bool isTaken;
};
constexpr NestRow nestRows[] = {
    // one number, and nothing recorded
    {"x+series(y,1,1,3,y)", true},
    {"x+product(y,1,1,x,y+x)", true},
    {"1/(2+integral_area_xy(y,0,x,3,y,1))", true},
    {"1+integral_area_polar(y,0,x,3,y)", true},
    {"1+integral_curve_xy(y,0,x,3,y)", true},
    {"1+integral_curve_polar(y,0,x,3,y)", true},
    {"1+integral_area_parametric_xy(y,0,x,3,y,x)", true},
    {"1+integral_area_parametric_polar(y,0,x,3,y,x)", true},
    {"1+integral_curve_parametric(y,0,x,3,y,x)", true},
    {"x+series(x,1,1,3,x)", true},
    {"if(x>2,series(y,1,1,3,y),x)", true},
    {"series(y,1,1,3,y)*series(y,1,1,3,x)+half", true},
    // Its own parameters are for itself to judge.
    {"1+series(y,y,1,3,y)", true},
    {"1+series(3,1,1,3,x)", true},
    {"1+series(y,1,1,3)", true},
    // all of the body
    {"series(y,1,1,3,y)", false},
    // recorded, or no number
    {"1+locus_xy(y,0,1,3,y)", false},
    {"1+equation_root(y,0,1,3,y)", false},
    // a further one inside
    {"1+series(y,1,1,3,series(z,1,1,3,z))", false},
    {"1+series(y,1,1,series(z,1,1,3,z),y)", false},
    // parts that are no plain numbers
    {"1+series(y,1,1,3,length(point(y,1)))", false},
    {"1+series(y,1,1,3,abs(pair))", false},
    {"1+series(y,1,1,pair,y)", false},
};

TEST(NestedSweeps, AreSweepsOfPlainNumbersInABody) {
    for (const NestRow& row : nestRows) {
        SCOPED_TRACE(row.body);
        SweepBody body(row.body, "half=0.5;pair=point(1,2);");
        ASSERT_EQ(body.sheet.errorText, "");
        const auto program =
            BodyProgramBuilder::Build(body.family, body.Node(), "x", NestedRule::inWholeBlocks);
        ASSERT_EQ(program != nullptr, row.isTaken);
        if (row.isTaken) {
            EXPECT_NE(program->Nested(), nullptr);
        }
        EXPECT_EQ(BodyProgramBuilder::Build(body.family, body.Node(), "x"), nullptr);
    }
}

TEST(NestedSweeps, AreLeftToTheTreeWhereTheyAreLong) {
    const auto isTaken = [](int terms) {
        std::string text = "1+series(y,1,1,3,y";
        for (int i = 1; i < terms; ++i) text += "+y";
        SweepBody body(text + ")");
        return BodyProgramBuilder::Build(body.family, body.Node(), "x",
                                         NestedRule::inWholeBlocks) != nullptr;
    };
    EXPECT_TRUE(isTaken(20));
    EXPECT_FALSE(isTaken(100));
}

// --- what a run shows meanwhile

class Watch : public Progress {
public:
    explicit Watch(int steps = 0) : stepsToStop(steps) {}
    void Step() override {
        if (++steps == stepsToStop) stop.Ask();
    }

    RunStop stop;
    int steps = 0;

private:
    int stepsToStop;
};

struct WatchedRun {
    std::string error;
    int steps = 0;
};

WatchedRun RunWatched(const std::string& sheet, bool byColumns, int stepsToStop = 0) {
    Watch watch(stepsToStop);
    CalcParameters parameters;
    parameters.progress = &watch;
    parameters.stop = &watch.stop;
    parameters.sweepByColumns = byColumns;
    const auto compiled = test::Compile(sheet, parameters);
    WatchedRun run{compiled.errorText, watch.steps};
    // A run that was stopped keeps no sentence.
    if (!compiled.sentences.IsEmpty()) run.error += compiled.sentences[0].error;
    return run;
}

TEST(NestedSweeps, StepTheProgressAsOftenAsByTheTree) {
    const char* const sheets[] = {
        "series(x,1,1,1300,x+series(y,1,1,3,y))",
        "series(x,1,1,1300,x+series(y,1,1,501,y))",
        "series(x,1,1,40,x+series(y,1,1,5000,y))",
        "product(x,1,1,600,if(x<550,1,1+series(y,1,1,40000,y)))",
        "integral_area_xy(x,0,1,600,x*series(y,1,1,3,y)-series(z,1,1,2,z))",
        "integral_curve_parametric(x,0,1,600,1+series(y,1,1,3,x),2+series(y,1,1,3,y))",
        // The second body leaves the block to the tree.
        "integral_curve_parametric(x,0,1,600,1+series(y,1,1,3,x),if(x>0.9,complex(1,1),2))",
        // Fails in the second block, after many runs of what is nested.
        "series(x,1,1,1300,1+series(y,1,1,3,y)+1/(x-700))",
        "series(x,1,1,1300,1+series(y,1,1,3,1/(x-700)))",
        "integral_area_parametric_xy(x,0,1,600,1+series(y,1,1,3,y),1/(x-0.9))",
    };
    for (const char* const sheet : sheets) {
        SCOPED_TRACE(sheet);
        const WatchedRun byColumns = RunWatched(sheet, true);
        const WatchedRun byTree = RunWatched(sheet, false);
        EXPECT_EQ(byColumns.steps, byTree.steps);
        EXPECT_EQ(byColumns.error, byTree.error);
        EXPECT_GT(byTree.steps, 300);
    }
}

// A block of such sweeps would stand in years. Held back, the steps would be no sign of life.
TEST(NestedSweeps, StepTheProgressWhileALongOneIsUnderWay) {
    for (const char* const sheet : {
             "series(x,1,1,1000,1+series(y,1,1,2000000000,y))",
             "series(x,1,1,1000,if(x<300,1,1+series(y,1,1,2000000000,1/y)))",
             "integral_curve_parametric(x,0,1,1000,x+1,1+product(y,1,1,2000000000,1))",
         }) {
        SCOPED_TRACE(sheet);
        const WatchedRun run = RunWatched(sheet, true, 300);
        EXPECT_GE(run.steps, 300);
        EXPECT_LT(run.steps, 310);  // those of the block under way
    }
}

TEST(NestedSweeps, EndWithTheRunThatNobodyWatches) {
    RunStop stop;
    stop.Ask();
    SweepBody body("if(x>1,series(y,1,1,2000000000,y),x)");  // short where the body is made
    CalcParameters parameters;
    parameters.stop = &stop;
    const FamilyCall call{body.root, body.root.keyword, 0, parameters, body.errorText};
    const auto program =
        BodyProgramBuilder::Build(call, body.Node(), "x", NestedRule::inWholeBlocks);
    ASSERT_NE(program, nullptr);
    program->Nested()->Begin(40);
    SideFold nothing;
    std::fill_n(program->Numbers(), PaddedCount(40), 2.0);
    EXPECT_EQ(program->Run(program->Numbers(), 40, nothing), nullptr);
}

// --- what a run leaves behind

std::string DifferenceByColumns(const std::string& sheet) {
    const auto run = [&sheet](bool byColumns) {
        CalcParameters parameters;
        parameters.sweepByColumns = byColumns;
        return test::Compile(sheet, parameters);
    };
    auto left = run(true);
    auto right = run(false);
    if (left.sentences[0].error != right.sentences[0].error) return "errors";
    return test::TreeDifference(left.sentences[0].root, right.sentences[0].root);
}

// The variable of a nested sweep keeps its last value, so it shows whether the nested sweep has run
// for an element that the tree does not come to.
TEST(NestedSweeps, LeaveTheirVariablesAsTheTreeDoes) {
    const char* const sheets[] = {
        "series(x,1,1,1300,x+series(y,1,1,3,y))",
        "series(x,1,1,1300,if(x<20,series(y,1,1,x,y),x))",
        "series(x,1,1,1300,if(x<20,series(y,1,1,x,y),if(x>900,series(y,x,1,2,y),x)))",
        "series(x,1,1,600,1/(100-x)+if(x>90,series(y,1,1,x,y),x))",
        "series(x,1,1,600,if(x>110,series(y,1,1,x,y),x)+1/(100-x))",
        "series(x,1,1,1300,if(x>610,series(y,1,1,x,y),if(x<20,x+series(y,3,1,x,y),x))+1/(600-x))",
        "series(x,1,1,600,if(x>110,series(x,1,1,3,x),x)+1/(100-x))",
        // X stands, Y does not.
        "integral_area_parametric_xy(x,0,100,100,if(x>50,series(y,1,1,3,y),x),1/(x-10))",
        "integral_area_parametric_xy(x,0,600,600,if(x>590,series(y,1,1,3,y),x),1/(x-580))",
        "integral_area_parametric_xy(x,0,100,100,1/(x-10),if(x>50,series(y,1,1,3,y),x))",
    };
    for (const char* const sheet : sheets) EXPECT_EQ(DifferenceByColumns(sheet), "") << sheet;
}

}  // namespace
}  // namespace orvane
