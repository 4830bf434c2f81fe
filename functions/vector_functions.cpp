#include "functions/function_bodies.h"
#include "functions/scalar_call.h"
#include "functions/staging.h"

// The builders of vectors, and brackets without a word in front: one value in a bracket is plain
// grouping, several make a column.

namespace orvane {

namespace {

// One child as it stands, or a column of numbers. Neither an empty table nor a matrix passes.
bool StageVector(const FamilyCall& call) {
    FunctionNode& node = call.node;
    if (node.children.size() == 1) {
        node.staged.CopyFrom(node.children[0].result);
    } else if (!StageScalars(node, call.sentence, call.errorText)) {
        return false;
    }
    const ValueCall values{call};
    const Dimensions size = node.staged.GetDimensions();
    if (!size.IsTable()) return values.Fail({"E004-", "01"}, "parameters are incorrect");
    if (size.rows == 1 || size.columns == 1) return true;
    return values.Fail({"E004-", "02"}, "parameters are incorrect");
}

}  // namespace

void EvaluateVector(const FamilyCall& call) {
    if (!StageVector(call)) return;
    if (call.keyword == nullptr) {
        call.node.result.CopyFrom(call.node.staged);
    } else {
        RunValueBody(call);
    }
}

// A complex number is a row of two, and loses its mark as a column.
void BuildColumn(ValueCall& call) {
    const Value& staged = call.Staged();
    if (staged.GetDimensions().columns == 1) {
        call.Result().CopyFrom(staged);
        return;
    }
    for (const double cell : staged.Row(0)) call.Result().AppendScalar(cell);
}

void BuildRow(ValueCall& call) {
    const Value& staged = call.Staged();
    if (staged.RowCount() == 1) {
        call.Result().CopyFrom(staged);
        return;
    }
    const ValueRow row = call.Result().AppendRow(staged.RowCount());
    for (std::int32_t at = 0; at < staged.RowCount(); ++at) row[at] = staged.At(at, 0);
}

}  // namespace orvane
