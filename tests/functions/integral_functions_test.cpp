#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <random>
#include <string>
#include <vector>

#include "core/number_literal.h"
#include "tests/support/sheet_run.h"
#include "tests/support/sweep_text.h"

namespace orvane {
namespace {

using test::CallText;
using test::CubicText;
using test::Evaluate;
using test::Evaluated;
using test::NumberFrom;
using test::Rows;
using test::SameBits;
using test::TextOf;

constexpr double pi = 3.141592653589793;

using Range = test::SweepRange;

const Range ranges[] = {{0.0, 1.0, 1},  {0.0, 1.0, 2},   {-1.5, 2.25, 7}, {1.0, -1.0, 9},
                        {0.1, 0.3, 33}, {-3.0, 3.0, 50}, {2.0, 2.0, 4}};

using Function = double (*)(double t);

struct Body {
    const char* text;
    Function value;
};

const Body bodies[] = {
    {"x", [](double t) { return t; }},
    {"2-x*x", [](double t) { return 2.0 - t * t; }},
    {"sin(3*x)", [](double t) { return std::sin(3.0 * t); }},
    {"x/(x*x+1)", [](double t) { return t / (t * t + 1.0); }},
    {"0", [](double) { return 0.0; }},
    {"0.75", [](double) { return 0.75; }},
};

// All samples of one body on the grid of half steps.
struct Samples {
    double h;
    int m;
    std::vector<double> f;
};

Samples SamplesOf(const Range& range, Function body) {
    const double step = (range.third - range.lower) / range.count;
    Samples samples = {step * 0.5, 2 * range.count, {}};
    for (int i = 0; i <= samples.m; ++i) {
        samples.f.push_back(body(i * samples.h + range.lower));
    }
    return samples;
}

double WeightAt(int i, int m, bool simpson) {
    if (i == 0 || i == m) return 1.0;
    if (i % 2 == 1) return simpson ? 4.0 : 2.0;
    return 2.0;
}

double AreaXy(const Samples& s, bool on) {
    double sum = 0.0;
    for (int i = 0; i <= s.m; ++i) sum += WeightAt(i, s.m, on) * s.f[i];
    return on ? sum * s.h * 0.3333333333333333 : sum * s.h * 0.5;
}

double AreaPolar(const Samples& s, bool on) {
    double sum = 0.0;
    for (int i = 0; i <= s.m; ++i) sum += WeightAt(i, s.m, on) * (s.f[i] * s.f[i]);
    return on ? sum * s.h * 0.16666666666666666 : sum * s.h * 0.25;
}

double CurveXy(const Samples& s, bool) {
    double sum = 0.0;
    for (int i = 1; i <= s.m; ++i) {
        sum += std::sqrt((s.f[i - 1] - s.f[i]) * (s.f[i - 1] - s.f[i]) + s.h * s.h);
    }
    return sum;
}

double CurvePolar(const Samples& s, bool) {
    double sum = 0.0;
    for (int i = 1; i <= s.m; ++i) {
        sum += std::sqrt(s.f[i - 1] * s.f[i - 1] + s.f[i] * s.f[i] -
                         2.0 * std::cos(s.h) * s.f[i - 1] * s.f[i]);
    }
    return sum;
}

double AreaParametricXy(const Samples& x, const Samples& y, bool) {
    double sum = 0.0;
    for (int i = 1; i <= x.m - 1; ++i) {
        sum += (y.f[i] + y.f[i - 1]) * std::fabs(x.f[i] - x.f[i - 1]);
    }
    return sum * 0.5;
}

double AreaParametricPolar(const Samples& x, const Samples& y, bool on) {
    double sum = 0.0;
    for (int i = 1; i <= x.m; ++i) {
        const double a1 = x.f[i - 1] * x.f[i - 1] + y.f[i - 1] * y.f[i - 1];
        const double a2 = x.f[i] * x.f[i] + y.f[i] * y.f[i];
        const double dot = x.f[i] * x.f[i - 1] + y.f[i] * y.f[i - 1];
        if (!on) {
            sum += std::sqrt(a2 * a1 - dot * dot);
        } else if (a1 != 0.0 && a2 != 0.0) {
            sum += (a2 + a1) * std::acos(dot / std::sqrt(a2 * a1));
        }
    }
    return on ? sum * 0.25 : sum * 0.5;
}

double CurveParametric(const Samples& x, const Samples& y, bool) {
    double sum = 0.0;
    for (int i = 1; i <= x.m; ++i) {
        const double dx = x.f[i] - x.f[i - 1];
        const double dy = y.f[i] - y.f[i - 1];
        sum += std::sqrt(dx * dx + dy * dy);
    }
    return sum;
}

struct OneBodyRow {
    const char* name;
    double (*method)(const Samples& samples, bool on);
};

const OneBodyRow oneBodyRows[] = {{"integral_area_xy", AreaXy},
                                  {"integral_area_polar", AreaPolar},
                                  {"integral_curve_xy", CurveXy},
                                  {"integral_curve_polar", CurvePolar}};

struct TwoBodyRow {
    const char* name;
    double (*method)(const Samples& x, const Samples& y, bool on);
};

const TwoBodyRow twoBodyRows[] = {{"integral_area_parametric_xy", AreaParametricXy},
                                  {"integral_area_parametric_polar", AreaParametricPolar},
                                  {"integral_curve_parametric", CurveParametric}};

struct OptionRow {
    const char* text;
    bool on;
};

// Absent means on, and only 0 is off.
const OptionRow optionRows[] = {{"", true},    {",0", false},  {",1", true},   {",-1", true},
                                {",-2", true}, {",0.5", true}, {",1-1", false}};

void ExpectNumber(const std::string& sheet, double expected) {
    SCOPED_TRACE(sheet);
    const Evaluated got = Evaluate(sheet);
    EXPECT_EQ(got.error, "");
    ASSERT_EQ(got.rows.size(), 1u);
    ASSERT_EQ(got.rows[0].size(), 1u);
    const double number = got.rows[0][0];
    const bool bothNoNumber = std::isnan(number) && std::isnan(expected);
    EXPECT_TRUE(bothNoNumber || SameBits(number, expected)) << number << " and " << expected;
}

TEST(Integrals, OfOneBodyMatchPlainLoopsBitForBit) {
    for (const OneBodyRow& row : oneBodyRows) {
        for (const Range& range : ranges) {
            for (const Body& body : bodies) {
                const Samples samples = SamplesOf(range, body.value);
                for (const OptionRow& option : optionRows) {
                    ExpectNumber(CallText(row.name, range, std::string(body.text) + option.text),
                                 row.method(samples, option.on));
                }
            }
        }
    }
}

TEST(Integrals, OfTwoBodiesMatchPlainLoopsBitForBit) {
    for (const TwoBodyRow& row : twoBodyRows) {
        for (const Range& range : ranges) {
            for (const Body& x : bodies) {
                for (const Body& y : bodies) {
                    const std::string texts = std::string(x.text) + "," + y.text;
                    const Samples xs = SamplesOf(range, x.value);
                    const Samples ys = SamplesOf(range, y.value);
                    for (const OptionRow& option : optionRows) {
                        ExpectNumber(CallText(row.name, range, texts + option.text),
                                     row.method(xs, ys, option.on));
                    }
                }
            }
        }
    }
}

struct ValueRow {
    const char* sheet;
    double value;
};

TEST(Integrals, GiveKnownValues) {
    const ValueRow rows[] = {
        {"integral_area_xy(x,0,1,1,x)", 0.5},
        {"integral_area_xy(x,0,1,1,x,0)", 0.5},
        {"integral_area_xy(x,0,1,1,x,1)", 0.5},
        {"integral_area_xy(x,1,0,1,x)", -0.5},
        {"integral_area_xy(x,1,0,1,x,0)", -0.5},
        {"integral_area_xy(x,0,1,1,x*x,0)", 0.375},
        {"integral_area_xy(x,-1,1,4,x)", 0.0},
        {"integral_curve_xy(x,0,3,1,4*x/3)", 5.0},
        {"integral_curve_xy(x,0,3,1,4*x/3,0)", 5.0},
        {"integral_curve_parametric(t,0,1,1,3*t,4*t)", 5.0},
        {"integral_curve_parametric(t,0,1,1,3*t,4*t,0)", 5.0},
        // Samples at 0, 0.5 and 1; the strip up to the last one is not counted.
        {"integral_area_parametric_xy(t,0,1,1,t,1)", 0.5},
        {"integral_area_parametric_xy(t,0,1,2,t,1)", 0.75},
        {"integral_area_parametric_xy(t,0,1,1,t,1,0)", 0.5},
        // Unsigned in the direction of x.
        {"integral_area_parametric_xy(t,0,1,1,-t,1)", 0.5},
        {"integral_area_parametric_xy(t,0,1,1,t,-1)", -0.5},
        // A triangle on the origin, and a line through it.
        {"integral_area_parametric_polar(t,0,1,1,1,t,0)", 0.5},
        {"integral_area_parametric_polar(t,0,1,1,t,0)", 0.0},
        {"integral_area_parametric_polar(t,0,1,1,0,0)", 0.0},
        {"integral_area_parametric_polar(t,0,1,1,0,0,0)", 0.0},
        {"integral_area_polar(t,0,1,1,0)", 0.0},
        {"integral_curve_polar(t,0,1,1,0)", 0.0},
    };
    for (const auto& [sheet, value] : rows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(NumberFrom(sheet), value);
    }
}

TEST(Integrals, ComeNearKnownAreasAndLengths) {
    EXPECT_NEAR(NumberFrom("integral_area_xy(x,0,1,1,x*x)"), 1.0 / 3.0, 1e-15);
    EXPECT_NEAR(NumberFrom("integral_area_polar(t,0,2*pi,100,1)"), pi, 1e-14);
    EXPECT_NEAR(NumberFrom("integral_area_polar(t,0,2*pi,100,1,0)"), pi, 1e-14);
    EXPECT_NEAR(NumberFrom("integral_area_parametric_polar(t,0,2*pi,100,cos(t),sin(t))"), pi, 1e-9);
    const double length = NumberFrom("integral_curve_polar(t,0,2*pi,100,1)");
    EXPECT_LT(length, 2.0 * pi);
    EXPECT_NEAR(length, 2.0 * pi, 1e-3);
    EXPECT_NEAR(NumberFrom("integral_curve_parametric(t,0,2*pi,100,cos(t),sin(t))"), length, 1e-12);
}

// Parabolas through three points carry cubics exactly, whatever the step count.
TEST(IntegralAreaXy, IsExactOnCubics) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> quarters(-20, 20);
    for (int round = 0; round < 40; ++round) {
        const double a = quarters(random) / 4.0, b = quarters(random) / 4.0;
        const double c = quarters(random) / 4.0, d = quarters(random) / 4.0;
        const double from = quarters(random) / 4.0, to = quarters(random) / 4.0;
        const auto antiderivative = [=](double x) {
            return ((a / 4.0 * x + b / 3.0) * x + c / 2.0) * x * x + d * x;
        };
        const std::string body = CubicText({a, b, c, d});
        const std::string sheet = CallText("integral_area_xy", {from, to, 1 + round % 5}, body);
        SCOPED_TRACE(sheet);
        EXPECT_NEAR(NumberFrom(sheet), antiderivative(to) - antiderivative(from), 1e-11);
    }
}

TEST(IntegralAreaXy, TurnsItsSignWithItsEnds) {
    for (const char* body : {"x*x+1", "sin(x)", "x/(x*x+1)"}) {
        SCOPED_TRACE(body);
        const double there = NumberFrom(CallText("integral_area_xy", {-1.0, 2.0, 8}, body));
        const double back = NumberFrom(CallText("integral_area_xy", {2.0, -1.0, 8}, body));
        EXPECT_NEAR(there, -back, 1e-14);
    }
}

// A cosine just above 1 makes an angle that is no number, and the sum is not tested.
TEST(IntegralAreaParametricPolar, DoesNotTestItsSum) {
    const Evaluated got = Evaluate("h=1" + std::string(150, '0') +
                                   ";integral_area_parametric_polar(t,0,1,1,h*h*(t+1),1)");
    EXPECT_EQ(got.error, "");
    ASSERT_EQ(got.rows.size(), 1u);
    EXPECT_TRUE(std::isnan(got.rows[0][0]));
}

// Both squares are above 0 and their product is not, so the cosine is no number.
TEST(IntegralAreaParametricPolar, IsNoNumberWhereTheProductOfItsRadiiVanishes) {
    const Evaluated got = Evaluate("h=inv(1" + std::string(100, '0') +
                                   ");integral_area_parametric_polar(t,0,1,1,h,h*t)");
    EXPECT_EQ(got.error, "");
    ASSERT_EQ(got.rows.size(), 1u);
    EXPECT_TRUE(std::isnan(got.rows[0][0]));
}

struct FailureRow {
    const char* sheet;
    const char* error;
};

TEST(Integrals, EndAtTheFirstBadSample) {
    constexpr const char* noNumber =
        "E006-10 sentence  1: function \"inv\": generates an infinite or unaccepted number.";
    const FailureRow rows[] = {
        {"integral_area_xy(x,-1,1,1,1/x)",
         "E009-41 sentence  1: function \"divide\": generates an infinite or unaccepted number."},
        {"integral_area_xy(x,-1,1,1,inv(x))", noNumber},
        {"integral_area_xy(x,-1,1,1,q)",
         "E008-05 sentence  1: function \"integral_area_xy\": generates an infinite or unaccepted "
         "number."},
        {"integral_area_polar(x,-1,1,1,inv(x))", noNumber},
        {"integral_curve_xy(x,-1,1,1,inv(x))", noNumber},
        {"integral_curve_polar(x,-1,1,1,inv(x))", noNumber},
        {"integral_area_parametric_xy(x,-1,1,1,inv(x),x)", noNumber},
        {"integral_area_parametric_polar(x,-1,1,1,x,inv(x))", noNumber},
        {"integral_curve_parametric(x,-1,1,1,x,inv(x))", noNumber},
        {"integral_curve_parametric(x,-1,1,1,x,q)",
         "E008-05 sentence  1: function \"integral_curve_parametric\": generates an infinite or "
         "unaccepted number."},
        // X comes first.
        {"integral_curve_parametric(x,0,1,1,inv(x),ln(x))", noNumber},
        // Both ends are samples, also where the last strip is not counted.
        {"integral_area_xy(x,0,1,1,inv(x))", noNumber},
        {"integral_area_xy(x,0,1,1,inv(1-x))", noNumber},
        {"integral_area_parametric_xy(x,0,1,1,x,inv(1-x))", noNumber},
        {"integral_curve_parametric(x,0,1,1,x,inv(1-x))", noNumber},
    };
    for (const auto& [sheet, error] : rows) {
        SCOPED_TRACE(sheet);
        const Evaluated got = Evaluate(sheet);
        EXPECT_EQ(got.error, error);
        EXPECT_FALSE(got.evaluated);
        EXPECT_EQ(got.rows, Rows{});
    }
}

// The samples of a pole's neighbours go into the sum without a warning.
TEST(Integrals, PassAPoleThatNoSampleHits) {
    ExpectNumber("integral_area_xy(t,-1,2,1,inv(t))",
                 AreaXy(SamplesOf({-1.0, 2.0, 1}, [](double t) { return 1.0 / t; }), true));
}

}  // namespace
}  // namespace orvane
