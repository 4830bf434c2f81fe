#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <random>
#include <string_view>
#include <vector>

#include "tests/functions/family_call.h"
#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

using test::AtRunTime;
using test::CallOnNumbers;
using test::CallResult;
using test::ErrorRow;
using test::Evaluate;
using test::ExpectErrors;
using test::ExpectNumbers;
using test::NonFiniteMessage;
using test::NumberFrom;
using test::NumberRow;
using test::SameBits;
using test::SameNumber;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double pi = 3.141592653589793;

// --- elementary functions: values

constexpr NumberRow exactRows[] = {
    {"int(-2.7)", -2},
    {"int(2.999)", 2},
    {"integer(3.5)", 3},
    {"integer(-7)", -7},
    {"frac(-2.5)", -0.5},
    {"frac(4)", 0},
    {"fractional(2.25)", 0.25},
    {"sqrt(16)", 4},
    {"sqrt(0)", 0},
    {"square_root(2)", 1.4142135623730951},
    {"cbrt(8)", 2},
    {"cube_root(27)", 3},
    {"rad(180)", pi},
    {"radian(90)", 1.5707963267948966},
    {"deg(pi)", 180},
    {"degree(1)", 57.29577951308232},
    {"inv(4)", 0.25},
    {"invert(-2)", -0.5},
    {"ln(1)", 0},
    {"ln(e)", 1},
    {"log10(1000)", 3},
    {"log(2,8)", 3},
    {"log(8,2)", 0.33333333333333337},
    {"exp(0)", 1},
    {"exponential(1)", 2.718281828459045},
    {"sin(0)", 0},
    {"cos(0)", 1},
    {"tan(0)", 0},
    {"asin(1)", 1.5707963267948966},
    {"acos(1)", 0},
    {"atan(1)", 0.7853981633974483},
    {"actg(0)", 1.5707963267948966},
    {"sinh(0)", 0},
    {"cosh(0)", 1},
    {"tanh(0)", 0},
    {"tanh(20)", 1},
    {"root(8,3)", 2},
    {"root(16,-2)", 0.25},
    {"pow(2,10)", 1024},
    {"power(-2,3)", -8},
    {"pow(0,0)", 1},
    {"reminder(10,3)", 1.0000000000000004},
    {"reminder(-10,-3)", -1.0000000000000004},
    {"reminder(9,7)", 2.000000000000001},
    {"reminder(22,7)", 0.9999999999999996},
    {"reminder(7,2)", 1},
    {"reminder(-7,-2)", -1},
    {"reminder(5.5,2)", 1.5},
    {"reminder(2,3)", 2},
    {"reminder(-2,-3)", -2},
    {"reminder(-7,0)", -7},
    {"reminder(7,0)", 7},
    {"reminder(0,-2)", 0},
    {"reminder(0,0)", 0},
};

TEST(Elementary, GivesTheseNumbers) { ExpectNumbers(exactRows); }

TEST(Elementary, MeansTheFunctionOfItsName) {
    // The last bit of these is the library's own.
    constexpr NumberRow rows[] = {
        {"sin(1)", 0.8414709848078965},    {"cos(1)", 0.5403023058681398},
        {"tan(1)", 1.5574077246549023},    {"ctg(1)", 0.6420926159343306},
        {"asin(0.5)", 0.5235987755982989}, {"acos(0.5)", 1.0471975511965979},
        {"atan(2)", 1.1071487177940904},   {"actg(2)", 0.4636476090008061},
        {"actg(-2)", -0.4636476090008061}, {"sinh(1)", 1.1752011936438014},
        {"cosh(1)", 1.543080634815244},    {"tanh(1)", 0.7615941559557649},
        {"ctgh(1)", 1.3130352854993312},   {"ln(10)", 2.302585092994046},
        {"log10(2)", 0.3010299956639812},  {"exp(2)", 7.38905609893065},
    };
    for (const auto& [sheet, number] : rows) {
        SCOPED_TRACE(sheet);
        EXPECT_DOUBLE_EQ(NumberFrom(sheet), number);
    }
}

// --- elementary functions: formulas

struct UnaryFormula {
    std::string_view keyword;
    double (*formula)(double x);
};

const UnaryFormula unaryFormulas[] = {
    {"sqrt", [](double x) { return std::sqrt(x); }},
    {"square_root", [](double x) { return std::sqrt(x); }},
    {"cbrt", [](double x) { return std::pow(x, 0.3333333333333333); }},
    {"cube_root", [](double x) { return std::pow(x, 0.3333333333333333); }},
    {"rad", [](double x) { return (pi * x) * 0.005555555555555556; }},
    {"radian", [](double x) { return (pi * x) * 0.005555555555555556; }},
    {"deg", [](double x) { return (x * 180.0) / pi; }},
    {"degree", [](double x) { return (x * 180.0) / pi; }},
    {"inv", [](double x) { return 1.0 / x; }},
    {"invert", [](double x) { return 1.0 / x; }},
    {"ln", [](double x) { return std::log(x); }},
    {"log10", [](double x) { return std::log10(x); }},
    {"exp", [](double x) { return std::exp(x); }},
    {"exponential", [](double x) { return std::exp(x); }},
    {"sin", [](double x) { return std::sin(x); }},
    {"cos", [](double x) { return std::cos(x); }},
    {"tan", [](double x) { return std::tan(x); }},
    {"ctg", [](double x) { return std::cos(x) / std::sin(x); }},
    {"asin", [](double x) { return std::asin(x); }},
    {"acos", [](double x) { return std::acos(x); }},
    {"atan", [](double x) { return std::atan(x); }},
    {"actg", [](double x) { return std::atan(1.0 / x); }},
    {"sinh", [](double x) { return std::sinh(x); }},
    {"cosh", [](double x) { return std::cosh(x); }},
    {"tanh", [](double x) { return std::sinh(x) / std::cosh(x); }},
    {"ctgh", [](double x) { return std::cosh(x) / std::sinh(x); }},
};

struct BinaryFormula {
    std::string_view keyword;
    double (*formula)(double x, double y);
};

const BinaryFormula binaryFormulas[] = {
    {"log", [](double x, double y) { return std::log10(y) / std::log10(x); }},
    {"root", [](double x, double y) { return std::pow(x, 1.0 / y); }},
    {"pow", [](double x, double y) { return std::pow(x, y); }},
    {"power", [](double x, double y) { return std::pow(x, y); }},
};

void ExpectFormula(std::string_view keyword, const std::vector<double>& numbers, double expected) {
    const CallResult kept = CallOnNumbers(keyword, numbers, {.keepNonFinite = true});
    EXPECT_TRUE(SameNumber(kept.number, expected)) << kept.number << " for " << expected;
    EXPECT_EQ(kept.error, "");

    const CallResult tested = CallOnNumbers(keyword, numbers);
    EXPECT_EQ(tested.stored, std::isfinite(expected));
    EXPECT_EQ(tested.error, std::isfinite(expected) ? "" : NonFiniteMessage(keyword));
}

std::vector<double> SomeNumbers(unsigned seed) {
    std::vector<double> numbers = {0.0,   -0.0,   1.0,    -1.0,     710.0,     711.0,   -800.0,
                                   1e300, -1e300, 1e-300, infinity, -infinity, noNumber};
    std::mt19937_64 random(seed);
    for (const double width : {1.0, 10.0, 1000.0}) {
        std::uniform_real_distribution<double> spread(-width, width);
        for (int i = 0; i < 100; ++i) numbers.push_back(AtRunTime(spread(random)));
    }
    return numbers;
}

TEST(Elementary, FollowsItsFormulaToTheLastBit) {
    const std::vector<double> numbers = SomeNumbers(1);
    for (const auto& [keyword, formula] : unaryFormulas) {
        for (const double x : numbers) {
            SCOPED_TRACE(::testing::Message() << keyword << '(' << x << ')');
            ExpectFormula(keyword, {x}, formula(x));
        }
    }
}

TEST(Elementary, FollowsItsFormulaOfTwoToTheLastBit) {
    const std::vector<double> lefts = SomeNumbers(2);
    std::vector<double> rights = SomeNumbers(3);
    std::shuffle(rights.begin(), rights.end(), std::mt19937_64(4));
    for (const auto& [keyword, formula] : binaryFormulas) {
        for (std::size_t i = 0; i < lefts.size(); ++i) {
            SCOPED_TRACE(::testing::Message() << keyword << '(' << lefts[i] << ',' << rights[i]);
            ExpectFormula(keyword, {lefts[i], rights[i]}, formula(lefts[i], rights[i]));
        }
    }
}

TEST(Elementary, CutsANumberIntoItsParts) {
    for (const double x : SomeNumbers(5)) {
        SCOPED_TRACE(x);
        double whole = 0.0;
        const double fraction = std::modf(x, &whole);
        for (const std::string_view keyword : {"int", "integer"})
            ExpectFormula(keyword, {x}, whole);
        for (const std::string_view keyword : {"frac", "fractional"}) {
            ExpectFormula(keyword, {x}, fraction);
        }
    }
}

TEST(Reminder, IsTheFractionOfTheQuotientTimesTheBase) {
    std::mt19937_64 random(6);
    std::uniform_real_distribution<double> spread(0.001, 100.0);
    for (int i = 0; i < 500; ++i) {
        const double x = spread(random);
        const double y = spread(random);
        SCOPED_TRACE(::testing::Message() << x << ' ' << y);
        double whole = 0.0;
        const double rest = x >= y ? std::modf(x / y, &whole) * y : x;
        EXPECT_TRUE(SameBits(CallOnNumbers("reminder", std::vector{x, y}).number, rest));
        EXPECT_TRUE(SameBits(CallOnNumbers("reminder", std::vector{-x, -y}).number, -rest));
    }
}

// --- failures

TEST(Reminder, FailsForDifferentSignsBehindTheTestsForZero) {
    constexpr std::string_view message =
        "E006- sentence  1: function \"reminder\": parameters must be in same sign.";
    const ErrorRow rows[] = {
        {"reminder(7,-2)", message},
        {"reminder(-7,2)", message},
        {"reminder(-0.5,3)", message},
        {"reminder(0.5,-3)", message},
    };
    ExpectErrors(rows);
}

TEST(Elementary, FailsWithoutANumberOutsideItsDomain) {
    struct Row {
        std::string_view sheet, keyword;
    };
    constexpr Row rows[] = {
        {"inv(0)", "inv"},
        {"invert(0)", "invert"},
        {"ln(0)", "ln"},
        {"ln(-1)", "ln"},
        {"log10(0)", "log10"},
        {"log10(-1)", "log10"},
        {"log(1,5)", "log"},
        {"log(-2,8)", "log"},
        {"log(2,0)", "log"},
        {"sqrt(-1)", "sqrt"},
        {"square_root(-1)", "square_root"},
        {"cbrt(-8)", "cbrt"},
        {"cube_root(-8)", "cube_root"},
        {"exp(1000)", "exp"},
        {"exponential(1000)", "exponential"},
        {"ctg(0)", "ctg"},
        {"asin(2)", "asin"},
        {"acos(-2)", "acos"},
        {"sinh(1000)", "sinh"},
        {"cosh(1000)", "cosh"},
        {"tanh(1000)", "tanh"},
        {"tanh(-1000)", "tanh"},
        {"ctgh(1000)", "ctgh"},
        {"ctgh(0)", "ctgh"},
        {"root(8,0)", "root"},
        {"root(-8,3)", "root"},
        {"pow(-8,0.5)", "pow"},
        {"pow(10,400)", "pow"},
        {"power(0,-1)", "power"},
        {"actg(inv(0))", "inv"},
    };
    for (const auto& [sheet, keyword] : rows) {
        SCOPED_TRACE(sheet);
        const test::Evaluated evaluated = Evaluate(sheet);
        EXPECT_EQ(evaluated.error, NonFiniteMessage(keyword));
        EXPECT_FALSE(evaluated.evaluated);
    }
}

}  // namespace
}  // namespace orvane
