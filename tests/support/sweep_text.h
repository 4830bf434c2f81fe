#pragma once

#include <initializer_list>
#include <string>

#include "core/calc_parameters.h"
#include "core/number_literal.h"

// How tests of sweeps write their sheets, and how they watch them.

namespace orvane::test {

class CountingProgress : public Progress {
public:
    int steps = 0;
    void Step() override { ++steps; }
};

// The range of a sweep: its ends, or its lower end and its step, and the count of steps.
struct SweepRange {
    double lower;
    double third;
    int count;
};

inline std::string TextOf(double number) { return FormatFixed(number, 6, false); }

// "(a)*x*x*x+(b)*x*x+(c)*x+(d)" of the coefficients a, b, c and d.
inline std::string CubicText(std::initializer_list<double> coefficients) {
    const char* powers[] = {")*x*x*x+", ")*x*x+", ")*x+", ")"};
    std::string text;
    const char* const* power = powers;
    for (const double coefficient : coefficients) {
        text.append("(").append(TextOf(coefficient)).append(*power++);
    }
    return text;
}

// A call that sweeps x over the range, with the bodies and options as they stand.
inline std::string CallText(const std::string& name, const SweepRange& range,
                            const std::string& rest) {
    return name + "(x," + TextOf(range.lower) + "," + TextOf(range.third) + "," +
           std::to_string(range.count) + "," + rest + ")";
}

}  // namespace orvane::test
