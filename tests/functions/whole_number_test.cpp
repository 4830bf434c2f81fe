#include "functions/whole_number.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct WholeRow {
    double value;
    bool whole;
};

constexpr WholeRow wholeRows[] = {
    {0.0, true},
    {-0.0, true},
    {1.0, true},
    {3.0, true},
    {-3.0, true},
    {2.9999999999999996, false},
    {3.0000000000000004, false},
    {-2.9999999999999996, false},
    {0.5, false},
    {-0.5, false},
    {5e-324, false},
    {4503599627370495.5, false},
    {9007199254740991.0, true},
    {9007199254740994.0, true},
    {1e300, true},
    {-1e300, true},
    {infinity, true},
    {-infinity, true},
    {notANumber, false},
};

TEST(IsIntegerValue, HasNoTolerance) {
    for (const auto& [value, whole] : wholeRows) {
        SCOPED_TRACE(value);
        EXPECT_EQ(IsIntegerValue(value), whole);
    }
}

struct CountRow {
    double value;
    bool fromZero;
    bool fromOne;
};

constexpr CountRow countRows[] = {
    {0.0, true, false},   {-0.0, true, false},     {1.0, true, true},
    {2.0, true, true},    {1e300, true, true},     {-1.0, false, false},
    {0.5, false, false},  {1.5, false, false},     {0.9999999999999999, false, false},
    {-0.5, false, false}, {-5e-324, false, false}, {notANumber, false, false},
};

TEST(IsCount, WantsAWholeNumberFromZeroOrFromOne) {
    for (const auto& [value, fromZero, fromOne] : countRows) {
        SCOPED_TRACE(value);
        EXPECT_EQ(IsCount(value, false), fromZero);
        EXPECT_EQ(IsCount(value, true), fromOne);
    }
}

struct RangeRow {
    double value;
    double low;
    double high;
    bool inside;
};

constexpr RangeRow rangeRows[] = {
    {2, 2, 53, true},     {53, 2, 53, true},
    {30, 2, 53, true},    {1, 2, 53, false},
    {54, 2, 53, false},   {2.5, 2, 53, false},
    {53.5, 2, 53, false}, {1.9999999999999998, 2, 53, false},
    {-3, -3, -3, true},   {-4, -3, 3, false},
    {0, -1, 1, true},     {2, 3, 1, false},
    {2, 1.5, 2.5, true},  {notANumber, 0, 9, false},
};

TEST(IsIntegerInRange, IncludesBothEnds) {
    for (const auto& [value, low, high, inside] : rangeRows) {
        SCOPED_TRACE(value);
        EXPECT_EQ(IsIntegerInRange(value, low, high), inside);
    }
}

struct RoundRow {
    double value;
    std::int32_t rounded;
};

constexpr RoundRow roundRows[] = {
    {0.0, 0},
    {-0.0, 0},
    {0.4, 0},
    {0.5, 0},
    {0.50000000000000011, 1},
    {0.6, 1},
    {1.5, 1},
    {2.5, 2},
    {2.6, 3},
    {3.0, 3},
    {-0.5, 0},
    {-0.6, -1},
    {-1.5, -1},
    {-2.5, -2},
    {-2.6, -3},
    {-3.0, -3},
    {2147483647.0, 2147483647},
    {2147483646.75, 2147483647},
    {-2147483648.0, -2147483648},
    {-2147483647.75, -2147483648},
    {notANumber, 0},
};

TEST(RoundToInt, SendsExactHalvesTowardZero) {
    for (const auto& [value, rounded] : roundRows) {
        SCOPED_TRACE(value);
        EXPECT_EQ(RoundToInt(value), rounded);
    }
}

// What is left of the number beyond its low 32 bits counts as more than a half.
constexpr RoundRow wideRows[] = {
    {2147483648.0, -2147483647},  // low word -2147483648, then one step up
    {4294967295.0, 0},            // low word -1
    {4294967296.0, 1},
    {4294967298.25, 3},
    {-4294967296.0, -1},
    {-4294967298.0, -3},
    {-2147483649.0, 2147483646},  // low word 2147483647, then one step down
    {1e300, 1},
    {-1e300, -1},
};

TEST(RoundToInt, KeepsTheLowWordAndOneStepBeyondIt) {
    for (const auto& [value, rounded] : wideRows) {
        SCOPED_TRACE(value);
        EXPECT_EQ(RoundToInt(value), rounded);
    }
}

struct FractionRow {
    double value;
    double fraction;
};

constexpr FractionRow fractionRows[] = {
    {2.25, 0.25}, {-2.25, -0.25}, {0.75, 0.75}, {3.0, 0.0},
    {-3.0, -0.0}, {0.0, 0.0},     {-0.0, -0.0}, {1e300, 0.0},
};

TEST(FractionOf, KeepsTheSign) {
    for (const auto& [value, fraction] : fractionRows) {
        SCOPED_TRACE(value);
        EXPECT_TRUE(test::SameBits(FractionOf(value), fraction)) << FractionOf(value);
    }
}

struct ModuloRow {
    double divisor;
    double value;
    double left;
};

constexpr ModuloRow moduloRows[] = {
    {3, 2, 2},
    {3, 10, 1.0000000000000004},  // the division's rounding shows
    {3, 3, 0},
    {3, 9, 0},
    {10, 123, 3.0000000000000071},
    {4, 10, 2},
    {256, 300, 44},
    {256, 256, 0},
    {0.5, 1.25, 0.25},
    {9007199254740992.0, 9007199254740993.0, 0},
    // left alone
    {3, -10, -10},
    {3, -2, -2},
    {3, 0, 0},
    {3, -0.0, -0.0},
    {-3, 10, 10},
    {-3, -2, -2},
    {0, 5, 5},
    {0, 0, 0},
    {-0.0, 5, 5},
    {10, 9.9999999999999982, 9.9999999999999982},
};

TEST(ModuloFrac, ReducesWhatIsNotBelowAPositiveDivisor) {
    for (const auto& [divisor, value, left] : moduloRows) {
        SCOPED_TRACE(value);
        double changed = value;
        ModuloFrac(divisor, changed);
        EXPECT_TRUE(test::SameBits(changed, left)) << changed;
    }
}

TEST(ModuloFrac, LeavesWhatIsNoNumber) {
    double value = notANumber;
    ModuloFrac(3, value);
    EXPECT_TRUE(value != value);
    value = 5;
    ModuloFrac(notANumber, value);
    EXPECT_EQ(value, 5);
}

}  // namespace
}  // namespace orvane
