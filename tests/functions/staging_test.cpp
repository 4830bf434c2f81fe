#include "functions/staging.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

using test::Rows;

// A call of "f" whose children hold these tables, in the third sentence.
struct Call {
    FunctionNode node;
    std::string errorText;

    explicit Call(const std::vector<Rows>& parameters)
        : children(std::make_unique<FunctionNode[]>(parameters.size())) {
        node.functionName = "f";
        node.children = {children.get(), parameters.size()};
        for (std::size_t index = 0; index < parameters.size(); ++index) {
            for (const std::vector<double>& cells : parameters[index]) {
                const ValueRow row =
                    children[index].result.AppendRow(static_cast<std::int32_t>(cells.size()));
                std::copy(cells.begin(), cells.end(), row.begin());
            }
        }
    }

    Rows Staged() const { return test::RowsOf(node.staged); }

private:
    std::unique_ptr<FunctionNode[]> children;
};

constexpr int sentence = 2;

const Rows number = {{7}};
const Rows column2 = {{1}, {2}};
const Rows column3 = {{1}, {2}, {3}};
const Rows row2 = {{8, 9}};
const Rows row3 = {{4, 5, 6}};
const Rows table2 = {{1, 2}, {3, 4}};
const Rows table32 = {{1, 2}, {3, 4}, {5, 6}};
const Rows ragged = {{1, 2}, {3, 4, 5}};
const Rows nothing = {};  // a variable that nobody has set

constexpr const char* noScalar = "E011-01 sentence  3: function \"f\": parameter is incorrect.";
constexpr const char* noPoint =
    "E011-02 sentence  3: function \"f\": point parameter is incorrect.";
constexpr const char* otherPoint =
    "E011-03 sentence  3: function \"f\": point parameter is incompatible.";

struct StagingRow {
    std::vector<Rows> parameters;
    Rows staged;
    const char* error;  // empty: `staged` counts
};

void ExpectStaging(const Call& call, bool filled, const Rows& staged, const std::string& error) {
    EXPECT_EQ(call.errorText, error);
    EXPECT_EQ(filled, error.empty());
    if (error.empty()) {
        EXPECT_EQ(call.Staged(), staged);
    }
}

const StagingRow scalarRows[] = {
    {{}, {}, ""},
    {{number}, {{7}}, ""},
    {{{{1}}, {{-2.5}}, number}, {{1}, {-2.5}, {7}}, ""},
    {{row2}, {}, noScalar},
    {{column2}, {}, noScalar},
    {{table2}, {}, noScalar},
    {{nothing}, {}, noScalar},
    {{number, row2}, {}, noScalar},
    {{number, nothing, number}, {}, noScalar},
};

TEST(StageScalars, MakesAColumnOfNumbers) {
    for (const auto& [parameters, staged, error] : scalarRows) {
        SCOPED_TRACE(testing::PrintToString(parameters));
        Call call(parameters);
        const bool filled = StageScalars(call.node, sentence, call.errorText);
        ExpectStaging(call, filled, staged, error);
    }
}

TEST(StageScalars, TakesNoComplexNumber) {
    Call call({number, nothing});
    call.node.children[1].result.SetComplex(3, 1);
    EXPECT_FALSE(StageScalars(call.node, sentence, call.errorText));
    EXPECT_EQ(call.errorText, noScalar);
}

TEST(StageScalars, TakesAComplexNumberWithoutImaginaryPart) {
    Call call({number, nothing});
    call.node.children[1].result.SetComplex(3, 0);
    EXPECT_TRUE(StageScalars(call.node, sentence, call.errorText));
    EXPECT_EQ(call.Staged(), (Rows{{7}, {3}}));
}

const StagingRow pointRowRows[] = {
    {{}, {}, ""},
    {{column2}, {{1, 2}}, ""},
    {{number}, {{7}}, ""},  // one row of one is a column too
    {{column3, {{4}, {5}, {6}}}, {{1, 2, 3}, {4, 5, 6}}, ""},
    {{row2}, {}, noPoint},
    {{table2}, {}, noPoint},
    {{ragged}, {}, noPoint},
    {{nothing}, {}, noPoint},
    {{row2, column2}, {}, noPoint},
    {{column2, column3}, {}, otherPoint},
    {{column2, row2}, {}, otherPoint},
    {{column3, table32}, {}, otherPoint},
    {{column2, ragged}, {}, otherPoint},
    {{column2, nothing}, {}, otherPoint},
    {{column2, column2, number}, {}, otherPoint},
};

TEST(StagePointRows, MakesARowOfEachPoint) {
    for (const auto& [parameters, staged, error] : pointRowRows) {
        SCOPED_TRACE(testing::PrintToString(parameters));
        Call call(parameters);
        const bool filled = StagePointRows(call.node, 0, sentence, call.errorText);
        ExpectStaging(call, filled, staged, error);
    }
}

TEST(StagePointRows, StartsAtTheGivenChild) {
    Call call({number, row3, column2, {{3}, {4}}});
    EXPECT_TRUE(StagePointRows(call.node, 2, sentence, call.errorText));
    EXPECT_EQ(call.Staged(), (Rows{{1, 2}, {3, 4}}));
    // The child at the start is the one that must be a column.
    EXPECT_FALSE(StagePointRows(call.node, 1, sentence, call.errorText));
    EXPECT_EQ(call.errorText, noPoint);
}

const StagingRow pointRows[] = {
    {{}, {}, ""},
    {{number}, {{7}}, ""},
    {{number, {{8}}}, {{7}, {8}}, ""},
    {{column3}, {{1, 2, 3}}, ""},
    {{row3}, {{4, 5, 6}}, ""},
    {{row3, column3}, {{4, 5, 6}, {1, 2, 3}}, ""},
    {{column2, row2}, {{1, 2}, {8, 9}}, ""},
    {{table2}, {}, noPoint},
    {{ragged}, {}, noPoint},
    {{nothing}, {}, noPoint},
    {{column2, table2}, {}, noPoint},
    {{column2, nothing}, {}, noPoint},
    {{row3, row2}, {}, otherPoint},
    {{column2, column3}, {}, otherPoint},
    {{column2, row3}, {}, otherPoint},
    {{row3, number}, {}, otherPoint},
    // the first failure stands
    {{column2, row3, table2}, {}, otherPoint},
    {{column2, table2, row3}, {}, noPoint},
};

TEST(StagePoints, MakesARowOfEachRowOrColumn) {
    for (const auto& [parameters, staged, error] : pointRows) {
        SCOPED_TRACE(testing::PrintToString(parameters));
        Call call(parameters);
        const bool filled = StagePoints(call.node, sentence, call.errorText);
        ExpectStaging(call, filled, staged, error);
    }
}

TEST(Staging, StartsWithAnEmptyArea) {
    Call call({column2});
    call.node.staged.SetComplex(1, 2);
    EXPECT_TRUE(StagePoints(call.node, sentence, call.errorText));
    EXPECT_EQ(call.Staged(), (Rows{{1, 2}}));
    EXPECT_TRUE(StagePointRows(call.node, 0, sentence, call.errorText));
    EXPECT_EQ(call.Staged(), (Rows{{1, 2}}));
    EXPECT_FALSE(call.node.staged.complexMark);
}

TEST(Staging, LeavesTheResultsOfTheChildren) {
    Call call({column2, row2});
    EXPECT_TRUE(StagePoints(call.node, sentence, call.errorText));
    EXPECT_EQ(test::RowsOf(call.node.children[0].result), column2);
    EXPECT_EQ(test::RowsOf(call.node.children[1].result), row2);
    EXPECT_EQ(call.node.result.RowCount(), 0);
}

// Far more points than can be held; only the first one is looked at.
TEST(Staging, RefusesMorePointsThanATableHolds) {
    Call call(std::vector<Rows>(20'000, Rows{{1}}));
    call.node.children[0].result.Clear();
    for (int row = 0; row < 1000; ++row) call.node.children[0].result.AppendScalar(row);
    const std::string message = "E011-04 sentence  3: function \"f\": parameters are too large.";
    EXPECT_FALSE(StagePointRows(call.node, 0, 2, call.errorText));
    EXPECT_EQ(call.errorText, message);
    call.errorText.clear();
    EXPECT_FALSE(StagePoints(call.node, 2, call.errorText));
    EXPECT_EQ(call.errorText, message);
}

TEST(StageTable, TakesOneTableAsItStandsAndSeveralPointsAsRows) {
    Call one({{{1, 2}, {3}}});
    EXPECT_TRUE(StageTable(one.node, 0, 2, one.errorText));
    EXPECT_EQ(one.Staged(), (Rows{{1, 2}, {3}}));
    Call several({{{9}}, {{1}, {2}}, {{3}, {4}}});
    EXPECT_TRUE(StageTable(several.node, 1, 2, several.errorText));
    EXPECT_EQ(several.Staged(), (Rows{{1, 2}, {3, 4}}));
}

}  // namespace
}  // namespace orvane
