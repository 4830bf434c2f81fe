#include "core/number_literal.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

using test::SameBits;

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(ParseNumberLiteral, ReadsWhatASheetSpellsAsANumber) {
    struct Row {
        std::string_view text;
        double value;
    };
    const std::string tooLarge(400, '9');
    const std::string large = '1' + std::string(308, '0');
    const std::string tiny = "0." + std::string(400, '0') + '1';
    const Row rows[] = {
        {"0", 0.0},
        {"00", 0.0},
        {"007", 7.0},
        {"1.5", 1.5},
        {"5.", 5.0},
        {"0.1", 0.1},
        {"12  ", 12.0},
        {"9007199254740993", 9007199254740992.0},
        {"2.718281828459045", 2.718281828459045},
        {large, 1e308},
        {tooLarge, infinity},
        {tiny, 0.0},
        // the run of signs
        {"-5", -5.0},
        {"+5", 5.0},
        {" - -5", 5.0},
        {"-+-+- 5", -5.0},
        {"- 0x10", -16.0},
        {"-0", -0.0},
        // the bases
        {"0b101", 5.0},
        {"0q13", 7.0},
        {"0o17", 15.0},
        {"0u19", 19.0},
        {"0h1F", 31.0},
        {"0x1f", 31.0},
        {"0xaBcDeF", 11259375.0},
        {"0b0", 0.0},
        // literals with a prefix end at the largest word of 32 bits
        {"0xFFFFFFFF", 4294967295.0},
        {"0x100000000", 4294967295.0},
        {"0u4294967296", 4294967295.0},
        {"0u99999999999999999999999999", 4294967295.0},
        {"0b111111111111111111111111111111111", 4294967295.0},
        {"-0xFFFFFFFFFF", -4294967295.0},
    };
    for (const auto& [text, value] : rows) {
        SCOPED_TRACE(text);
        const std::optional<double> read = ParseNumberLiteral(text);
        ASSERT_TRUE(read.has_value());
        EXPECT_TRUE(SameBits(*read, value)) << *read;
    }
}

TEST(ParseNumberLiteral, RejectsEverythingElse) {
    constexpr std::string_view rows[] = {
        "",    " ",    "+-",   "- ",  ".5",    "-.5",   "x",    "-x",    "1.2.3", "1..",
        "1e5", "1E5",  "1e+5", "2x",  "0x",    "0b",    "0X1F", "0B1",   "0b102", "0q4",
        "0o8", "0ua",  "0xg",  "0h",  "0x1.5", "0b1.1", "1 2",  "1 +",   "1\t",   "1\n",
        "1,2", "1(2)", "1_0",  "(1)", "1-",    "\t1",   "0x 1", "1\xE9", "00x1",  "0c1",
    };
    for (const std::string_view text : rows) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(ParseNumberLiteral(text).has_value());
    }
}

TEST(IsNumberShape, TellsNumbersFromOtherRuns) {
    struct Row {
        std::string_view run;
        bool number;
    };
    constexpr Row rows[] = {
        {"", false},
        {"0", true},
        {"10", true},
        {"1.5", true},
        {"1.", true},
        {"1.2.3", false},
        {"1..2", false},
        {"1e5", false},
        {"2x", false},
        {"2e", false},
        {"0x1F", true},
        {"0x1f", true},
        {"0xg", false},
        {"0x", false},
        {"0X1F", false},
        {"0h9", true},
        {"0hAf", true},
        {"0h", false},
        {"0b101", true},
        {"0b102", false},
        {"0b", false},
        {"0B1", false},
        {"0q0123", true},
        {"0q4", false},
        {"0q", false},
        {"0o01234567", true},
        {"0o8", false},
        {"0o", false},
        {"0u0123456789", true},
        {"0ua", false},
        {"0u", false},
        {"0b1.1", false},
        {"0x1.5", false},
        {"00", true},
        {"0e1", false},
        {"0_1", false},
        {"0a1", false},
    };
    for (const auto& [run, number] : rows) {
        SCOPED_TRACE(run);
        EXPECT_EQ(IsNumberShape(run), number);
    }
}

TEST(FormatFixed, WritesAllDigitsInFixedNotation) {
    struct Row {
        double value;
        int decimals;
        bool showPlus;
        std::string_view text;
    };
    constexpr Row rows[] = {
        {0.0, 2, false, "0.00"},
        {-0.0, 2, false, "-0.00"},
        {0.0, 2, true, "+0.00"},
        {-0.0, 2, true, "-0.00"},
        {1.5, 0, false, "2"},
        {2.5, 0, false, "2"},
        {0.125, 2, true, "+0.12"},
        {-1.005, 2, true, "-1.00"},
        {1e22, 0, false, "10000000000000000000000"},
        {3.0, -1, false, "3.000000"},
        {0.1, 32, false, "0.10000000000000000555111512312578"},
        {infinity, 2, false, "inf"},
        {infinity, 2, true, "+inf"},
        {-infinity, 2, true, "-inf"},
    };
    for (const auto& [value, decimals, showPlus, text] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(FormatFixed(value, decimals, showPlus), text);
    }
    EXPECT_EQ(FormatFixed(std::nan(""), 2, true), "nan");
    EXPECT_EQ(FormatFixed(1e308, 32, true).size(), 1u + 309u + 1u + 32u);
}

TEST(FormatStripped, LooksAtTheEndAlone) {
    struct Row {
        double value;
        int decimals;
        bool showPlus;
        std::string_view text;
    };
    constexpr Row rows[] = {
        {1.5, 2, false, "1.5"},   {1.0, 2, false, "1"},     {10.0, 1, false, "10"},
        {1200, 0, false, "12"},   {0.0, 0, false, ""},      {-0.4, 0, false, "-"},
        {1.05, 2, false, "1.05"}, {100.0, 3, false, "100"}, {0.0, 1, false, "0"},
        {-0.0, 1, false, "-0"},   {0.0, 0, true, "+"},      {1.5, -1, true, "+1.5"},
        {1000, 3, true, "+1000"}, {0.001, 2, true, "+0"},   {-0.001, 2, true, "-0"},
    };
    for (const auto& [value, decimals, showPlus, text] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(FormatStripped(value, decimals, showPlus), text);
    }
}

TEST(FormatShortest, ReadsBackAsTheSameNumber) {
    struct Row {
        double value;
        std::string_view text;
    };
    constexpr Row rows[] = {{0.1, "0.1"},        {1.0, "1"},
                            {-0.0, "-0"},        {1e300, "1e+300"},
                            {2.5e-7, "2.5e-07"}, {1.0 / 3.0, "0.3333333333333333"}};
    for (const auto& [value, text] : rows) EXPECT_EQ(FormatShortest(value), text);
    EXPECT_EQ(FormatShortest(HUGE_VAL), "inf");
    EXPECT_EQ(FormatShortest(-HUGE_VAL), "-inf");
    EXPECT_EQ(FormatShortest(-std::nan("")), "nan");
}

TEST(FormatFull, AlwaysShowsTheSign) {
    struct Row {
        double value;
        std::string_view text;
    };
    constexpr Row rows[] = {
        {0.0, "+0"},
        {1.0, "+1"},
        {-2.5, "-2.5"},
        {100.0, "+100"},
        {0.1, "+0.10000000000000000555111512312578"},
    };
    for (const auto& [value, text] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(FormatFull(value), text);
    }
}

TEST(FormatForSentence, GivesATextThatReadsBack) {
    struct Row {
        double value;
        std::string_view text;
    };
    constexpr Row rows[] = {
        {0.0, "0"},
        {1.0, "1"},
        {100.0, "100"},
        {-3.0, "-3"},
        {0.5, "0.5"},
        {3.141592653589793, "3.14159265358979311599796346854419"},
        {2.718281828459045, "2.71828182845904509079559829842765"},
        {1e22, "10000000000000000000000"},
        {1e-40, "0"},
    };
    for (const auto& [value, text] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(FormatForSentence(value), text);
    }
    for (const double value : {3.141592653589793, 2.718281828459045, 0.1, 1e15 + 0.125}) {
        SCOPED_TRACE(value);
        EXPECT_EQ(ParseNumberLiteral(*FormatForSentence(value)), value);
    }
}

TEST(FormatForSentence, RefusesWhatIsNotFinite) {
    for (const double value : {infinity, -infinity, std::nan("")}) {
        EXPECT_FALSE(FormatForSentence(value).has_value());
    }
}

// --- the short ways against the general conversions

TEST(ParseNumberLiteral, ReadsShortDecimalsAsTheGeneralConversionDoes) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 200'000; ++i) {
        const std::size_t length = 1 + random() % 18;
        std::string text;
        while (text.size() < length) text += static_cast<char>('0' + random() % 10);
        const std::size_t point = 1 + random() % 20;
        if (point <= text.size()) text.insert(point, 1, '.');
        double expected = 0.0;
        std::from_chars(text.data(), text.data() + text.size(), expected);
        const std::optional<double> number = ParseNumberLiteral(text);
        ASSERT_TRUE(number.has_value()) << text;
        ASSERT_TRUE(SameBits(*number, expected)) << text;
    }
}

// What FormatStripped promises, from the text with all decimals.
std::string StrippedPlainly(double value, int decimals, bool showPlus) {
    std::string text = FormatFixed(value, decimals, showPlus);
    text.resize(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
    return text;
}

TEST(FormatStripped, WritesWholeNumbersAsItWritesAnyOther) {
    std::mt19937_64 random(11);
    std::vector<double> values = {0.0,      -0.0,
                                  1.0,      -1.0,
                                  10.0,     -1200.0,
                                  1e15,     -1e15,
                                  1e16,     999999999999999.0,
                                  0.5,      -0.25,
                                  1e22,     1e300,
                                  123.0,    4503599627370496.0,
                                  infinity, -infinity};
    for (int i = 0; i < 20'000; ++i) {
        const double range = std::pow(10.0, static_cast<double>(random() % 19));
        const double whole = std::floor(range * (static_cast<double>(random() % 1000) / 1000.0));
        values.push_back(random() % 2 == 0 ? whole : -whole);
    }
    for (const double value : values) {
        for (const int decimals : {-1, 0, 1, 2, 32}) {
            for (const bool showPlus : {false, true}) {
                ASSERT_EQ(FormatStripped(value, decimals, showPlus),
                          StrippedPlainly(value, decimals, showPlus))
                    << value << " with " << decimals;
            }
        }
    }
}

}  // namespace
}  // namespace orvane
