#include "functions/nested_sweeps.h"

#include <algorithm>
#include <iterator>

#include "core/evaluation.h"
#include "functions/function_bodies.h"

namespace orvane {

namespace {

// Those that give one number and record nothing.
constexpr StepBody numberSweeps[] = {
    Series,
    Product,
    IntegralAreaXy,
    IntegralAreaPolar,
    IntegralAreaParametricXy,
    IntegralAreaParametricPolar,
    IntegralCurveXy,
    IntegralCurvePolar,
    IntegralCurveParametric,
};

}  // namespace

NestedSweeps::NestedSweeps(const FamilyCall& call, std::string_view variableName)
    : progress(call.parameters.progress),
      steps(call.parameters.stop),
      parameters(call.parameters),
      sentence(call.sentence),
      outerVariable(variableName) {
    if (progress == nullptr) return;
    parameters.progress = &steps;
    parameters.stop = &steps.tooMany;
}

bool NestedSweeps::CanBe(const FunctionNode& node) {
    return node.keyword != nullptr && node.keyword->body.step != nullptr &&
           std::ranges::find(numberSweeps, node.keyword->body.step) != std::end(numberSweeps);
}

void NestedSweeps::Add(FunctionNode& node) {
    ++sweeps;
    for (FunctionNode* at = &node; at != nullptr; at = NextInTree(&node, at)) {
        const bool isOwn = at->kind == NodeKind::variable && at->variableName != outerVariable;
        if (isOwn) variables.push_back({at, {}, false});
    }
}

void NestedSweeps::Begin(std::size_t count) {
    steps.held = 0;
    steps.most = sweeps * count + extraSteps;
    for (Variable& variable : variables) {
        variable.value.CopyFrom(variable.node->result);
        variable.evaluated = variable.node->evaluated;
    }
}

bool NestedSweeps::Evaluate(FunctionNode& node, double x, double& number,
                            std::string& error) const {
    ExpandVariable(node, outerVariable, x);
    EvaluateNode(node, sentence, parameters, error);
    if (!error.empty() || !node.result.IsScalar() || node.result.complexMark) return false;
    number = node.result.At(0, 0);
    return true;
}

void NestedSweeps::HandOnSteps() {
    if (progress == nullptr) return;
    for (; steps.held > 0; --steps.held) progress->Step();
}

void NestedSweeps::TakeBack() {
    for (const Variable& variable : variables) {
        variable.node->result.CopyFrom(variable.value);
        variable.node->evaluated = variable.evaluated;
    }
}

}  // namespace orvane
