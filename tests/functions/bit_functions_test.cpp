#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/functions/family_call.h"
#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

using test::CallOnNumbers;
using test::ErrorRow;
using test::Evaluate;
using test::ExpectErrors;
using test::ExpectNumbers;
using test::NumberFrom;
using test::NumberRow;
using test::ParametersForBits;

constexpr double infinity = std::numeric_limits<double>::infinity();

std::string Message(std::string_view code, std::string_view keyword, std::string_view words) {
    return std::string(code) + " sentence  1: function \"" + std::string(keyword) +
           "\": " + std::string(words) + ".";
}

TEST(Bits, GiveTheseNumbers) {
    constexpr NumberRow rows[] = {
        {"max_int(8)", 127},
        {"max_int(2)", 1},
        {"max_int(53)", 4503599627370495},
        {"min_int(8)", -128},
        {"min_int(2)", -2},
        {"min_int(53)", -4503599627370496},
        {"max_uint(8)", 255},
        {"max_uint(2)", 3},
        {"max_uint(53)", 9007199254740991},
        {"bit_not(0, 8)", 255},
        {"bit_not(1, 8)", 254},
        {"bit_not(256, 8)", 255},
        {"bit_not(0, 53)", 9007199254740991},
        {"bitwise_not(5, 3)", 2},
        {"bit_and(12, 10, 8)", 8},
        {"bit_and(0, 5, 8)", 0},
        {"bit_and(5, 0, 8)", 0},
        {"bit_and(1, 1, 53)", 1},
        {"bit_and(257, 3, 8)", 1},
        {"bitwise_and(12, 10, 8)", 8},
        {"bit_or(12, 10, 8)", 14},
        {"bit_or(0, 5, 8)", 5},
        {"bit_or(5, 0, 8)", 5},
        {"bit_or(0, 0, 8)", 0},
        {"bitwise_or(12, 10, 8)", 14},
        {"bit_xor(12, 10, 8)", 6},
        {"bit_xor(5, 5, 8)", 0},
        {"bit_xor(0, 5, 8)", 5},
        {"bitwise_xor(12, 10, 8)", 6},
        {"lsh(1, 8, 8)", 0},
        {"lsh(255, 1, 8)", 254},
        {"lsh(5, 0, 8)", 5},
        {"lsh(261, 0, 8)", 5},
        {"lsh(1, 256, 8)", 0},
        {"lsh(9007199254740991, 52, 53)", 4503599627370496},
        {"left_shift(3, 2, 8)", 12},
        {"rsh(3, 1, 8)", 1},
        {"rsh(128, 7, 8)", 1},
        {"rsh(128, 8, 8)", 0},
        {"rsh(259, 1, 8)", 1},
        {"rsh(9007199254740991, 52, 53)", 1},
        {"right_shift(12, 2, 8)", 3},
    };
    ExpectNumbers(rows);
}

TEST(Bits, TakeTheWordSizeOfTheSheetForLessThanTwo) {
    struct Row {
        std::string_view sheet;
        int bits;
        double number;
    };
    constexpr Row rows[] = {
        {"lsh(1, 15, 0)", 16, 32768},
        {"lsh(1, 16, 0)", 16, 0},
        {"bit_not(0, 1)", 16, 65535},
        {"bit_not(0, 0)", 16, 65535},
        {"bit_not(0, 0)", 53, 9007199254740991},
        {"bit_not(0, 2)", 16, 3},
        {"bit_and(65537, 65537, 0)", 16, 1},
        {"bit_or(65536, 1, -1)", 16, 1},
        {"bit_xor(65535, 1, -40)", 8, 254},
        {"lsh(1, 31, -7)", 32, 2147483648},
        {"rsh(65536, 1, 1)", 16, 0},
        {"rsh(65536, 1, 1)", 17, 32768},
        // The limits have a word size of their own.
        {"max_int(8)", 16, 127},
    };
    for (const auto& [sheet, bits, number] : rows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(NumberFrom(sheet, ParametersForBits(bits)), number);
    }
    EXPECT_EQ(NumberFrom("bit_not(0, 0)"), 4294967295.0);
}

TEST(Bits, CountTheirParametersBeforeTheyCheckThem) {
    const std::vector<double> numbers(4, 0.5);
    struct Row {
        std::string_view keyword;
        std::size_t count;
    };
    constexpr Row rows[] = {
        {"max_int", 1},     {"min_int", 1}, {"max_uint", 1},    {"bit_not", 2},
        {"bitwise_not", 2}, {"bit_and", 3}, {"bitwise_and", 3}, {"bit_or", 3},
        {"bitwise_or", 3},  {"bit_xor", 3}, {"bitwise_xor", 3}, {"lsh", 3},
        {"left_shift", 3},  {"rsh", 3},     {"right_shift", 3},
    };
    for (const auto& [keyword, count] : rows) {
        SCOPED_TRACE(keyword);
        EXPECT_EQ(CallOnNumbers(keyword, {}).error,
                  Message("E007-01", keyword, "parameter count is incorrect"));
        const std::string wrong =
            Message("E007-02", keyword, "parameter count is " + std::to_string(count));
        for (std::size_t given = 1; given <= numbers.size(); ++given) {
            SCOPED_TRACE(given);
            const test::CallResult result = CallOnNumbers(keyword, std::span(numbers).first(given));
            EXPECT_EQ(result.error == wrong, given != count) << result.error;
            EXPECT_FALSE(result.stored);
        }
    }
    EXPECT_EQ(Evaluate("max_int(8, 8)").error,
              "E007-02 sentence  1: function \"max_int\": parameter count is 1.");
    EXPECT_EQ(Evaluate("bit_not(8)").error,
              "E007-02 sentence  1: function \"bit_not\": parameter count is 2.");
    EXPECT_EQ(Evaluate("lsh(8, 1)").error,
              "E007-02 sentence  1: function \"lsh\": parameter count is 3.");
}

TEST(Bits, WantNumbersBeforeTheyCount) {
    constexpr ErrorRow rows[] = {
        {"max_int(point(1,2))",
         "E011-01 sentence  1: function \"max_int\": parameter is incorrect."},
        {"bit_and(1,(2,3))", "E011-01 sentence  1: function \"bit_and\": parameter is incorrect."},
    };
    ExpectErrors(rows);
}

TEST(Bits, WantAWordSizeOfTwoToFiftyThreeForTheLimits) {
    for (const std::string_view keyword : {"max_int", "min_int", "max_uint"}) {
        for (const std::string_view bits : {"(1)", "(0)", "(54)", "(2.5)", "(-8)"}) {
            const std::string sheet = std::string(keyword).append(bits);
            SCOPED_TRACE(sheet);
            EXPECT_EQ(Evaluate(sheet).error,
                      Message("E006-", keyword, "parameter must be an integer between 2 to 53"));
        }
    }
}

TEST(Bits, WantPositiveIntegersForNot) {
    for (const std::string_view keyword : {"bit_not", "bitwise_not"}) {
        for (const std::string_view parameters :
             {"(1.5, 8)", "(-1, 8)", "(1, 8.5)", "(1, -1)", "(1.5, 54)", "(1, 54.5)"}) {
            const std::string sheet = std::string(keyword).append(parameters);
            SCOPED_TRACE(sheet);
            EXPECT_EQ(Evaluate(sheet).error,
                      Message("E006-", keyword, "parameter must be positive integers"));
        }
        for (const std::string_view parameters : {"(1, 54)", "(0, 100000000000000000000)"}) {
            const std::string sheet = std::string(keyword).append(parameters);
            SCOPED_TRACE(sheet);
            EXPECT_EQ(Evaluate(sheet).error, Message("E006-", keyword, "parameter must be <= 53"));
            EXPECT_FALSE(Evaluate(sheet).evaluated);
        }
        EXPECT_EQ(NumberFrom(std::string(keyword) + "(1, 53)"), 9007199254740990.0);
    }
}

TEST(Bits, CheckTheirOperandsInOrder) {
    constexpr std::string_view keywords[] = {"bit_and", "bitwise_and", "bit_or", "bitwise_or",
                                             "bit_xor", "bitwise_xor", "lsh",    "left_shift",
                                             "rsh",     "right_shift"};
    struct Row {
        std::string_view parameters;
        std::string_view words;
    };
    constexpr std::string_view first = "first param must be an integer >= 0";
    constexpr std::string_view second = "second param must be an integer >= 0";
    constexpr std::string_view third = "third param must be an integer and < 53";
    constexpr Row rows[] = {
        {"(1.5, 1, 8)", first},  {"(-1, 1, 8)", first},   {"(-1, -1, 54)", first},
        {"(1, 2.5, 8)", second}, {"(1, -1, 54)", second}, {"(1, 1, 53.5)", third},
        {"(1, 1, 54)", third},   {"(1, 1, 8.5)", third},  {"(1, 1, -0.5)", third},
    };
    for (const std::string_view keyword : keywords) {
        for (const auto& [parameters, words] : rows) {
            const std::string sheet = std::string(keyword).append(parameters);
            SCOPED_TRACE(sheet);
            EXPECT_EQ(Evaluate(sheet).error, Message("E006-", keyword, words));
        }
        EXPECT_EQ(Evaluate(std::string(keyword) + "(1, 1, 53)").error, "");
        EXPECT_EQ(Evaluate(std::string(keyword) + "(1, 1, -1)").error, "");
    }
}

// --- against machine words

struct WordRow {
    std::string_view keyword;
    std::uint64_t (*onWords)(std::uint64_t a, std::uint64_t b);
};

constexpr WordRow wordRows[] = {
    {"bit_and", [](std::uint64_t a, std::uint64_t b) { return a & b; }},
    {"bitwise_and", [](std::uint64_t a, std::uint64_t b) { return a & b; }},
    {"bit_or", [](std::uint64_t a, std::uint64_t b) { return a | b; }},
    {"bitwise_or", [](std::uint64_t a, std::uint64_t b) { return a | b; }},
    {"bit_xor", [](std::uint64_t a, std::uint64_t b) { return a ^ b; }},
    {"bitwise_xor", [](std::uint64_t a, std::uint64_t b) { return a ^ b; }},
};

// Words of every length up to 53 bits, with long runs of zeros among them.
double RandomWord(std::mt19937_64& random) {
    std::uint64_t word = random() >> (11 + random() % 53);
    if (random() % 2 == 0) word &= random();
    return static_cast<double>(word);
}

std::uint64_t WordOf(double number) { return static_cast<std::uint64_t>(number); }

// The bits parameter itself, and one that leaves the width to the sheet.
std::vector<double> WaysToSay(int width) { return {1.0 * width, 0.0, 1.0, -1.0, -1e300}; }

TEST(Bits, AgreeWithMachineWordsAtEveryWidth) {
    std::mt19937_64 random(21);
    for (int width = 2; width <= 53; ++width) {
        const std::uint64_t mask = (std::uint64_t{1} << width) - 1;
        const test::CallOptions options{.parameters = ParametersForBits(width)};
        for (int round = 0; round < 60; ++round) {
            const double a = RandomWord(random);
            const double b = RandomWord(random);
            const double bits = WaysToSay(width)[random() % 5];
            SCOPED_TRACE(::testing::Message() << width << ' ' << WordOf(a) << ' ' << WordOf(b));
            for (const auto& [keyword, onWords] : wordRows) {
                EXPECT_EQ(CallOnNumbers(keyword, std::vector{a, b, bits}, options).number,
                          static_cast<double>(onWords(WordOf(a) & mask, WordOf(b) & mask)))
                    << keyword;
            }
            const double notBits = bits < 0.0 ? 1.0 : bits;
            for (const std::string_view keyword : {"bit_not", "bitwise_not"}) {
                EXPECT_EQ(CallOnNumbers(keyword, std::vector{a, notBits}, options).number,
                          static_cast<double>(~WordOf(a) & mask))
                    << keyword;
            }
        }
    }
}

TEST(Bits, ShiftLikeMachineWordsAtEveryWidth) {
    std::mt19937_64 random(22);
    for (int width = 2; width <= 53; ++width) {
        const std::uint64_t mask = (std::uint64_t{1} << width) - 1;
        const test::CallOptions options{.parameters = ParametersForBits(width)};
        for (int steps = 0; steps <= width + 2; ++steps) {
            const double a = RandomWord(random);
            const double bits = WaysToSay(width)[random() % 5];
            const std::vector<double> numbers = {a, 1.0 * steps, bits};
            const std::uint64_t word = WordOf(a) & mask;
            const std::uint64_t left = steps < width ? (word << steps) & mask : 0;
            const std::uint64_t right = steps < width ? word >> steps : 0;
            SCOPED_TRACE(::testing::Message() << width << ' ' << WordOf(a) << ' ' << steps);
            for (const std::string_view keyword : {"lsh", "left_shift"}) {
                EXPECT_EQ(CallOnNumbers(keyword, numbers, options).number,
                          static_cast<double>(left));
            }
            for (const std::string_view keyword : {"rsh", "right_shift"}) {
                EXPECT_EQ(CallOnNumbers(keyword, numbers, options).number,
                          static_cast<double>(right));
            }
        }
    }
}

TEST(Bits, HaveTheirLimitsAtEveryWidth) {
    for (int width = 2; width <= 53; ++width) {
        SCOPED_TRACE(width);
        const std::vector<double> bits = {1.0 * width};
        const std::uint64_t half = std::uint64_t{1} << (width - 1);
        EXPECT_EQ(CallOnNumbers("max_int", bits).number, static_cast<double>(half - 1));
        EXPECT_EQ(CallOnNumbers("min_int", bits).number, -static_cast<double>(half));
        EXPECT_EQ(CallOnNumbers("max_uint", bits).number, static_cast<double>(half + half - 1));
    }
}

TEST(Bits, EndForNumbersOfAnySize) {
    struct Row {
        std::string_view keyword;
        std::vector<double> numbers;
        double number;
    };
    const Row rows[] = {
        {"bit_and", {1e300, 1e300, -1e300}, 0},
        {"bit_or", {1e300, 5, 8}, 5},
        {"bit_xor", {infinity, 5, 53}, 5},
        {"bit_or", {infinity, infinity, -infinity}, 0},
        {"lsh", {1, 1e300, 53}, 0},
        {"lsh", {1, infinity, 0}, 0},
        {"lsh", {infinity, 1, 8}, 0},
        {"rsh", {1e300, 1e300, -1e300}, 0},
        {"rsh", {9007199254740992.0, 1, 53}, 0},
        {"lsh", {9007199254740994.0, 1, 53}, 4},
        {"bit_not", {1e300, 53}, 9007199254740991},
    };
    for (const auto& [keyword, numbers, number] : rows) {
        SCOPED_TRACE(::testing::Message() << keyword << ' ' << numbers[0] << ' ' << numbers[1]);
        const test::CallResult result = CallOnNumbers(keyword, numbers);
        EXPECT_EQ(result.error, "");
        EXPECT_EQ(result.number, number);
    }
    EXPECT_EQ(CallOnNumbers("bit_not", std::vector{1.0, infinity}).error,
              Message("E006-", "bit_not", "parameter must be <= 53"));
}

TEST(Bits, KeepTheirChecksWhereTheFiniteTestIsOff) {
    const std::vector<double> numbers = {-1.0, 1.0, 8.0};
    const test::CallResult result = CallOnNumbers("bit_or", numbers, {.keepNonFinite = true});
    EXPECT_EQ(result.error, Message("E006-", "bit_or", "first param must be an integer >= 0"));
    EXPECT_FALSE(result.stored);
}

}  // namespace
}  // namespace orvane
