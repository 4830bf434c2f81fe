#include "core/evaluation.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "core/node_builder.h"
#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

using test::Compile;
using test::Evaluate;
using test::Evaluated;
using test::Rows;

TEST(EvaluateNode, GivesTheValueOfATree) {
    struct Row {
        std::string_view sheet;
        Rows rows;
    };
    const Row rows[] = {
        {"2+3*4", {{14}}},
        {"(1,2)", {{1}, {2}}},
        {"(7)", {{7}}},
        {"((7))", {{7}}},
        {"sin((0))", {{0}}},
        {"a=(1,2); a", {{1}, {2}}},
        {"a=(1,2); (a)", {{1}, {2}}},
        {"a=2; b=a*3; b-a", {{4}}},
        {"(vector_row(1,2))", {{1, 2}}},
        {"series(i,1,1,3,i)", {{6}}},
        {"series(i,1,1,3,series(j,1,1,2,i*j))", {{18}}},
        {"a=10; series(i,1,1,3,a*i)", {{60}}},
        {"if(1,(1,2),3)", {{1}, {2}}},
    };
    for (const auto& [sheet, expected] : rows) {
        SCOPED_TRACE(sheet);
        const Evaluated evaluated = Evaluate(sheet);
        EXPECT_EQ(evaluated.error, "");
        EXPECT_TRUE(evaluated.evaluated);
        EXPECT_EQ(evaluated.rows, expected);
    }
}

TEST(EvaluateNode, KeepsTheMarkOfAComplexNumberInABracket) {
    const Evaluated evaluated = Evaluate("(complex(1,2))*complex(3,4)");
    EXPECT_EQ(evaluated.error, "");
    EXPECT_TRUE(evaluated.complex);
    EXPECT_EQ(evaluated.rows, (Rows{{-5, 10}}));
}

struct MessageRow {
    std::string_view sheet, message;
};

TEST(EvaluateNode, TellsWhyASentenceHasNoValue) {
    constexpr MessageRow rows[] = {
        {"foo(1)", "E001-01 sentence  1: function \"foo\": unknown function."},
        {"1; 2; foo(1)", "E001-01 sentence  3: function \"foo\": unknown function."},
        {"hex(1)", "E001-01 sentence  1: function \"hex\": unknown function."},
        {"Sin(1)", "E001-01 sentence  1: function \"Sin\": unknown function."},
        {"a=1; a(2)", "E001-01 sentence  2: function \"a\": unknown function."},
        {"a_function_of_more_than_thirty_characters(1)",
         "E001-01 sentence  1: function \"a_function_of_more_than_thirty_characters\": unknown "
         "function."},
        {"2|x|", "E002-01 sentence  1: number format error."},
        {"true(1)", "E002-01 sentence  1: number format error."},
        {"pi(1)", "E002-01 sentence  1: number format error."},
        {"2(3)", "E002-01 sentence  1: number format error."},
        {"1,2", "E002-01 sentence  1: number format error."},
        {"a=", "E002-01 sentence  1: param format error."},
        {"hide:", "E002-01 sentence  1: param format error."},
        {"+", "E002-01 sentence  1: param format error."},
        {",1", "E002-01 sentence  1: param format error."},
        {"sin(1)2", "E002-04 sentence  1: function \"sin\": right brace."},
        {"(1)(2)", "E002-04 sentence  1: function \"\": right brace."},
        {"(1),2", "E002-04 sentence  1: function \"\": right brace."},
        {"2^-sin(1)", "E002-04 sentence  1: function \"power\": right brace."},
        // the outer name is looked up before anything inside is evaluated
        {"foo(bar(1))", "E001-01 sentence  1: function \"foo\": unknown function."},
        {"sin(bar(1),baz(2))", "E001-01 sentence  1: function \"bar\": unknown function."},
        {"sin(1,2)+bar(1)", "E006-05 sentence  1: function \"sin\": parameter count is incorrect."},
        // a bracket goes through the steps of the vector builder, with no name to show
        {"(x)", "E004-01 sentence  1: function \"\": parameters are incorrect."},
        {"(matrix((1,2),(3,4)))", "E004-02 sentence  1: function \"\": parameters are incorrect."},
        {"((1,2),3)", "E011-01 sentence  1: function \"\": parameter is incorrect."},
        // a variable that nobody sets is the affair of what uses it
        {"x+1", "E009-02 sentence  1: function \"plus\": unknown error."},
        {"sin(x)", "E011-01 sentence  1: function \"sin\": parameter is incorrect."},
    };
    for (const auto& [sheet, message] : rows) {
        SCOPED_TRACE(sheet);
        const Evaluated evaluated = Evaluate(sheet);
        EXPECT_EQ(evaluated.error, message);
        EXPECT_FALSE(evaluated.evaluated);
    }
}

TEST(EvaluateNode, LeavesAVariableAloneWithoutAnError) {
    for (const std::string_view sheet : {"x", "falsehood", "sin", "x=x"}) {
        SCOPED_TRACE(sheet);
        const test::CompiledSheet compiled = Compile(sheet);
        EXPECT_TRUE(compiled.succeeded);
        EXPECT_EQ(compiled.sentences[0].error, "");
        EXPECT_EQ(compiled.sentences[0].root.kind, NodeKind::variable);
        EXPECT_FALSE(compiled.sentences[0].root.evaluated);
    }
}

// Kept: the number in this message is the index from zero, one less than everywhere else.
TEST(References, NameTheIndexOfTheSentenceThatUsesThem) {
    constexpr MessageRow rows[] = {
        {"y = x; z = y + 1", "sentence 1 was not calculated because it uses formula name \"y\""},
        {"y = x; y", "sentence 1 was not calculated because it uses formula name \"y\""},
        {"text: t; y = foo(1); define: d=y; 2*d",
         "sentence 3 was not calculated because it uses formula name \"y\""},
        {"a = 1+x; b = 2*a; c = b",
         "sentence 2 was not calculated because it uses formula name \"b\""},
        {"a_name_of_more_than_thirty_characters = x; a_name_of_more_than_thirty_characters",
         "sentence 1 was not calculated because it uses formula name "
         "\"a_name_of_more_than_thirty_characters\""},
    };
    for (const auto& [sheet, message] : rows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(Evaluate(sheet).error, message);
    }
}

TEST(Condition, TakesOneBranchAndTouchesNoOther) {
    struct Row {
        std::string_view sheet;
        double value;
    };
    constexpr Row rows[] = {
        {"if(1,2,nosuch(1))", 2},   {"if(0,nosuch(1),3)", 3},
        {"if(-1,5,6)", 5},          {"if(0.5,5,6)", 5},
        {"if(-1,5,6,7)", 5},        {"if(0,5,6,7)", 6},
        {"if(1,5,6,7)", 7},         {"if(-0.1,5,x,1/0)", 5},
        {"if(0,1/0,6,ln(0))", 6},   {"if(1,1/0,ln(0),7)", 7},
        {"if(0,1/0,2)", 2},         {"if(1>2,3,4)", 4},
        {"if(1,if(0,1,2),3)+1", 3}, {"if((0),1,2)", 2},
        {"a=0; if(a,1,2)", 2},      {"series(i,-1,1,3,if(i,1,10,100))", 111},
    };
    for (const auto& [sheet, value] : rows) {
        SCOPED_TRACE(sheet);
        const Evaluated evaluated = Evaluate(sheet);
        EXPECT_EQ(evaluated.error, "");
        EXPECT_EQ(evaluated.rows, (Rows{{value}}));
    }
}

TEST(Condition, FailsByItsCountItsConditionAndItsBranch) {
    constexpr MessageRow rows[] = {
        {"if(1)", "E001-03 sentence  1: function \"if\": parameter count is incorrect."},
        {"if(1,2)", "E001-03 sentence  1: function \"if\": parameter count is incorrect."},
        {"if(1,2,3,4,5)", "E001-03 sentence  1: function \"if\": parameter count is incorrect."},
        {"if(nosuch(1),2)", "E001-03 sentence  1: function \"if\": parameter count is incorrect."},
        {"if((1,2),1,2)", "E001-04 sentence  1: function \"if\": parameter is incorrect."},
        {"if(complex(1,2),1,2)", "E001-04 sentence  1: function \"if\": parameter is incorrect."},
        {"if(x,1,2)", "E001-04 sentence  1: function \"if\": parameter is incorrect."},
        {"if(nosuch(1),1,2)", "E001-01 sentence  1: function \"nosuch\": unknown function."},
        {"if(1,nosuch(1),2)", "E001-01 sentence  1: function \"nosuch\": unknown function."},
        {"if(1,1/0,2)",
         "E009-41 sentence  1: function \"divide\": generates an infinite or unaccepted number."},
    };
    for (const auto& [sheet, message] : rows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(Evaluate(sheet).error, message);
    }
}

TEST(Condition, TakesABranchWithoutAValueAsItIs) {
    const Evaluated evaluated = Evaluate("if(1,x,2)");
    EXPECT_EQ(evaluated.error, "");
    EXPECT_TRUE(evaluated.evaluated);
    EXPECT_TRUE(evaluated.rows.empty());
}

// A tree of one sentence, evaluated without the stages in front.
struct BareTree {
    SentenceList sentences;
    std::string text, error;

    explicit BareTree(std::string_view form) : text(form) {
        sentences.Add("");
        BuildNode(Root(), sentences, 0, CalcParameters(), text, error);
    }
    FunctionNode& Root() { return sentences[0].root; }
    void Evaluate() { EvaluateNode(Root(), 0, CalcParameters(), error); }
};

TEST(EvaluateNode, HasNoFamilyForStringFunctions) {
    BareTree bare("strlen(1)");
    bare.Evaluate();
    EXPECT_EQ(bare.error, "E001-05 sentence  1: function \"strlen\": unknown function type.");
    EXPECT_FALSE(bare.Root().evaluated);

    BareTree inner("strlen(nosuch(1))");
    inner.Evaluate();
    EXPECT_EQ(inner.error, "E001-01 sentence  1: function \"nosuch\": unknown function.");
}

TEST(EvaluateNode, DoesNothingBehindAnError) {
    BareTree bare("plus(1,2)");
    ASSERT_EQ(bare.error, "");
    bare.error = "earlier";
    bare.Evaluate();
    EXPECT_EQ(bare.error, "earlier");
    EXPECT_FALSE(bare.Root().evaluated);
}

TEST(EvaluateNode, DoesNothingForWhatIsEvaluated) {
    BareTree bare("plus(1,2)");
    bare.Root().result.SetReal(99);
    bare.Root().evaluated = true;
    bare.Evaluate();
    EXPECT_EQ(bare.Root().result.At(0, 0), 99);
    EXPECT_EQ(bare.error, "");
}

TEST(EvaluateNode, EvaluatesAgainWhenTheVariableHasMoved) {
    BareTree bare("plus(times(x,x),y)");
    for (const double x : {2.0, 3.0, -4.0}) {
        SCOPED_TRACE(x);
        ExpandVariable(bare.Root(), "y", 1);
        ExpandVariable(bare.Root(), "x", x);
        bare.Evaluate();
        EXPECT_EQ(bare.error, "");
        EXPECT_TRUE(bare.Root().evaluated);
        EXPECT_EQ(test::RowsOf(bare.Root().result), (Rows{{x * x + 1}}));
    }
}

TEST(EvaluateNode, DispatchesACallWithoutParameters) {
    BareTree bare("sin()");
    ASSERT_EQ(bare.error, "");
    bare.Evaluate();
    EXPECT_EQ(bare.error, "E006-05 sentence  1: function \"sin\": parameter count is incorrect.");

    BareTree brace("()");
    ASSERT_EQ(brace.error, "");
    brace.Evaluate();
    EXPECT_EQ(brace.error, "E004-01 sentence  1: function \"\": parameters are incorrect.");
}

}  // namespace
}  // namespace orvane
