#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <span>
#include <string>
#include <string_view>

#include "core/calc_parameters.h"
#include "core/function_node.h"
#include "functions/keyword_table.h"
#include "tests/support/sheet_run.h"

// What the tests of the number families share: one call on any doubles, also on those that no sheet
// can spell, through the keyword's row and the family's entry; and rows of sheets.

namespace orvane::test {

struct CallOptions {
    CalcParameters parameters = {};
    bool keepNonFinite = false;
    int sentence = 0;
};

// `number` is NaN and `stored` is clear when the family stored nothing.
struct CallResult {
    double number = std::numeric_limits<double>::quiet_NaN();
    bool stored = false;
    std::string error;
};

inline CallResult CallOnNumbers(std::string_view keyword, std::span<const double> numbers,
                                const CallOptions& options = {}) {
    NodePool pool;
    pool.Reserve(numbers.size());
    FunctionNode node;
    node.kind = NodeKind::function;
    node.functionName = keyword;
    node.keyword = keywordTable.FindFunction(keyword);
    node.keepNonFinite = options.keepNonFinite;
    node.children = pool.Take(numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        node.children[i].kind = NodeKind::number;
        node.children[i].result.SetReal(numbers[i]);
        node.children[i].evaluated = true;
    }
    CallResult result;
    if (node.keyword == nullptr) {
        result.error = "no such keyword";
        return result;
    }
    FamilyOf(node.keyword->group)
        .evaluate({node, node.keyword, options.sentence, options.parameters, result.error});
    result.stored = node.result.IsScalar();
    if (result.stored) result.number = node.result.At(0, 0);
    return result;
}

// Equal to the last bit, or both no number: the sign of a NaN has no meaning.
inline bool SameNumber(double left, double right) {
    return SameBits(left, right) || (std::isnan(left) && std::isnan(right));
}

// A number that the compiler can't see through, so that a formula on it is computed at run time
// by the same library functions as in a sheet.
inline double AtRunTime(double number) {
    volatile double hidden = number;
    return hidden;
}

// A sheet, and what its last sentence gives.
struct NumberRow {
    std::string_view sheet;
    double number;
};
struct ErrorRow {
    std::string_view sheet;
    std::string_view error;
};

inline void ExpectNumbers(std::span<const NumberRow> rows) {
    for (const auto& [sheet, number] : rows) {
        SCOPED_TRACE(sheet);
        const Evaluated evaluated = Evaluate(sheet);
        EXPECT_EQ(evaluated.error, "");
        EXPECT_EQ(evaluated.rows, (Rows{{number}}));
    }
}

inline void ExpectErrors(std::span<const ErrorRow> rows) {
    for (const auto& [sheet, error] : rows) {
        SCOPED_TRACE(sheet);
        const Evaluated evaluated = Evaluate(sheet);
        EXPECT_EQ(evaluated.error, error);
        EXPECT_FALSE(evaluated.evaluated);
        EXPECT_TRUE(evaluated.rows.empty());
    }
}

inline std::string NonFiniteMessage(std::string_view keyword) {
    return "E006-10 sentence  1: function \"" + std::string(keyword) +
           "\": generates an infinite or unaccepted number.";
}

}  // namespace orvane::test
