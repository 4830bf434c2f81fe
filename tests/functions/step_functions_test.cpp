#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "core/number_literal.h"
#include "functions/function_bodies.h"
#include "functions/step_call.h"
#include "tests/support/sheet_run.h"
#include "tests/support/sweep_text.h"

namespace orvane {
namespace {

using test::CallText;
using test::CountingProgress;
using test::CubicText;
using test::Evaluate;
using test::Evaluated;
using test::NumberFrom;
using test::Rows;
using test::SameBits;
using test::TextOf;

// The same body as a sheet writes it and as plain arithmetic.
struct Body {
    const char* text;
    double (*value)(double x);
};

const Body bodies[] = {
    {"x", [](double x) { return x; }},
    {"x*x", [](double x) { return x * x; }},
    {"3-x*x", [](double x) { return 3.0 - x * x; }},
    {"x*x*x-2*x+0.25", [](double x) { return x * x * x - 2.0 * x + 0.25; }},
    {"sin(x)", [](double x) { return std::sin(x); }},
    {"0.5-cos(3*x)", [](double x) { return 0.5 - std::cos(3.0 * x); }},
    {"x/(x*x+1)", [](double x) { return x / (x * x + 1.0); }},
};

using Range = test::SweepRange;

const Range ranges[] = {{0.0, 1.0, 1},     {1.0, 1.0, 3},  {-2.0, 3.0, 7},
                        {-2.5, 0.125, 40}, {0.1, 0.3, 33}, {4.0, -4.0, 10},
                        {-3.0, -0.7, 12},  {2.0, 2.0, 5},  {-6.25, 6.5, 100}};

// The roots by a plain loop over a plain function.
template <typename Function>
Rows RootsOf(const Range& range, Function f) {
    Rows roots;
    const double step = (range.third - range.lower) / range.count;
    double previous = -1.0;
    for (int i = 0; i <= range.count; ++i) {
        const double x = i * step + range.lower;
        const double y = f(x);
        if (y == 0.0 && previous != 0.0) {
            roots.push_back({x, y});
        } else if (i != 0 && previous != 0.0) {
            if ((previous > 0.0 && y < 0.0) || (previous < 0.0 && y > 0.0)) {
                const double h = step * 0.001;
                const double x0 = x - step;
                double best = std::max(std::fabs(previous), std::fabs(y)) + 1.0;
                double bestX = x0;
                for (int j = 0; j <= 1000; ++j) {
                    const double xj = j * h + x0;
                    const double v = f(xj);
                    if (std::fabs(v) < best) {
                        best = v;
                        bestX = xj;
                    }
                }
                roots.push_back({bestX, best});
            }
        }
        previous = y;
    }
    return roots;
}

void ExpectSameRows(const Rows& rows, const Rows& expected) {
    ASSERT_EQ(rows.size(), expected.size());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        ASSERT_EQ(rows[row].size(), expected[row].size());
        for (std::size_t column = 0; column < rows[row].size(); ++column) {
            EXPECT_TRUE(SameBits(rows[row][column], expected[row][column]))
                << rows[row][column] << " and " << expected[row][column];
        }
    }
}

TEST(Series, TakesTermsFromTheLowerLimitOn) {
    EXPECT_EQ(NumberFrom("series(i,1,1,3,i)"), 6.0);
    EXPECT_EQ(NumberFrom("series(i,0,0.5,1,i)"), 0.0);
    EXPECT_EQ(NumberFrom("series(i,0,0.5,2,i)"), 0.5);
    EXPECT_EQ(NumberFrom("series(i,5,-1,3,i)"), 12.0);
    EXPECT_EQ(NumberFrom("series(i,5,0,3,i)"), 15.0);
    EXPECT_EQ(NumberFrom("series(i,1,1,1000,i)"), 500500.0);
}

TEST(Series, SumsInOrderBitForBit) {
    for (const Body& body : bodies) {
        for (const Range& range : ranges) {
            const std::string sheet = CallText("series", range, body.text);
            SCOPED_TRACE(sheet);
            double sum = 0.0;
            for (int i = 0; i < range.count; ++i) sum += body.value(i * range.third + range.lower);
            EXPECT_TRUE(SameBits(NumberFrom(sheet), sum));
        }
    }
}

TEST(Series, DoesNotTestItsTotal) {
    const Evaluated sum = Evaluate("series(i,1,1,3,1" + std::string(308, '0') + ")");
    EXPECT_EQ(sum.error, "");
    EXPECT_EQ(sum.rows, (Rows{{std::numeric_limits<double>::infinity()}}));
}

TEST(Product, MultipliesFromOneOn) {
    EXPECT_EQ(NumberFrom("product(i,1,1,3,i)"), 6.0);
    EXPECT_EQ(NumberFrom("product(i,1,1,1,i)"), 1.0);
    EXPECT_EQ(NumberFrom("product(i,1,1,10,i)"), 3628800.0);
    EXPECT_EQ(NumberFrom("product(i,-1,1,3,i)"), 0.0);
}

TEST(Product, MultipliesInOrderBitForBit) {
    for (const Body& body : bodies) {
        for (const Range& range : ranges) {
            const std::string sheet = CallText("product", range, body.text);
            SCOPED_TRACE(sheet);
            double product = 1.0;
            for (int i = 0; i < range.count; ++i) {
                product *= body.value(i * range.third + range.lower);
            }
            EXPECT_TRUE(SameBits(NumberFrom(sheet), product));
        }
    }
}

TEST(Product, DoesNotTestItsTotal) {
    const Evaluated product = Evaluate("product(i,1,1,3,-1" + std::string(200, '0') + ")");
    EXPECT_EQ(product.error, "");
    EXPECT_EQ(product.rows, (Rows{{-std::numeric_limits<double>::infinity()}}));
}

struct RootRow {
    const char* sheet;
    Rows roots;
};

TEST(EquationRoot, FindsSignChangesOnTheGrid) {
    const RootRow rows[] = {
        // Zeros on the grid; behind one, the next point adds nothing.
        {"equation_root(x,-1,1,2,x)", {{0.0, 0.0}}},
        {"equation_root(x,0,1,1,x)", {{0.0, 0.0}}},
        {"equation_root(x,-1,0,1,x)", {{0.0, 0.0}}},
        {"equation_root(x,1,-1,2,x)", {{0.0, 0.0}}},
        {"equation_root(x,-2,2,4,x*x-1)", {{-1.0, 0.0}, {1.0, 0.0}}},
        // Of a run of zeros only the first counts.
        {"equation_root(x,0,3,3,0)", {{0.0, 0.0}}},
        {"equation_root(x,0,5,5,(x-1)*(x-2)*(x-4))", {{1.0, 0.0}, {4.0, 0.0}}},
        // Rising: the left end of the step. Falling: the value next to zero.
        {"equation_root(x,-1,2,3,x-0.5)", {{0.0, -0.5}}},
        {"equation_root(x,0,2,2,0.5-x)", {{0.5, 0.0}}},
        {"equation_root(x,0,2,2,x-0.5)", {{0.0, -0.5}}},
        // Walked from right to left, the rising one falls.
        {"equation_root(x,2,0,2,x-0.5)", {{0.5, 0.0}}},
        // A jump through infinity counts like any other.
        {"equation_root(x,1,2,1,tan(x))", {{1.0, std::tan(1.0)}}},
        // Touching zero between two points is missed.
        {"equation_root(x,0,1,1,(x-0.25)*(x-0.25))", {}},
        {"equation_root(x,1,2,10,x)", {}},
        {"equation_root(x,1,1,5,x)", {}},
        // Where the scan finds no number, the left end stands with one more than the larger size.
        {"equation_root(x,0.1,0.9,4,if(equals(x,0.9),-5,if(great_than(x,0.7001)+equals(x,0.7),q,"
         "5)))",
         {{0.7, 6.0}}},
    };
    for (const auto& [sheet, roots] : rows) {
        SCOPED_TRACE(sheet);
        const Evaluated got = Evaluate(sheet);
        EXPECT_EQ(got.error, "");
        EXPECT_TRUE(got.evaluated);
        EXPECT_FALSE(got.complex);
        EXPECT_EQ(got.rows, roots);
    }
}

TEST(EquationRoot, FollowsAFallingBodyToTheValueNextToZero) {
    // The last positive value is 0.0004, the first negative one -0.0006: the search stays.
    const Rows before = Evaluate("equation_root(x,0,1,1,0.5004-x)").rows;
    ASSERT_EQ(before.size(), 1u);
    EXPECT_EQ(before[0][0], 0.5);
    EXPECT_NEAR(before[0][1], 0.0004, 1e-12);
    // 0.0006 and -0.0004: it takes the negative one.
    const Rows behind = Evaluate("equation_root(x,0,1,1,0.5006-x)").rows;
    ASSERT_EQ(behind.size(), 1u);
    EXPECT_EQ(behind[0][0], 0.501);
    EXPECT_NEAR(behind[0][1], -0.0004, 1e-12);
    // The right end of the step is looked at as well.
    const Rows last = Evaluate("equation_root(x,0,1,1,0.9996-x)").rows;
    ASSERT_EQ(last.size(), 1u);
    EXPECT_EQ(last[0][0], 1.0);
    EXPECT_EQ(last[0][1], 0.9996 - 1.0);
}

TEST(EquationRoot, MatchesAPlainLoopBitForBit) {
    for (const Body& body : bodies) {
        for (const Range& range : ranges) {
            const std::string sheet = CallText("equation_root", range, body.text);
            SCOPED_TRACE(sheet);
            ExpectSameRows(Evaluate(sheet).rows, RootsOf(range, body.value));
        }
    }
}

TEST(EquationRoot, MatchesAPlainLoopOnRandomCubics) {
    std::mt19937 random(20240);
    std::uniform_int_distribution<int> eighths(-40, 40);
    std::size_t found = 0;
    for (int round = 0; round < 100; ++round) {
        const double a = eighths(random) / 8.0, b = eighths(random) / 8.0;
        const double c = eighths(random) / 8.0, d = eighths(random) / 8.0;
        const std::string body = CubicText({a, b, c, d});
        const Range range = {-5.0, 5.0, 1 + round % 23};
        const std::string sheet = CallText("equation_root", range, body);
        SCOPED_TRACE(sheet);
        const Rows expected =
            RootsOf(range, [=](double x) { return a * x * x * x + b * x * x + c * x + d; });
        ExpectSameRows(Evaluate(sheet).rows, expected);
        found += expected.size();
    }
    EXPECT_GT(found, 80u);
}

// A known root of a falling body lies within one part of the scan.
TEST(EquationRoot, ComesNearKnownRoots) {
    for (const double root : {0.1, 0.7, 1.3, 2.9, 3.14}) {
        SCOPED_TRACE(root);
        const Rows rows = Evaluate("equation_root(x,0,4,4," + TextOf(root) + "-x)").rows;
        ASSERT_EQ(rows.size(), 1u);
        EXPECT_NEAR(rows[0][0], root, 0.001);
    }
}

TEST(EquationRoot, PassesOverWhatIsNotFiniteInTheScan) {
    const std::string huge = "1" + std::string(200, '0');
    const std::string body = "if(equals(x,0.5)," + huge + "*" + huge + ",0.75-x)";
    ExpectSameRows(Evaluate("equation_root(x,0,1,1," + body + ")").rows, {{0.75, 0.0}});
    const std::string nothing = "if(equals(x,0.5),q,0.75-x)";
    ExpectSameRows(Evaluate("equation_root(x,0,1,1," + nothing + ")").rows, {{0.75, 0.0}});
}

TEST(EquationRoot, KeepsTheLeftEndWhereNoValueIsBelowTheStart) {
    // Beyond 2 to the 53rd, one more is the same number.
    const std::string huge = "1" + std::string(200, '0');
    const Evaluated got =
        Evaluate("equation_root(x,3,4,1,if(less_than(x,3.5)," + huge + ",-" + huge + "))");
    EXPECT_EQ(got.error, "");
    EXPECT_EQ(got.rows, (Rows{{3.0, 1e200}}));
}

TEST(EquationRoot, SeesAnErrorOfTheScanAtTheNextPoint) {
    CountingProgress progress;
    CalcParameters parameters;
    parameters.progress = &progress;
    // The scan between 498 and 499 fails; point 499 is done, point 500 steps the progress first.
    const Evaluated got =
        Evaluate("equation_root(x,0,501,501,if(equals(x,498.5),inv(0),498.25-x))", parameters);
    EXPECT_EQ(got.error,
              "E006-10 sentence  1: function \"inv\": generates an infinite or unaccepted number.");
    EXPECT_EQ(got.rows, Rows{});
    EXPECT_EQ(progress.steps, 2);
}

// The table is filled beforehand: finding so many roots takes too long.
TEST(EquationRoot, StoresNoMoreThanOneTable) {
    test::CompiledSheet sheet = test::Compile("equation_root(x,-2,2,4,x*x-1)");
    FunctionNode& root = sheet.sentences[0].root;
    const CalcParameters parameters;
    std::string error;
    const FamilyCall family{root, root.keyword, 0, parameters, error};

    root.result.Clear();
    root.result.AppendRow(static_cast<std::int32_t>(largestTable) - 4);
    EvaluateVariable(family);
    EXPECT_EQ(error, "");
    ASSERT_EQ(root.result.RowCount(), 3);
    EXPECT_EQ(root.result.At(2, 0), 1.0);

    root.result.Clear();
    root.result.AppendRow(static_cast<std::int32_t>(largestTable) - 3);
    EvaluateVariable(family);
    EXPECT_EQ(error, "E008-16 sentence  1: function \"equation_root\": has too many roots.");
    EXPECT_EQ(root.result.RowCount(), 0);
}

TEST(EquationRoot, StoresNothingAfterAnError) {
    const std::string nonFinite = "generates an infinite or unaccepted number.";
    const std::string sheets[] = {
        "equation_root(x,0,1,1,if(equals(x,0.5),inv(0),0.25-x))",     // in the last scan
        "equation_root(x,0,4,4,if(equals(x,4),inv(0),0.5-x))",        // behind a root
        "equation_root(x,0,4,4,if(equals(x,4),inv(0),(x-1)*(x-2)))",  // behind two roots
    };
    for (const std::string& sheet : sheets) {
        SCOPED_TRACE(sheet);
        const Evaluated got = Evaluate(sheet);
        EXPECT_EQ(got.error, "E006-10 sentence  1: function \"inv\": " + nonFinite);
        EXPECT_FALSE(got.evaluated);
        EXPECT_EQ(got.rows, Rows{});
    }
}

}  // namespace
}  // namespace orvane
