#include "functions/step_call.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "functions/function_bodies.h"
#include "tests/support/sheet_run.h"
#include "tests/support/sweep_text.h"

namespace orvane {
namespace {

using test::Compile;
using test::CountingProgress;
using test::Evaluate;
using test::Evaluated;
using test::NumberFrom;
using test::Rows;

constexpr const char* plainNames[] = {"series",
                                      "product",
                                      "equation_root",
                                      "integral_area_xy",
                                      "integral_area_polar",
                                      "integral_curve_xy",
                                      "integral_curve_polar",
                                      "locus_xy",
                                      "locus_polar"};
constexpr const char* parametricNames[] = {"integral_area_parametric_xy",
                                           "integral_area_parametric_polar",
                                           "integral_curve_parametric", "locus_parametric"};

// 1 and 200 zeros: its square is infinite, and no operator minds.
const std::string huge = "1" + std::string(200, '0');

std::string MessageOf(const std::string& code, const std::string& name, const std::string& words) {
    return code + " sentence  1: function \"" + name + "\": " + words + ".";
}

int ProgressSteps(const std::string& sheet) {
    CountingProgress progress;
    CalcParameters parameters;
    parameters.progress = &progress;
    Evaluate(sheet, parameters);
    return progress.steps;
}

// A body that reads a second function must stand in a row that asks for one.
TEST(SweepParameters, AreReadInTheFormOfTheRow) {
    for (const KeywordEntry& row : keywordRows) {
        if (row.group != KeywordGroup::variable) continue;
        SCOPED_TRACE(row.name);
        const SweepForm form = row.body.sweepForm;
        EXPECT_NE(row.body.step, nullptr);
        EXPECT_EQ(form.shape == SweepShape::parametric, row.minParams == 6);
        EXPECT_EQ(form.stepIsGiven, row.body.step == Series || row.body.step == Product);
    }
}

TEST(SweepParameters, AreFiveOrSixForOneBody) {
    for (const std::string name : plainNames) {
        SCOPED_TRACE(name);
        const std::string wrongCount = MessageOf("E008-07", name, "needs 5 or 6 parameters");
        EXPECT_EQ(Evaluate(name + "(x)").error, wrongCount);
        EXPECT_EQ(Evaluate(name + "(x,1,2,2)").error, wrongCount);
        EXPECT_EQ(Evaluate(name + "(x,1,2,2,x,1,1)").error, wrongCount);
        EXPECT_EQ(Evaluate(name + "(x,1,2,2,x)").error, "");
        EXPECT_EQ(Evaluate(name + "(x,1,2,2,x,1)").error, "");
    }
}

TEST(SweepParameters, AreSixOrSevenForTwoBodies) {
    for (const std::string name : parametricNames) {
        SCOPED_TRACE(name);
        const std::string wrongCount = MessageOf("E008-06", name, "needs 6 or 7 parameters");
        EXPECT_EQ(Evaluate(name + "(x)").error, wrongCount);
        EXPECT_EQ(Evaluate(name + "(x,1,2,2,x)").error, wrongCount);
        EXPECT_EQ(Evaluate(name + "(x,1,2,2,x,x,1,1)").error, wrongCount);
        EXPECT_EQ(Evaluate(name + "(x,1,2,2,x,x)").error, "");
        EXPECT_EQ(Evaluate(name + "(x,1,2,2,x,x,1)").error, "");
    }
}

TEST(SweepParameters, AreCheckedInOrderForEachName) {
    const auto checkTail = [](const std::string& name, const std::string& bodies) {
        SCOPED_TRACE(name);
        const std::string countWords =
            "forth parameter is step count,which must be an integer >= 1";
        EXPECT_EQ(Evaluate(name + "(3,1,2,2," + bodies + ")").error,
                  MessageOf("E008-08", name, "variable name is incorrect"));
        EXPECT_EQ(Evaluate(name + "(x,1,(2,3),2," + bodies + ")").error,
                  MessageOf("E008-09", name, "parameter is incorrect"));
        EXPECT_EQ(Evaluate(name + "(x,1,2,0," + bodies + ")").error,
                  MessageOf("E008-10", name, countWords));
        EXPECT_EQ(Evaluate(name + "(x,1,2,2147483648," + bodies + ")").error,
                  MessageOf("E008-13", name, "step count must be >= 1"));
    };
    for (const std::string name : plainNames) {
        checkTail(name, "x");
        EXPECT_EQ(Evaluate(name + "(x,1,2,2,x,(1,2))").error,
                  MessageOf("E008-12", name, "parameter 6 is incorrect"));
    }
    for (const std::string name : parametricNames) {
        checkTail(name, "x,x");
        EXPECT_EQ(Evaluate(name + "(x,1,2,2,x,x,(1,2))").error,
                  MessageOf("E008-11", name, "parameter 7 is incorrect"));
    }
}

struct MessageRow {
    std::string sheet;
    std::string error;
};

TEST(SweepParameters, FailWithTheFirstMessage) {
    const std::string nonFinite = "generates an infinite or unaccepted number";
    const std::string countWords = "forth parameter is step count,which must be an integer >= 1";
    const MessageRow rows[] = {
        // The count, then the name, then the bounds.
        {"series(3,1,1)", MessageOf("E008-07", "series", "needs 5 or 6 parameters")},
        {"series(3,inv(0),1,3,1)", MessageOf("E008-08", "series", "variable name is incorrect")},
        {"series((i),1,1,3,1)", MessageOf("E008-08", "series", "variable name is incorrect")},
        {"series(sin(1),1,1,3,1)", MessageOf("E008-08", "series", "variable name is incorrect")},
        {"a=1;series(a,1,1,3,1)",
         "E008-08 sentence  2: function \"series\": variable name is incorrect."},
        // Bounds: all are evaluated, then all are looked at.
        {"series(i,(1,2),1,3,i)", MessageOf("E008-09", "series", "parameter is incorrect")},
        {"series(i,1,(1,2),3,i)", MessageOf("E008-09", "series", "parameter is incorrect")},
        {"series(i,1,1,(1,2),i)", MessageOf("E008-09", "series", "parameter is incorrect")},
        {"series(i,1,1,complex(1,2),i)", MessageOf("E008-09", "series", "parameter is incorrect")},
        {"series(i,q,1,3,i)", MessageOf("E008-09", "series", "parameter is incorrect")},
        {"series(i,i,1,3,i)", MessageOf("E008-09", "series", "parameter is incorrect")},
        {"series(i,inv(0),1,3,i)", MessageOf("E006-10", "inv", nonFinite)},
        {"series(i,(1,2),inv(0),3,i)", MessageOf("E006-10", "inv", nonFinite)},
        {"series(i,inv(0),ln(0),3,i)", MessageOf("E006-10", "inv", nonFinite)},
        {"series(i,1,1,inv(0),i)", MessageOf("E006-10", "inv", nonFinite)},
        // The step count, in front of the option.
        {"series(i,1,1,0,i)", MessageOf("E008-10", "series", countWords)},
        {"series(i,1,1,2.5,i)", MessageOf("E008-10", "series", countWords)},
        {"series(i,1,1,-1,i)", MessageOf("E008-10", "series", countWords)},
        {"series(i,1,1," + huge + "*" + huge + "-" + huge + "*" + huge + ",i)",
         MessageOf("E008-10", "series", countWords)},
        {"series(i,1,1,0,i,(1,2))", MessageOf("E008-10", "series", countWords)},
        // The option, in front of the wrapped count.
        {"series(i,1,1,4294967295,i,(1,2))",
         MessageOf("E008-12", "series", "parameter 6 is incorrect")},
        {"series(i,1,1,3,i,q)", MessageOf("E008-12", "series", "parameter 6 is incorrect")},
        {"series(i,1,1,3,i,inv(0))", MessageOf("E006-10", "inv", nonFinite)},
        {"locus_parametric(t,0,1,1,t,t,q)",
         MessageOf("E008-11", "locus_parametric", "parameter 7 is incorrect")},
        {"locus_parametric(t,0,1,1,t,t,inv(0))", MessageOf("E006-10", "inv", nonFinite)},
        {"series(i,1,1,4294967295,i)", MessageOf("E008-13", "series", "step count must be >= 1")},
        {"series(i,1,1,2147483648,i)", MessageOf("E008-13", "series", "step count must be >= 1")},
    };
    for (const auto& [sheet, error] : rows) {
        SCOPED_TRACE(sheet);
        const Evaluated got = Evaluate(sheet);
        EXPECT_EQ(got.error, error);
        EXPECT_FALSE(got.evaluated);
        EXPECT_EQ(got.rows, Rows{});
    }
}

TEST(SweepParameters, ComeBeforeTheBodyRuns) {
    EXPECT_EQ(Evaluate("series(i,1,1,0,inv(0))").error,
              MessageOf("E008-10", "series",
                        "forth parameter is step count,which must be an integer >= 1"));
}

TEST(SweepParameters, AcceptASixthOneOnSeriesAndIgnoreIt) {
    EXPECT_EQ(NumberFrom("series(i,1,1,3,i,77)"), 6.0);
    EXPECT_EQ(NumberFrom("product(i,1,1,3,i,0)"), 6.0);
    EXPECT_EQ(Evaluate("equation_root(x,-1,1,2,x,0)").rows, (Rows{{0.0, 0.0}}));
}

// The low 32 bits count, and one more, since the rounding looks at what was cut off.
TEST(SweepParameters, WrapACountBeyond32Bits) {
    EXPECT_EQ(NumberFrom("series(i,1,1,4294967296,i)"), 1.0);
    EXPECT_EQ(NumberFrom("series(i,1,1,4294967299,i)"), 10.0);
    EXPECT_EQ(NumberFrom("integral_curve_xy(x,0,3,4294967296,4*x/3)"), 5.0);
    EXPECT_EQ(NumberFrom("series(i,1,1," + huge + "*" + huge + ",i)"), 1.0);
}

TEST(SweepParameters, GiveTheStepOfSeriesAndTheRightEndOfAllOthers) {
    EXPECT_EQ(NumberFrom("series(i,1,2,3,i)"), 1.0 + 3.0 + 5.0);
    EXPECT_EQ(NumberFrom("product(i,1,2,3,i)"), 1.0 * 3.0 * 5.0);
    EXPECT_EQ(NumberFrom("integral_area_xy(i,1,2,4,1)"), 1.0);
}

TEST(SweepParameters, MayBeExpressions) {
    EXPECT_EQ(NumberFrom("a=3;series(i,a-2,a/3,a,i)"), 6.0);
    EXPECT_EQ(NumberFrom("series(i,1,1,series(i,1,1,2,i),i)"), 6.0);
}

struct ValueRow {
    const char* sheet;
    double value;
};

TEST(SweepBody, SeesOnlyItsOwnVariableChange) {
    const ValueRow rows[] = {
        {"series(i,1,1,3,i)", 6.0},
        {"series(i,1,1,3,2)", 6.0},
        {"series(i,1,1,3,i*i+i)", 20.0},
        {"a=5;series(i,1,1,3,a)", 15.0},
        {"a=5;series(i,1,1,3,a*i)", 30.0},
        // Sweeps inside sweeps: the outer variable holds, a name used again is the inner one's.
        {"series(i,1,1,3,series(j,1,1,2,i*j))", 18.0},
        {"series(i,1,1,3,series(j,1,1,i,j))", 10.0},
        {"series(i,1,1,3,series(j,i,1,1,j))", 6.0},
        {"series(i,1,1,3,series(i,1,1,2,i))", 9.0},
        {"series(i,1,1,2,i+series(i,1,1,2,i)+i)", 12.0},
        {"series(i,1,1,2,product(j,1,1,2,series(k,1,1,2,i+j+k)))", 162.0},
        {"series(i,1,1,3,if(i-2,10,20))", 40.0},
    };
    for (const auto& [sheet, value] : rows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(NumberFrom(sheet), value);
    }
}

TEST(SweepBody, GivesTheFirstElementOfAnyShape) {
    EXPECT_EQ(NumberFrom("series(i,1,1,3,(i,100))"), 6.0);
    EXPECT_EQ(NumberFrom("series(i,1,1,3,vector_row(i,100))"), 6.0);
    EXPECT_EQ(NumberFrom("series(i,1,1,3,complex(i,100))"), 6.0);
    EXPECT_EQ(NumberFrom("series(i,1,1,3,equation_root(x,i-1,i+1,2,x-i))"), 6.0);
}

TEST(SweepBody, FailsWhereItIsNotFinite) {
    const MessageRow rows[] = {
        {"series(i,1,1,3," + huge + "*" + huge + ")", "series"},
        {"product(i,1,1,3,-" + huge + "*" + huge + ")", "product"},
        {"equation_root(i,1,2,1," + huge + "*" + huge + ")", "equation_root"},
        // What yields nothing is no number: an unset variable, an equation without a root.
        {"series(i,1,1,3,q)", "series"},
        {"series(i,1,1,3,equation_root(x,1,2,10,x))", "series"},
    };
    for (const auto& [sheet, name] : rows) {
        SCOPED_TRACE(sheet);
        const Evaluated got = Evaluate(sheet);
        EXPECT_EQ(got.error,
                  MessageOf("E008-05", name, "generates an infinite or unaccepted number"));
        EXPECT_EQ(got.rows, Rows{});
    }
}

TEST(SweepBody, PassesItsOwnErrorOn) {
    const MessageRow rows[] = {
        {"series(i,0,1,3,1/i)",
         MessageOf("E009-41", "divide", "generates an infinite or unaccepted number")},
        {"series(i,0,1,3,inv(i))",
         MessageOf("E006-10", "inv", "generates an infinite or unaccepted number")},
        {"series(i,1,1,3,nosuch(i))", MessageOf("E001-01", "nosuch", "unknown function")},
        {"series(i,1,1,3,series(j,1,1,i-1,j))",
         MessageOf("E008-10", "series",
                   "forth parameter is step count,which must be an integer >= 1")},
    };
    for (const auto& [sheet, error] : rows) {
        SCOPED_TRACE(sheet);
        const Evaluated got = Evaluate(sheet);
        EXPECT_EQ(got.error, error);
        EXPECT_EQ(got.rows, Rows{});
    }
    EXPECT_EQ(NumberFrom("series(i,1,1,2,1/i)"), 1.5);
}

TEST(SweepBody, LeavesTheNextSentenceAlone) {
    const test::CompiledSheet sheet = Compile("series(i,0,1,3,inv(i));series(i,1,1,3,i)");
    ASSERT_EQ(sheet.sentences.Count(), 2);
    EXPECT_NE(sheet.sentences[0].error, "");
    EXPECT_EQ(sheet.sentences[1].error, "");
    EXPECT_EQ(test::RowsOf(sheet.sentences[1].root.result), (Rows{{6.0}}));
}

// `levels` sweeps inside each other, in their bodies or in their lower ends.
std::string NestedInBodies(int levels) {
    std::string sheet;
    for (int level = 0; level < levels; ++level) sheet += "series(i,1,1,1,";
    return sheet + "7" + std::string(static_cast<std::size_t>(levels), ')');
}

std::string NestedInLowerEnds(int levels) {
    std::string sheet = "7";
    for (int level = 0; level < levels; ++level) sheet = "series(i," + sheet + ",1,1,i)";
    return sheet;
}

TEST(SweepNesting, GoesTwoHundredDeep) {
    const std::string tooDeep = "is nested too deep";
    EXPECT_EQ(NumberFrom(NestedInBodies(200)), 7.0);
    EXPECT_EQ(NumberFrom(NestedInLowerEnds(200)), 7.0);
    EXPECT_EQ(NumberFrom("1+(" + NestedInBodies(200) + ")*2"), 15.0);
    EXPECT_EQ(Evaluate(NestedInBodies(201)).error, MessageOf("E008-15", "series", tooDeep));
    EXPECT_EQ(Evaluate(NestedInLowerEnds(201)).error, MessageOf("E008-15", "series", tooDeep));
    EXPECT_EQ(Evaluate("product(i,1,1,1,2+" + NestedInBodies(200) + ")").error,
              MessageOf("E008-15", "product", tooDeep));
    EXPECT_EQ(Evaluate(NestedInBodies(2000)).error, MessageOf("E008-15", "series", tooDeep));
}

TEST(SweepNesting, LetsTheNextSentenceGoOn) {
    EXPECT_EQ(NumberFrom(NestedInBodies(201) + ";1+1"), 2.0);
}

TEST(SweepNesting, CountsDepthAndNotNumber) {
    std::string sheet = "series(i,1,1,1,0";
    for (int term = 0; term < 300; ++term) sheet += "+series(j,1,1,1,i)";
    EXPECT_EQ(NumberFrom(sheet + ")"), 300.0);
}

struct ProgressRow {
    const char* sheet;
    int steps;
};

TEST(SweepProgress, StepsAtEachIndexDivisibleBy500) {
    const ProgressRow rows[] = {
        {"series(i,1,1,1,i)", 1},
        {"series(i,1,1,500,i)", 1},
        {"series(i,1,1,501,i)", 2},
        {"product(i,1,1,1000,1)", 2},
        {"product(i,1,1,1001,1)", 3},
        {"equation_root(x,1,2,499,x)", 1},
        {"equation_root(x,1,2,500,x)", 2},
        // The dense scan does not count.
        {"equation_root(x,-1,2,3,x-0.5)", 1},
        // Samples stand at half steps; two bodies count twice.
        {"integral_area_xy(x,0,1,249,x)", 1},
        {"integral_area_xy(x,0,1,250,x)", 2},
        {"integral_area_polar(x,0,1,250,x)", 2},
        {"integral_curve_xy(x,0,1,500,x)", 3},
        {"integral_curve_polar(x,0,1,500,x)", 3},
        {"integral_area_parametric_xy(t,0,1,249,t,t)", 2},
        {"integral_area_parametric_xy(t,0,1,250,t,t)", 4},
        {"integral_area_parametric_polar(t,0,1,250,t,t)", 4},
        {"integral_curve_parametric(t,0,1,250,t,t)", 4},
        // A curve counts its rounds, however many bodies it has.
        {"locus_xy(x,0,1,499,x)", 1},
        {"locus_xy(x,0,1,500,x)", 2},
        {"locus_polar(x,0,1,1000,x)", 3},
        {"locus_parametric(t,0,1,500,t,t)", 2},
        // The inner sweep steps each time it runs.
        {"series(i,1,1,3,series(j,1,1,1,j))", 4},
        // Before the body runs, whatever the body does; not at all before the parameters stand.
        {"series(i,0,1,3,inv(i))", 1},
        {"series(i,0,1,0,i)", 0},
    };
    for (const auto& [sheet, steps] : rows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(ProgressSteps(sheet), steps);
    }
}

// A call on the first sentence of a sheet, made by hand.
struct HandMadeCall {
    explicit HandMadeCall(const char* text)
        : sheet(Compile(text)),
          root(sheet.sentences[0].root),
          family{root, root.keyword, 0, parameters, errorText} {}

    CalcParameters parameters;
    std::string errorText;
    test::CompiledSheet sheet;
    FunctionNode& root;
    FamilyCall family;
};

TEST(EvaluateBody, GivesTheValueAtX) {
    HandMadeCall made("series(x,1,1,1,x*x)");
    const StepCall call{made.family, "x", 10.0, 2.0, 3};
    double out = 0.0;
    EXPECT_TRUE(EvaluateBody(call, call.Body(), -3.0, true, out));
    EXPECT_EQ(out, 9.0);
    EXPECT_TRUE(EvaluateBodyAt(call, call.Body(), 2.0, 3, out));
    EXPECT_EQ(out, 256.0);
    EXPECT_TRUE(EvaluateBodyAt(call, call.Body(), 0.5, std::int64_t{4294967296}, out));
    EXPECT_EQ(out, 2147483658.0 * 2147483658.0);
}

TEST(EvaluateBody, TestsTheValueOnlyWhenAsked) {
    HandMadeCall made("series(x,1,1,1,x*x)");
    const StepCall call{made.family, "x", 0.0, 1.0, 1};
    double out = 0.0;
    EXPECT_TRUE(EvaluateBody(call, call.Body(), 1e300, false, out));
    EXPECT_EQ(out, std::numeric_limits<double>::infinity());
    EXPECT_EQ(made.errorText, "");
    EXPECT_FALSE(EvaluateBody(call, call.Body(), 1e300, true, out));
    EXPECT_EQ(made.errorText,
              MessageOf("E008-05", "series", "generates an infinite or unaccepted number"));
}

TEST(EvaluateBody, ReturnsAtOnceAfterAnError) {
    HandMadeCall made("series(x,1,1,1,x*x)");
    const StepCall call{made.family, "x", 0.0, 1.0, 1};
    double out = 0.0;
    EXPECT_TRUE(EvaluateBody(call, call.Body(), 3.0, true, out));
    made.errorText = "an earlier one";
    EXPECT_FALSE(EvaluateBody(call, call.Body(), 2.0, true, out));
    EXPECT_EQ(out, 9.0);
    EXPECT_EQ(test::RowsOf(call.Body().result), (Rows{{9.0}}));
    EXPECT_EQ(made.errorText, "an earlier one");
}

TEST(EvaluateBody, IsNoNumberWhereTheBodyYieldsNothing) {
    HandMadeCall made("locus_xy(x,0,1,1,q)");
    const StepCall call{made.family, "x", 0.0, 1.0, 1};
    double out = 0.0;
    EXPECT_TRUE(EvaluateBody(call, call.Body(), 2.0, false, out));
    EXPECT_TRUE(std::isnan(out));
}

}  // namespace
}  // namespace orvane
