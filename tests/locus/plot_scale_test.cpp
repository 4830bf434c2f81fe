#include "locus/plot_scale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace orvane {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

LocusSet SetWithRanges(double minX, double maxX, double minY, double maxY) {
    LocusSet set;
    set.minX = minX;
    set.maxX = maxX;
    set.minY = minY;
    set.maxY = maxY;
    return set;
}

struct RoundRow {
    double pixels;
    int rounded;
};
constexpr RoundRow roundRows[] = {
    {0.0, 0},
    {-0.0, 0},
    {0.49999999999999994, 0},
    {0.5, 1},
    {-0.5, -1},
    {1.5, 2},
    {2.5, 3},
    {-2.5, -3},
    {2.4, 2},
    {-2.6, -3},
    {999999.5, 1000000},
    {1000000.4, 1000000},
    {1e9, 1000000},
    {-1e9, -1000000},
    {3e9, 1000000},
    {1.7e308, 1000000},
    {-1.7e308, -1000000},
    {infinity, 1000000},
    {-infinity, -1000000},
    {notANumber, 0},
    {5e-324, 0},
};

TEST(RoundToPixel, SendsHalvesAwayFromZeroAndStaysPaintable) {
    for (const auto& [pixels, rounded] : roundRows) {
        SCOPED_TRACE(pixels);
        EXPECT_EQ(RoundToPixel(pixels), rounded);
    }
}

TEST(PlotRect, DeflatesAllSidesAlike) {
    EXPECT_EQ((PlotRect{1, 2, 30, 40}.DeflatedBy(3)), (PlotRect{4, 5, 27, 37}));
    EXPECT_EQ((PlotRect{1, 2, 30, 40}.Width()), 29);
    EXPECT_EQ((PlotRect{1, 2, 30, 40}.Height()), 38);
}

TEST(PlotScale, LeavesRoomForArrowsAndLabels) {
    const PlotScale scale(SetWithRanges(0, 1, 0, 1), {3, 5, 648, 490});
    EXPECT_EQ(scale.plotLeft, 18);
    EXPECT_EQ(scale.plotTop, 35);
    EXPECT_EQ(scale.plotRight, 618);
    EXPECT_EQ(scale.plotBottom, 475);
}

// Pages whose plot is 600 by 440, 100 by 100, 7 by 3 and 1 by 1 pixels.
constexpr PlotRect pages[] = {
    {0, 0, 645, 485}, {0, 0, 145, 145}, {-20, 40, 32, 88}, {0, 0, 46, 46}};

// Ranges for the rows of the tables, in both directions.
struct RangeRow {
    const char* name;
    double smallest, largest;
};
constexpr RangeRow rangeRows[] = {
    {"positive alone", 2.0, 8.0},
    {"from zero", 0.0, 8.0},
    {"from negative zero", -0.0, 8.0},
    {"one positive value", 3.0, 3.0},
    {"one value at zero", 0.0, 0.0},
    {"negative alone", -8.0, -2.0},
    {"to zero", -8.0, 0.0},
    {"to negative zero", -8.0, -0.0},
    {"one negative value", -3.0, -3.0},
    {"even about zero", -4.0, 4.0},
    {"more below zero", -9.0, 1.0},
    {"more above zero", -1.0, 9.0},
    {"nothing recorded", 1.7e308, -1.7e308},
    {"tiny", -1e-300, 3e-300},
    {"huge", -2e307, 6e307},
};

struct ExpectedAxis {
    double unitsPerPixel;
    int origin;
};

// The tables, read once more for these rows alone.
ExpectedAxis AcrossOf(const RangeRow& row, int left, int right) {
    const double width = right - left;
    if (row.smallest >= 0 && row.largest > 0) return {row.largest / width, left};
    if (row.smallest >= 0 && row.largest <= 0) return {width, left};
    if (row.smallest < 0 && row.largest <= 0) return {-row.smallest / width, right};
    const double scale = (row.largest - row.smallest) / width;
    return {scale, left - static_cast<int>(std::lround(row.smallest / scale))};
}

ExpectedAxis UpwardOf(const RangeRow& row, int top, int bottom) {
    const double height = bottom - top;
    if (row.smallest >= 0 && row.largest > 0) return {row.largest / height, bottom};
    if (row.smallest >= 0 && row.largest <= 0) return {height, bottom};
    if (row.smallest < 0 && row.largest <= 0) return {-row.smallest / height, top};
    const double scale = (row.largest - row.smallest) / height;
    return {scale, top + static_cast<int>(std::lround(row.largest / scale))};
}

TEST(PlotScale, FollowsTheTablesAtEverySizeInBothDirections) {
    for (const PlotRect& page : pages) {
        for (const RangeRow& rowX : rangeRows) {
            for (const RangeRow& rowY : rangeRows) {
                SCOPED_TRACE(testing::Message() << "page to " << page.right << ", x " << rowX.name
                                                << ", y " << rowY.name);
                const PlotScale scale(
                    SetWithRanges(rowX.smallest, rowX.largest, rowY.smallest, rowY.largest), page);
                const ExpectedAxis across = AcrossOf(rowX, page.left + 15, page.right - 30);
                const ExpectedAxis upward = UpwardOf(rowY, page.top + 30, page.bottom - 15);
                EXPECT_EQ(scale.unitsPerPixelX, across.unitsPerPixel);
                EXPECT_EQ(scale.originX, across.origin);
                EXPECT_EQ(scale.unitsPerPixelY, upward.unitsPerPixel);
                EXPECT_EQ(scale.originY, upward.origin);
            }
        }
    }
}

// The same with figures worked out by hand: page 0, 0, 645, 485, so the plot is 15 to 615 across
// and 30 to 470 down.
struct FigureRow {
    double smallest, largest;
    double unitsPerPixelX;
    int originX;
    double unitsPerPixelY;
    int originY;
};
constexpr FigureRow figureRows[] = {
    {0, 1200, 2.0, 15, 1200.0 / 440, 470},
    {300, 600, 1.0, 15, 600.0 / 440, 470},
    {0, 0, 600.0, 15, 440.0, 470},
    {-1200, -600, 2.0, 615, 1200.0 / 440, 30},
    {-880, 0, 880.0 / 600, 615, 2.0, 30},
    {-300, 300, 1.0, 315, 600.0 / 440, 250},
    {-220, 660, 880.0 / 600, 165, 2.0, 360},   // x: 150 pixels
    {-660, 220, 880.0 / 600, 465, 2.0, 140},   // x: 450 pixels
    {-0.5, 599.5, 1.0, 16, 600.0 / 440, 470},  // x: a half goes away from zero; y: 439.63
    {-599.5, 0.5, 1.0, 615, 600.0 / 440, 30},  // x: the same half, on the edge; y: 0.37
    {1.7e308, -1.7e308, 600.0, 15, 440.0, 470},
};

TEST(PlotScale, HasTheseFigures) {
    for (const FigureRow& row : figureRows) {
        SCOPED_TRACE(testing::Message() << row.smallest << " to " << row.largest);
        const PlotScale scale(SetWithRanges(row.smallest, row.largest, row.smallest, row.largest),
                              {0, 0, 645, 485});
        EXPECT_EQ(scale.unitsPerPixelX, row.unitsPerPixelX);
        EXPECT_EQ(scale.originX, row.originX);
        EXPECT_EQ(scale.unitsPerPixelY, row.unitsPerPixelY);
        EXPECT_EQ(scale.originY, row.originY);
    }
}

TEST(PlotScale, PutsTheOriginOfAFirstQuadrantCurveIntoTheLowerLeftCorner) {
    const PlotScale scale(SetWithRanges(100, 101, 7, 9), {0, 0, 645, 485});
    EXPECT_EQ(scale.originX, scale.plotLeft);
    EXPECT_EQ(scale.originY, scale.plotBottom);
    EXPECT_EQ(scale.PixelX(101), scale.plotRight);
    EXPECT_EQ(scale.PixelY(9), scale.plotTop);
}

TEST(PlotScale, PutsTheYAxisOfNegativeXToTheRightEdge) {
    const PlotScale scale(SetWithRanges(-5, -1, -1, 1), {0, 0, 645, 485});
    EXPECT_EQ(scale.originX, scale.plotRight);
    EXPECT_EQ(scale.PixelX(-5), scale.plotLeft);
}

struct PixelRow {
    double value;
    int pixelX, pixelY;
};
constexpr PixelRow pixelRows[] = {
    {0.0, 315, 250},
    {-0.0, 315, 250},
    {1.0, 316, 249},
    {0.5, 316, 249},
    {-0.5, 314, 251},
    {0.49, 315, 250},
    {2.5, 318, 247},
    {300.0, 615, -50},
    {-300.0, 15, 550},
    {-219.5, 95, 470},
    {1e300, 1000315, -999750},
    {-1e300, -999685, 1000250},
    {infinity, 1000315, -999750},
    {notANumber, 315, 250},
};

TEST(PlotScale, RoundsTheDistanceFromTheOrigin) {
    // One unit for each pixel.
    const PlotScale scale(SetWithRanges(-300, 300, -220, 220), {0, 0, 645, 485});
    for (const auto& [value, pixelX, pixelY] : pixelRows) {
        SCOPED_TRACE(value);
        EXPECT_EQ(scale.PixelX(value), pixelX);
        EXPECT_EQ(scale.PixelY(value), pixelY);
    }
}

TEST(PlotScale, DrawsARangeWiderThanADoubleOntoTheOrigin) {
    const PlotScale scale(SetWithRanges(-1.7e308, 1.7e308, -1.7e308, 1.7e308), {0, 0, 645, 485});
    EXPECT_EQ(scale.originX, 15);
    EXPECT_EQ(scale.originY, 30);
    EXPECT_EQ(scale.PixelX(1.7e308), 15);
    EXPECT_EQ(scale.PixelY(-1.7e308), 30);
}

constexpr double hostileValues[] = {-infinity, -1.7976931348623157e308,
                                    -1.7e308,  -1.0,
                                    -5e-324,   -0.0,
                                    0.0,       5e-324,
                                    1e-310,    1.0,
                                    1.7e308,   1.7976931348623157e308,
                                    infinity,  notANumber};
constexpr PlotRect hostilePages[] = {
    {0, 0, 645, 485}, {0, 0, 0, 0},   {0, 0, 45, 45},
    {0, 0, 44, 46},   {10, 10, 5, 5}, {-100000000, -100000000, 100000000, 100000000}};

TEST(PlotScale, KeepsTheOriginInThePlotWhateverTheRanges) {
    for (const PlotRect& page : hostilePages) {
        for (const double smallest : hostileValues) {
            for (const double largest : hostileValues) {
                SCOPED_TRACE(testing::Message()
                             << page.right << ": " << smallest << ", " << largest);
                const PlotScale scale(SetWithRanges(smallest, largest, smallest, largest), page);
                EXPECT_GE(scale.originX, std::min(scale.plotLeft, scale.plotRight));
                EXPECT_LE(scale.originX, std::max(scale.plotLeft, scale.plotRight));
                EXPECT_GE(scale.originY, std::min(scale.plotTop, scale.plotBottom));
                EXPECT_LE(scale.originY, std::max(scale.plotTop, scale.plotBottom));
                for (const double value : hostileValues) {
                    EXPECT_LE(std::abs(scale.PixelX(value) - scale.originX), farthestPixel);
                    EXPECT_LE(std::abs(scale.PixelY(value) - scale.originY), farthestPixel);
                }
            }
        }
    }
}

TEST(ShownRanges, AreThoseOfTheSetWhereItHasSome) {
    LocusSet set = SetWithRanges(-1, 2, -3, 4);
    set.points = {{100, 100, true}};
    EXPECT_EQ(ShownRanges(set), (PlotRanges{-1, 2, -3, 4}));
    // A finished sweep without points keeps its ranges upside down.
    set = SetWithRanges(1.7e308, -1.7e308, 1.7e308, -1.7e308);
    EXPECT_EQ(ShownRanges(set), (PlotRanges{1.7e308, -1.7e308, 1.7e308, -1.7e308}));
}

TEST(ShownRanges, OfAFailedSweepAreThoseOfItsPoints) {
    LocusSet set;
    EXPECT_EQ(ShownRanges(set), PlotRanges());
    set.points = {{3, -2, true}, {notANumber, 5, false}, {-4, 1, true}};
    EXPECT_EQ(ShownRanges(set), (PlotRanges{-4, 3, -2, 5}));
    set.points = {{0, 0, true}};
    EXPECT_EQ(ShownRanges(set), PlotRanges());
}

}  // namespace
}  // namespace orvane
