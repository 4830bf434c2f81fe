#include "core/calc_parameters.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(CalcParameters, TakesTheWordLimitsFromTheSystemBits) {
    struct Row {
        int index, bits;
        double modulus, maxUnsigned, maxSigned, minSigned;
    };
    constexpr Row rows[] = {
        {0, 2, 4.0, 3.0, 1.0, -2.0},
        {6, 8, 256.0, 255.0, 127.0, -128.0},
        {30, 32, 4294967296.0, 4294967295.0, 2147483647.0, -2147483648.0},
        {51, 53, 9007199254740992.0, 9007199254740991.0, 4503599627370495.0, -4503599627370496.0},
    };
    for (const auto& [index, bits, modulus, maxUnsigned, maxSigned, minSigned] : rows) {
        SCOPED_TRACE(index);
        CalcParameters parameters;
        parameters.systemBitsIndex = index;
        EXPECT_EQ(parameters.SystemBits(), bits);
        parameters.SetWordLimits();
        EXPECT_EQ(parameters.wordModulus, modulus);
        EXPECT_EQ(parameters.wordMaxUnsigned, maxUnsigned);
        EXPECT_EQ(parameters.wordMaxSigned, maxSigned);
        EXPECT_EQ(parameters.wordMinSigned, minSigned);
    }
}

TEST(CalcParameters, StartsWithLimitsThatFitItsSystemBits) {
    const CalcParameters fresh;
    CalcParameters set = fresh;
    set.SetWordLimits();
    EXPECT_EQ(set.wordModulus, fresh.wordModulus);
    EXPECT_EQ(set.wordMaxUnsigned, fresh.wordMaxUnsigned);
    EXPECT_EQ(set.wordMaxSigned, fresh.wordMaxSigned);
    EXPECT_EQ(set.wordMinSigned, fresh.wordMinSigned);
}

TEST(FindNumberLimits, EndsAtTheLastPowerThatIsToldFromItsPredecessor) {
    const NumberLimits limits = FindNumberLimits();
    EXPECT_EQ(limits.largestPower, 9007199254740992.0);
    EXPECT_EQ(limits.largestInteger, 9007199254740991.0);
    EXPECT_EQ(limits.largestHalf, 4503599627370495.0);
    EXPECT_EQ(limits.smallestInteger, -4503599627370496.0);
}

}  // namespace
}  // namespace orvane
