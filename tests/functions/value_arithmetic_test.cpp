#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include "functions/value.h"
#include "tests/functions/value_checks.h"

namespace orvane {
namespace {

using test::Rows;
using test::RowsOf;
using test::TableOf;

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double largest = std::numeric_limits<double>::max();

// Between -1 and 1, with all bits in play.
Rows RandomRows(std::mt19937& random, std::size_t rowCount, std::size_t columnCount) {
    Rows rows(rowCount, std::vector<double>(columnCount));
    for (auto& row : rows) {
        for (double& cell : row) cell = random() / 2147483648.0 - 1.0;
    }
    return rows;
}

// One column at a time, each sum on its own.
Rows ProductByColumns(const Rows& a, const Rows& b) {
    Rows product(a.size());
    for (std::size_t column = 0; column < b[0].size(); ++column) {
        std::vector<double> list;
        for (const auto& row : b) list.push_back(row[column]);
        for (std::size_t i = 0; i < a.size(); ++i) {
            double sum = 0.0;
            for (std::size_t k = 0; k < list.size(); ++k) sum = sum + a[i][k] * list[k];
            product[i].push_back(sum);
        }
    }
    return product;
}

TEST(AddOrSubtract, WorksElementByElement) {
    struct {
        Rows left, right, sum, difference;
    } const cases[] = {
        {{{1}}, {{2}}, {{3}}, {{-1}}},
        {{{1, 2}}, {{10, 30}}, {{11, 32}}, {{-9, -28}}},
        {{{1}, {2}, {3}}, {{4}, {5}, {6}}, {{5}, {7}, {9}}, {{-3}, {-3}, {-3}}},
        {{{1, 2}, {3, 4}}, {{5, 6}, {7, 8}}, {{6, 8}, {10, 12}}, {{-4, -4}, {-4, -4}}},
        {{{1, 2, 3}}, {{0.5, 0.25, -3}}, {{1.5, 2.25, 0}}, {{0.5, 1.75, 6}}},
        {{{largest}}, {{largest}}, {{infinite}}, {{0}}},
    };
    for (const auto& [left, right, sum, difference] : cases) {
        SCOPED_TRACE(TableOf(left).ToText(0));
        Value value;
        EXPECT_TRUE(value.AddOrSubtract(TableOf(left), TableOf(right), true));
        EXPECT_EQ(RowsOf(value), sum);
        value.Clear();
        EXPECT_TRUE(value.AddOrSubtract(TableOf(left), TableOf(right), false));
        EXPECT_EQ(RowsOf(value), difference);
    }
}

TEST(AddOrSubtract, RefusesOtherShapesAndTouchesNothing) {
    const std::pair<Rows, Rows> cases[] = {
        {{{1}}, {{1, 2}}},
        {{{1}, {2}}, {{1, 2}}},
        {{{1, 2}, {3, 4}}, {{1, 2}}},
        {{}, {}},
        {{{1}}, {}},
        {{}, {{1}}},
        {{{1, 2}, {3}}, {{1, 2}, {3}}},
        {{{1}, {2}}, {{1}, {2}, {3}}},
        {{{}}, {{}}},
    };
    for (const auto& [left, right] : cases) {
        SCOPED_TRACE(TableOf(left).ToText(0));
        Value value = TableOf({{7, 8}}, true);
        EXPECT_FALSE(value.AddOrSubtract(TableOf(left), TableOf(right), true));
        EXPECT_FALSE(value.AddOrSubtract(TableOf(left), TableOf(right), false));
        EXPECT_EQ(RowsOf(value), (Rows{{7, 8}}));
        EXPECT_TRUE(value.complexMark);
    }
}

TEST(AddOrSubtract, AppendsAndLeavesTheMarkAlone) {
    Value value = TableOf({{9, 9}});
    EXPECT_TRUE(value.AddOrSubtract(TableOf({{1, 2}}, true), TableOf({{3, 4}}, true), true));
    EXPECT_EQ(RowsOf(value), (Rows{{9, 9}, {4, 6}}));
    EXPECT_FALSE(value.complexMark);
    EXPECT_TRUE(value.AddOrSubtract(TableOf({{1}, {2}}), TableOf({{3}, {4}}), true));
    EXPECT_EQ(RowsOf(value), (Rows{{9, 9}, {4, 6}, {4}, {6}}));
}

TEST(MultiplyMatrices, GivesTheMatrixProduct) {
    struct {
        Rows left, right, product;
    } const cases[] = {
        {{{3}}, {{4}}, {{12}}},
        {{{3}}, {{1, 2}, {3, 4}}, {{3, 6}, {9, 12}}},
        {{{1, 2}, {3, 4}}, {{3}}, {{3, 6}, {9, 12}}},
        {{{2}}, {{1, 2, 3}}, {{2, 4, 6}}},
        {{{1}, {2}}, {{5}}, {{5}, {10}}},
        {{{1, 2}}, {{3}, {4}}, {{11}}},
        {{{1}, {2}}, {{3, 4}}, {{3, 4}, {6, 8}}},
        {{{1, 2}, {3, 4}}, {{5, 6}, {7, 8}}, {{19, 22}, {43, 50}}},
        {{{1, 2, 3}, {4, 5, 6}}, {{1}, {0}, {-1}}, {{-2}, {-2}}},
        {{{1, 2}}, {{1, 2, 3}, {4, 5, 6}}, {{9, 12, 15}}},
        {{{infinite, 1}}, {{1}, {1}}, {{infinite}}},
    };
    for (const auto& [left, right, product] : cases) {
        SCOPED_TRACE(TableOf(left).ToText(0));
        Value value = TableOf({{7, 7, 7}, {8, 8, 8}}, true);
        EXPECT_TRUE(value.MultiplyMatrices(TableOf(left), TableOf(right)));
        EXPECT_EQ(RowsOf(value), product);
        EXPECT_FALSE(value.complexMark);
    }
}

TEST(MultiplyMatrices, TouchesNothingWhenAnOperandIsNoTable) {
    const Rows noTables[] = {{}, {{1, 2}, {3}}, {{}}};
    for (const Rows& rows : noTables) {
        Value value = TableOf({{7, 8}}, true);
        EXPECT_FALSE(value.MultiplyMatrices(TableOf(rows), TableOf({{2}})));
        EXPECT_FALSE(value.MultiplyMatrices(TableOf({{2}}), TableOf(rows)));
        EXPECT_EQ(RowsOf(value), (Rows{{7, 8}}));
        EXPECT_TRUE(value.complexMark);
    }
}

TEST(MultiplyMatrices, IsEmptyWhenTheTablesDoNotFit) {
    const std::pair<Rows, Rows> cases[] = {
        {{{1}, {2}}, {{3}, {4}}}, {{{1, 2}}, {{3, 4}}}, {{{1, 2, 3}}, {{1}, {2}}}};
    for (const auto& [left, right] : cases) {
        Value value = TableOf({{7, 8}}, true);
        EXPECT_FALSE(value.MultiplyMatrices(TableOf(left), TableOf(right)));
        EXPECT_EQ(RowsOf(value), Rows{});
        EXPECT_FALSE(value.complexMark);
    }
}

TEST(MultiplyMatrices, AddsTheProductsInOrder) {
    std::mt19937 random(20011);
    for (std::size_t size = 1; size <= 12; ++size) {
        const Rows left = RandomRows(random, size, 14 - size);
        const Rows right = RandomRows(random, 14 - size, size + 2);
        Value value;
        ASSERT_TRUE(value.MultiplyMatrices(TableOf(left), TableOf(right)));
        EXPECT_TRUE(test::SameBits(RowsOf(value), ProductByColumns(left, right)));
    }
    // 2^53 swallows each 1 alone, and would take in their sum.
    Value value;
    ASSERT_TRUE(
        value.MultiplyMatrices(TableOf({{9007199254740992.0, 1, 1}}), TableOf({{1}, {1}, {1}})));
    EXPECT_EQ(value.At(0, 0), 9007199254740992.0);
}

TEST(MultiplyMatrices, ByTheUnitTableChangesNothing) {
    std::mt19937 random(20012);
    Rows unit(7, std::vector<double>(7));
    for (std::size_t at = 0; at < 7; ++at) unit[at][at] = 1;
    const Rows table = RandomRows(random, 7, 7);
    Value value;
    ASSERT_TRUE(value.MultiplyMatrices(TableOf(table), TableOf(unit)));
    EXPECT_EQ(RowsOf(value), table);
    ASSERT_TRUE(value.MultiplyMatrices(TableOf(unit), TableOf(table)));
    EXPECT_EQ(RowsOf(value), table);
}

TEST(ScaleBy, AppendsAScaledCopyWithoutTheMark) {
    Value value;
    value.ScaleBy(TableOf({{1, 2}}, true), 3);
    EXPECT_EQ(RowsOf(value), (Rows{{3, 6}}));
    EXPECT_FALSE(value.complexMark);
    value.ScaleBy(TableOf({{1, -2, 4}, {0.5}}), -2);
    EXPECT_EQ(RowsOf(value), (Rows{{3, 6}, {-2, 4, -8}, {-1}}));
    value.ScaleBy(Value(), 5);
    EXPECT_EQ(value.RowCount(), 3);
}

TEST(DivideBy, CopiesRowsAndMarkDivided) {
    Value value = TableOf({{9, 9, 9}});
    EXPECT_TRUE(value.DivideBy(TableOf({{1, 3}}, true), 3));
    EXPECT_EQ(RowsOf(value), (Rows{{1.0 / 3.0, 1}}));
    EXPECT_TRUE(value.complexMark);
    EXPECT_TRUE(value.DivideBy(TableOf({{1, 2, 3}, {4}}), -2));
    EXPECT_EQ(RowsOf(value), (Rows{{-0.5, -1, -1.5}, {-2}}));
    EXPECT_FALSE(value.complexMark);
    EXPECT_TRUE(value.DivideBy(Value(), 2));
    EXPECT_EQ(RowsOf(value), Rows{});
    EXPECT_TRUE(value.DivideBy(TableOf({{1e300}}), 5e-324));
    EXPECT_EQ(value.At(0, 0), infinite);
}

TEST(DivideBy, IsEmptyAfterADivisionByZero) {
    for (const double zero : {0.0, -0.0}) {
        Value value = TableOf({{9, 9}}, true);
        EXPECT_FALSE(value.DivideBy(TableOf({{1, 2}}, true), zero));
        EXPECT_EQ(RowsOf(value), Rows{});
        EXPECT_FALSE(value.complexMark);
    }
}

TEST(SumOfSquares, TakesARowOrAColumn) {
    const std::pair<Rows, double> cases[] = {
        {{{3}}, 9},         {{{3, 4}}, 25},        {{{3}, {4}}, 25},
        {{{1, 2, 3}}, 14},  {{{1}, {2}, {3}}, 14}, {{{1, 2}, {3, 4}}, 0},
        {{{1}, {2, 3}}, 0}, {{{1, 2, 3}, {4}}, 0}, {{}, 0},
        {{{-3, -4}}, 25},   {{{1e200}}, infinite}, {{{1e-200}, {1e-200}}, 0},
    };
    for (const auto& [rows, sum] : cases) {
        SCOPED_TRACE(TableOf(rows).ToText(0));
        EXPECT_EQ(TableOf(rows).SumOfSquares(), sum);
    }
}

}  // namespace
}  // namespace orvane
