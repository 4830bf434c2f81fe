#pragma once

#include <span>
#include <string>

#include "core/calc_parameters.h"
#include "core/function_node.h"
#include "functions/keyword_table.h"
#include "functions/validators.h"

// What the families share between their entry and the body that a keyword row names.

namespace orvane {

// One call of a function from plain numbers to one plain number. The body may reorder `p`; on a
// failure it writes the error text and its number is thrown away.
struct ScalarCall {
    std::span<double> p;
    const FamilyCall& family;

    // Where the shared validators write: the class "E006-", without a code.
    CheckContext Check() const;
};

// One call of a function on values of any shape. The body reads its children's results, or stages
// them, and fills `Result()`; it must leave it untouched where it writes an error text.
struct ValueCall {
    const FamilyCall& family;

    FunctionNode& Node() const { return family.node; }
    Value& Result() const { return family.node.result; }
    Value& Staged() const { return family.node.staged; }
    // One whole message in the form for this function; gives false.
    bool Fail(ErrorCode code, std::string_view message) const;
    bool FailNonFinite(ErrorCode code) const;
};

// The steps that every number family starts with: each child a number, or E011-01. The numbers
// stand in `node.staged` then.
bool StageNumbers(const FamilyCall& call);

// The steps that every number family ends with: run the row's body on the staged numbers; if
// nothing failed, test the number (E006-10, unless the node keeps what is not finite) and append
// it to the result.
void RunScalarBody(const FamilyCall& call);

// Runs the row's body on the children's values.
void RunValueBody(const FamilyCall& call);

}  // namespace orvane
