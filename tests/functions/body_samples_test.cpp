#include "functions/body_samples.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "locus/locus_store.h"
#include "tests/functions/sweep_body.h"
#include "tests/support/same_tree.h"
#include "tests/support/sweep_text.h"

namespace orvane {
namespace {

using test::CountingProgress;
using test::SameBits;
using test::SweepBody;
using test::TreeDifference;

constexpr auto blockLength = static_cast<std::int64_t>(columnLength);

TEST(GridBlock, WalksAllPlacesInOrder) {
    for (const std::int64_t places :
         {std::int64_t{1}, std::int64_t{31}, blockLength - 1, blockLength, blockLength + 1,
          2 * blockLength, 3 * blockLength + 5, std::int64_t{4000}}) {
        SCOPED_TRACE(places);
        std::int64_t next = 0;
        for (GridBlock block = GridBlock::First(places); !block.IsEmpty();
             block = block.Next(places)) {
            EXPECT_EQ(block.first, next);
            EXPECT_LE(block.count, columnLength);
            next += static_cast<std::int64_t>(block.count);
            EXPECT_TRUE(block.count == columnLength || next == places);
        }
        EXPECT_EQ(next, places);
    }
}

// A sweep of x made by hand, with the samples of its body.
struct HandMadeSweep {
    explicit HandMadeSweep(const char* text)
        : body(text), call{body.family, "x", 0.0, 1.0, 1}, samples(call, body.Node()) {}

    SweepBody body;
    StepCall call;
    BodySamples samples;
    SampleColumn column;
};

GridBlock BlockAt(std::int64_t first, std::size_t count) {
    GridBlock block;
    block.first = first;
    block.count = count;
    return block;
}

constexpr SweepGrid grid = {-1.5, 0.1};
double NumberAt(std::int64_t place) { return static_cast<double>(place) * grid.step + grid.lower; }

TEST(BodySamples, AreTheTreesValuesAtThePlacesOfABlock) {
    for (const char* const text :
         {"x", "3", "x*x-2/(x+30)", "if(x>0,sin(x),median(x,1,2))", "bit_or(int(x+3),4,8)"}) {
        SCOPED_TRACE(text);
        HandMadeSweep sweep(text);
        SweepBody tree(text);
        for (const GridBlock& block : {BlockAt(0, columnLength), BlockAt(columnLength, 77),
                                       BlockAt(40000, 1), BlockAt(3, 33)}) {
            SCOPED_TRACE(block.first);
            const double* const values = sweep.samples.Fill(grid, block);
            ASSERT_NE(values, nullptr);
            const std::vector<double> kept(values, values + PaddedCount(block.count));
            ASSERT_TRUE(sweep.samples.FillFinite(grid, block, sweep.column));
            for (std::size_t i = 0; i < block.count; ++i) {
                const auto place = static_cast<std::int64_t>(i);
                const double wanted = tree.ByTree(NumberAt(block.first + place));
                EXPECT_TRUE(SameBits(kept[i], wanted)) << i;
                EXPECT_TRUE(SameBits(sweep.column.At(place), wanted)) << i;
            }
        }
    }
}

TEST(BodySamples, LeaveShortSweepsToTheTree) {
    struct ShortRow {
        const char* body;
        std::size_t fewest;
    };
    for (const auto& [text, fewest] : {ShortRow{"x*x", 32}, {"-x", 32}, {"x", 128}, {"3", 128}}) {
        SCOPED_TRACE(text);
        HandMadeSweep sweep(text);
        EXPECT_EQ(sweep.samples.Fill(grid, BlockAt(0, 1)), nullptr);
        EXPECT_EQ(sweep.samples.Fill(grid, BlockAt(0, fewest - 1)), nullptr);
        EXPECT_FALSE(sweep.samples.FillFinite(grid, BlockAt(0, fewest - 1), sweep.column));
        EXPECT_NE(sweep.samples.Fill(grid, BlockAt(0, fewest)), nullptr);
        // The preparation is done now.
        EXPECT_NE(sweep.samples.Fill(grid, BlockAt(500, 1)), nullptr);
    }
}

TEST(BodySamples, LeaveEverythingToTheTreeWhereColumnsAreNotWanted) {
    HandMadeSweep sweep("x*x");
    sweep.body.parameters.sweepByColumns = false;
    EXPECT_EQ(sweep.samples.Fill(grid, BlockAt(0, columnLength)), nullptr);
    EXPECT_FALSE(sweep.samples.FillFinite(grid, BlockAt(0, columnLength), sweep.column));
}

TEST(BodySamples, GiveNothingAfterAnError) {
    HandMadeSweep sweep("x*x");
    EXPECT_NE(sweep.samples.Fill(grid, BlockAt(0, 100)), nullptr);
    sweep.body.errorText = "an earlier one";
    EXPECT_EQ(sweep.samples.Fill(grid, BlockAt(100, 100)), nullptr);
    EXPECT_EQ(sweep.body.errorText, "an earlier one");
}

// Bodies of which the nodes that were not needed last are in another state than the others.
constexpr const char* settledBodies[] = {
    "x*x+1", "if(x>5,sin(x),median(x,1,2)+1)",    "if(x<5,sin(x),median(x,1,2)+1)", "3",
    "x",     "if(x-8,abs(x),(x),bit_and(1,2,8))",
};

TEST(BodySamples, SettleToWhatTheTreeLeaves) {
    for (const char* const text : settledBodies) {
        SCOPED_TRACE(text);
        for (const bool finite : {false, true}) {
            HandMadeSweep sweep(text);
            SweepBody tree(text);
            if (finite) {
                EXPECT_TRUE(sweep.samples.FillFinite(grid, BlockAt(10, 190), sweep.column));
            } else {
                EXPECT_NE(sweep.samples.Fill(grid, BlockAt(10, 190)), nullptr);
            }
            sweep.samples.Settle();
            tree.ByTree(NumberAt(199));
            EXPECT_EQ(TreeDifference(sweep.body.root, tree.root), "");
            EXPECT_EQ(sweep.body.errorText, "");
        }
    }
}

TEST(BodySamples, SettleAtThePlaceThatWasVisitedLast) {
    for (const char* const text : settledBodies) {
        SCOPED_TRACE(text);
        HandMadeSweep sweep(text);
        SweepBody tree(text);
        EXPECT_TRUE(sweep.samples.FillFinite(grid, BlockAt(0, 200), sweep.column));
        sweep.samples.Visit(NumberAt(42));
        sweep.samples.Settle();
        tree.ByTree(NumberAt(42));
        EXPECT_EQ(TreeDifference(sweep.body.root, tree.root), "");
        // The tree was there in the meantime.
        EXPECT_TRUE(sweep.samples.FillFinite(grid, BlockAt(0, 200), sweep.column));
        sweep.body.ByTree(7.25);
        sweep.samples.VisitByTree();
        sweep.samples.Settle();
        tree.ByTree(7.25);
        EXPECT_EQ(TreeDifference(sweep.body.root, tree.root), "");
    }
}

TEST(BodySamples, LeaveTheBodyAsInFrontOfABlockThatTheyCantDo) {
    // Fails at the place 300, by itself or since what comes out is not finite.
    for (const char* const text :
         {"1/(x-300)", "if(x==300,ln(0),x)", "pow(10,300)*if(x==300,pow(10,300),1)"}) {
        SCOPED_TRACE(text);
        HandMadeSweep sweep(text);
        SweepBody tree(text);
        const SweepGrid whole = {0.0, 1.0};
        EXPECT_TRUE(sweep.samples.FillFinite(whole, BlockAt(0, 200), sweep.column));
        EXPECT_TRUE(sweep.samples.FillFinite(whole, BlockAt(200, 100), sweep.column));
        EXPECT_FALSE(sweep.samples.FillFinite(whole, BlockAt(300, 100), sweep.column));
        EXPECT_EQ(sweep.body.errorText, "");
        tree.ByTree(299.0);
        EXPECT_EQ(TreeDifference(sweep.body.root, tree.root), "");
    }
}

TEST(OrderedFold, TakesTheTermsOfOneBlockAfterTheOther) {
    struct Part {
        std::size_t begin, end;
    };
    constexpr Part parts[] = {{0, columnLength}, {1, columnLength}, {0, 1},           {1, 1},
                              {0, 100},          {5, 77},           {0, columnLength}};
    OrderedFold sum = OrderedFold::Sum();
    OrderedFold product = OrderedFold::Product();
    double wantedSum = 0.0;
    double wantedProduct = 1.0;
    double term = 0.9;
    for (const auto& [begin, end] : parts) {
        for (std::size_t i = 0; i < end; ++i) {
            term = 1.7 - term * 0.99;
            sum.Room().Block()[i] = term;
            product.Room().Block()[i] = term;
            if (i < begin) continue;
            wantedSum += term;
            wantedProduct *= term;
        }
        sum.Start(begin, end);
        product.Start(begin, end);
    }
    sum.Finish();
    product.Finish();
    sum.Add(0.3);
    product.Add(0.3);
    EXPECT_TRUE(SameBits(sum.Total(), wantedSum + 0.3));
    EXPECT_TRUE(SameBits(product.Total(), wantedProduct * 0.3));
}

int ProgressStepsOf(const std::string& sheet, bool byColumns) {
    CountingProgress progress;
    CalcParameters parameters;
    parameters.progress = &progress;
    parameters.sweepByColumns = byColumns;
    EXPECT_TRUE(test::Compile(sheet, parameters).succeeded);
    return progress.steps;
}

TEST(Sweeps, StepTheProgressAsOftenByColumns) {
    struct SweepRow {
        const char* head;
        const char* bodies;
        int samples;  // for each step, of all bodies
    };
    constexpr SweepRow rows[] = {
        {"series(x,1,1,", ",x)", 1},
        {"product(x,1,0,", ",x)", 1},
        {"equation_root(x,1,2,", ",x)", 1},
        {"integral_area_xy(x,1,2,", ",x,0)", 2},
        {"integral_curve_polar(x,1,2,", ",x)", 2},
        {"integral_curve_parametric(x,1,2,", ",x,x*x)", 4},
        {"integral_area_parametric_xy(x,1,2,", ",x,series(y,1,1,1,x))", 4},
        {"locus_xy(x,1,2,", ",x)", 1},
        {"locus_parametric(x,1,2,", ",x,x)", 1},
    };
    for (const SweepRow& row : rows) {
        for (const int steps : {1, 249, 250, 499, 500, 501, 999, 1000, 1001, 12345}) {
            SCOPED_TRACE(row.head + std::to_string(steps) + row.bodies);
            const std::string sheet = row.head + std::to_string(steps) + row.bodies;
            const int byColumns = ProgressStepsOf(sheet, true);
            EXPECT_EQ(byColumns, ProgressStepsOf(sheet, false));
            EXPECT_GE(byColumns, 1 + steps * row.samples / 500 - row.samples);
        }
    }
}

// Each level holds its rooms on the program's stack; the innermost body ends the run.
TEST(Sweeps, HaveRoomInsideEachOther) {
    struct NestRow {
        const char* name;
        bool isParametric;
    };
    constexpr NestRow rows[] = {
        {"series", false},           {"equation_root", false},
        {"integral_area_xy", false}, {"integral_area_parametric_polar", true},
        {"locus_xy", false},         {"locus_parametric", true}};
    for (const NestRow& row : rows) {
        SCOPED_TRACE(row.name);
        std::string sheet;
        for (int i = 0; i < deepestSweep; ++i) {
            sheet.append(row.name).append("(x").append(std::to_string(i)).append(",0,1,1,");
        }
        sheet += "1/0";
        for (int i = 0; i < deepestSweep; ++i) sheet += row.isParametric ? ",1)" : ")";
        const test::Evaluated evaluated = test::Evaluate(sheet);
        EXPECT_EQ(evaluated.error.substr(0, 7), "E009-41");
    }
    locusStore = LocusStore();
}

// A scan visits a thousand places for each step; what fails there is seen by the next step.
TEST(Sweeps, EndAtAnErrorInsideAScanAsTheTreeDoes) {
    const char* const sheets[] = {
        "equation_root(x,0,10,10,if(x>4.2,if(x<4.3,1/0,-1),1))",
        "equation_root(x,0,400,400,if(x>300.2,if(x<300.3,ln(0),-1),1))",
        "equation_root(x,0,1,1,if(x>0.2,if(x<0.3,1/0,-1),1))",
        "equation_root(x,0,64,64,if(x>63.2,if(x<63.3,bit_and(x,1,8),-1),1))",
        "equation_root(x,0,300,300,sin(x)+if(x>200,1/(x-250),0))",
    };
    for (const char* const sheet : sheets) {
        SCOPED_TRACE(sheet);
        CalcParameters byTree;
        byTree.sweepByColumns = false;
        test::CompiledSheet left = test::Compile(sheet);
        test::CompiledSheet right = test::Compile(sheet, byTree);
        EXPECT_NE(left.sentences[0].error, "");
        EXPECT_EQ(left.sentences[0].error, right.sentences[0].error);
        EXPECT_EQ(TreeDifference(left.sentences[0].root, right.sentences[0].root), "");
    }
}

}  // namespace
}  // namespace orvane
