#include <cmath>
#include <cstdint>

#include "functions/body_samples.h"
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

    std::int64_t Places() const { return last + 1; }
    bool Sample(std::int64_t index, double& value) const {
        return EvaluateBodyAt(call, call.Body(), step, index, value);
    }
    // First X, then Y.
    bool Sample(std::int64_t index, Point& point) const {
        return EvaluateBodyAt(call, call.Body(), step, index, point.x) &&
               EvaluateBodyAt(call, call.SecondBody(), step, index, point.y);
    }
};

// The samples of one body over one block after the other.
class BodyBlocks {
public:
    BodyBlocks(const HalfStepGrid& halfSteps, FunctionNode& body)
        : grid(halfSteps), samples(grid.call, body, NestedRule::inWholeBlocks) {}

    // False where the tree has to take the samples.
    bool Fill(const GridBlock& block, SideFold& side) {
        return samples.FillFinite({grid.call.lower, grid.step}, block, column, side);
    }
    // The samples of a filled block are used.
    void StepProgressOver(const GridBlock& block) {
        orvane::StepProgressOver(grid.call, block.first, block.count);
        samples.UseBlock();
    }
    double At(std::int64_t index) const { return column.At(index); }
    void SetInFront(double sample) { column.SetInFront(sample); }
    void VisitByTree() { samples.VisitByTree(); }
    void LeaveBlock() { samples.LeaveBlock(); }
    void Settle() { samples.Settle(); }

private:
    const HalfStepGrid& grid;
    BodySamples samples;
    SampleColumn column;
};

// The same for x and y.
class PointBlocks {
public:
    explicit PointBlocks(const HalfStepGrid& grid)
        : x(grid, grid.call.Body()), y(grid, grid.call.SecondBody()) {}

    bool Fill(const GridBlock& block, SideFold& side) {
        // The tree starts with X. It may fail there, and Y is as it was in front of the block.
        if (!x.Fill(block, side)) {
            x.VisitByTree();
            y.Settle();
            return false;
        }
        if (y.Fill(block, side)) return true;
        x.LeaveBlock();
        return false;
    }
    void StepProgressOver(const GridBlock& block) {
        x.StepProgressOver(block);
        y.StepProgressOver(block);
    }
    Point At(std::int64_t index) const { return {x.At(index), y.At(index)}; }
    void SetInFront(const Point& sample) {
        x.SetInFront(sample.x);
        y.SetInFront(sample.y);
    }
    void Settle() {
        x.Settle();
        y.Settle();
    }

private:
    BodyBlocks x;
    BodyBlocks y;
};

BodyBlocks BlocksOf(const HalfStepGrid& grid, double) { return {grid, grid.call.Body()}; }
PointBlocks BlocksOf(const HalfStepGrid& grid, Point) { return PointBlocks(grid); }

// The sum over all places of term(sample in front, sample, place); at place 0 the sample in front
// is zero. `first` is the first place that has a term; every place is sampled. False after an
// error.
template <typename Sample, typename Term>
bool SumOverPlaces(const HalfStepGrid& grid, std::int64_t firstTerm, Term term, double& total) {
    OrderedFold sum = OrderedFold::Sum();
    auto blocks = BlocksOf(grid, Sample());
    Sample inFront = {};
    GridBlock block = GridBlock::First(grid.Places());
    for (; !block.IsEmpty(); block = block.Next(grid.Places())) {
        const auto count = static_cast<std::int64_t>(block.count);
        blocks.SetInFront(inFront);
        if (blocks.Fill(block, sum.Side())) {
            blocks.StepProgressOver(block);
            double* const terms = sum.Room().Block();
            const std::int64_t begin = std::max<std::int64_t>(0, firstTerm - block.first);
            for (std::int64_t j = begin; j < count; ++j) {
                terms[j] = term(blocks.At(j - 1), blocks.At(j), block.first + j);
            }
            sum.Start(static_cast<std::size_t>(begin), block.count);
            inFront = blocks.At(count - 1);
            continue;
        }
        sum.Finish();
        for (std::int64_t i = block.first; i < block.first + count; ++i) {
            Sample sample = {};
            if (!grid.Sample(i, sample)) return false;
            if (i >= firstTerm) sum.Add(term(inFront, sample, i));
            inFront = sample;
        }
    }
    sum.Finish();
    blocks.Settle();
    total = sum.Total();
    return true;
}

// The sum over i from 1 to the end of term(sample[i - 1], sample[i], i). False after an error.
template <typename SampleType, typename Term>
bool SumOverPairs(const HalfStepGrid& grid, Term term, double& sum) {
    return SumOverPlaces<SampleType>(grid, 1, term, sum);
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
    const auto weighted = [&](double, double sample, std::int64_t index) {
        return Weight(index, grid.last, oddWeight) * term(sample);
    };
    return SumOverPlaces<double>(grid, 0, weighted, sum);
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
