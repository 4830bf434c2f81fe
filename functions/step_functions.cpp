#include <algorithm>
#include <cmath>
#include <cstdint>

#include "functions/body_samples.h"
#include "functions/function_bodies.h"
#include "functions/step_call.h"
#include "functions/value.h"

// series, product and equation_root.

namespace orvane {

namespace {

constexpr int scanParts = 1000;  // pieces of one step that a scan looks at
constexpr double scanPart = 0.001;

struct Root {
    double x;
    double value;
};

bool ChangesSign(double from, double to) {
    return (from > 0.0 && to < 0.0) || (from < 0.0 && to > 0.0);
}

// Looks at each place of a scan in order until the tree fails there. An error is seen by the next
// step of the grid.
template <typename Look>
void ScanPlaces(const StepCall& call, BodySamples& samples, const SweepGrid& grid, Look look) {
    constexpr std::int64_t places = scanParts + 1;
    const auto numberAt = [&grid](std::int64_t j) {
        return static_cast<double>(j) * grid.step + grid.lower;
    };
    for (GridBlock block = GridBlock::First(places); !block.IsEmpty(); block = block.Next(places)) {
        const double* const values = samples.Fill(grid, block);
        for (std::size_t i = 0; i < block.count; ++i) {
            const double x = numberAt(block.first + static_cast<std::int64_t>(i));
            double value = 0.0;
            if (values != nullptr) {
                value = values[i];
            } else if (!EvaluateBody(call, call.Body(), x, false, value)) {
                return;
            }
            look(Root{x, value});
        }
    }
}

// The best point of the step that ends at `last`, where the body goes from `previous` to
// `last.value`. Kept: `best` takes the value with its sign, so the first negative value ends the
// search. A rising body gives the left end of the step, a falling one the value next to zero, and
// sheets show it. Where no value is below the start value, the left end stands.
Root ScanStep(const StepCall& call, BodySamples& samples, double previous, const Root& last) {
    const SweepGrid grid = {last.x - call.step, call.step * scanPart};
    Root best = {grid.lower, std::max(std::abs(previous), std::abs(last.value)) + 1.0};
    ScanPlaces(call, samples, grid, [&best](const Root& point) {
        if (std::abs(point.value) < best.value) best = point;
    });
    return best;
}

// False when the table of roots is full; an error from before stands.
bool StoreRoot(const StepCall& call, BodySamples& samples, const Root& root) {
    Value& roots = call.family.node.result;
    if (static_cast<std::int64_t>(roots.AllCells().size()) + 2 > largestTable) {
        samples.Settle();
        return !call.Failed() && call.Fail("16", "has too many roots");
    }
    const ValueRow row = roots.AppendRow(2);
    row[0] = root.x;
    row[1] = root.value;
    return true;
}

// What a walk over the grid knows from one place to the next.
struct RootWalk {
    const StepCall& call;
    BodySamples& samples;
    double previous = -1.0;  // so that a zero at the first point counts

    // False after an error.
    bool Take(std::int64_t i, double y) {
        const Root point = {call.ValueAt(i, call.step), y};
        if (y == 0.0 && previous != 0.0) {
            if (!StoreRoot(call, samples, point)) return false;
        } else if (i > 0 && ChangesSign(previous, y)) {
            if (!StoreRoot(call, samples, ScanStep(call, samples, previous, point))) return false;
        }
        previous = y;
        return true;
    }
};

// Walks the grid and stores the roots on the way; false after an error.
bool FindRoots(const StepCall& call) {
    const std::int64_t places = std::int64_t{call.count} + 1;
    BodySamples samples(call, call.Body());
    RootWalk walk{call, samples};
    SampleColumn values;
    for (GridBlock block = GridBlock::First(places); !block.IsEmpty(); block = block.Next(places)) {
        const bool isFilled = samples.FillFinite({call.lower, call.step}, block, values);
        for (std::size_t j = 0; j < block.count; ++j) {
            const std::int64_t i = block.first + static_cast<std::int64_t>(j);
            double y = 0.0;
            if (!isFilled) {
                if (!EvaluateBodyAt(call, call.Body(), call.step, i, y)) return false;
                samples.VisitByTree();
            } else {
                StepProgress(call, i);
                if (call.Failed()) return false;  // in a scan since the block was filled
                samples.Visit(call.ValueAt(i, call.step));
                y = values.At(static_cast<std::int64_t>(j));
            }
            if (!walk.Take(i, y)) return false;
        }
    }
    samples.Settle();
    return !call.Failed();  // the scan of the last step may have failed
}

// Folds the body's values over the steps in order; false after an error.
bool FoldTerms(const StepCall& call, OrderedFold& fold) {
    BodySamples samples(call, call.Body(), NestedRule::inWholeBlocks);
    const SweepGrid grid = {call.lower, call.step};
    GridBlock block = GridBlock::First(call.count);
    for (; !block.IsEmpty(); block = block.Next(call.count)) {
        if (samples.FillFinite(grid, block, fold.Room(), fold.Side())) {
            StepProgressOver(call, block.first, block.count);
            samples.UseBlock();
            fold.Start(0, block.count);
            continue;
        }
        fold.Finish();
        for (std::size_t j = 0; j < block.count; ++j) {
            const std::int64_t i = block.first + static_cast<std::int64_t>(j);
            double term = 0.0;
            if (!EvaluateBodyAt(call, call.Body(), call.step, i, term)) return false;
            fold.Add(term);
        }
    }
    fold.Finish();
    samples.Settle();
    return true;
}

}  // namespace

// The total itself is not tested: a sum that overflows is an infinity.
void Series(StepCall& call) {
    OrderedFold sum = OrderedFold::Sum();
    if (FoldTerms(call, sum)) call.Store(sum.Total());
}

void Product(StepCall& call) {
    OrderedFold product = OrderedFold::Product();
    if (FoldTerms(call, product)) call.Store(product.Total());
}

// One row of x and value for each sign change on the grid. There is no iteration, no convergence
// test and no tolerance. Without a root the result is empty, which is no failure; more roots than
// one table takes are one.
void EquationRoot(StepCall& call) {
    if (!FindRoots(call)) call.family.node.result.Clear();
}

}  // namespace orvane
