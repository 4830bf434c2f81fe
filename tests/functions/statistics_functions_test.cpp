#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/functions/family_call.h"
#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

using test::CallOnNumbers;
using test::Evaluate;
using test::ExpectNumbers;
using test::NonFiniteMessage;
using test::NumberFrom;
using test::NumberRow;
using test::SameBits;
using test::SameNumber;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

// --- lists

TEST(Lists, GiveTheseNumbers) {
    constexpr NumberRow rows[] = {
        {"max(1)", 1},
        {"max(3, 7, -2, 7)", 7},
        {"max(-3, -1, -2)", -1},
        {"maximum(1, 2)", 2},
        {"min(3, 1, 2)", 1},
        {"min(-3, -1)", -3},
        {"minimum(5)", 5},
        {"count(1, 2, 3)", 3},
        {"count(0)", 1},
        {"sum(1, 2, 3.5)", 6.5},
        {"sum(-4)", -4},
        {"summary(1, -1)", 0},
        {"sum_n(2, 3, 4)", 25},
        {"sum_n(2)", 0},
        {"sum_n(0, 5, 6, 7)", 3},
        {"summary_n(-1, 2, 4)", 0.75},
        {"mean(2)", 2},
        {"mean(1, 2, 6)", 3},
        {"average(1, 2)", 1.5},
        {"variance(1, 3)", 1},
        {"variance(7)", 0},
        {"variance(2, 4, 4, 4, 5, 5, 7, 9)", 4},
        {"median(3, 1, 2)", 2},
        {"median(4, 1, 3, 2)", 2.5},
        {"median(9)", 9},
        {"median(-1, -5)", -3},
    };
    ExpectNumbers(rows);
}

TEST(Lists, AddUpInTheWrittenOrder) {
    // 2^53, 1 and -2^53: each order rounds in its own way.
    EXPECT_EQ(NumberFrom("sum(9007199254740992, 1, -9007199254740992)"), 0.0);
    EXPECT_EQ(NumberFrom("sum(9007199254740992, -9007199254740992, 1)"), 1.0);
    EXPECT_EQ(NumberFrom("mean(9007199254740992, 1, -9007199254740992)"), 0.0);
    EXPECT_EQ(NumberFrom("sum_n(1, 9007199254740992, 1, -9007199254740992)"), 0.0);
    EXPECT_EQ(NumberFrom("sum_n(1, 9007199254740992, -9007199254740992, 1)"), 1.0);
}

TEST(Lists, FailWhereTheirNumberIsNotFinite) {
    EXPECT_EQ(Evaluate("sum_n(-1, 0)").error, NonFiniteMessage("sum_n"));
    EXPECT_EQ(Evaluate("summary_n(0.5, -1)").error, NonFiniteMessage("summary_n"));
    const std::vector<double> huge = {1.7e308, 1.7e308};
    for (const std::string_view keyword :
         {"sum", "summary", "mean", "average", "variance", "median"}) {
        SCOPED_TRACE(keyword);
        EXPECT_EQ(CallOnNumbers(keyword, huge).error, NonFiniteMessage(keyword));
    }
    for (const std::string_view keyword : {"max", "maximum", "min", "minimum"}) {
        SCOPED_TRACE(keyword);
        EXPECT_EQ(CallOnNumbers(keyword, std::vector{noNumber}).error, NonFiniteMessage(keyword));
    }
}

TEST(Lists, WantNumbers) {
    for (const std::string_view keyword :
         {"max", "maximum", "min", "minimum", "count", "sum", "summary", "sum_n", "summary_n",
          "mean", "average", "variance", "median"}) {
        const std::string sheet = std::string(keyword) + "(1, point(1, 2))";
        SCOPED_TRACE(sheet);
        EXPECT_EQ(Evaluate(sheet).error, "E011-01 sentence  1: function \"" + std::string(keyword) +
                                             "\": parameter is incorrect.");
    }
}

TEST(Lists, StartFromInfinityAndPassOverWhatIsNoNumber) {
    const auto kept = [](std::string_view keyword, const std::vector<double>& numbers) {
        return CallOnNumbers(keyword, numbers, {.keepNonFinite = true}).number;
    };
    EXPECT_EQ(kept("max", {noNumber, 2.0, noNumber, 1.0}), 2.0);
    EXPECT_EQ(kept("min", {noNumber, 2.0, noNumber, 1.0}), 1.0);
    EXPECT_EQ(kept("max", {noNumber}), -infinity);
    EXPECT_EQ(kept("min", {noNumber}), infinity);
    EXPECT_EQ(kept("max", {-infinity, infinity}), infinity);
    EXPECT_TRUE(SameBits(kept("max", {-0.0, 0.0}), -0.0));
    EXPECT_TRUE(SameBits(kept("sum", {-0.0, -0.0}), 0.0));
}

// --- the same lists by their formulas

double PlainSum(const std::vector<double>& p) {
    double sum = 0.0;
    for (std::size_t i = 0; i < p.size(); ++i) sum = sum + p[i];
    return sum;
}

double PlainSumOfPowers(const std::vector<double>& p) {
    double sum = 0.0;
    for (std::size_t i = 1; i < p.size(); ++i) sum = sum + std::pow(p[i], p[0]);
    return sum;
}

double PlainVariance(const std::vector<double>& p) {
    const double n = static_cast<double>(p.size());
    const double mean = PlainSum(p) / n;
    double squares = 0.0;
    for (std::size_t i = 0; i < p.size(); ++i) {
        const double difference = p[i] - mean;
        squares = squares + difference * difference;
    }
    return squares / n;
}

double PlainMedian(std::vector<double> p) {
    for (std::size_t i = 0; i < p.size(); ++i) {
        for (std::size_t j = i + 1; j < p.size(); ++j) {
            if (p[i] > p[j]) std::swap(p[i], p[j]);
        }
    }
    const std::size_t n = p.size();
    return n % 2 == 1 ? p[n / 2] : (p[n / 2 - 1] + p[n / 2]) * 0.5;
}

void ExpectMedian(const std::vector<double>& numbers) {
    const double expected = PlainMedian(numbers);
    const double number = CallOnNumbers("median", numbers, {.keepNonFinite = true}).number;
    EXPECT_TRUE(SameNumber(number, expected)) << number << " for " << expected;
}

TEST(Lists, FollowTheirFormulasToTheLastBit) {
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> spread(-1000.0, 1000.0);
    for (std::size_t count = 1; count <= 120; ++count) {
        SCOPED_TRACE(count);
        std::vector<double> p(count);
        for (double& number : p) number = spread(random);
        const double n = static_cast<double>(count);
        EXPECT_TRUE(SameBits(CallOnNumbers("sum", p).number, PlainSum(p)));
        EXPECT_TRUE(SameBits(CallOnNumbers("mean", p).number, PlainSum(p) / n));
        EXPECT_TRUE(SameBits(CallOnNumbers("variance", p).number, PlainVariance(p)));
        EXPECT_EQ(CallOnNumbers("count", p).number, n);
        ExpectMedian(p);
        for (double& number : p) number = std::fabs(number) / 100.0;
        EXPECT_TRUE(SameBits(CallOnNumbers("sum_n", p).number, PlainSumOfPowers(p)));
    }
}

// --- median

TEST(Median, KnowsWhichZeroStandsInTheMiddle) {
    ExpectMedian({-0.0, 0.0, -0.0});
    ExpectMedian({0.0, -0.0, 0.0, -1.0, 1.0});
    // Only zeros and what pushes them around; the lists are longer than the plain sort serves.
    std::mt19937_64 random(12);
    constexpr double pool[] = {0.0, -0.0, 0.0, -0.0, -1.0, 1.0, -2.0, 2.0};
    for (int round = 0; round < 3000; ++round) {
        SCOPED_TRACE(round);
        std::vector<double> numbers(1 + random() % 90);
        for (double& number : numbers) number = pool[random() % 8];
        ExpectMedian(numbers);
    }
}

TEST(Median, LeavesWhatIsNoNumberInItsPlace) {
    ExpectMedian({2.0, noNumber, 1.0});
    ExpectMedian({noNumber, 2.0, 1.0});
    std::mt19937_64 random(13);
    constexpr double pool[] = {noNumber, infinity, -infinity, 0.0, -0.0, 3.0, -3.0, 4.0};
    for (int round = 0; round < 3000; ++round) {
        SCOPED_TRACE(round);
        std::vector<double> numbers(1 + random() % 90);
        for (double& number : numbers) number = pool[random() % 8];
        ExpectMedian(numbers);
    }
}

TEST(Median, EndsForAMillionNumbers) {
    std::vector<double> falling(1000001);
    for (std::size_t i = 0; i < falling.size(); ++i) {
        falling[i] = static_cast<double>(falling.size() - i);
    }
    EXPECT_EQ(CallOnNumbers("median", falling).number, 500001.0);
    EXPECT_EQ(CallOnNumbers("max", falling).number, 1000001.0);
    EXPECT_EQ(CallOnNumbers("mean", falling).number, 500001.0);
}

TEST(Median, TakesAHundredThousandParametersOfASheet) {
    std::string sheet = "median(";
    for (int number = 100000; number >= 1; --number) {
        sheet += std::to_string(number) + (number > 1 ? "," : ")");
    }
    EXPECT_EQ(NumberFrom(sheet), 50000.5);
}

// --- choosing

TEST(Choosing, GivesTheseNumbers) {
    constexpr NumberRow rows[] = {
        {"factorial(0)", 1},
        {"factorial(1)", 1},
        {"factorial(5)", 120},
        {"factorial(25)", 1.5511210043330984e+25},  // from above; from below it rounds otherwise
        {"factorial(170)", 7.257415615308004e+306},
        {"permutation(5,2)", 60},
        {"permutation(2,5)", 0.016666666666666666},
        {"permutation(5,5)", 1},
        {"permutation(5,1)", 120},
        {"combination(5,2)", 10},
        {"combination(5,5)", 1},
        {"combination(2,5)", 0.016666666666666666},
        {"combination(170,171)", 0},
        {"combination(5,9000000000000000)", 0},
        {"permutation(5,9000000000000000)", 0},
    };
    ExpectNumbers(rows);
}

double PlainFactorial(double v) {
    double product = 1.0;
    for (; v > 1.0; v = v - 1.0) product = product * v;
    return product;
}

TEST(Choosing, FollowsItsFormulasToTheLastBit) {
    for (double a = 1.0; a <= 180.0; a += 1.0) {
        const double all = PlainFactorial(a);
        const auto kept = [a](std::string_view keyword, double b) {
            return CallOnNumbers(keyword, std::vector{a, b}, {.keepNonFinite = true}).number;
        };
        EXPECT_TRUE(SameNumber(kept("permutation", 3.0), all / 6.0)) << a;
        for (double b = 1.0; b <= 180.0; b += 1.0) {
            const double expected = all / (PlainFactorial(a - b) * PlainFactorial(b));
            EXPECT_TRUE(SameNumber(kept("combination", b), expected)) << a << ' ' << b;
        }
        EXPECT_EQ(CallOnNumbers("factorial", std::vector{a}, {.keepNonFinite = true}).number, all);
    }
}

TEST(Choosing, EndsAtOnceWithAnInfiniteProduct) {
    struct Row {
        std::string_view sheet, keyword;
    };
    constexpr Row rows[] = {
        {"factorial(171)", "factorial"},
        {"factorial(9000000000000000)", "factorial"},
        {"factorial(100000000000000000000000)", "factorial"},
        {"combination(171,2)", "combination"},
        {"combination(9000000000000000,2)", "combination"},
        {"combination(9000000000000000,9000000000000000)", "combination"},
        {"permutation(9000000000000000,2)", "permutation"},
        {"permutation(171,171)", "permutation"},
    };
    for (const auto& [sheet, keyword] : rows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(Evaluate(sheet).error, NonFiniteMessage(keyword));
    }
    for (const double number : {1e300, infinity}) {
        EXPECT_EQ(CallOnNumbers("factorial", std::vector{number}, {.keepNonFinite = true}).number,
                  infinity);
    }
}

TEST(Choosing, WantsPositiveIntegers) {
    constexpr std::string_view list = ": parameter must be positive integers.";
    const auto message = [](std::string_view keyword, std::string_view words) {
        return "E006- sentence  1: function \"" + std::string(keyword) + '"' + std::string(words);
    };
    for (const std::string_view parameters : {"(2.5)", "(-1)", "(0.5)"}) {
        EXPECT_EQ(Evaluate("factorial" + std::string(parameters)).error,
                  message("factorial", ": parameter must be a positive integer."));
    }
    for (const std::string_view keyword : {"permutation", "combination"}) {
        for (const std::string_view parameters :
             {"(5,0)", "(0,5)", "(0,0)", "(5,-1)", "(-5,1)", "(5.5,1)", "(5,1.5)"}) {
            const std::string sheet = std::string(keyword) + std::string(parameters);
            SCOPED_TRACE(sheet);
            EXPECT_EQ(Evaluate(sheet).error, message(keyword, list));
        }
    }
}

}  // namespace
}  // namespace orvane
