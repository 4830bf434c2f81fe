#include "output/base_text.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "functions/whole_number.h"
#include "output/number_text.h"

namespace orvane {

namespace {

struct OutputForm {
    std::string_view keyword;
    std::string_view prefix;  // ahead of the digits
    std::string_view suffix;  // behind the float text
    int base;                 // 0: float text
};

constexpr std::array<OutputForm, 17> outputForms = {{
    {"", "", "", 0},
    {"percent", "", " %", 0},
    {"bin", "0b", "", 2},
    {"binary", "0b", "", 2},
    {"base2", "0b", "", 2},
    {"quat", "0q", "", 4},
    {"quaternary", "0q", "", 4},
    {"base4", "0q", "", 4},
    {"oct", "0o", "", 8},
    {"octal", "0o", "", 8},
    {"base8", "0o", "", 8},
    {"hex", "0h", "", 16},
    {"hexadecimal", "0h", "", 16},
    {"base16", "0h", "", 16},
    {"uint", "0u", "", 10},
    {"unsigned_integer", "0u", "", 10},
    {"base10", "0u", "", 10},  // not a word of the sheet language, but complete here
}};

const OutputForm* FindForm(std::string_view keyword) {
    const auto found =
        std::find_if(outputForms.begin(), outputForms.end(),
                     [&](const OutputForm& form) { return form.keyword == keyword; });
    return found == outputForms.end() ? nullptr : &*found;
}

// Numbers that no remark calls trimmed. Those above the largest signed number are unsigned
// patterns.
bool IsOnWord(double whole, const CalcParameters& parameters) {
    return whole < parameters.wordModulus && whole >= parameters.wordMinSigned;
}

// What is left of a whole number on the word, still with its sign. All divisors are powers of two,
// so nothing here rounds.
double ReduceToWord(double whole, const CalcParameters& parameters) {
    if (IsOnWord(whole, parameters)) return whole;
    if (whole >= 0.0) return FractionOf(whole / parameters.wordModulus) * parameters.wordModulus;
    // Kept: a whole multiple of the smallest signed number becomes that number and not 0, so the
    // remark counts one step less than the multiple.
    const double part = FractionOf(whole / parameters.wordMinSigned);
    return part == 0.0 ? parameters.wordMinSigned : part * parameters.wordMinSigned;
}

// What the word and the whole part left out; empty when nothing is missing.
std::string LossRemark(double whole, double removed, double fraction,
                       const CalcParameters& parameters) {
    const bool trimmed = !IsOnWord(whole, parameters);
    const bool truncated = fraction != 0.0;
    if (!trimmed && !truncated) return {};
    std::string remark = "(";
    if (trimmed) remark.append("trim: ").append(FormatTrimCount(removed, parameters));
    if (trimmed && truncated) remark += ',';
    if (truncated) {
        remark.append("truncate: ").append(FormatPlain(fraction, parameters.floatPrecision));
    }
    return remark + ')';
}

std::string IgnoredRemark(std::string_view keyword) {
    return std::string("(ignore format \"")
        .append(keyword)
        .append("\" since the number is too large)");
}

}  // namespace

void FormatWithKeyword(std::string_view keyword, double value, const CalcParameters& parameters,
                       const NumberLimits& limits, ReportLine& line) {
    const OutputForm* form = FindForm(keyword);
    if (form != nullptr && form->base == 0) {
        line.value = FormatNumber(value, parameters).append(form->suffix);
        return;
    }
    double whole = 0.0;
    const double fraction = std::modf(value, &whole);
    // Asked this way round, NaN is out of range too.
    const bool inRange = whole <= limits.largestInteger && whole >= limits.smallestInteger;
    if (form == nullptr || !inRange) {
        line.value = FormatNumber(value, parameters);
        line.note = IgnoredRemark(keyword);
        return;
    }
    const double reduced = ReduceToWord(whole, parameters);
    const double pattern = reduced < 0.0 ? reduced + parameters.wordModulus : reduced;
    line.value = form->prefix;
    line.value += FormatInBase(parameters.wordModulus, form->base, pattern);
    line.note = LossRemark(whole, whole - reduced, fraction, parameters);
}

// Kept: a digit is the truncated product of the base and a fraction that a division has rounded.
// In base 10 that fraction is often a hair below the true tenth and the digit comes out one too
// low: 12 on 16 bits reads "00011".
std::string FormatInBase(double modulus, int base, double value) {
    std::string digits;  // the lowest one first
    double rest = modulus - 1.0;
    while (value > 0.0) {
        const double fraction = std::modf(value / base, &value);
        rest = std::trunc(rest / base);
        digits += "0123456789ABCDEF"[static_cast<int>(base * fraction)];
    }
    while (rest > 0.0) {
        rest = std::trunc(rest / base);
        digits += '0';
    }
    std::reverse(digits.begin(), digits.end());
    return digits;
}

std::string FormatTrimCount(double amount, const CalcParameters& parameters) {
    double step = std::ldexp(1.0, parameters.SystemBits());
    if (amount < 0.0) step *= 0.5;
    const int precision = parameters.floatPrecision;
    return FormatPlain(std::fabs(amount / step), precision) + " of " + (amount < 0.0 ? '-' : '+') +
           FormatPlain(step, precision);
}

}  // namespace orvane
