#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/text_scan.h"
#include "tests/support/sheet_run.h"

// All pairs of binary operators against both ways of bracketing them.

namespace orvane {
namespace {

struct OperatorRow {
    std::string text;
    int level;  // 1 binds tightest
};
const std::vector<OperatorRow> operators = {{"^", 1}, {"<<", 2}, {">>", 2}, {"*", 3},  {"/", 3},
                                            {"%", 3}, {">=", 4}, {"<=", 4}, {"==", 4}, {"<>", 4},
                                            {">", 4}, {"<", 4},  {"+", 5},  {"-", 5}};

// The call text that a formula becomes, without the brackets that only group.
std::string CallsOf(const std::string& sheet) {
    const test::CompiledSheet compiled = test::Compile(sheet);
    EXPECT_EQ(compiled.errorText, "") << sheet;
    std::string calls;
    std::vector<bool> kept;
    for (const char c : compiled.sentences[0].text.View()) {
        if (c == '(') kept.push_back(!calls.empty() && IsWordChar(calls.back()));
        const bool grouping = (c == '(' || c == ')') && !kept.back();
        if (!grouping) calls += c;
        if (c == ')') kept.pop_back();
    }
    return calls;
}

TEST(Precedence, DecidesBetweenTheBracketingsOfEveryPairOfOperators) {
    for (const OperatorRow& first : operators) {
        for (const OperatorRow& second : operators) {
            SCOPED_TRACE(first.text + " then " + second.text);
            const std::string plain = CallsOf("7" + first.text + "3" + second.text + "2");
            const std::string left = CallsOf("(7" + first.text + "3)" + second.text + "2");
            const std::string right = CallsOf("7" + first.text + "(3" + second.text + "2)");
            // Operators of one level go from the left.
            EXPECT_EQ(plain, first.level <= second.level ? left : right);
            EXPECT_NE(left, right);
        }
    }
}

struct SurpriseRow {
    std::string sheet;
    double value;
};
const std::vector<SurpriseRow> surprises = {
    {"1+2>2", 1},    // 1 + (2 > 2)
    {"1<<2+1", 5},   // (1 << 2) + 1
    {"2*3<<1", 12},  // 2 * (3 << 1)
    {"2^3^2", 64},   // (2 ^ 3) ^ 2
    {"-2^2", -4},    // -(2 ^ 2)
    {"-2*3", -6},    // -(2 * 3)
    {"2^-1", 0.5},   // the sign belongs to the operand behind
    {"2*-3", -6},    //
    {"3!^2", 36},    // (3!) ^ 2
    {"2^3!", 64},    // 2 ^ (3!)
    {"|1-3|!", 2},   // |1 - 3|!
    {"8-3-2", 3},    // (8 - 3) - 2
    {"16/4/2", 2},   // (16 / 4) / 2
    {"5>4>3", 0},    // (5 > 4) > 3
    {"1==1<>0", 1},  // (1 == 1) <> 0
    {"2-1==1", 1},   // 2 - (1 == 1)
    {"+2", 2},       //
    {"- - -2", -2},  // an odd run of signs
    {"3---2", 1},    // 3 - 2
    {"10%4*2", 4}};  // (10 % 4) * 2

TEST(Precedence, HoldsItsSurprises) {
    for (const auto& [sheet, value] : surprises) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(test::NumberFrom(sheet), value);
    }
}

}  // namespace
}  // namespace orvane
