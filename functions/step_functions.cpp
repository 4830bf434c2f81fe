#include <algorithm>
#include <cmath>
#include <cstdint>

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

// The best point of the step that ends at `last`, where the body goes from `previous` to
// `last.value`. Kept: `best` takes the value with its sign, so the first negative value ends the
// search. A rising body gives the left end of the step, a falling one the value next to zero, and
// sheets show it. Where no value is below the start value, the left end stands.
Root ScanStep(const StepCall& call, double previous, const Root& last) {
    const double part = call.step * scanPart;
    const double from = last.x - call.step;
    Root best = {from, std::max(std::abs(previous), std::abs(last.value)) + 1.0};
    for (int j = 0; j <= scanParts; ++j) {
        const double x = j * part + from;
        double value = 0.0;
        // An error is seen by the next step of the grid.
        if (!EvaluateBody(call, call.Body(), x, false, value)) break;
        if (std::abs(value) < best.value) best = {x, value};
    }
    return best;
}

// False when the table of roots is full; an error from before stands.
bool StoreRoot(const StepCall& call, const Root& root) {
    Value& roots = call.family.node.result;
    if (static_cast<std::int64_t>(roots.AllCells().size()) + 2 > largestTable) {
        return !call.Failed() && call.Fail("16", "has too many roots");
    }
    const ValueRow row = roots.AppendRow(2);
    row[0] = root.x;
    row[1] = root.value;
    return true;
}

// Walks the grid and stores the roots on the way; false after an error.
bool FindRoots(const StepCall& call) {
    double previous = -1.0;  // so that a zero at the first point counts
    for (std::int64_t i = 0; i <= call.count; ++i) {
        double y = 0.0;
        if (!EvaluateBodyAt(call, call.Body(), call.step, i, y)) return false;
        const Root point = {call.ValueAt(i, call.step), y};
        if (y == 0.0 && previous != 0.0) {
            if (!StoreRoot(call, point)) return false;
        } else if (i > 0 && ChangesSign(previous, y)) {
            if (!StoreRoot(call, ScanStep(call, previous, point))) return false;
        }
        previous = y;
    }
    return !call.Failed();  // the scan of the last step may have failed
}

}  // namespace

// The total itself is not tested: a sum that overflows is an infinity.
void Series(StepCall& call) {
    double sum = 0.0;
    for (std::int64_t i = 0; i < call.count; ++i) {
        double term = 0.0;
        if (!EvaluateBodyAt(call, call.Body(), call.step, i, term)) return;
        sum += term;
    }
    call.Store(sum);
}

void Product(StepCall& call) {
    double product = 1.0;
    for (std::int64_t i = 0; i < call.count; ++i) {
        double term = 0.0;
        if (!EvaluateBodyAt(call, call.Body(), call.step, i, term)) return;
        product *= term;
    }
    call.Store(product);
}

// One row of x and value for each sign change on the grid. There is no iteration, no convergence
// test and no tolerance. Without a root the result is empty, which is no failure; more roots than
// one table takes are one.
void EquationRoot(StepCall& call) {
    if (!FindRoots(call)) call.family.node.result.Clear();
}

}  // namespace orvane
