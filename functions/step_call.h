#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/function_node.h"
#include "functions/keyword_table.h"

// What the functions that sweep a variable share between their entry and the function that a
// keyword row names. The sheet's expression, here the body, is a tree that is evaluated again for
// every value of the variable; there is no symbolic work. A step takes no memory; only what is kept
// of it does, a root or a recorded point, and both have a bound that ends in a message.

namespace orvane {

// One run of a sweep, its parameters read and checked.
struct StepCall {
    const FamilyCall& family;
    std::string_view variableName = {};
    double lower = 0.0;      // the first value of the variable
    double step = 0.0;       // may be 0 or negative
    std::int32_t count = 0;  // steps, at least 1
    double option = -1.0;    // the parameter behind the bodies; -1 when it is not there
    SweepForm form = {};     // from the keyword's row

    bool IsParametric() const { return form.shape == SweepShape::parametric; }
    // The variable at place `index`, from 0, of the grid that starts at the lower end with this
    // step.
    double ValueAt(std::int64_t index, double gridStep) const {
        return static_cast<double>(index) * gridStep + lower;
    }

    FunctionNode& Body() const { return family.node.children[4]; }
    // The Y body of a parametric sweep.
    FunctionNode& SecondBody() const { return family.node.children[5]; }
    bool Failed() const { return !family.errorText.empty(); }
    void Store(double number) const { family.node.result.AppendScalar(number); }
    // One whole message of class E008 in the form for this function; gives false.
    bool Fail(std::string_view code, std::string_view message) const;
};

// Sweeps that stand inside each other. Each one multiplies the cost of all around it and takes its
// share of the program's stack, so deeper nesting is refused with E008-15.
inline constexpr int deepestSweep = 200;

// Gives the body's value with the variable at x: the first element of what it yields, whatever its
// shape; NaN when it yields nothing, as a variable that nobody has set. With `checkFinite`, a value
// that is not finite fails with E008-05. False when the error text is not empty, also from before.
bool EvaluateBody(const StepCall& call, FunctionNode& body, double x, bool checkFinite,
                  double& out);

// The same at place `index` of a grid. Steps the progress and tests for what is not finite.
bool EvaluateBodyAt(const StepCall& call, FunctionNode& body, double step, std::int64_t index,
                    double& out);

// The sign of life: steps the progress, if there is one, at each index divisible by 500. A run that
// is asked to stop fails here, and so it does in each evaluation of a body.
void StepProgress(const StepCall& call, std::int64_t index);
// The same for each index of a block.
void StepProgressOver(const StepCall& call, std::int64_t first, std::size_t count);

}  // namespace orvane
