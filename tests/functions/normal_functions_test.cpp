#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "tests/functions/family_call.h"
#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

using test::CallOnNumbers;
using test::ErrorRow;
using test::ExpectErrors;
using test::ExpectNumbers;
using test::NumberFrom;
using test::NumberRow;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

constexpr NumberRow logicRows[] = {
    {"sign(5)", 1},
    {"sign(0)", 1},
    {"sign(-0.0)", 1},
    {"sign(-0.001)", -1},
    {"not(0)", 1},
    {"not(2)", 0},
    {"not(-0.5)", 0},
    {"bool(0)", 0},
    {"bool(-3)", 1},
    {"bool(0.25)", 1},
    {"boolean(0)", 0},
    {"boolean(7)", 1},
    {"cmp(2,1)", 1},
    {"cmp(1,1)", 0},
    {"cmp(1,2)", -1},
    {"compare(2,1)", 1},
    {"compare(1,1)", 0},
    {"compare(1,2)", -1},
    {"equals(2,2)", 1},
    {"equals(2,3)", 0},
    {"not_equals(2,2)", 0},
    {"not_equals(2,3)", 1},
    {"great_than(3,2)", 1},
    {"great_than(2,2)", 0},
    {"great_than(1,2)", 0},
    {"great_equals(3,2)", 1},
    {"great_equals(2,2)", 1},
    {"great_equals(1,2)", 0},
    {"less_than(1,2)", 1},
    {"less_than(2,2)", 0},
    {"less_than(3,2)", 0},
    {"less_equals(1,2)", 1},
    {"less_equals(2,2)", 1},
    {"less_equals(3,2)", 0},
};

TEST(Logic, GivesOneZeroOrASign) { ExpectNumbers(logicRows); }

TEST(Logic, ComparesTheDoublesAsTheyAre) {
    EXPECT_EQ(NumberFrom("equals(0.1 + 0.2, 0.3)"), 0.0);
    EXPECT_EQ(NumberFrom("not_equals(0.1 + 0.2, 0.3)"), 1.0);
    EXPECT_EQ(NumberFrom("great_than(0.1 + 0.2, 0.3)"), 1.0);
    EXPECT_EQ(NumberFrom("cmp(0.1 + 0.2, 0.3)"), 1.0);
    EXPECT_EQ(NumberFrom("equals(0, -0.0)"), 1.0);
}

TEST(Logic, TakesANumberThatIsNoneForUnequalToAll) {
    struct Row {
        std::string_view keyword;
        std::vector<double> numbers;
        double number;
    };
    const Row rows[] = {
        {"sign", {noNumber}, 1},
        {"not", {noNumber}, 0},
        {"bool", {noNumber}, 1},
        {"cmp", {noNumber, 1}, -1},
        {"equals", {noNumber, noNumber}, 0},
        {"not_equals", {noNumber, noNumber}, 1},
        {"great_equals", {noNumber, noNumber}, 0},
        {"less_equals", {noNumber, noNumber}, 0},
        {"great_than", {infinity, 1}, 1},
        {"less_than", {-infinity, 1}, 1},
    };
    for (const auto& [keyword, numbers, number] : rows) {
        SCOPED_TRACE(keyword);
        EXPECT_EQ(CallOnNumbers(keyword, numbers).number, number);
    }
}

TEST(NormalFamily, NumbersItsSentenceFromOne) {
    EXPECT_EQ(CallOnNumbers("ln", std::vector{0.0}, {.sentence = 6}).error,
              "E006-10 sentence  7: function \"ln\": generates an infinite or unaccepted number.");
}

TEST(NormalFamily, KeepsAnyNumberWhereTheNodeSaysSo) {
    EXPECT_EQ(CallOnNumbers("inv", std::vector{0.0}, {.keepNonFinite = true}).number, infinity);
    EXPECT_TRUE(CallOnNumbers("ln", std::vector{-1.0}, {.keepNonFinite = true}).stored);
    // Everything but the finite test goes on as before.
    EXPECT_EQ(CallOnNumbers("reminder", std::vector{7.0, -2.0}, {.keepNonFinite = true}).error,
              "E006- sentence  1: function \"reminder\": parameters must be in same sign.");
    EXPECT_FALSE(CallOnNumbers("sin", std::vector{1.0, 2.0}, {.keepNonFinite = true}).stored);
}

TEST(NormalFamily, WantsNumbersBeforeItCountsThem) {
    constexpr ErrorRow rows[] = {
        {"sqrt(point(1,2))", "E011-01 sentence  1: function \"sqrt\": parameter is incorrect."},
        {"sin(x)", "E011-01 sentence  1: function \"sin\": parameter is incorrect."},
        {"cmp(1,(2,3))", "E011-01 sentence  1: function \"cmp\": parameter is incorrect."},
        {"sin((1,2),3)", "E011-01 sentence  1: function \"sin\": parameter is incorrect."},
    };
    ExpectErrors(rows);
}

TEST(NormalFamily, CountsItsParametersByTheRow) {
    constexpr std::string_view keywords[] = {
        "sign",
        "not",
        "bool",
        "boolean",
        "cmp",
        "compare",
        "equals",
        "not_equals",
        "great_than",
        "great_equals",
        "less_than",
        "less_equals",
        "int",
        "integer",
        "frac",
        "fractional",
        "sqrt",
        "square_root",
        "cbrt",
        "cube_root",
        "rad",
        "radian",
        "deg",
        "degree",
        "inv",
        "invert",
        "ln",
        "log10",
        "exp",
        "exponential",
        "sin",
        "cos",
        "tan",
        "ctg",
        "asin",
        "acos",
        "atan",
        "actg",
        "sinh",
        "cosh",
        "tanh",
        "ctgh",
        "reminder",
        "log",
        "root",
        "pow",
        "power",
        "days",
        "days_of_the_year",
        "weekday",
        "factorial",
        "permutation",
        "combination",
        "max",
        "maximum",
        "min",
        "minimum",
        "sum",
        "summary",
        "mean",
        "average",
        "variance",
        "median",
        "count",
        "sum_n",
        "summary_n",
    };
    for (const std::string_view keyword : keywords) {
        SCOPED_TRACE(keyword);
        const KeywordEntry* row = keywordTable.FindFunction(keyword);
        ASSERT_NE(row, nullptr);
        const std::string message = "E006-05 sentence  1: function \"" + std::string(keyword) +
                                    "\": parameter count is incorrect.";
        const std::vector<double> tooFew(static_cast<std::size_t>(row->minParams - 1), 1.0);
        EXPECT_EQ(CallOnNumbers(keyword, tooFew).error, message);
        EXPECT_FALSE(CallOnNumbers(keyword, tooFew).stored);
        const std::vector<double> fewest(static_cast<std::size_t>(row->minParams), 2.0);
        EXPECT_NE(CallOnNumbers(keyword, fewest).error, message);
        if (row->maxParams < 0) {
            EXPECT_TRUE(CallOnNumbers(keyword, std::vector<double>(100, 1.0)).stored);
        } else {
            const std::vector<double> tooMany(static_cast<std::size_t>(row->maxParams + 1), 1.0);
            EXPECT_EQ(CallOnNumbers(keyword, tooMany).error, message);
        }
    }
}

TEST(NormalFamily, SaysSoInASheet) {
    constexpr ErrorRow rows[] = {
        {"sin(1,2)", "E006-05 sentence  1: function \"sin\": parameter count is incorrect."},
        {"cmp(1)", "E006-05 sentence  1: function \"cmp\": parameter count is incorrect."},
        {"pow(1,2,3)", "E006-05 sentence  1: function \"pow\": parameter count is incorrect."},
    };
    ExpectErrors(rows);
}

}  // namespace
}  // namespace orvane
