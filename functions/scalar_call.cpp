#include "functions/scalar_call.h"

#include <cmath>

#include "core/error_text.h"
#include "functions/staging.h"

namespace orvane {

CheckContext ScalarCall::Check() const {
    return {{"E006-", ""}, family.sentence, family.node.functionName, family.errorText};
}

bool ValueCall::Fail(ErrorCode code, std::string_view message) const {
    return FunctionErrorText(code, family.sentence, family.node.functionName, message,
                             family.errorText);
}

bool ValueCall::FailNonFinite(ErrorCode code) const {
    return NonFiniteError(code, family.sentence, family.node.functionName, family.errorText);
}

bool StageNumbers(const FamilyCall& call) {
    return StageScalars(call.node, call.sentence, call.errorText);
}

void RunScalarBody(const FamilyCall& call) {
    ScalarCall scalars{call.node.staged.AllCells(), call};
    const double number = call.keyword->body.scalar(scalars);
    if (!call.errorText.empty()) return;
    if (!call.node.keepNonFinite && !std::isfinite(number)) {
        NonFiniteError({"E006-", "10"}, call.sentence, call.node.functionName, call.errorText);
        return;
    }
    call.node.result.AppendScalar(number);
}

void RunValueBody(const FamilyCall& call) {
    ValueCall values{call};
    call.keyword->body.value(values);
}

}  // namespace orvane
