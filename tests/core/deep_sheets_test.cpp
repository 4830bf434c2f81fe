#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <string>
#include <string_view>

#include "tests/support/sheet_run.h"
#include "tests/support/stage_run.h"

// Sheets with a hundred thousand of something. What is deep must not end up on the stack, and what
// is long must not cost its square: with either, these tests would not come to an end.

namespace orvane {
namespace {

using test::Evaluate;
using test::Evaluated;
using test::Repeat;
using test::Rows;
using test::SameBits;

constexpr int many = 100'000;

std::string Join(std::initializer_list<std::string_view> pieces) {
    std::string text;
    for (const std::string_view piece : pieces) text += piece;
    return text;
}

std::string Chain(std::string_view head, std::string_view repeated, std::string_view tail = {}) {
    return Join({head, Repeat(repeated, many), tail});
}

std::string Nest(std::string_view open, std::string_view core, std::string_view close) {
    return Join({Repeat(open, many), core, Repeat(close, many)});
}

void ExpectNumber(std::string_view sheet, double value) {
    SCOPED_TRACE(std::string(sheet.substr(0, 40)));
    const Evaluated evaluated = Evaluate(sheet);
    EXPECT_EQ(evaluated.error, "");
    ASSERT_EQ(evaluated.rows.size(), 1u);
    ASSERT_EQ(evaluated.rows[0].size(), 1u);
    EXPECT_TRUE(SameBits(evaluated.rows[0][0], value)) << evaluated.rows[0][0];
}

TEST(LongSheets, ChainOperators) {
    struct Row {
        std::string_view first, repeated;
        double value;
    };
    constexpr Row rows[] = {
        {"1", "+1", many + 1},
        {"1", "+-1", 1 - many},
        {"1", "*-1", 1},
        {"1", "^1", 1},
        {"1", "<<0", 1},
        {"1", "<1", 1},
        {"1", "!", 1},
        {"|1|", "+|1|", many + 1},
        {"(1)", "+(1)", many + 1},
        {"1", "+sin(0)", 1},
        {"0", "+2*3-4/2", 4 * many},
    };
    for (const auto& [first, repeated, value] : rows) ExpectNumber(Chain(first, repeated), value);
}

TEST(LongSheets, HaveRunsOfSigns) {
    ExpectNumber(Chain("1", "+", "1"), 2);
    ExpectNumber(Chain("1", "-", "1"), 2);
    ExpectNumber(Chain("1-", "- -", "1"), 0);
}

TEST(DeepSheets, NestBracketsAndCalls) {
    struct Row {
        std::string_view open, core, close;
        double value;
    };
    constexpr Row rows[] = {
        {"(", "7", ")", 7},       {"((", "7", "))", 7},     {"[", "7", "}", 7},
        {"(1+", "0", ")", many},  {"(", "0", "+1)", many},  {"1^(", "1", ")", 1},
        {"-(", "1", ")", 1},      {"(", "1", ")!", 1},      {"sin(", "0", ")", 0},
        {"max(1,", "2", ")", 2},  {"if(1,", "5", ",2)", 5}, {"if(0,1,", "5", ")", 5},
        {"if(", "1", ",1,2)", 1},
    };
    for (const auto& [open, core, close, value] : rows) {
        ExpectNumber(Nest(open, core, close), value);
    }
    // With an odd count of signs.
    ExpectNumber(Join({"-(", Nest("-(", "1", ")"), ")"}), -1);
}

TEST(DeepSheets, EvaluateEveryLevel) {
    double value = 1.0;
    for (int i = 0; i < many; ++i) value = std::sin(value);
    ExpectNumber(Nest("sin(", "1", ")"), value);
}

TEST(DeepSheets, FailAtTheirBottom) {
    struct Row {
        std::string_view open, core, close, message;
    };
    constexpr Row rows[] = {
        {"(", "nosuch(1)", ")", "E001-01 sentence  1: function \"nosuch\": unknown function."},
        {"(1+", "1(2)", ")", "E002-04 sentence  1: function \"plus\": right brace."},
        {"(", "2(3)", ")", "E002-01 sentence  1: number format error."},
        {"if(1,", "nosuch(1)", ",2)",
         "E001-01 sentence  1: function \"nosuch\": unknown function."},
        {"sin(", "1,2", ")",
         "E006-05 sentence  1: function \"sin\": parameter count is incorrect."},
        {"nosuch(", "1", ")", "E001-01 sentence  1: function \"nosuch\": unknown function."},
        {"(", "1", "", "C001-08: brace in sentence 1 is not matched properly."},
        {"sin(", "", ")", "C002-05: symbol \"()\" is incorrect in sentence 1."},
        {"(1*", "", ")", "C002-10: operator \"*\" is used incorrect in sentence 1."},
    };
    for (const auto& [open, core, close, message] : rows) {
        SCOPED_TRACE(std::string(open));
        EXPECT_EQ(Evaluate(Nest(open, core, close)).error, message);
    }
}

TEST(LongSheets, ListParameters) {
    ExpectNumber(Chain("sum(", "1,", "1)"), many + 1);
    ExpectNumber(Chain("count(", "1,", "1)"), many + 1);
    ExpectNumber(Chain("max(", "(1),", "2)"), 2);
    const Evaluated list = Evaluate(Chain("(", "1,", "1)"));
    EXPECT_EQ(list.error, "");
    EXPECT_EQ(list.rows, Rows(many + 1, {1}));
}

TEST(LongSheets, UseNames) {
    ExpectNumber(Chain("", "true+", "0"), many);
    ExpectNumber(Chain("define: d=2;", "d+", "0"), 2 * many);
    ExpectNumber(Chain("a=2;", "a+", "0"), 2 * many);
    ExpectNumber(Chain("0", "+strlen(\"ab\")"), 2 * many);

    double sum = 0;
    for (int i = 0; i < many; ++i) sum += 3.141592653589793;
    ExpectNumber(Chain("0", "+pi"), sum);
}

TEST(LongSheets, HoldManySentences) {
    ExpectNumber(Chain("", "1;\n"), 1);
    ExpectNumber(Chain("", ";", "1"), 1);
    ExpectNumber(Chain("", "text: x;", "1"), 1);

    std::string formulas = "a0=1;";
    std::string defines = "define: d0=2;";
    for (int i = 1; i <= many; ++i) {
        const std::string number = std::to_string(i);
        formulas += Join({"a", number, "=a", std::to_string(i - 1), "+1;"});
        defines += Join({"define: d", number, "=2;"});
    }
    ExpectNumber(formulas, many + 1);
    ExpectNumber(defines + "d100000+d0", 4);
}

TEST(LongSheets, HoldManyCommentsBlanksAndStrings) {
    ExpectNumber(Chain("", "// x\n", "1"), 1);
    ExpectNumber(Chain("1", "          ", "+1"), 2);
    ExpectNumber(Chain("1", "\t\n\r", "+1"), 2);
    ExpectNumber(Chain("strlen(", "\"a\"", ")"), many);
}

TEST(DeepSheets, SubstituteDefinesIntoDefines) {
    std::string sheet = "define: d0=1;";
    for (int i = 1; i < 1000; ++i) {
        sheet += Join({"define: d", std::to_string(i), "=d", std::to_string(i - 1), "+1;"});
    }
    ExpectNumber(sheet + "d999", 1000);
}

}  // namespace
}  // namespace orvane
