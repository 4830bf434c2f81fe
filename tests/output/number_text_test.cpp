#include "output/number_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>

namespace orvane {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

CalcParameters Options(int precision, bool showSign) {
    CalcParameters parameters;
    parameters.floatPrecision = precision;
    parameters.showSign = showSign;
    return parameters;
}

// 2 to the power, by doubling decimal digits.
std::string PowerOfTwoDigits(int power) {
    std::string digits = "1";  // the lowest one first
    for (int step = 0; step < power; ++step) {
        int carry = 0;
        for (char& digit : digits) {
            const int doubled = (digit - '0') * 2 + carry;
            digit = static_cast<char>('0' + doubled % 10);
            carry = doubled / 10;
        }
        if (carry > 0) digits += '1';
    }
    return {digits.rbegin(), digits.rend()};
}

// thousandths / 1000 in decimals, with nothing left over at the end.
std::string ThousandthsText(std::int64_t thousandths) {
    const auto size = static_cast<std::uint64_t>(std::abs(thousandths));
    std::string text = thousandths < 0 ? "-" : "";
    text += std::to_string(size / 1000);
    const std::string decimals = std::to_string(1000 + size % 1000).substr(1);
    const std::size_t last = decimals.find_last_not_of('0');
    if (last != std::string::npos) text += '.' + decimals.substr(0, last + 1);
    return text;
}

struct NumberRow {
    double value;
    int precision;
    bool showSign;
    std::string_view text;
};

void ExpectNumbers(std::initializer_list<NumberRow> rows) {
    for (const NumberRow& row : rows) {
        SCOPED_TRACE(testing::Message()
                     << row.value << " at " << row.precision << (row.showSign ? " signed" : ""));
        EXPECT_EQ(FormatNumber(row.value, Options(row.precision, row.showSign)), row.text);
    }
}

TEST(FormatNumber, StripsZerosAndPoint) {
    ExpectNumbers({
        {1.5, 6, false, "1.5"},
        {1.5, 1, false, "1.5"},
        {1.25, 32, false, "1.25"},
        {3.0, 6, false, "3"},
        {100.0, 6, false, "100"},
        {100.0, 1, false, "100"},
        {-2.5, 2, false, "-2.5"},
        {1.0 / 3.0, 3, false, "0.333"},
        {2.0 / 3.0, 3, false, "0.667"},
        {0.1, 32, false, "0.10000000000000000555111512312578"},
    });
}

TEST(FormatNumber, RoundsExactHalvesToEven) {
    ExpectNumbers({
        {0.125, 2, false, "0.12"},
        {0.375, 2, false, "0.38"},
        {2.5, 0, false, "2"},
        {3.5, 0, false, "4"},
    });
}

TEST(FormatNumber, ShowsASignOnRequest) {
    ExpectNumbers({
        {0.0, 6, true, "+0"},
        {-0.0, 6, true, "+0"},
        {1.5, 6, true, "+1.5"},
        {-1.5, 6, true, "-1.5"},
        {-0.0000001, 6, true, "+0"},
        {0.0000001, 6, true, "+0"},
        {0.0, 0, true, "+0"},
    });
}

TEST(FormatNumber, RoundsAwayToZeroWithoutAMinus) {
    ExpectNumbers({
        {0.0, 6, false, "0"},
        {-0.0, 6, false, "0"},
        {-0.0000001, 6, false, "0"},
        {0.0000001, 6, false, "0"},
        {-0.0000006, 6, false, "-0.000001"},
        {-5e-324, 32, false, "0"},
        {-5e-324, 32, true, "+0"},
    });
}

TEST(FormatNumber, EatsIntegerZerosWithoutDecimals) {
    ExpectNumbers({
        {100.0, 0, false, "1"},
        {1200.0, 0, false, "12"},
        {0.4, 0, false, ""},
        {-0.4, 0, false, "-"},
        {0.4, 0, true, "+"},
        {-0.4, 0, true, "-"},
        {105.0, 0, false, "105"},
        {-100.0, 0, true, "-1"},
        {9.6, 0, false, "1"},
        {0.0, 0, false, "0"},
    });
}

TEST(FormatNumber, TakesSixDecimalsForANegativePrecision) {
    ExpectNumbers({
        {1.0 / 3.0, -1, false, "0.333333"},
        {100.0, -1, false, "100"},
        {-0.0000001, -5, false, "0"},
        {0.5, std::numeric_limits<int>::min(), true, "+0.5"},
    });
}

TEST(FormatNumber, WritesAllDigitsWithoutExponent) {
    EXPECT_EQ(FormatNumber(1e300, Options(2, false)),
              "10000000000000000525047602552044202487044685811081591549158541155118024579889081"
              "95786371375080447864043704443832883878176942523235360430575644792184786706982848"
              "38720092657580373783023379478809005936895323497079994508111903896764088007465274"
              "2780142494579258788820056842838115669472196386865459400540160");
    for (const int power : {53, 64, 100, 997, 1023}) {
        SCOPED_TRACE(power);
        const std::string digits = PowerOfTwoDigits(power);
        EXPECT_EQ(FormatNumber(std::ldexp(1.0, power), Options(2, false)), digits);
        EXPECT_EQ(FormatNumber(std::ldexp(-1.0, power), Options(32, true)), "-" + digits);
    }
}

TEST(FormatNumber, NamesWhatIsNotFinite) {
    ExpectNumbers({
        {infinity, 6, false, "inf"},
        {infinity, 6, true, "+inf"},
        {infinity, 0, true, "+inf"},
        {-infinity, 6, false, "-inf"},
        {-infinity, -1, true, "-inf"},
        {notANumber, 6, false, "nan"},
        {notANumber, 0, true, "nan"},
    });
}

TEST(FormatNumber, AgreesWithWholeThousandths) {
    std::mt19937_64 random(20240611);
    std::uniform_int_distribution<std::int64_t> anyThousandths(-999'999'999'999, 999'999'999'999);
    for (int round = 0; round < 20'000; ++round) {
        // From few digits to many.
        const std::int64_t thousandths = anyThousandths(random) >> (round % 40);
        SCOPED_TRACE(thousandths);
        const double value = static_cast<double>(thousandths) / 1000.0;
        const std::string text = ThousandthsText(thousandths);
        const std::string plus = thousandths < 0 ? "" : "+";
        ASSERT_EQ(FormatNumber(value, Options(3, false)), text);
        ASSERT_EQ(FormatNumber(value, Options(5, false)), text);
        ASSERT_EQ(FormatNumber(value, Options(3, true)), plus + text);
        ASSERT_EQ(FormatPlain(value, 4), text);
        ASSERT_EQ(FormatSigned(value, 4), plus + text);
    }
}

TEST(FormatNumber, TakesEveryDoubleAtEveryPrecision) {
    std::mt19937_64 random(7);
    for (int round = 0; round < 5'000; ++round) {
        const std::uint64_t bits = random();
        const auto value = std::bit_cast<double>(bits);
        const int precision = static_cast<int>(random() % 40) - 3;
        SCOPED_TRACE(testing::Message() << bits << " at " << precision);
        const std::string text = FormatNumber(value, Options(precision, round % 2 == 0));
        ASSERT_LE(text.size(), 1u + 309u + 1u + 36u);
        ASSERT_NE(text, "-0");
        if (std::isfinite(value)) {
            ASSERT_EQ(text.find_first_not_of("+-.0123456789"), std::string::npos);
        }
    }
}

TEST(FormatNumber, WritesNoMoreThan4096Decimals) {
    const std::string text = FormatNumber(5e-324, Options(std::numeric_limits<int>::max(), false));
    EXPECT_EQ(text.size(), 2u + 1074u);
    EXPECT_EQ(text.substr(text.size() - 3), "625");
}

struct PrecisionRow {
    double value;
    int precision;
    std::string_view text;
};

TEST(FormatPlain, HasNoRuleForSignOrZero) {
    const PrecisionRow rows[] = {
        {0.5, 6, "0.5"},        {-0.5, 6, "-0.5"},  {256.0, 6, "256"},     {0.0, 6, "0"},
        {0.0, 0, ""},           {-0.0, 6, "-0"},    {-0.0000001, 6, "-0"}, {0.0000001, 6, "0"},
        {10.0, 0, "1"},         {10.0, 2, "10"},    {1200.0, 0, "12"},     {0.5, 0, ""},
        {-0.4, 0, "-"},         {0.25, -1, "0.25"}, {infinity, 3, "inf"},  {-infinity, 3, "-inf"},
        {notANumber, 3, "nan"},
    };
    for (const auto& [value, precision, text] : rows) {
        SCOPED_TRACE(testing::Message() << value << " at " << precision);
        EXPECT_EQ(FormatPlain(value, precision), text);
    }
}

TEST(FormatSigned, AlwaysCarriesASign) {
    const PrecisionRow rows[] = {
        {0.0, 6, "+0"},        {-0.0, 6, "+0"},        {0.0, 0, "+0"},         {1.5, 6, "+1.5"},
        {-1.5, 6, "-1.5"},     {2.0, 2, "+2"},         {100.0, 0, "+1"},       {0.4, 0, "+"},
        {-0.4, 0, "-"},        {-0.0000001, 6, "-0"},  {0.0000001, 6, "+0"},   {0.25, -1, "+0.25"},
        {infinity, 6, "+inf"}, {-infinity, 6, "-inf"}, {notANumber, 6, "nan"},
    };
    for (const auto& [value, precision, text] : rows) {
        SCOPED_TRACE(testing::Message() << value << " at " << precision);
        EXPECT_EQ(FormatSigned(value, precision), text);
    }
}

}  // namespace
}  // namespace orvane
