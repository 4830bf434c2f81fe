#include <cmath>
#include <iterator>
#include <numbers>

#include "core/error_text.h"
#include "functions/function_bodies.h"
#include "functions/scalar_call.h"
#include "functions/validators.h"
#include "functions/whole_number.h"

// The family of functions from plain numbers to one plain number, and its logic and elementary
// members. No body tests its domain: what is infinite or no number fails behind it, in one place.
// The formulas are part of the results, so a shorter formula for the same function is another
// function.

namespace orvane {

namespace {

constexpr double pi = std::numbers::pi;

constexpr double TruthValue(bool holds) { return holds ? 1.0 : 0.0; }

bool RequireRowCount(const FamilyCall& call) {
    const auto count = std::ssize(call.node.children);
    const KeywordEntry& row = *call.keyword;
    const bool tooMany = row.maxParams >= 0 && count > row.maxParams;
    if (count >= row.minParams && !tooMany) return true;
    return NodeErrorText({"E006-", "05"}, call.sentence, call.node, "parameter count is incorrect",
                         call.errorText);
}

}  // namespace

void EvaluateNormal(const FamilyCall& call) {
    if (StageNumbers(call) && RequireRowCount(call)) RunScalarBody(call);
}

// --- logic: exact comparisons, whatever the shown precision

double SignOf(ScalarCall& call) { return call.p[0] < 0.0 ? -1.0 : 1.0; }

double LogicalNot(ScalarCall& call) { return TruthValue(call.p[0] == 0.0); }

double TruthOf(ScalarCall& call) { return TruthValue(call.p[0] != 0.0); }

double Compare(ScalarCall& call) {
    if (call.p[0] > call.p[1]) return 1.0;
    return call.p[0] == call.p[1] ? 0.0 : -1.0;
}

double Equals(ScalarCall& call) { return TruthValue(call.p[0] == call.p[1]); }

double NotEquals(ScalarCall& call) { return TruthValue(call.p[0] != call.p[1]); }

double GreatThan(ScalarCall& call) { return TruthValue(call.p[0] > call.p[1]); }

double GreatEquals(ScalarCall& call) { return TruthValue(call.p[0] >= call.p[1]); }

double LessThan(ScalarCall& call) { return TruthValue(call.p[0] < call.p[1]); }

double LessEquals(ScalarCall& call) { return TruthValue(call.p[0] <= call.p[1]); }

// --- parts, roots and powers

double IntegerPart(ScalarCall& call) { return std::trunc(call.p[0]); }

double FractionalPart(ScalarCall& call) { return FractionOf(call.p[0]); }

double SquareRoot(ScalarCall& call) { return std::sqrt(call.p[0]); }

// Kept: a power and no real cube root, so a negative number fails.
double CubeRoot(ScalarCall& call) { return std::pow(call.p[0], 0.3333333333333333); }

double Invert(ScalarCall& call) { return 1.0 / call.p[0]; }

double RootOf(ScalarCall& call) { return std::pow(call.p[0], 1.0 / call.p[1]); }

double Power(ScalarCall& call) { return std::pow(call.p[0], call.p[1]); }

// A zero on either side is answered before the signs are looked at. The rest comes from the
// fraction of the quotient and carries its rounding: of 10 by 3 it is 1.0000000000000004.
double Reminder(ScalarCall& call) {
    const double x = call.p[0];
    const double y = call.p[1];
    if (x == 0.0) return 0.0;
    if (y == 0.0) return x;
    if (!CheckSameSign(call.Check(), x, y)) return 0.0;
    double rest = std::fabs(x);
    ModuloFrac(std::fabs(y), rest);
    return x < 0.0 ? -rest : rest;
}

// --- logarithms and exponentials

double NaturalLogarithm(ScalarCall& call) { return std::log(call.p[0]); }

double CommonLogarithm(ScalarCall& call) { return std::log10(call.p[0]); }

// The base stands first.
double LogarithmToBase(ScalarCall& call) { return std::log10(call.p[1]) / std::log10(call.p[0]); }

double Exponential(ScalarCall& call) { return std::exp(call.p[0]); }

// --- angles, in radians

double DegreesToRadians(ScalarCall& call) { return pi * call.p[0] * 0.005555555555555556; }

double RadiansToDegrees(ScalarCall& call) { return (call.p[0] * 180.0) / pi; }

double Sine(ScalarCall& call) { return std::sin(call.p[0]); }

double Cosine(ScalarCall& call) { return std::cos(call.p[0]); }

double Tangent(ScalarCall& call) { return std::tan(call.p[0]); }

double Cotangent(ScalarCall& call) { return std::cos(call.p[0]) / std::sin(call.p[0]); }

double ArcSine(ScalarCall& call) { return std::asin(call.p[0]); }

double ArcCosine(ScalarCall& call) { return std::acos(call.p[0]); }

double ArcTangent(ScalarCall& call) { return std::atan(call.p[0]); }

// Kept: a negative number gives a negative angle, so there is a jump at 0.
double ArcCotangent(ScalarCall& call) { return std::atan(1.0 / call.p[0]); }

double HyperbolicSine(ScalarCall& call) { return std::sinh(call.p[0]); }

double HyperbolicCosine(ScalarCall& call) { return std::cosh(call.p[0]); }

// Kept: beyond about 710 both sides of the two quotients are infinite and the call fails, although
// the function itself is as good as 1 there.
double HyperbolicTangent(ScalarCall& call) { return std::sinh(call.p[0]) / std::cosh(call.p[0]); }

double HyperbolicCotangent(ScalarCall& call) { return std::cosh(call.p[0]) / std::sinh(call.p[0]); }

}  // namespace orvane
