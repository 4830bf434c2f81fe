#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/calc_parameters.h"
#include "core/function_node.h"
#include "functions/keyword_table.h"
#include "functions/value.h"
#include "tests/functions/family_call.h"
#include "tests/support/sheet_run.h"

// What the tests of values and of their families share: tables as rows, a sheet and its value as
// one test row, and a call of a family on prepared values of any shape.

namespace orvane::test {

inline Value TableOf(const Rows& rows, bool complexMark = false) {
    Value value;
    for (const std::vector<double>& row : rows) {
        std::ranges::copy(row, value.AppendRow(static_cast<std::int32_t>(row.size())).begin());
    }
    value.complexMark = complexMark;
    return value;
}

inline bool SameBits(const Rows& left, const Rows& right) {
    return std::ranges::equal(left, right, [](const auto& a, const auto& b) {
        return std::ranges::equal(a, b, [](double x, double y) { return SameBits(x, y); });
    });
}

struct SheetValue {
    const char* sheet;
    Rows rows;
    bool complex = false;
};

inline void ExpectValues(std::span<const SheetValue> cases) {
    for (const SheetValue& expected : cases) {
        SCOPED_TRACE(expected.sheet);
        const Evaluated evaluated = Evaluate(expected.sheet);
        EXPECT_EQ(evaluated.error, "");
        EXPECT_TRUE(evaluated.evaluated);
        EXPECT_EQ(evaluated.rows, expected.rows);
        EXPECT_EQ(evaluated.complex, expected.complex);
    }
}

// A node of that function with children that have their values, for the cases that no sheet's text
// leads to. The empty name makes a bracket.
class PreparedCall {
public:
    explicit PreparedCall(std::string_view name, std::vector<Value> parameters = {})
        : keyword(keywordTable.FindFunction(name)),
          children(std::make_unique<FunctionNode[]>(parameters.size())) {
        node.functionName = name;
        node.kind = name.empty() ? NodeKind::brace : NodeKind::function;
        node.keyword = keyword;
        node.children = {children.get(), parameters.size()};
        for (std::size_t at = 0; at < parameters.size(); ++at) {
            children[at].kind = NodeKind::number;
            children[at].evaluated = true;
            children[at].parent = &node;
            children[at].result = std::move(parameters[at]);
        }
    }

    // Through the entry of the keyword's family, as the third sentence of a sheet.
    void Run() { RunAs(keyword, keyword == nullptr ? KeywordGroup::vector : keyword->group); }
    void RunAs(const KeywordEntry* row, KeywordGroup group) {
        FamilyOf(group).evaluate({node, row, 2, CalcParameters(), error});
    }
    Rows Result() const { return RowsOf(node.result); }

    FunctionNode node;
    std::string error;

private:
    const KeywordEntry* keyword;
    std::unique_ptr<FunctionNode[]> children;
};

}  // namespace orvane::test
