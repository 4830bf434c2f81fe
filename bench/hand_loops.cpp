#include "bench/hand_loops.h"

#include <cmath>

// What a programmer writes who needs one of these sums: compiled with -O2, without fused
// operations, in the order of the grid, each term tested. A divisor of zero needs no test of its
// own here, as what it gives is not finite.

namespace orvane::bench {

namespace {

template <typename Body>
[[gnu::always_inline]] inline GridSum SumOver(double lower, double step, std::int64_t count,
                                              Body body) {
    double sum = 0.0;
    for (std::int64_t index = 0; index < count; ++index) {
        const double term = body(static_cast<double>(index) * step + lower);
        if (!std::isfinite(term)) return {sum, true};
        sum += term;
    }
    return {sum, false};
}

}  // namespace

GridSum InverseSquares(double lower, double step, std::int64_t count) {
    return SumOver(lower, step, count, [](double i) { return 1.0 / (i * i); });
}

GridSum Cubic(double lower, double step, std::int64_t count) {
    return SumOver(lower, step, count, [](double x) { return x * x * x - 2.0 * x + 5.0; });
}

GridSum DampedSine(double lower, double step, std::int64_t count) {
    return SumOver(lower, step, count, [](double x) { return std::sin(x) * std::exp(-x / 3.0); });
}

GridSum TwoQuotients(double lower, double step, std::int64_t count) {
    return SumOver(lower, step, count,
                   [](double x) { return (x + 1.0) / (x * x + 3.0) - x / (x + 2.0); });
}

GridSum Hypotenuse(double lower, double step, std::int64_t count) {
    return SumOver(lower, step, count, [](double x) { return std::sqrt(x * x + 1.0); });
}

GridSum ParabolaOrLine(double lower, double step, std::int64_t count) {
    return SumOver(lower, step, count, [](double x) { return x > 5.0 ? x * x : x / 2.0; });
}

GridSum PowerAndLogarithm(double lower, double step, std::int64_t count) {
    return SumOver(lower, step, count, [](double x) { return std::pow(x, 1.5) + std::log(x); });
}

}  // namespace orvane::bench
