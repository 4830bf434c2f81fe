#include "functions/validators.h"

#include <gtest/gtest.h>

#include <limits>
#include <span>
#include <string>
#include <vector>

namespace orvane {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// What a check answers and writes. It is made for sentence 7 and a function called "f".
struct Verdict {
    bool passed;
    std::string errorText;
};

template <typename Check, typename... Values>
Verdict Judge(Check check, const Values&... values) {
    Verdict verdict{};
    const CheckContext context{{"E006-", ""}, 6, "f", verdict.errorText};
    verdict.passed = check(context, values...);
    return verdict;
}

// The line that holds that message; nothing for no message.
std::string Line(const std::string& message) {
    return message.empty() ? "" : "E006- sentence  7: function \"f\": " + message + '.';
}

void ExpectVerdict(const Verdict& verdict, const char* message) {
    EXPECT_EQ(verdict.passed, *message == '\0');
    EXPECT_EQ(verdict.errorText, Line(message));
}

struct ValueRow {
    double value;
    bool passes;
};

constexpr ValueRow wordBitRows[] = {
    {2, true},
    {3, true},
    {32, true},
    {53, true},
    {54, false},
    {1, false},
    {0, false},
    {-1, false},
    {2.5, false},
    {53.5, false},
    {52.999999999999993, false},
    {infinity, false},
    {notANumber, false},
};

TEST(CheckWordBits, AcceptsTwoToFiftyThree) {
    for (const auto& [value, passes] : wordBitRows) {
        SCOPED_TRACE(value);
        ExpectVerdict(Judge(CheckWordBits, value),
                      passes ? "" : "parameter must be an integer between 2 to 53");
    }
}

struct UnsignedRow {
    double value;
    bool passes;
    bool passesWithoutZero;
};

constexpr UnsignedRow unsignedRows[] = {
    {0, true, false},           {-0.0, true, false},  {1, true, true},
    {170, true, true},          {1e300, true, true},  {-1, false, false},
    {0.5, false, false},        {-0.5, false, false}, {2.9999999999999996, false, false},
    {notANumber, false, false},
};

TEST(CheckUnsigned, PassesZeroUnlessItIsRejected) {
    constexpr const char* message = "parameter must be a positive integer";
    for (const auto& [value, passes, passesWithoutZero] : unsignedRows) {
        SCOPED_TRACE(value);
        ExpectVerdict(Judge(CheckUnsigned, value, false), passes ? "" : message);
        ExpectVerdict(Judge(CheckUnsigned, value, true), passesWithoutZero ? "" : message);
    }
}

struct ListRow {
    std::vector<double> values;
    bool passes;
    bool passesWithoutZero;
};

const ListRow listRows[] = {
    {{}, true, true},         {{1}, true, true},
    {{1, 2, 3}, true, true},  {{0}, true, false},
    {{3, 0, 3}, true, false}, {{1, 2, -1}, false, false},
    {{1.5, 2}, false, false}, {{2, notANumber}, false, false},
};

TEST(CheckUnsignedList, JudgesEveryElement) {
    constexpr const char* message = "parameter must be positive integers";
    for (const auto& [values, passes, passesWithoutZero] : listRows) {
        SCOPED_TRACE(testing::PrintToString(values));
        ExpectVerdict(Judge(CheckUnsignedList, std::span(values), false), passes ? "" : message);
        ExpectVerdict(Judge(CheckUnsignedList, std::span(values), true),
                      passesWithoutZero ? "" : message);
    }
}

struct PairRow {
    double x;
    double y;
    bool passes;
};

constexpr PairRow signRows[] = {
    {1, 2, true},   {-1, -2, true},  {0, 0, true},      {0, 5, true},
    {5, 0, true},   {-1, 0, false},  {0, -1, false},    {-1, 1, false},
    {1, -1, false}, {-0.0, 1, true}, {-0.0, -1, false}, {-0.5, -1e300, true},
};

TEST(CheckSameSign, CountsZeroAsNotNegative) {
    for (const auto& [x, y, passes] : signRows) {
        SCOPED_TRACE(testing::Message() << x << ", " << y);
        ExpectVerdict(Judge(CheckSameSign, x, y), passes ? "" : "parameters must be in same sign");
    }
}

struct OperandRow {
    double first;
    double second;
    double third;
    const char* message;
};

constexpr const char* firstMessage = "first param must be an integer >= 0";
constexpr const char* secondMessage = "second param must be an integer >= 0";
constexpr const char* thirdMessage = "third param must be an integer and < 53";

constexpr OperandRow operandRows[] = {
    {0, 0, 0, ""},
    {5, 3, 8, ""},
    {5, 3, 53, ""},
    {5, 3, -1, ""},
    {5, 3, -1e300, ""},
    {5, 3, 53.5, thirdMessage},
    {5, 3, 54, thirdMessage},
    {5, 3, 0.5, thirdMessage},
    {5, 3, -0.5, thirdMessage},
    {5, 3, notANumber, thirdMessage},
    {-1, 3, 8, firstMessage},
    {0.5, 3, 8, firstMessage},
    {5, -1, 8, secondMessage},
    {5, 2.5, 8, secondMessage},
    // the first failure stands
    {-1, -1, 54, firstMessage},
    {1, -1, 54, secondMessage},
};

TEST(CheckBitOperands, JudgesThreeParametersInTheirOrder) {
    for (const auto& [first, second, third, message] : operandRows) {
        SCOPED_TRACE(testing::Message() << first << ", " << second << ", " << third);
        ExpectVerdict(Judge(CheckBitOperands, first, second, third), message);
    }
}

constexpr ValueRow atMostRows[] = {
    {0, true},         {53, true},    {-100, true},      {52.5, true},
    {54, false},       {53.5, false}, {infinity, false}, {53.000000000000007, false},
    {-infinity, true},
};

TEST(CheckAtMost53, GivesFalseInBothCases) {
    for (const auto& [value, passes] : atMostRows) {
        SCOPED_TRACE(value);
        const Verdict verdict = Judge(CheckAtMost53, value);
        EXPECT_FALSE(verdict.passed);
        EXPECT_EQ(verdict.errorText, Line(passes ? "" : "parameter must be <= 53"));
    }
}

TEST(Validators, ShowTheCodeThatTheyAreGiven) {
    std::string errorText = "an earlier text";
    EXPECT_FALSE(CheckUnsigned({{"E005-", "05"}, 99, "matrix_minor", errorText}, -1, false));
    EXPECT_EQ(errorText,
              "E005-05 sentence 100: function \"matrix_minor\": parameter must be a positive "
              "integer.");
}

TEST(Validators, LeaveTheErrorTextAloneWhenTheValuePasses) {
    std::string errorText = "an earlier text";
    const CheckContext context{{"E006-", ""}, 0, "f", errorText};
    EXPECT_TRUE(CheckWordBits(context, 8));
    EXPECT_TRUE(CheckUnsigned(context, 1, true));
    EXPECT_TRUE(CheckUnsignedList(context, {}, true));
    EXPECT_TRUE(CheckSameSign(context, 1, 1));
    EXPECT_TRUE(CheckBitOperands(context, 1, 1, 1));
    EXPECT_FALSE(CheckAtMost53(context, 1));
    EXPECT_EQ(errorText, "an earlier text");
}

}  // namespace
}  // namespace orvane
