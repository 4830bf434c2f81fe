#pragma once

#include <limits>
#include <string>
#include <string_view>

#include "core/evaluation.h"
#include "core/function_node.h"
#include "functions/step_call.h"
#include "tests/support/sheet_run.h"

// The body of a sweep over x in the last sentence of a sheet, for tests that run it themselves.

namespace orvane::test {

struct SweepBody {
    // `front` are the sentences in front, each with its ';'.
    explicit SweepBody(std::string_view text, std::string_view front = "")
        : sheet(Compile(SheetOf(text, front))),
          root(sheet.sentences[sheet.sentences.Count() - 1].root),
          family{root, root.keyword, 0, parameters, errorText} {}

    FunctionNode& Node() { return root.children[4]; }

    // What the tree gives at x, NaN with an error in `errorText` where it fails.
    double ByTree(double x) {
        errorText.clear();
        ExpandVariable(Node(), "x", x);
        EvaluateNode(Node(), 0, parameters, errorText);
        const bool isNumber = errorText.empty() && Node().result.IsScalar();
        return isNumber ? Node().result.At(0, 0) : std::numeric_limits<double>::quiet_NaN();
    }

    static std::string SheetOf(std::string_view text, std::string_view front) {
        std::string whole(front);
        whole.append("series(x,1,1,1,").append(text).append(")");
        return whole;
    }

    CalcParameters parameters;
    std::string errorText;
    CompiledSheet sheet;
    FunctionNode& root;
    FamilyCall family;
};

}  // namespace orvane::test
