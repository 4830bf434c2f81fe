#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "tests/functions/family_call.h"
#include "tests/support/sheet_run.h"

// The date members of the normal family.

namespace orvane {
namespace {

using test::CallOnNumbers;
using test::Evaluate;
using test::ExpectNumbers;
using test::NumberFrom;
using test::NumberRow;
using test::SameBits;

constexpr std::string_view dateKeywords[] = {"days", "days_of_the_year", "weekday"};

void ExpectDateError(std::string_view date, std::string_view words) {
    for (const std::string_view keyword : dateKeywords) {
        const std::string sheet = std::string(keyword).append(date);
        SCOPED_TRACE(sheet);
        const test::Evaluated evaluated = Evaluate(sheet);
        EXPECT_EQ(evaluated.error, "E006-05 sentence  1: function \"" + std::string(keyword) +
                                       "\": " + std::string(words) + ".");
        EXPECT_FALSE(evaluated.evaluated);
    }
}

TEST(Dates, GiveTheseNumbers) {
    constexpr NumberRow rows[] = {
        {"days(1, 1, 1)", 1},
        {"days(2, 1, 1)", 356},
        {"days(5, 1, 1)", 1422},
        {"days(2000, 3, 1)", 710205},  // 355 x 1999 + 499 + 61
        {"days_of_the_year(1, 1, 1)", 1},
        {"days_of_the_year(2001, 3, 1)", 60},
        {"days_of_the_year(2000, 3, 1)", 61},
        {"days_of_the_year(1900, 3, 1)", 61},
        {"days_of_the_year(2100, 12, 31)", 366},
        {"days_of_the_year(2001, 12, 31)", 365},
        {"days_of_the_year(2000, 2, 29)", 60},
        {"weekday(1, 1, 1)", 1},
        {"weekday(1, 1, 5)", 4.999999999999999},
        {"weekday(1, 1, 7)", 0},
        {"weekday(1, 1, 8)", 0.9999999999999996},
    };
    ExpectNumbers(rows);
}

// Every day of a common and of a leap year, one after the other.
TEST(Dates, CountTheDaysOfAYear) {
    constexpr int monthLengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (const int year : {1900, 2001, 2002, 2003, 2004}) {
        int dayOfYear = 0;
        for (int month = 1; month <= 12; ++month) {
            const int leapDay = month == 2 && year % 4 == 0 ? 1 : 0;
            for (int day = 1; day <= monthLengths[month - 1] + leapDay; ++day) {
                ++dayOfYear;
                SCOPED_TRACE(::testing::Message() << year << '-' << month << '-' << day);
                const std::vector<double> date = {1.0 * year, 1.0 * month, 1.0 * day};
                const double days = 355 * (year - 1) + (year - 1) / 4 + dayOfYear;
                double whole = 0.0;
                const double weekday = std::modf(days * 0.14285714285714285, &whole) * 7.0;
                EXPECT_EQ(CallOnNumbers("days_of_the_year", date).number, dayOfYear);
                EXPECT_EQ(CallOnNumbers("days", date).number, days);
                EXPECT_TRUE(SameBits(CallOnNumbers("weekday", date).number, weekday));
            }
        }
        EXPECT_EQ(dayOfYear, year % 4 == 0 ? 366 : 365);
    }
}

TEST(Dates, WantThreeParameters) {
    ExpectDateError("(2000)", "parameter count is incorrect");
    ExpectDateError("(2000, 1)", "parameter count is incorrect");
    ExpectDateError("(2000, 1, 1, 1)", "parameter count is incorrect");
}

TEST(Dates, WantAYearAMonthAndADayInThisOrder) {
    for (const std::string_view date : {"(0, 1, 1)", "(-1, 1, 1)", "(1.5, 1, 1)", "(0, 13, 99)"}) {
        ExpectDateError(date, "first parameter (year) must be an integer >0");
    }
    for (const std::string_view date :
         {"(2001, 13, 1)", "(2001, 0, 1)", "(2001, 1.5, 1)", "(2001, -1, 99)"}) {
        ExpectDateError(date, "second parameter (month) must be an integer between 1 to 12");
    }
    ExpectDateError("(2001, 2, 29)", "third parameter (day) must be an integer between 1 to 28");
    ExpectDateError("(2000, 2, 30)", "third parameter (day) must be an integer between 1 to 29");
    ExpectDateError("(1900, 2, 30)", "third parameter (day) must be an integer between 1 to 29");
    ExpectDateError("(2001, 1, 0)", "third parameter (day) must be an integer between 1 to 31");
    ExpectDateError("(2001, 1, 1.5)", "third parameter (day) must be an integer between 1 to 31");
}

TEST(Dates, KnowHowLongEachMonthIs) {
    constexpr int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int month = 1; month <= 12; ++month) {
        const std::string length = std::to_string(lengths[month - 1]);
        const std::string past = std::to_string(lengths[month - 1] + 1);
        const std::string start = "(2001," + std::to_string(month) + ",";
        EXPECT_EQ(Evaluate("days" + start + length + ")").error, "");
        ExpectDateError(start + past + ")",
                        "third parameter (day) must be an integer between 1 to " + length);
    }
}

// The year wraps into 32 bits, and the rounding behind it finds a difference: one more year.
TEST(Dates, WrapYearsBeyondThirtyTwoBits) {
    constexpr NumberRow rows[] = {
        {"days(2147483647, 1, 1)", 762893565242.0},  // 355 x 2147483646 + 536870911 + 1, exactly
        {"days(4294967297, 1, 1)", 356},
        {"days(4294967296, 1, 1)", 1},
        {"days(4294967295, 1, 1)", -354},   // year 0
        {"days(4294967294, 1, 1)", -709},   // year -1
        {"days(4294967290, 1, 1)", -2130},  // year -5, and -6 / 4 is -1
        {"days_of_the_year(4294967295, 2, 29)", 60},
        {"days_of_the_year(4294967291, 2, 29)", 60},
    };
    ExpectNumbers(rows);
    EXPECT_EQ(
        Evaluate("days_of_the_year(4294967294, 2, 29)").error,
        "E006-05 sentence  1: function \"days_of_the_year\": third parameter (day) must be an "
        "integer between 1 to 28.");
    EXPECT_LT(NumberFrom("weekday(4294967294, 1, 1)"), 0.0);
    EXPECT_LT(NumberFrom("days(2147483648, 1, 1)"), -700000000000.0);
    for (const double year : {1e18, 1e300, std::numeric_limits<double>::infinity()}) {
        SCOPED_TRACE(year);
        for (const std::string_view keyword : dateKeywords) {
            EXPECT_TRUE(CallOnNumbers(keyword, std::vector{year, 1.0, 1.0}).stored);
        }
    }
}

}  // namespace
}  // namespace orvane
