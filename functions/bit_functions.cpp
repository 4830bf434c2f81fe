#include <cmath>
#include <cstddef>
#include <string>

#include "core/calc_parameters.h"
#include "core/error_text.h"
#include "functions/function_bodies.h"
#include "functions/scalar_call.h"
#include "functions/validators.h"
#include "functions/whole_number.h"

// Words of 2 to 53 bits. A word is a double that holds a whole number of 0 to 2^bits - 1, and every
// step here is exact on it: halves, doubles and quotients by powers of two lose nothing. Negative
// numbers are refused, so there is no sign bit; only the number text knows one.

namespace orvane {

namespace {

bool RequireCount(const ScalarCall& call, std::size_t count) {
    if (call.p.size() == count) return true;
    const FamilyCall& family = call.family;
    return FunctionErrorText({"E007-", "02"}, family.sentence, family.node.functionName,
                             "parameter count is " + std::to_string(count), family.errorText);
}

bool RequireOperands(const ScalarCall& call) {
    return RequireCount(call, 3) && CheckBitOperands(call.Check(), call.p[0], call.p[1], call.p[2]);
}

// The word size in force. The last parameter names it, or, below 2, leaves it to the sheet.
double EffectiveBits(const ScalarCall& call) {
    const double bits = call.p.back();
    return bits < smallestWordBits ? call.family.parameters.SystemBits() : bits;
}

double WordModulus(const ScalarCall& call) { return std::pow(2.0, EffectiveBits(call)); }

// The low bits of a number, as many as a word has.
double ReducedTo(double modulus, double number) {
    ModuloFrac(modulus, number);
    return number;
}

// 2 to the power of the only parameter, or 0 behind an error.
double CheckedLimit(const ScalarCall& call) {
    const bool passes = RequireCount(call, 1) && CheckWordBits(call.Check(), call.p[0]);
    return passes ? std::pow(2.0, call.p[0]) : 0.0;
}

bool TakeLowestBit(double& word) {
    word *= 0.5;
    const bool isSet = FractionOf(word) != 0.0;
    word = std::trunc(word);
    return isSet;
}

using BitRule = bool (*)(bool left, bool right);

// From the low end up to the highest bit that is set in either word.
double CombineBits(const ScalarCall& call, BitRule rule) {
    if (!RequireOperands(call)) return 0.0;
    const double modulus = WordModulus(call);
    double left = ReducedTo(modulus, call.p[0]);
    double right = ReducedTo(modulus, call.p[1]);
    double result = 0.0;
    for (double place = 1.0; left > 0.0 || right > 0.0; place += place) {
        const bool leftBit = TakeLowestBit(left);
        const bool rightBit = TakeLowestBit(right);
        if (rule(leftBit, rightBit)) result += place;
    }
    return result;
}

// A step multiplies by `factor`, 2 or 0.5. Bits below the word are cut off first and then those
// above it. The count of steps is no word and is not reduced.
double Shift(const ScalarCall& call, double factor) {
    if (!RequireOperands(call)) return 0.0;
    const double modulus = WordModulus(call);
    const double steps = call.p[1];
    if (steps >= EffectiveBits(call)) return 0.0;
    double word = ReducedTo(modulus, call.p[0]);
    for (double step = 0.0; step < steps; step += 1.0) word *= factor;
    return ReducedTo(modulus, std::trunc(word));
}

}  // namespace

void EvaluateBits(const FamilyCall& call) {
    if (!StageNumbers(call)) return;
    if (call.node.children.empty()) {
        FunctionErrorText({"E007-", "01"}, call.sentence, call.node.functionName,
                          "parameter count is incorrect", call.errorText);
        return;
    }
    RunScalarBody(call);
}

double MaxInt(ScalarCall& call) { return CheckedLimit(call) * 0.5 - 1.0; }

double MinInt(ScalarCall& call) { return CheckedLimit(call) * -0.5; }

double MaxUint(ScalarCall& call) { return CheckedLimit(call) - 1.0; }

// The complement on the word, no signed number.
double BitNot(ScalarCall& call) {
    if (!RequireCount(call, 2) || !CheckUnsignedList(call.Check(), call.p, false)) return 0.0;
    CheckAtMost53(call.Check(), call.p[1]);
    const double modulus = WordModulus(call);
    return modulus - ReducedTo(modulus, call.p[0]) - 1.0;
}

double BitAnd(ScalarCall& call) {
    return CombineBits(call, [](bool left, bool right) { return left && right; });
}

double BitOr(ScalarCall& call) {
    return CombineBits(call, [](bool left, bool right) { return left || right; });
}

double BitXor(ScalarCall& call) {
    return CombineBits(call, [](bool left, bool right) { return left != right; });
}

double LeftShift(ScalarCall& call) { return Shift(call, 2.0); }

double RightShift(ScalarCall& call) { return Shift(call, 0.5); }

}  // namespace orvane
