#pragma once

#include <cstdint>

// Sums of the benchmark's bodies over a grid, each as a loop written by hand for that body alone.

namespace orvane::bench {

struct GridSum {
    double sum = 0.0;
    bool failed = false;  // a term was not finite; the sum ends there
};

// The sum of the body at index * step + lower, for `count` indices from 0, in this order.
using HandLoop = GridSum (*)(double lower, double step, std::int64_t count);

GridSum InverseSquares(double lower, double step, std::int64_t count);
GridSum Cubic(double lower, double step, std::int64_t count);
GridSum DampedSine(double lower, double step, std::int64_t count);
GridSum TwoQuotients(double lower, double step, std::int64_t count);
GridSum Hypotenuse(double lower, double step, std::int64_t count);
GridSum ParabolaOrLine(double lower, double step, std::int64_t count);
GridSum PowerAndLogarithm(double lower, double step, std::int64_t count);

}  // namespace orvane::bench
