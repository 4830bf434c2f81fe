#pragma once

#include <cmath>
#include <cstdint>
#include <string>

#include "core/function_node.h"
#include "tests/support/sheet_run.h"

// Whether two trees are in the same state, to the last bit.

namespace orvane::test {

// An integral adds terms that are no numbers with either sign, and a processor's sum of two of them
// is the one that the compiler has put first. So that sign may differ, and no sheet can see it.
inline bool SameCell(double left, double right) {
    return SameBits(left, right) || (std::isnan(left) && std::isnan(right));
}

inline bool SameValue(const Value& left, const Value& right) {
    if (left.RowCount() != right.RowCount() || left.complexMark != right.complexMark) return false;
    for (std::int32_t row = 0; row < left.RowCount(); ++row) {
        if (left.RowLength(row) != right.RowLength(row)) return false;
        for (std::int32_t column = 0; column < left.RowLength(row); ++column) {
            if (!SameCell(left.At(row, column), right.At(row, column))) return false;
        }
    }
    return true;
}

inline bool SameNode(const FunctionNode& left, const FunctionNode& right) {
    return left.kind == right.kind && left.text == right.text &&
           left.evaluated == right.evaluated && left.keepNonFinite == right.keepNonFinite &&
           SameValue(left.result, right.result) && SameValue(left.staged, right.staged);
}

// The first node that differs, with both results; empty if none does.
inline std::string TreeDifference(FunctionNode& left, FunctionNode& right) {
    FunctionNode* a = &left;
    FunctionNode* b = &right;
    while (a != nullptr && b != nullptr) {
        if (!SameNode(*a, *b)) {
            std::string difference(a->text);
            difference.append(": ").append(a->result.ToText(-1)).append(" and ");
            return difference.append(b->result.ToText(-1));
        }
        a = NextInTree(&left, a);
        b = NextInTree(&right, b);
    }
    return a == b ? "" : "one tree is larger";
}

}  // namespace orvane::test
