#include <span>
#include <string_view>

#include "core/error_text.h"
#include "core/function_node.h"
#include "functions/function_bodies.h"

// `if` gives the value of one of its branches. The others are never evaluated, so it may guard a
// term that would fail.

namespace orvane {

namespace {

FunctionNode* Fail(const FamilyCall& call, std::string_view code, std::string_view message) {
    FunctionErrorText({"E001-", code}, call.sentence, call.node.functionName, message,
                      call.errorText);
    return nullptr;
}

// Two branches: not zero, zero. Kept: three branches are for below, equal to and above zero in
// this order, though the parameter texts of the keyword name them the other way round.
FunctionNode& BranchFor(double condition, std::span<FunctionNode> branches) {
    if (branches.size() == 2) return branches[condition != 0.0 ? 0 : 1];
    if (condition < 0.0) return branches[0];
    return branches[condition == 0.0 ? 1 : 2];
}

}  // namespace

FunctionNode* EvaluateIf(const FamilyCall& call, bool firstIsEvaluated) {
    const std::span<FunctionNode> children = call.node.children;
    if (!firstIsEvaluated) {
        const bool fits = children.size() == 3 || children.size() == 4;
        return fits ? &children[0] : Fail(call, "03", "parameter count is incorrect");
    }
    // A variable that nobody has set has an empty result, which is no number either.
    const Value& condition = children[0].result;
    if (!condition.IsScalar()) return Fail(call, "04", "parameter is incorrect");
    return &BranchFor(condition.At(0, 0), children.subspan(1));
}

}  // namespace orvane
