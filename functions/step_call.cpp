#include "functions/step_call.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/calc_parameters.h"
#include "core/error_text.h"
#include "core/evaluation.h"
#include "core/run_stop.h"
#include "functions/function_bodies.h"
#include "functions/whole_number.h"

namespace orvane {

namespace {

constexpr std::int64_t progressInterval = 500;
constexpr std::size_t bodyPlace = 4;  // children in front of it: name, lower end, end, steps

// Behind one body, or two.
std::size_t OptionPlace(const StepCall& call) { return bodyPlace + (call.IsParametric() ? 2 : 1); }

bool IsSweep(const FunctionNode& node) {
    return node.keyword != nullptr && node.keyword->group == KeywordGroup::variable;
}

// How many sweeps stand inside each other from `top` down, `top` included. Looks at each node once,
// as one evaluation does.
int SweepDepth(const FunctionNode& top) {
    int depth = 0;
    int deepest = 0;
    const FunctionNode* at = &top;
    while (true) {
        if (IsSweep(*at)) deepest = std::max(deepest, ++depth);
        if (!at->children.empty()) {
            at = &at->children.front();
            continue;
        }
        while (true) {
            if (IsSweep(*at)) --depth;
            if (at == &top) return deepest;
            if (at != &at->parent->children.back()) break;
            at = at->parent;
        }
        ++at;
    }
}

bool CheckCount(const StepCall& call) {
    const std::size_t count = call.family.node.children.size();
    if (count == OptionPlace(call) || count == OptionPlace(call) + 1) return true;
    return call.IsParametric() ? call.Fail("06", "needs 6 or 7 parameters")
                               : call.Fail("07", "needs 5 or 6 parameters");
}

bool EvaluateParameter(const StepCall& call, std::size_t place) {
    const FamilyCall& family = call.family;
    EvaluateNode(family.node.children[place], family.sentence, family.parameters, family.errorText);
    return !call.Failed();
}

// The lower end, the step or the other end, and the step count. All three are evaluated before the
// first one is looked at.
bool EvaluateBounds(const StepCall& call) {
    for (const std::size_t place : {1, 2, 3}) {
        if (!EvaluateParameter(call, place)) return false;
    }
    for (const std::size_t place : {1, 2, 3}) {
        if (!call.family.node.children[place].result.IsScalar()) {
            return call.Fail("09", "parameter is incorrect");
        }
    }
    return true;
}

bool ReadOption(StepCall& call) {
    const std::size_t place = OptionPlace(call);
    if (call.family.node.children.size() <= place) return true;
    if (!EvaluateParameter(call, place)) return false;
    const Value& value = call.family.node.children[place].result;
    if (!value.IsScalar()) {
        return call.IsParametric() ? call.Fail("11", "parameter 7 is incorrect")
                                   : call.Fail("12", "parameter 6 is incorrect");
    }
    call.option = value.At(0, 0);
    return true;
}

bool ReadParameters(StepCall& call) {
    if (!CheckCount(call)) return false;
    const std::span<FunctionNode> children = call.family.node.children;
    // A word that names an earlier formula is no variable either.
    if (children[0].kind != NodeKind::variable) {
        return call.Fail("08", "variable name is incorrect");
    }
    call.variableName = children[0].variableName;

    if (!EvaluateBounds(call)) return false;
    const double steps = children[3].result.At(0, 0);
    if (!IsCount(steps, true)) {
        return call.Fail("10", "forth parameter is step count,which must be an integer >= 1");
    }
    if (!ReadOption(call)) return false;
    // Kept: a count beyond 32 bits wraps, so it may pass as a smaller one.
    call.count = RoundToInt(steps);
    if (call.count < 1) return call.Fail("13", "step count must be >= 1");

    call.lower = children[1].result.At(0, 0);
    const double third = children[2].result.At(0, 0);
    call.step = call.form.stepIsGiven ? third : (third - call.lower) / call.count;
    return true;
}

}  // namespace

bool StepCall::Fail(std::string_view code, std::string_view message) const {
    return FunctionErrorText({"E008-", code}, family.sentence, family.node.functionName, message,
                             family.errorText);
}

void EvaluateVariable(const FamilyCall& call) {
    StepCall sweep{call};
    sweep.form = call.keyword->body.sweepForm;
    // A sweep runs its bodies and parameters from inside itself, each level on more of the stack.
    if (SweepDepth(call.node) > deepestSweep) {
        sweep.Fail("15", "is nested too deep");
        return;
    }
    if (ReadParameters(sweep)) call.keyword->body.step(sweep);
}

bool EvaluateBody(const StepCall& call, FunctionNode& body, double x, bool checkFinite,
                  double& out) {
    const FamilyCall& family = call.family;
    if (call.Failed() || TakeStop(family.parameters.stop, family.errorText)) return false;
    ExpandVariable(body, call.variableName, x);
    EvaluateNode(body, family.sentence, family.parameters, family.errorText);
    if (call.Failed()) return false;

    const Value& value = body.result;
    out = value.RowCount() == 0 ? std::numeric_limits<double>::quiet_NaN() : value.At(0, 0);
    if (!checkFinite || std::isfinite(out)) return true;
    return NonFiniteError({"E008-", "05"}, family.sentence, family.node.functionName,
                          family.errorText);
}

bool EvaluateBodyAt(const StepCall& call, FunctionNode& body, double step, std::int64_t index,
                    double& out) {
    StepProgress(call, index);
    return EvaluateBody(call, body, call.ValueAt(index, step), true, out);
}

void StepProgress(const StepCall& call, std::int64_t index) {
    TakeStop(call.family.parameters.stop, call.family.errorText);
    Progress* const progress = call.family.parameters.progress;
    if (progress != nullptr && index % progressInterval == 0) progress->Step();
}

void StepProgressOver(const StepCall& call, std::int64_t first, std::size_t count) {
    TakeStop(call.family.parameters.stop, call.family.errorText);
    Progress* const progress = call.family.parameters.progress;
    if (progress == nullptr) return;
    const std::int64_t end = first + static_cast<std::int64_t>(count);
    std::int64_t next = (first + progressInterval - 1) / progressInterval * progressInterval;
    for (; next < end; next += progressInterval) progress->Step();
}

}  // namespace orvane
