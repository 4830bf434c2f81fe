#include <cmath>
#include <cstdint>

#include "functions/function_bodies.h"
#include "functions/step_call.h"

// The seven integrals. All sample their bodies on one grid of half steps, 2n + 1 points for n
// steps, and sum in the order of the grid, so that a sheet gives the same number everywhere. Only
// the samples are tested for what is not finite, the sum is not.

namespace orvane {

namespace {

struct Point {
    double x = 0.0;
    double y = 0.0;

    double SquaredRadius() const { return x * x + y * y; }
};

// The grid of half steps over the range of a call.
struct HalfStepGrid {
    const StepCall& call;
    double step = call.step * 0.5;
    std::int64_t last = std::int64_t{call.count} * 2;

    bool Sample(std::int64_t index, double& value) const {
        return EvaluateBodyAt(call, call.Body(), step, index, value);
    }
    // First X, then Y.
    bool Sample(std::int64_t index, Point& point) const {
        return EvaluateBodyAt(call, call.Body(), step, index, point.x) &&
               EvaluateBodyAt(call, call.SecondBody(), step, index, point.y);
    }
};

// The sum over i from 1 to the end of term(sample[i - 1], sample[i], i). False after an error.
template <typename SampleType, typename Term>
bool SumOverPairs(const HalfStepGrid& grid, Term term, double& sum) {
    sum = 0.0;
    SampleType previous = {};
    if (!grid.Sample(0, previous)) return false;
    for (std::int64_t i = 1; i <= grid.last; ++i) {
        SampleType sample = {};
        if (!grid.Sample(i, sample)) return false;
        sum += term(previous, sample, i);
        previous = sample;
    }
    return true;
}

// The option is off when it is exactly 0; one that is not given is on.
bool IsOn(const StepCall& call) { return call.option != 0.0; }

// Trapezoids weigh 1 2 2 ... 2 1, parabolas 1 4 2 ... 4 1.
double Weight(std::int64_t index, std::int64_t last, double oddWeight) {
    if (index == 0 || index == last) return 1.0;
    return index % 2 != 0 ? oddWeight : 2.0;
}

// The weighted sum over all samples of term(sample). False after an error.
template <typename Term>
bool WeightedSum(const HalfStepGrid& grid, Term term, double& sum) {
    const double oddWeight = IsOn(grid.call) ? 4.0 : 2.0;
    sum = 0.0;
    for (std::int64_t i = 0; i <= grid.last; ++i) {
        double sample = 0.0;
        if (!grid.Sample(i, sample)) return false;
        sum += Weight(i, grid.last, oddWeight) * term(sample);
    }
    return true;
}

}  // namespace

void IntegralAreaXy(StepCall& call) {
    const HalfStepGrid grid{call};
    double sum = 0.0;
    if (!WeightedSum(
            grid, [](double y) { return y; }, sum))
        return;
    call.Store(sum * grid.step * (IsOn(call) ? 0.3333333333333333 : 0.5));
}

void IntegralAreaPolar(StepCall& call) {
    const HalfStepGrid grid{call};
    double sum = 0.0;
    if (!WeightedSum(
            grid, [](double radius) { return radius * radius; }, sum))
        return;
    call.Store(sum * grid.step * (IsOn(call) ? 0.16666666666666666 : 0.25));
}

// Kept: the strip in front of the last sample is not counted, though the sample is taken.
void IntegralAreaParametricXy(StepCall& call) {
    const HalfStepGrid grid{call};
    const auto strip = [&grid](const Point& from, const Point& to, std::int64_t index) {
        return index == grid.last ? 0.0 : (to.y + from.y) * std::abs(to.x - from.x);
    };
    double sum = 0.0;
    if (SumOverPairs<Point>(grid, strip, sum)) call.Store(sum * 0.5);
}

// Seen from the origin: sectors of the mean squared radius, or triangles.
void IntegralAreaParametricPolar(StepCall& call) {
    const HalfStepGrid grid{call};
    const bool useSectors = IsOn(call);
    const auto sector = [useSectors](const Point& from, const Point& to, std::int64_t) {
        const double a = to.SquaredRadius();
        const double b = from.SquaredRadius();
        const double dot = to.x * from.x + to.y * from.y;
        if (!useSectors) return std::sqrt(a * b - dot * dot);
        if (a == 0.0 || b == 0.0) return 0.0;
        return (a + b) * std::acos(dot / std::sqrt(a * b));
    };
    double sum = 0.0;
    if (SumOverPairs<Point>(grid, sector, sum)) call.Store(sum * (useSectors ? 0.25 : 0.5));
}

void IntegralCurveXy(StepCall& call) {
    const HalfStepGrid grid{call};
    const auto chord = [&grid](double from, double to, std::int64_t) {
        const double rise = from - to;
        return std::sqrt(rise * rise + grid.step * grid.step);
    };
    double sum = 0.0;
    if (SumOverPairs<double>(grid, chord, sum)) call.Store(sum);
}

// Chords by the law of cosines.
void IntegralCurvePolar(StepCall& call) {
    const HalfStepGrid grid{call};
    const double doubledCosine = 2.0 * std::cos(grid.step);
    const auto chord = [doubledCosine](double from, double to, std::int64_t) {
        return std::sqrt(from * from + to * to - doubledCosine * from * to);
    };
    double sum = 0.0;
    if (SumOverPairs<double>(grid, chord, sum)) call.Store(sum);
}

void IntegralCurveParametric(StepCall& call) {
    const HalfStepGrid grid{call};
    const auto chord = [](const Point& from, const Point& to, std::int64_t) {
        const double across = to.x - from.x;
        const double up = to.y - from.y;
        return std::sqrt(across * across + up * up);
    };
    double sum = 0.0;
    if (SumOverPairs<Point>(grid, chord, sum)) call.Store(sum);
}

}  // namespace orvane
