#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/function_node.h"
#include "functions/function_bodies.h"
#include "tests/functions/family_call.h"
#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

using test::ErrorRow;
using test::Evaluate;
using test::ExpectErrors;
using test::ExpectNumbers;
using test::NumberRow;

TEST(If, PicksItsBranchByTheCondition) {
    constexpr NumberRow rows[] = {
        {"if(5, 10, 20)", 10},     {"if(-5, 10, 20)", 10},           {"if(0.001, 10, 20)", 10},
        {"if(0, 10, 20)", 20},     {"if(-0.0, 10, 20)", 20},         {"if(-1, 10, 20, 30)", 10},
        {"if(0, 10, 20, 30)", 20}, {"if(5, 10, 20, 30)", 30},        {"if(-1,5,6,7)", 5},
        {"if(1,5,6,7)", 7},        {"if(if(0,1,0),2,if(1,3,4))", 3}, {"if(2 > 1, 10, 20)", 10},
        {"a = 0; if(a, 1, 2)", 2},
    };
    ExpectNumbers(rows);
}

TEST(If, LeavesTheOtherBranchesAlone) {
    constexpr NumberRow rows[] = {
        {"if(0, 1/0, 2)", 2},           {"if(1, 2, 1/0)", 2},
        {"if(1,2,nosuch(1))", 2},       {"if(1, 2, nosuch)", 2},
        {"if(-1, 3, 1/0, ln(0))", 3},   {"if(0, sqrt(-1), 4, ln(0))", 4},
        {"if(7, sqrt(-1), 1/0, 5)", 5},
    };
    ExpectNumbers(rows);
}

TEST(If, GivesAValueOfAnyShape) {
    EXPECT_EQ(Evaluate("if(1, point(1,-2), 3)").rows, (test::Rows{{1}, {-2}}));
    EXPECT_EQ(Evaluate("if(0, 3, vector_row(1,2))").rows, (test::Rows{{1, 2}}));
    EXPECT_EQ(Evaluate("if(0, 3, matrix(point(1,2),point(3,4)))").rows,
              Evaluate("matrix(point(1,2),point(3,4))").rows);
    const test::Evaluated complex = Evaluate("if(1, complex(1,2), 3)");
    EXPECT_TRUE(complex.complex);
    EXPECT_EQ(complex.rows, (test::Rows{{1, 2}}));
}

TEST(If, FailsWithItsPickedBranch) {
    constexpr ErrorRow rows[] = {
        {"if(1, ln(0), 2)",
         "E006-10 sentence  1: function \"ln\": generates an infinite or unaccepted number."},
        {"if(0, 1, nosuch(1))", "E001-01 sentence  1: function \"nosuch\": unknown function."},
        {"if(ln(0), 1, 2)",
         "E006-10 sentence  1: function \"ln\": generates an infinite or unaccepted number."},
    };
    ExpectErrors(rows);
}

TEST(If, WantsThreeOrFourParametersBeforeItLooksAtOne) {
    constexpr std::string_view message =
        "E001-03 sentence  1: function \"if\": parameter count is incorrect.";
    const ErrorRow rows[] = {
        {"if(1)", message},
        {"if(1,2)", message},
        {"if(1,2,3,4,5)", message},
        {"if(ln(0),2)", message},
    };
    ExpectErrors(rows);
}

TEST(If, WantsANumberForACondition) {
    constexpr std::string_view message =
        "E001-04 sentence  1: function \"if\": parameter is incorrect.";
    const ErrorRow rows[] = {
        {"if(point(1,2), 3, 4)", message},
        {"if((1,2), 3, 4, 5)", message},
        {"if(complex(1,2), 3, 4)", message},
        {"if(x, 3, 4)", message},
    };
    ExpectErrors(rows);
}

// --- the choice itself, on conditions that no sheet can spell

struct Choice {
    int index = -1;  // of the chosen child, -1 for none
    std::string error;
};

Choice ChooseFor(double condition, std::size_t childCount) {
    NodePool pool;
    pool.Reserve(childCount);
    FunctionNode node;
    node.functionName = "if";
    node.children = pool.Take(childCount);
    node.children[0].result.SetReal(condition);
    const CalcParameters parameters;
    Choice choice;
    const FamilyCall call{node, nullptr, 0, parameters, choice.error};
    const FunctionNode* first = EvaluateIf(call, false);
    EXPECT_EQ(first, &node.children[0]);
    const FunctionNode* chosen = EvaluateIf(call, true);
    if (chosen != nullptr) choice.index = static_cast<int>(chosen - &node.children[0]);
    return choice;
}

TEST(If, GivesABranchForConditionsThatAreNotFinite) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
    struct Row {
        double condition;
        std::size_t childCount;
        int index;
    };
    constexpr Row rows[] = {
        {infinity, 3, 1}, {-infinity, 3, 1}, {noNumber, 3, 1},
        {infinity, 4, 3}, {-infinity, 4, 1}, {noNumber, 4, 3},
    };
    for (const auto& [condition, childCount, index] : rows) {
        SCOPED_TRACE(::testing::Message() << condition << " of " << childCount);
        const Choice choice = ChooseFor(condition, childCount);
        EXPECT_EQ(choice.index, index);
        EXPECT_EQ(choice.error, "");
    }
}

}  // namespace
}  // namespace orvane
