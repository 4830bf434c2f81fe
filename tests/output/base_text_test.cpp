#include "output/base_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "output/number_text.h"
#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

CalcParameters Word(int bits, int precision = 6, bool showSign = false) {
    CalcParameters parameters = test::ParametersForBits(bits);
    parameters.floatPrecision = precision;
    parameters.showSign = showSign;
    return parameters;
}

ReportLine Format(std::string_view keyword, double value, const CalcParameters& parameters) {
    ReportLine line;
    FormatWithKeyword(keyword, value, parameters, FindNumberLimits(), line);
    return line;
}

struct FormRow {
    double number;
    std::string_view keyword;
    std::string_view value;
    std::string_view note;
};

void ExpectForms(const CalcParameters& parameters, std::initializer_list<FormRow> rows) {
    for (const FormRow& row : rows) {
        SCOPED_TRACE(testing::Message() << row.number << " as \"" << row.keyword << '"');
        const ReportLine line = Format(row.keyword, row.number, parameters);
        EXPECT_EQ(line.value, row.value);
        EXPECT_EQ(line.note, row.note);
    }
}

TEST(FormatWithKeyword, ShowsBitPatternsAndWhatTheyLost) {
    ExpectForms(Word(8), {
                             {0, "", "0", ""},
                             {1.5, "", "1.5", ""},
                             {-0.0000001, "", "0", ""},
                             {0.25, "percent", "0.25 %", ""},
                             {5, "hex", "0h05", ""},
                             {-1, "hex", "0hFF", ""},
                             {127, "bin", "0b01111111", ""},
                             {200, "hex", "0hC8", ""},
                             {300, "hex", "0h2C", "(trim: 1 of +256)"},
                             {-200, "hex", "0hB8", "(trim: 1 of -128)"},
                             {-256, "hex", "0h80", "(trim: 1 of -128)"},
                             {5.5, "hex", "0h05", "(truncate: 0.5)"},
                             {-5.5, "hex", "0hFB", "(truncate: -0.5)"},
                             {300.25, "hex", "0h2C", "(trim: 1 of +256,truncate: 0.25)"},
                             {5, "uint", "0u005", ""},
                             {1e16, "hex", "10000000000000000",
                              "(ignore format \"hex\" since the number is too large)"},
                         });
}

TEST(FormatWithKeyword, TrimsAtTheEndsOfTheWord) {
    ExpectForms(Word(8), {
                             {0, "hex", "0h00", ""},
                             {-0.0, "hex", "0h00", ""},
                             {0.75, "hex", "0h00", "(truncate: 0.75)"},
                             {-0.75, "hex", "0h00", "(truncate: -0.75)"},
                             {128, "hex", "0h80", ""},
                             {255, "hex", "0hFF", ""},
                             {255.5, "hex", "0hFF", "(truncate: 0.5)"},
                             {256, "hex", "0h00", "(trim: 1 of +256)"},
                             {512, "hex", "0h00", "(trim: 2 of +256)"},
                             {1023, "hex", "0hFF", "(trim: 3 of +256)"},
                             {2561, "hex", "0h01", "(trim: 10 of +256)"},
                             {-127, "hex", "0h81", ""},
                             {-128, "hex", "0h80", ""},
                             {-128.5, "hex", "0h80", "(truncate: -0.5)"},
                             {-129, "hex", "0hFF", "(trim: 1 of -128)"},
                             {-384, "hex", "0h80", "(trim: 2 of -128)"},
                             {-300.25, "hex", "0hD4", "(trim: 2 of -128,truncate: -0.25)"},
                             {-256.5, "hex", "0h80", "(trim: 1 of -128,truncate: -0.5)"},
                         });
}

TEST(FormatWithKeyword, KnowsEveryAlias) {
    ExpectForms(Word(8), {
                             {201, "bin", "0b11001001", ""},
                             {201, "binary", "0b11001001", ""},
                             {201, "base2", "0b11001001", ""},
                             {201, "quat", "0q3021", ""},
                             {201, "quaternary", "0q3021", ""},
                             {201, "base4", "0q3021", ""},
                             {201, "oct", "0o311", ""},
                             {201, "octal", "0o311", ""},
                             {201, "base8", "0o311", ""},
                             {201, "hex", "0hC9", ""},
                             {201, "hexadecimal", "0hC9", ""},
                             {201, "base16", "0hC9", ""},
                             {25, "uint", "0u025", ""},
                             {25, "unsigned_integer", "0u025", ""},
                             {25, "base10", "0u025", ""},
                         });
}

TEST(FormatWithKeyword, LeavesPercentUnmultiplied) {
    ExpectForms(Word(8), {
                             {0, "percent", "0 %", ""},
                             {100, "percent", "100 %", ""},
                             {-0.5, "percent", "-0.5 %", ""},
                             {-0.0000001, "percent", "0 %", ""},
                             {1e16, "percent", "10000000000000000 %", ""},
                         });
    ExpectForms(Word(8, 0), {{0.4, "percent", " %", ""}, {100, "percent", "1 %", ""}});
}

TEST(FormatWithKeyword, NeverSignsABaseForm) {
    ExpectForms(Word(8, 6, true), {
                                      {0, "", "+0", ""},
                                      {1.5, "", "+1.5", ""},
                                      {-0.0000001, "", "+0", ""},
                                      {2, "percent", "+2 %", ""},
                                      {5, "hex", "0h05", ""},
                                      {-1, "hex", "0hFF", ""},
                                      {300.25, "hex", "0h2C", "(trim: 1 of +256,truncate: 0.25)"},
                                      {1e16, "bin", "+10000000000000000",
                                       "(ignore format \"bin\" since the number is too large)"},
                                  });
}

TEST(FormatWithKeyword, ReadsDecimalDigitsLow) {
    ExpectForms(Word(16), {
                              {99, "uint", "0u00099", ""},
                              {1000, "uint", "0u01000", ""},
                              {12, "uint", "0u00011", ""},
                              {1233, "uint", "0u01132", ""},
                              {65535, "uint", "0u65525", ""},
                              {0, "uint", "0u00000", ""},
                              {65536, "uint", "0u00000", "(trim: 1 of +65536)"},
                          });
}

TEST(FormatWithKeyword, IgnoresTheFormBeyondTheWholeNumbersOfADouble) {
    // The bounds belong to the double; 53 bits hold just as much.
    ExpectForms(Word(53), {
                              {9007199254740991, "hex", "0h1FFFFFFFFFFFFF", ""},
                              {-4503599627370496, "hex", "0h10000000000000", ""},
                              {-4503599627370496, "oct", "0o200000000000000000", ""},
                              {-1, "hex", "0h1FFFFFFFFFFFFF", ""},
                              {9007199254740992, "hex", "9007199254740992",
                               "(ignore format \"hex\" since the number is too large)"},
                              {-4503599627370497, "octal", "-4503599627370497",
                               "(ignore format \"octal\" since the number is too large)"},
                          });
    ExpectForms(Word(8), {
                             {9007199254740991, "hex", "0hFF", "(trim: 35184372088831 of +256)"},
                             {-4503599627370496, "hex", "0h80", "(trim: 35184372088831 of -128)"},
                             {9007199254740992, "unsigned_integer", "9007199254740992",
                              "(ignore format \"unsigned_integer\" since the number is too large)"},
                             {1e300, "base2", FormatPlain(1e300, 6),
                              "(ignore format \"base2\" since the number is too large)"},
                         });
}

TEST(FormatWithKeyword, IgnoresTheFormOfWhatIsNotFinite) {
    ExpectForms(
        Word(8),
        {
            {infinity, "", "inf", ""},
            {-infinity, "", "-inf", ""},
            {notANumber, "", "nan", ""},
            {infinity, "percent", "inf %", ""},
            {infinity, "hex", "inf", "(ignore format \"hex\" since the number is too large)"},
            {-infinity, "bin", "-inf", "(ignore format \"bin\" since the number is too large)"},
            {notANumber, "uint", "nan", "(ignore format \"uint\" since the number is too large)"},
        });
    ExpectForms(Word(8, 6, true), {
                                      {infinity, "percent", "+inf %", ""},
                                      {-infinity, "percent", "-inf %", ""},
                                      {infinity, "hex", "+inf",
                                       "(ignore format \"hex\" since the number is too large)"},
                                  });
}

TEST(FormatWithKeyword, IgnoresAFormThatItDoesNotKnow) {
    ExpectForms(
        Word(8),
        {
            {2.5, "Hex", "2.5", "(ignore format \"Hex\" since the number is too large)"},
            {2.5, "base3", "2.5", "(ignore format \"base3\" since the number is too large)"},
        });
}

TEST(FormatWithKeyword, EatsZerosOfRemarksWithoutDecimals) {
    ExpectForms(Word(8, 0), {
                                {5.25, "hex", "0h05", "(truncate: )"},
                                {-5.25, "hex", "0hFB", "(truncate: -)"},
                                {5.75, "hex", "0h05", "(truncate: 1)"},
                                {2560, "hex", "0h00", "(trim: 1 of +256)"},
                            });
    // A precision below zero counts as six decimals.
    ExpectForms(Word(8, -3), {{300.25, "hex", "0h2C", "(trim: 1 of +256,truncate: 0.25)"}});
    // What rounds away in a remark keeps its minus.
    ExpectForms(Word(8, 1), {{-5.01, "hex", "0hFB", "(truncate: -0)"}});
}

struct TrimRow {
    int bits;
    int precision;
    double amount;
    std::string_view text;
};

TEST(FormatTrimCount, CountsWordsUpwardAndHalfWordsDownward) {
    const TrimRow rows[] = {
        {8, 6, 256, "1 of +256"},
        {8, 6, 512, "2 of +256"},
        {8, 6, -128, "1 of -128"},
        {8, 6, -256, "2 of -128"},
        {2, 6, 4, "1 of +4"},
        {2, 6, -2, "1 of -2"},
        {8, 0, 2560, "1 of +256"},
        {8, 2, 2560, "10 of +256"},
        {52, 2, 4503599627370496, "1 of +4503599627370496"},
        {53, 2, 9007199254740992, "1 of +9007199254740992"},
        {53, 2, -4503599627370496, "1 of -4503599627370496"},
    };
    for (const auto& [bits, precision, amount, text] : rows) {
        SCOPED_TRACE(testing::Message() << amount << " on " << bits << " bits");
        EXPECT_EQ(FormatTrimCount(amount, Word(bits, precision)), text);
    }
}

struct BaseRow {
    double modulus;
    int base;
    double value;
    std::string_view digits;
};

TEST(FormatInBase, FillsTheWordWithZeros) {
    const BaseRow rows[] = {
        {4, 2, 0, "00"},       {4, 16, 3, "3"},
        {4, 10, 3, "3"},       {8, 2, 5, "101"},
        {8, 4, 5, "11"},       {8, 8, 5, "5"},
        {16, 8, 15, "17"},     {32, 16, 31, "1F"},
        {256, 16, 0, "00"},    {256, 10, 0, "000"},
        {256, 10, 255, "255"}, {256, 10, 12, "011"},
        {256, 16, 171, "AB"},  {65536, 16, 52719, "CDEF"},
        {1024, 10, 1, "0001"},
    };
    for (const auto& [modulus, base, value, digits] : rows) {
        SCOPED_TRACE(testing::Message() << value << " in base " << base << " of " << modulus);
        EXPECT_EQ(FormatInBase(modulus, base, value), digits);
    }
}

// --- every width against whole-number arithmetic

struct BinaryForm {
    std::string_view keyword;
    std::string_view prefix;
    int bitsPerDigit;
};
constexpr BinaryForm binaryForms[] = {
    {"bin", "0b", 1}, {"quat", "0q", 2}, {"oct", "0o", 3}, {"hex", "0h", 4}};

constexpr std::int64_t largestWhole = (std::int64_t{1} << 53) - 1;
constexpr std::int64_t smallestWhole = -(std::int64_t{1} << 52);

std::string PatternDigits(std::uint64_t pattern, int bits, int bitsPerDigit) {
    const int count = (bits + bitsPerDigit - 1) / bitsPerDigit;
    std::string digits;
    for (int digit = count - 1; digit >= 0; --digit) {
        const std::uint64_t mask = (std::uint64_t{1} << bitsPerDigit) - 1;
        digits += "0123456789ABCDEF"[(pattern >> (digit * bitsPerDigit)) & mask];
    }
    return digits;
}

// What stands on the word, and how many words or half words were taken away.
struct OnWord {
    std::uint64_t pattern;
    std::int64_t removed;
};

OnWord PutOnWord(std::int64_t number, int bits) {
    const std::int64_t modulus = std::int64_t{1} << bits;
    const std::int64_t half = modulus / 2;
    if (number >= 0) return {static_cast<std::uint64_t>(number & (modulus - 1)), number >> bits};
    if (number >= -half) return {static_cast<std::uint64_t>(number + modulus), 0};
    std::int64_t kept = number % half;
    if (kept == 0) kept = -half;
    return {static_cast<std::uint64_t>(kept + modulus), (kept - number) / half};
}

std::vector<std::int64_t> NumbersAround(int bits, std::mt19937_64& random) {
    const std::int64_t modulus = std::int64_t{1} << bits;
    std::vector<std::int64_t> numbers;
    for (const std::int64_t centre :
         {std::int64_t{0}, modulus, modulus / 2, -modulus / 2, -modulus, 3 * (modulus / 2),
          -3 * (modulus / 2), largestWhole, smallestWhole}) {
        for (std::int64_t step = -2; step <= 2; ++step) numbers.push_back(centre + step);
    }
    for (int round = 0; round < 300; ++round) {
        const auto number = static_cast<std::int64_t>(random()) >> (10 + round % 42);
        numbers.push_back(number);
    }
    std::erase_if(numbers, [](std::int64_t number) {
        return number > largestWhole || number < smallestWhole;
    });
    return numbers;
}

TEST(FormatWithKeyword, AgreesWithWholeNumberArithmeticAtEveryWidth) {
    std::mt19937_64 random(42);
    for (int bits = smallestWordBits; bits <= largestWordBits; ++bits) {
        const CalcParameters parameters = Word(bits);
        for (const std::int64_t number : NumbersAround(bits, random)) {
            SCOPED_TRACE(testing::Message() << number << " on " << bits << " bits");
            const OnWord expected = PutOnWord(number, bits);
            std::string note;
            if (expected.removed != 0) {
                const bool negative = number < 0;
                note = "(trim: " + std::to_string(expected.removed) + " of " +
                       (negative ? '-' : '+') +
                       std::to_string(std::int64_t{1} << (negative ? bits - 1 : bits)) + ")";
            }
            for (const BinaryForm& form : binaryForms) {
                const ReportLine line =
                    Format(form.keyword, static_cast<double>(number), parameters);
                ASSERT_EQ(line.value, std::string(form.prefix) +
                                          PatternDigits(expected.pattern, bits, form.bitsPerDigit));
                ASSERT_EQ(line.note, note);
            }
        }
    }
}

TEST(FormatWithKeyword, RemarksHalvesAtEveryWidth) {
    std::mt19937_64 random(43);
    for (int bits = smallestWordBits; bits <= largestWordBits; ++bits) {
        const CalcParameters parameters = Word(bits);
        for (int round = 0; round < 50; ++round) {
            const auto number = static_cast<std::int64_t>(random()) >> (14 + round % 40);
            SCOPED_TRACE(testing::Message() << number << " and a half on " << bits << " bits");
            const bool negative = number < 0;
            const ReportLine whole = Format("hex", static_cast<double>(number), parameters);
            const ReportLine line =
                Format("hex", static_cast<double>(number) + (negative ? -0.5 : 0.5), parameters);
            ASSERT_EQ(line.value, whole.value);
            const std::string truncate = negative ? "truncate: -0.5)" : "truncate: 0.5)";
            const std::string expected =
                whole.note.empty() ? "(" + truncate
                                   : whole.note.substr(0, whole.note.size() - 1) + "," + truncate;
            ASSERT_EQ(line.note, expected);
        }
    }
}

TEST(FormatInBase, ReadsEachDecimalDigitRightOrOneLow) {
    std::mt19937_64 random(44);
    int low = 0;
    for (int bits = smallestWordBits; bits <= largestWordBits; ++bits) {
        const double modulus = std::ldexp(1.0, bits);
        const std::uint64_t largest = (std::uint64_t{1} << bits) - 1;
        const std::size_t width = std::to_string(largest).size();
        for (int round = 0; round < 500; ++round) {
            const std::uint64_t number = round == 0 ? largest : (random() & largest) >> (round % 8);
            SCOPED_TRACE(testing::Message() << number << " on " << bits << " bits");
            const std::string digits = FormatInBase(modulus, 10, static_cast<double>(number));
            std::string right = std::to_string(number);
            right.insert(0, width - right.size(), '0');
            ASSERT_EQ(digits.size(), width);
            for (std::size_t at = 0; at < width; ++at) {
                ASSERT_TRUE(digits[at] == right[at] || digits[at] == right[at] - 1);
                low += digits[at] != right[at];
            }
        }
    }
    EXPECT_GT(low, 0);
}

TEST(FormatWithKeyword, TakesEveryDoubleOnEveryWord) {
    std::mt19937_64 random(45);
    const std::string_view keywords[] = {"", "percent", "bin", "quat", "oct", "hex", "uint"};
    for (int bits = smallestWordBits; bits <= largestWordBits; ++bits) {
        for (int round = 0; round < 200; ++round) {
            const auto value = std::bit_cast<double>(random());
            const CalcParameters parameters =
                Word(bits, static_cast<int>(random() % 36) - 3, round % 2 == 0);
            const std::string_view keyword = keywords[random() % std::size(keywords)];
            SCOPED_TRACE(testing::Message() << value << " as \"" << keyword << "\" on " << bits);
            const ReportLine line = Format(keyword, value, parameters);
            const bool hasForm = line.value.size() > 1 && line.value[0] == '0' &&
                                 std::string_view("bqohu").find(line.value[1]) != std::string::npos;
            const bool floatForm = keyword.empty() || keyword == "percent";
            const double whole = std::trunc(value);
            const bool fits = whole <= 9007199254740991.0 && whole >= -4503599627370496.0;
            ASSERT_EQ(hasForm, fits && !floatForm);
            ASSERT_EQ(line.note.starts_with("(ignore"), !fits && !floatForm);
        }
    }
}

}  // namespace
}  // namespace orvane
