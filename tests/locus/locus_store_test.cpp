#include "locus/locus_store.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "tests/locus/memory_limit.h"

namespace orvane {
namespace {

// The set of given points, and the same set after FindRanges.
LocusSet SetOf(const std::vector<LocusPoint>& points) {
    LocusSet set;
    for (const LocusPoint& point : points) {
        EXPECT_TRUE(set.AddPoint(point.x, point.y, point.penUp));
    }
    return set;
}

LocusSet Thinned(const std::vector<LocusPoint>& points, int width, int height, int fine) {
    LocusSet set = SetOf(points);
    set.FindRanges(width, height, fine);
    return set;
}

// What FindRanges is to give, with the points copied into a second list.
struct Expected {
    double minX = 1.7e308, maxX = -1.7e308, minY = 1.7e308, maxY = -1.7e308;
    std::vector<LocusPoint> points;
    int dropped = 0;
};

Expected ExpectedOf(std::vector<LocusPoint> points, int width, int height, int fine) {
    Expected expected;
    for (const LocusPoint& point : points) {
        if (point.x > expected.maxX) expected.maxX = point.x;
        if (point.x < expected.minX) expected.minX = point.x;
        if (point.y > expected.maxY) expected.maxY = point.y;
        if (point.y < expected.minY) expected.minY = point.y;
    }
    expected.points = points;
    if (points.size() < 100) return expected;
    const int f = fine < 1 ? 1 : fine;
    const double dx = (expected.maxX - expected.minX) * f / width;
    const double dy = (expected.maxY - expected.minY) * f / height;
    expected.points = {points[0]};
    for (std::size_t i = 1; i < points.size(); ++i) {
        const LocusPoint& last = expected.points.back();
        if (std::fabs(points[i].x - last.x) < dx && std::fabs(points[i].y - last.y) < dy) {
            if (points[i].penUp && i != points.size() - 1) points[i + 1].penUp = true;
            ++expected.dropped;
        } else {
            expected.points.push_back(points[i]);
        }
    }
    return expected;
}

void ExpectSet(const LocusSet& set, const Expected& expected) {
    EXPECT_EQ(set.minX, expected.minX);
    EXPECT_EQ(set.maxX, expected.maxX);
    EXPECT_EQ(set.minY, expected.minY);
    EXPECT_EQ(set.maxY, expected.maxY);
    EXPECT_EQ(set.droppedCount, expected.dropped);
    ASSERT_EQ(set.points.size(), expected.points.size());
    for (std::size_t i = 0; i < set.points.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(set.points[i].x, expected.points[i].x);
        EXPECT_EQ(set.points[i].y, expected.points[i].y);
        EXPECT_EQ(set.points[i].penUp, expected.points[i].penUp);
    }
}

// A line of this many points, one tenth of a pixel apart on a screen of 1000 by 1000.
std::vector<LocusPoint> DenseLine(int count) {
    std::vector<LocusPoint> points;
    for (int i = 0; i < count; ++i) points.push_back({i * 0.1, i * 0.1, i == 0});
    points.push_back({1000.0, 1000.0, false});
    return points;
}

TEST(LocusSet, StartsEmptyWithRangesOfZero) {
    const LocusSet set;
    EXPECT_EQ(set.sentenceIndex, 0);
    EXPECT_EQ(set.kind, LocusKind::xy);
    EXPECT_FALSE(set.stoppedEarly);
    EXPECT_EQ(set.lastParameter, 0.0);
    EXPECT_EQ(set.minX, 0.0);
    EXPECT_EQ(set.maxX, 0.0);
    EXPECT_EQ(set.minY, 0.0);
    EXPECT_EQ(set.maxY, 0.0);
    EXPECT_TRUE(set.points.empty());
    EXPECT_EQ(set.droppedCount, 0);
}

TEST(LocusSet, KeepsPointsInOrderWithRoomFor1000) {
    LocusSet set;
    EXPECT_TRUE(set.AddPoint(1.0, 2.0, true));
    EXPECT_EQ(set.points.capacity(), 1000u);
    const LocusPoint* const first = &set.points[0];
    for (int i = 1; i < 1000; ++i) EXPECT_TRUE(set.AddPoint(i, -i, false));
    EXPECT_EQ(&set.points[0], first);
    EXPECT_TRUE(set.AddPoint(1000.0, -1000.0, true));
    ASSERT_EQ(set.points.size(), 1001u);
    EXPECT_EQ(set.points[0].x, 1.0);
    EXPECT_EQ(set.points[0].y, 2.0);
    EXPECT_TRUE(set.points[0].penUp);
    EXPECT_EQ(set.points[999].x, 999.0);
    EXPECT_FALSE(set.points[999].penUp);
    EXPECT_TRUE(set.points[1000].penUp);
}

TEST(LocusSet, StaysAsItWasWhenMemoryRunsOut) {
    LocusSet set;
    {
        const test::MemoryLimit limit(1000);
        EXPECT_FALSE(set.AddPoint(1.0, 2.0, true));
    }
    EXPECT_TRUE(set.points.empty());
    EXPECT_TRUE(set.AddPoint(1.0, 2.0, true));
    ASSERT_EQ(set.points.size(), 1u);
    EXPECT_EQ(set.points[0].x, 1.0);
}

TEST(FindRanges, LeavesAnEmptySetUpsideDown) {
    LocusSet set;
    set.FindRanges(1920, 1080, 1);
    EXPECT_EQ(set.minX, 1.7e308);
    EXPECT_EQ(set.maxX, -1.7e308);
    EXPECT_EQ(set.minY, 1.7e308);
    EXPECT_EQ(set.maxY, -1.7e308);
}

TEST(FindRanges, FindsTheRangesOfBothDirections) {
    const LocusSet set = Thinned({{3.0, -1.0}, {-2.0, 5.0}, {0.5, 0.5}}, 1920, 1080, 1);
    EXPECT_EQ(set.minX, -2.0);
    EXPECT_EQ(set.maxX, 3.0);
    EXPECT_EQ(set.minY, -1.0);
    EXPECT_EQ(set.maxY, 5.0);
    const LocusSet one = Thinned({{4.0, -7.0}}, 1920, 1080, 1);
    EXPECT_EQ(one.minX, 4.0);
    EXPECT_EQ(one.maxX, 4.0);
    EXPECT_EQ(one.minY, -7.0);
    EXPECT_EQ(one.maxY, -7.0);
}

TEST(FindRanges, NeverThinsFewerThan100Points) {
    const LocusSet all = Thinned(DenseLine(98), 1000, 1000, 1);
    EXPECT_EQ(all.points.size(), 99u);
    EXPECT_EQ(all.droppedCount, 0);
    const LocusSet some = Thinned(DenseLine(99), 1000, 1000, 1);
    EXPECT_LT(some.points.size(), 20u);
    EXPECT_EQ(some.points.size() + static_cast<std::size_t>(some.droppedCount), 100u);
}

TEST(FindRanges, KeepsAPointThatIsFarInOneDirection) {
    // Next to each other in x, far apart in y.
    std::vector<LocusPoint> points;
    for (int i = 0; i < 120; ++i) points.push_back({0.001 * i, (i % 2) * 1000.0, false});
    points.push_back({1000.0, 0.0, false});
    const LocusSet set = Thinned(points, 1000, 1000, 1);
    EXPECT_EQ(set.points.size(), points.size());
    EXPECT_EQ(set.droppedCount, 0);
}

TEST(FindRanges, NeedsADistanceBelowTheThreshold) {
    // Exactly one pixel apart is not below one pixel.
    std::vector<LocusPoint> points;
    for (int i = 0; i <= 100; ++i) points.push_back({i * 1.0, i * 1.0, false});
    EXPECT_EQ(Thinned(points, 100, 100, 1).droppedCount, 0);
    EXPECT_EQ(Thinned(points, 99, 99, 1).droppedCount, 50);
    EXPECT_EQ(Thinned(points, 100, 100, 2).droppedCount, 50);
    // A curve without extent has no threshold to be below.
    EXPECT_EQ(Thinned(std::vector<LocusPoint>(200), 100, 100, 1).droppedCount, 0);
}

TEST(FindRanges, NeedsADistanceBelowTheThresholdInBothDirections) {
    // Next to each other in one direction, exactly one pixel apart in the other.
    std::vector<LocusPoint> upward, across;
    for (int i = 0; i < 100; ++i) {
        upward.push_back({i * 0.001, i * 1.0, false});
        across.push_back({i * 1.0, i * 0.001, false});
    }
    upward.push_back({1000.0, 100.0, false});
    across.push_back({100.0, 1000.0, false});
    EXPECT_EQ(Thinned(upward, 100, 100, 1).droppedCount, 0);
    EXPECT_EQ(Thinned(across, 100, 100, 1).droppedCount, 0);
}

// Three times three over a thousand is 0.009; three thousandths times three would be more.
TEST(FindRanges, MultipliesTheRangeBeforeItDivides) {
    std::vector<LocusPoint> points = {{0.0, 0.0, true}, {0.009, 0.0, false}};
    for (int i = 0; i < 100; ++i) points.push_back({3.0, 1.0, false});
    const LocusSet set = Thinned(points, 1000, 1000, 3);
    ASSERT_EQ(set.points.size(), 3u);
    EXPECT_EQ(set.points[1].x, 0.009);
    EXPECT_EQ(set.droppedCount, 99);
}

TEST(FindRanges, CountsDroppedPointsUp) {
    LocusSet set = Thinned(DenseLine(5000), 1000, 1000, 1);
    const std::size_t first = set.points.size();
    EXPECT_EQ(static_cast<std::size_t>(set.droppedCount), 5001 - first);
    set.FindRanges(1000, 1000, 4);
    EXPECT_LT(set.points.size(), first);
    EXPECT_EQ(static_cast<std::size_t>(set.droppedCount), 5001 - set.points.size());
}

TEST(FindRanges, TakesFineBelowOneAsOne) {
    const std::vector<LocusPoint> points = DenseLine(3000);
    const std::size_t kept = Thinned(points, 1000, 1000, 1).points.size();
    EXPECT_EQ(Thinned(points, 1000, 1000, 0).points.size(), kept);
    EXPECT_EQ(Thinned(points, 1000, 1000, -5).points.size(), kept);
    EXPECT_LT(Thinned(points, 1000, 1000, 20).points.size(), kept / 10);
    EXPECT_LT(kept, Thinned(points, 2000, 2000, 1).points.size());
}

TEST(FindRanges, HandsThePenOfADroppedPointOn) {
    std::vector<LocusPoint> points = DenseLine(200);
    points[5].penUp = true;  // dropped, and so are its neighbours
    const LocusSet set = Thinned(points, 1000, 1000, 1);
    ASSERT_GT(set.points.size(), 2u);
    EXPECT_EQ(set.points[0].x, points[0].x);
    EXPECT_EQ(set.points[1].x, points[10].x);
    EXPECT_TRUE(set.points[1].penUp);
    EXPECT_FALSE(set.points[2].penUp);
}

TEST(FindRanges, DropsTheLastPointWithItsPen) {
    std::vector<LocusPoint> points = DenseLine(200);
    points.push_back({1000.0, 1000.0, true});
    const LocusSet set = Thinned(points, 1000, 1000, 1);
    EXPECT_EQ(set.points.back().x, 1000.0);
    EXPECT_FALSE(set.points.back().penUp);
    ExpectSet(set, ExpectedOf(points, 1000, 1000, 1));
}

TEST(FindRanges, GivesItsSpareRoomBack) {
    EXPECT_EQ(Thinned({{1.0, 1.0}, {2.0, 2.0}}, 1000, 1000, 1).points.capacity(), 2u);
    const LocusSet thinned = Thinned(DenseLine(5000), 1000, 1000, 1);
    EXPECT_EQ(thinned.points.capacity(), thinned.points.size());
}

TEST(FindRanges, MatchesAPlainWalkOnRandomCurves) {
    std::mt19937 random(99);
    std::uniform_real_distribution<double> step(-1.0, 1.0);
    std::uniform_int_distribution<int> die(0, 9);
    std::uniform_int_distribution<int> pixels(20, 400);
    int dropped = 0;
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        std::vector<LocusPoint> points;
        double x = 0.0, y = 0.0;
        const int count = 80 + round * 3;
        for (int i = 0; i < count; ++i) {
            x += step(random);
            y += step(random);
            points.push_back({x, y, i == 0 || die(random) == 0});
        }
        const int width = pixels(random), height = pixels(random), fine = die(random) - 2;
        const Expected expected = ExpectedOf(points, width, height, fine);
        ExpectSet(Thinned(points, width, height, fine), expected);
        dropped += expected.dropped;
    }
    EXPECT_GT(dropped, 1000);
}

TEST(LocusStore, HoldsSetsInTheOrderOfTheCalls) {
    LocusStore store;
    EXPECT_TRUE(store.IsEmpty());
    const LocusSet* const first = store.Add(4, LocusKind::polar);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->points.capacity(), 1000u);
    for (int i = 0; i < 300; ++i) store.Add(i, LocusKind::xy);
    store.Add(9, LocusKind::parametric);
    EXPECT_FALSE(store.IsEmpty());
    ASSERT_EQ(store.Count(), 302);
    EXPECT_EQ(&store[0], first);
    EXPECT_EQ(store[0].sentenceIndex, 4);
    EXPECT_EQ(store[0].kind, LocusKind::polar);
    EXPECT_EQ(store[300].sentenceIndex, 299);
    EXPECT_EQ(store[301].kind, LocusKind::parametric);
    store.Clear();
    EXPECT_TRUE(store.IsEmpty());
    EXPECT_EQ(store.Count(), 0);
}

TEST(LocusStore, AddsNothingWhenMemoryRunsOut) {
    LocusStore store;
    store.Add(1, LocusKind::polar);
    for (const std::size_t refusedSize : {20000, 100}) {
        SCOPED_TRACE(refusedSize);
        const test::MemoryLimit limit(refusedSize);
        EXPECT_EQ(store.Add(2, LocusKind::xy), nullptr);
    }
    ASSERT_EQ(store.Count(), 1);
    EXPECT_EQ(store[0].sentenceIndex, 1);
    EXPECT_NE(store.Add(2, LocusKind::xy), nullptr);
    EXPECT_EQ(store.Count(), 2);
}

TEST(LocusStore, HoldsAMillionCurves) {
    LocusStore store;
    for (int i = 0; i < 1000000; ++i) {
        LocusSet* const set = store.Add(i, LocusKind::xy);
        ASSERT_NE(set, nullptr);
        set->FindRanges(1000, 1000, 1);  // gives the room back
    }
    EXPECT_EQ(store.Add(0, LocusKind::xy), nullptr);
    EXPECT_EQ(store.Count(), 1000000);
    store.Clear();
    EXPECT_NE(store.Add(0, LocusKind::xy), nullptr);
}

TEST(LocusStore, ThinsForAScreenOf1920By1080UnlessTold) {
    EXPECT_EQ(LocusStore().screenWidth, 1920);
    EXPECT_EQ(LocusStore().screenHeight, 1080);
}

}  // namespace
}  // namespace orvane
