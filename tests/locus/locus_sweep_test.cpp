#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "locus/locus_store.h"
#include "tests/locus/memory_limit.h"
#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

using test::Compile;
using test::Evaluate;
using test::Evaluated;
using test::Rows;

// Runs with an empty store and leaves it empty.
class LocusSweep : public ::testing::Test {
protected:
    void SetUp() override { Reset(); }
    void TearDown() override { Reset(); }

    static void Reset() { locusStore = LocusStore(); }

    // The set of a sheet with one locus call that succeeds.
    static const LocusSet& Sweep(const std::string& sheet) {
        const Evaluated got = Evaluate(sheet);
        EXPECT_EQ(got.error, "");
        EXPECT_EQ(got.rows, (Rows{{1.0}}));
        EXPECT_EQ(locusStore.Count(), 1);
        return locusStore[0];
    }
};

void ExpectPoints(const LocusSet& set, const std::vector<LocusPoint>& points) {
    ASSERT_EQ(set.points.size(), points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(set.points[i].x, points[i].x);
        EXPECT_EQ(set.points[i].y, points[i].y);
        EXPECT_EQ(set.points[i].penUp, points[i].penUp);
    }
}

void ExpectRanges(const LocusSet& set, double minX, double maxX, double minY, double maxY) {
    EXPECT_EQ(set.minX, minX);
    EXPECT_EQ(set.maxX, maxX);
    EXPECT_EQ(set.minY, minY);
    EXPECT_EQ(set.maxY, maxY);
}

TEST_F(LocusSweep, TakesBothEndsOfASingleStep) {
    const LocusSet& set = Sweep("locus_xy(x,1,3,1,x*x)");
    EXPECT_EQ(set.kind, LocusKind::xy);
    EXPECT_EQ(set.sentenceIndex, 0);
    ExpectPoints(set, {{1.0, 1.0, true}, {3.0, 9.0, false}});
    ExpectRanges(set, 1.0, 3.0, 1.0, 9.0);
    EXPECT_FALSE(set.stoppedEarly);
    EXPECT_EQ(set.lastParameter, 0.0);
    EXPECT_EQ(set.droppedCount, 0);
}

TEST_F(LocusSweep, PutsAPolarRadiusAtItsAngle) {
    const LocusSet& set = Sweep("locus_polar(t,0,2,2,t+1)");
    EXPECT_EQ(set.kind, LocusKind::polar);
    ExpectPoints(set, {{std::cos(0.0) * 1.0, std::sin(0.0) * 1.0, true},
                       {std::cos(1.0) * 2.0, std::sin(1.0) * 2.0, false},
                       {std::cos(2.0) * 3.0, std::sin(2.0) * 3.0, false}});
    EXPECT_FALSE(set.stoppedEarly);
}

TEST_F(LocusSweep, TakesXAndYOfAParametricCurve) {
    const LocusSet& set = Sweep("locus_parametric(t,0,1,2,2*t,1-t)");
    EXPECT_EQ(set.kind, LocusKind::parametric);
    ExpectPoints(set, {{0.0, 1.0, true}, {1.0, 0.5, false}, {2.0, 0.0, false}});
    ExpectRanges(set, 0.0, 2.0, 0.0, 1.0);
    EXPECT_FALSE(set.stoppedEarly);
}

TEST_F(LocusSweep, StartsANewStrokeBehindAGap) {
    // 4, 1, 0, 1, 4 under a limit of 3, and the other way round.
    ExpectPoints(Sweep("locus_xy(x,-2,2,4,x*x,3)"),
                 {{-1.0, 1.0, true}, {0.0, 0.0, false}, {1.0, 1.0, false}});
    Reset();
    ExpectPoints(Sweep("locus_xy(x,-2,2,4,4-x*x,3)"),
                 {{-2.0, 0.0, true}, {-1.0, 3.0, false}, {1.0, 3.0, true}, {2.0, 0.0, false}});
    EXPECT_FALSE(locusStore[0].stoppedEarly);
}

struct LimitRow {
    const char* sheet;
    std::size_t points;
};

TEST_F(LocusSweep, CountsAPointOnTheLimitAsInside) {
    const LimitRow rows[] = {
        {"locus_xy(x,0,3,3,x,2)", 3},
        {"locus_xy(x,-3,0,3,x,2)", 3},
        {"locus_polar(x,0,3,3,x,2)", 3},
        // Kept: a radius below zero has no limit.
        {"locus_polar(x,-3,0,3,x,2)", 4},
        {"locus_polar(x,0,1,1,-5000000)", 2},
        {"locus_xy(x,0,1,1,-5000000)", 0},
        {"locus_parametric(t,0,3,3,t,0,2)", 3},
        {"locus_parametric(t,0,3,3,0,t,2)", 3},
        {"locus_parametric(t,-3,0,3,t,0,2)", 3},
        {"locus_parametric(t,-3,0,3,0,t,2)", 3},
        // A million where no limit is given, and where it is not above 0.
        {"locus_xy(x,999999,1000001,2,x)", 2},
        {"locus_xy(x,999999,1000001,2,x,0)", 2},
        {"locus_xy(x,999999,1000001,2,x,-7)", 2},
        {"locus_polar(x,999999,1000001,2,x,0)", 2},
        {"locus_parametric(x,999999,1000001,2,x,0)", 2},
        {"locus_parametric(x,999999,1000001,2,x,0,0)", 2},
        {"locus_parametric(x,999999,1000001,2,x,0,-7)", 2},
        {"locus_xy(x,999999,1000001,2,x,2000000)", 3},
        {"locus_xy(x,0,1,2,x,0.5)", 2},
    };
    for (const auto& [sheet, points] : rows) {
        SCOPED_TRACE(sheet);
        Reset();
        EXPECT_EQ(Sweep(sheet).points.size(), points);
    }
}

TEST_F(LocusSweep, LetsARadiusBelowZeroBeInfinite) {
    const std::string huge = "1" + std::string(200, '0');
    const LocusSet& set = Sweep("locus_polar(x,1,2,1,0-" + huge + "*" + huge + ")");
    constexpr double infinity = std::numeric_limits<double>::infinity();
    ExpectPoints(set, {{-infinity, -infinity, true}, {infinity, -infinity, false}});
    EXPECT_FALSE(set.stoppedEarly);
}

TEST_F(LocusSweep, NotesWhereACurveStoppedEarly) {
    const LocusSet& polar = Sweep("locus_polar(t,0,4,4,t,2)");
    EXPECT_TRUE(polar.stoppedEarly);
    EXPECT_EQ(polar.lastParameter, 2.0);
    Reset();
    const LocusSet& parametric = Sweep("locus_parametric(t,1,2,4,t,t,1.5)");
    EXPECT_TRUE(parametric.stoppedEarly);
    EXPECT_EQ(parametric.lastParameter, 1.5);
    Reset();
    const LocusSet& xy = Sweep("locus_xy(t,0,4,4,t,2)");
    EXPECT_FALSE(xy.stoppedEarly);
    EXPECT_EQ(xy.lastParameter, 0.0);
    Reset();
    // A gap in the middle is no early end.
    const LocusSet& gap = Sweep("locus_polar(t,0,2,2,if(t-1,0,100,0),50)");
    EXPECT_EQ(gap.points.size(), 2u);
    EXPECT_FALSE(gap.stoppedEarly);
}

TEST_F(LocusSweep, NotesTheParameterInFrontOfACurveWithoutPoints) {
    const LocusSet& polar = Sweep("locus_polar(t,3,5,4,100,50)");
    EXPECT_TRUE(polar.points.empty());
    EXPECT_TRUE(polar.stoppedEarly);
    EXPECT_EQ(polar.lastParameter, 2.5);
    ExpectRanges(polar, 1.7e308, -1.7e308, 1.7e308, -1.7e308);
    Reset();
    const LocusSet& parametric = Sweep("locus_parametric(t,3,5,4,1,100,50)");
    EXPECT_TRUE(parametric.stoppedEarly);
    EXPECT_EQ(parametric.lastParameter, 2.5);
}

TEST_F(LocusSweep, PassesOverWhatIsNoNumber) {
    EXPECT_TRUE(Sweep("locus_xy(x,0,1,1,q)").points.empty());
    Reset();
    EXPECT_TRUE(Sweep("locus_polar(x,0,1,1,q)").points.empty());
    Reset();
    EXPECT_TRUE(Sweep("locus_parametric(x,0,1,1,q,x)").points.empty());
    Reset();
    EXPECT_TRUE(Sweep("locus_parametric(x,0,1,1,x,q)").points.empty());
    Reset();
    ExpectPoints(Sweep("locus_xy(x,0,2,2,1+sqrt(x-1))"), {{1.0, 1.0, true}, {2.0, 2.0, false}});
}

TEST_F(LocusSweep, LetsATermInsideItsBodyBeInfinite) {
    ExpectPoints(Sweep("locus_xy(x,-1,1,2,inv(x)+1)"), {{-1.0, 0.0, true}, {1.0, 2.0, true}});
    Reset();
    const LocusSet& both = Sweep("locus_parametric(x,-1,1,2,1+inv(x),inv(x)+1)");
    ExpectPoints(both, {{0.0, 0.0, true}, {2.0, 2.0, true}});
    Reset();
    // An infinite term may still lead to a point.
    ExpectPoints(Sweep("locus_xy(x,0,1,1,atan(inv(x))*0+x)"),
                 {{0.0, 0.0, true}, {1.0, 1.0, false}});
}

struct FailureRow {
    const char* sheet;
    const char* error;
    std::size_t points;
};

TEST_F(LocusSweep, KeepsItsPointsAfterAnErrorAndFindsNoRanges) {
    const FailureRow rows[] = {
        // The test of the body itself stays on, and so does that of every division.
        {"locus_xy(x,-1,1,2,inv(x))",
         "E006-10 sentence  1: function \"inv\": generates an infinite or unaccepted number.", 1},
        {"locus_xy(x,-2,2,4,1+1/x)",
         "E009-41 sentence  1: function \"divide\": generates an infinite or unaccepted number.",
         2},
        {"locus_polar(x,-2,2,4,1/x)",
         "E009-41 sentence  1: function \"divide\": generates an infinite or unaccepted number.",
         2},
        {"locus_parametric(x,-2,2,4,x,1/x)",
         "E009-41 sentence  1: function \"divide\": generates an infinite or unaccepted number.",
         2},
        {"locus_parametric(x,-2,2,4,1/x,inv(x))",
         "E009-41 sentence  1: function \"divide\": generates an infinite or unaccepted number.",
         2},
        // Point functions have a test of their own.
        {"locus_xy(x,-1,1,2,1+angle_of_vectors((x,0),(1,0)))",
         "E010-01 sentence  1: function \"angle_of_vectors\": generates an infinite or unaccepted "
         "number.",
         1},
        // A sweep inside the body tests its own body.
        {"locus_xy(x,0,1,2,series(i,1,1,2,inv(x)+i))",
         "E008-05 sentence  1: function \"series\": generates an infinite or unaccepted number.",
         0},
        {"locus_xy(x,0,1,1,nosuch(x))",
         "E001-01 sentence  1: function \"nosuch\": unknown function.", 0},
    };
    for (const auto& [sheet, error, points] : rows) {
        SCOPED_TRACE(sheet);
        Reset();
        const Evaluated got = Evaluate(sheet);
        EXPECT_EQ(got.error, error);
        EXPECT_EQ(got.rows, Rows{});
        ASSERT_EQ(locusStore.Count(), 1);
        EXPECT_EQ(locusStore[0].points.size(), points);
        EXPECT_FALSE(locusStore[0].stoppedEarly);
        ExpectRanges(locusStore[0], 0.0, 0.0, 0.0, 0.0);
    }
}

TEST_F(LocusSweep, LeavesOtherSweepsTheirFiniteTest) {
    EXPECT_EQ(Evaluate("series(x,0,1,2,inv(x)+1)").error,
              "E006-10 sentence  1: function \"inv\": generates an infinite or unaccepted number.");
    EXPECT_EQ(Evaluate("locus_xy(x,0,1,1,x)+inv(0)").error,
              "E006-10 sentence  1: function \"inv\": generates an infinite or unaccepted number.");
}

TEST_F(LocusSweep, MakesNoSetForParametersThatFail) {
    EXPECT_NE(Evaluate("locus_xy(x,0,1,0,x)").error, "");
    EXPECT_TRUE(locusStore.IsEmpty());
}

TEST_F(LocusSweep, AddsOneSetForEachCall) {
    const test::CompiledSheet sheet = Compile(
        "1+1; locus_xy(x,0,1,1,x); locus_polar(x,0,1,1,1/x);"
        "locus_parametric(t,0,1,1,t,t)+locus_xy(x,0,1,2,x)");
    ASSERT_EQ(sheet.sentences.Count(), 4);
    ASSERT_EQ(locusStore.Count(), 4);
    EXPECT_EQ(locusStore[0].sentenceIndex, 1);
    EXPECT_EQ(locusStore[1].sentenceIndex, 2);
    EXPECT_EQ(locusStore[2].sentenceIndex, 3);
    EXPECT_EQ(locusStore[2].kind, LocusKind::parametric);
    EXPECT_EQ(locusStore[3].sentenceIndex, 3);
    EXPECT_EQ(locusStore[3].points.size(), 3u);
    EXPECT_EQ(test::RowsOf(sheet.sentences[3].root.result), (Rows{{2.0}}));
}

TEST_F(LocusSweep, MayRunInsideAnotherSweep) {
    EXPECT_EQ(test::NumberFrom("series(k,1,1,3,locus_xy(x,0,1,1,k*x))"), 3.0);
    ASSERT_EQ(locusStore.Count(), 3);
    ExpectPoints(locusStore[2], {{0.0, 0.0, true}, {1.0, 3.0, false}});
    Reset();
    // The outer curve goes on while the inner ones are added behind it.
    EXPECT_EQ(test::NumberFrom("locus_xy(x,0,400,400,locus_xy(t,0,1,1,x))"), 1.0);
    ASSERT_EQ(locusStore.Count(), 402);
    EXPECT_EQ(locusStore[0].points.size() + static_cast<std::size_t>(locusStore[0].droppedCount),
              401u);
    ExpectPoints(locusStore[401], {{0.0, 400.0, true}, {1.0, 400.0, false}});
}

// The points that a plain loop takes from the same body.
TEST_F(LocusSweep, MatchesAPlainLoopBitForBit) {
    const double start = -2.9, end = 3.7, limit = 0.4;
    const int steps = 90;
    const double step = (end - start) / steps;
    const auto body = [](double t) { return std::sin(3.0 * t) - 0.25 * t; };
    std::vector<LocusPoint> xy, polar, parametric;
    bool xyPen = true, polarPen = true, parametricPen = true;
    int polarLast = -1, parametricLast = -1;
    for (int i = 0; i <= steps; ++i) {
        const double t = i * step + start;
        const double value = body(t);
        const double other = 0.25 * t;
        if (std::fabs(value) <= limit) xy.push_back({t, value, xyPen});
        xyPen = !(std::fabs(value) <= limit);
        if (value <= limit) polar.push_back({std::cos(t) * value, std::sin(t) * value, polarPen});
        if (value <= limit) polarLast = i;
        polarPen = !(value <= limit);
        const bool inside = std::fabs(value) <= limit && std::fabs(other) <= limit;
        if (inside) parametric.push_back({value, other, parametricPen});
        if (inside) parametricLast = i;
        parametricPen = !inside;
    }
    ASSERT_GT(xy.size(), 5u);
    ASSERT_GT(parametric.size(), 1u);

    const std::string head = "(t,-2.9,3.7,90,";
    ExpectPoints(Sweep("locus_xy" + head + "sin(3*t)-0.25*t,0.4)"), xy);
    Reset();
    const LocusSet& polarSet = Sweep("locus_polar" + head + "sin(3*t)-0.25*t,0.4)");
    ExpectPoints(polarSet, polar);
    EXPECT_EQ(polarSet.stoppedEarly, polarLast != steps);
    if (polarLast != steps) {
        EXPECT_EQ(polarSet.lastParameter, polarLast * step + start);
    }
    Reset();
    const LocusSet& parametricSet =
        Sweep("locus_parametric" + head + "sin(3*t)-0.25*t,0.25*t,0.4)");
    ExpectPoints(parametricSet, parametric);
    EXPECT_TRUE(parametricSet.stoppedEarly);
    EXPECT_EQ(parametricSet.lastParameter, parametricLast * step + start);
}

TEST_F(LocusSweep, ThinsForTheScreenAndTheFineRow) {
    CalcParameters parameters;
    const std::string sheet = "locus_xy(x,0,1,10000,x)";
    const auto kept = [&](int width, int fineRow) {
        Reset();
        locusStore.screenWidth = width;
        locusStore.screenHeight = width;
        parameters.locusFine = fineRow;
        Evaluate(sheet, parameters);
        return locusStore[0].points.size();
    };
    // 10000 steps over 1000 pixels: about every tenth point is one pixel from the last.
    const std::size_t best = kept(1000, 0);
    EXPECT_GT(best, 900u);
    EXPECT_LE(best, 1001u);
    EXPECT_EQ(kept(1000, -3), best);
    EXPECT_LE(kept(500, 0), 501u);
    EXPECT_LE(kept(1000, 1), 501u);
    EXPECT_LE(kept(1000, 19), 51u);
    EXPECT_EQ(kept(1000, std::numeric_limits<int>::max()), 1u);
    EXPECT_EQ(kept(1000000, 0), 10001u);
    EXPECT_EQ(locusStore[0].droppedCount, 0);
}

// The first of two sentences found no memory, and "1+1" behind it went on.
void ExpectOutOfMemory(const test::CompiledSheet& sheet) {
    ASSERT_EQ(sheet.sentences.Count(), 2);
    EXPECT_EQ(sheet.sentences[0].error,
              "E008-14 sentence  1: function \"locus_xy\": has too many points for the memory.");
    EXPECT_FALSE(sheet.sentences[0].root.evaluated);
    EXPECT_EQ(test::RowsOf(sheet.sentences[1].root.result), (Rows{{2.0}}));
}

TEST_F(LocusSweep, EndsItsSentenceWhenMemoryRunsOut) {
    constexpr std::size_t refusedSize = 1000000;
    const auto compileWithLimit = [] {
        const test::MemoryLimit limit(refusedSize);
        return Compile("locus_xy(x,0,1,200000,x);1+1");
    };
    const test::CompiledSheet sheet = compileWithLimit();
    ExpectOutOfMemory(sheet);
    ASSERT_EQ(locusStore.Count(), 1);
    EXPECT_GE(locusStore[0].points.size(), 1000u);
    EXPECT_LT(locusStore[0].points.size(), refusedSize / sizeof(LocusPoint));
    ExpectRanges(locusStore[0], 0.0, 0.0, 0.0, 0.0);
}

TEST_F(LocusSweep, EndsItsSentenceWhenThereIsNoMemoryForACurve) {
    const auto compileWithLimit = [] {
        const test::MemoryLimit limit(24000);
        return Compile("series(i,1,1,1000000000,locus_xy(x,0,1,1,x));1+1");
    };
    const test::CompiledSheet sheet = compileWithLimit();
    ExpectOutOfMemory(sheet);
    EXPECT_TRUE(locusStore.IsEmpty());
}

// A run empties the store first, so that the plot never shows curves of an earlier sheet.
TEST_F(LocusSweep, IsForgottenByTheNextRun) {
    test::Run("locus_xy(x,0,1,1,x);");
    EXPECT_EQ(locusStore.Count(), 1);
    test::Run("1+1;");
    EXPECT_TRUE(locusStore.IsEmpty());
}

}  // namespace
}  // namespace orvane
