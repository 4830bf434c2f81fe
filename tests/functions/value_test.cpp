#include "functions/value.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "tests/functions/value_checks.h"

namespace orvane {
namespace {

using test::Rows;
using test::RowsOf;
using test::TableOf;

constexpr double infinite = std::numeric_limits<double>::infinity();

TEST(DoubleList, HasRoomFor1000AndGrowsBy1000) {
    DoubleList list;
    EXPECT_EQ(list.Capacity(), 1000u);
    list.Append(0.5);
    EXPECT_EQ(list.Count(), 1u);
    EXPECT_EQ(list.Capacity(), 1000u);
    for (int at = 1; at < 1000; ++at) list.Append(at);
    EXPECT_EQ(list.Capacity(), 1000u);
    list.Append(1000);
    EXPECT_EQ(list.Capacity(), 2000u);
    EXPECT_EQ(list.Count(), 1001u);
    EXPECT_EQ(list[0], 0.5);
    EXPECT_EQ(list[1000], 1000);
}

TEST(DoubleList, KeepsItsRoomWhenCleared) {
    DoubleList list;
    for (int at = 0; at < 1001; ++at) list.Append(at);
    list.Clear();
    EXPECT_EQ(list.Count(), 0u);
    EXPECT_EQ(list.Capacity(), 2000u);
    list.Append(7);
    list[0] += 1;
    EXPECT_EQ(list.Elements().front(), 8);
}

TEST(Value, IsEmptyWhenItWasMovedAway) {
    Value table;
    for (int at = 0; at < 3; ++at) table.AppendScalar(at);
    table.complexMark = true;
    Value taken = std::move(table);
    EXPECT_EQ(test::RowsOf(taken), (Rows{{0}, {1}, {2}}));
    EXPECT_TRUE(taken.complexMark);
    EXPECT_EQ(table.RowCount(), 0);  // NOLINT: what is left is part of the promise
    EXPECT_FALSE(table.complexMark);
    table.AppendScalar(4);
    table.AppendScalar(5);
    EXPECT_EQ(test::RowsOf(table), (Rows{{4}, {5}}));
    taken = std::move(table);
    EXPECT_EQ(test::RowsOf(taken), (Rows{{4}, {5}}));
}

struct ShapeCase {
    Rows rows;
    Dimensions size;
    bool isScalar;
    bool isTable;
};
const ShapeCase shapeCases[] = {
    {{}, {0, 0}, false, false},
    {{{5}}, {1, 1}, true, true},
    {{{1, 2}}, {1, 2}, false, true},
    {{{1, 2, 3}}, {1, 3}, false, true},
    {{{1}, {2}}, {2, 1}, false, true},
    {{{1}, {2}, {3}}, {3, 1}, false, true},
    {{{1, 2}, {3, 4}}, {2, 2}, false, true},
    {{{1, 2, 3}, {4, 5, 6}}, {2, 3}, false, true},
    {{{1, 2}, {3, 4, 5}}, {2, -1}, false, false},
    {{{1}, {2, 3}}, {2, -1}, false, false},
    {{{1, 2}, {3}}, {2, -1}, false, false},
    {{{1, 2, 3}, {4, 5, 6}, {7}}, {3, -1}, false, false},
    {{{}}, {1, 0}, false, false},
    {{{}, {}}, {2, 0}, false, false},
    {{{1}, {}}, {2, -1}, false, false},
};

TEST(Value, TellsItsShape) {
    for (const ShapeCase& shape : shapeCases) {
        const Value value = TableOf(shape.rows);
        SCOPED_TRACE(value.ToText(0));
        EXPECT_EQ(value.GetDimensions(), shape.size);
        EXPECT_EQ(value.IsScalar(), shape.isScalar);
        EXPECT_EQ(value.GetDimensions().IsNumber(), shape.isScalar);
        EXPECT_EQ(value.GetDimensions().IsTable(), shape.isTable);
        EXPECT_EQ(RowsOf(value), shape.rows);
    }
}

TEST(Value, IsEmptyAtFirst) {
    const Value value;
    EXPECT_EQ(value.GetDimensions(), (Dimensions{0, 0}));
    EXPECT_FALSE(value.complexMark);
    EXPECT_TRUE(value.AllCells().empty());
}

TEST(Value, GivesElementsByRowAndColumn) {
    const Value value = TableOf({{1, 2, 3}, {4}, {5, 6}});
    EXPECT_EQ(value.At(0, 2), 3);
    EXPECT_EQ(value.At(1, 0), 4);
    EXPECT_EQ(value.At(2, 1), 6);
    EXPECT_EQ(value.RowLength(0), 3);
    EXPECT_EQ(value.RowLength(1), 1);
    EXPECT_EQ(value.RowLength(2), 2);
    const std::vector<double> cells(value.AllCells().begin(), value.AllCells().end());
    EXPECT_EQ(cells, (std::vector<double>{1, 2, 3, 4, 5, 6}));
}

TEST(SetComplex, GivesAPlainNumberOnlyForAnImaginaryPartOfExactlyZero) {
    struct {
        double real, imaginary;
        Rows rows;
        bool mark;
    } const cases[] = {
        {3, 0, {{3}}, false},
        {3, -0.0, {{3}}, false},
        {3, 1, {{3, 1}}, true},
        {0, 1, {{0, 1}}, true},
        {3, 5e-324, {{3, 5e-324}}, true},
        {infinite, -infinite, {{infinite, -infinite}}, true},
    };
    for (const auto& [real, imaginary, rows, mark] : cases) {
        SCOPED_TRACE(imaginary);
        Value value = TableOf({{9, 9, 9}, {9, 9, 9}});
        value.SetComplex(real, imaginary);
        EXPECT_EQ(RowsOf(value), rows);
        EXPECT_EQ(value.complexMark, mark);
        EXPECT_EQ(value.IsScalar(), !mark);
    }
}

TEST(SetReal, LeavesNothingOfWhatWasThere) {
    Value value = TableOf({{1, 2}}, true);
    value.SetReal(4);
    EXPECT_EQ(RowsOf(value), (Rows{{4}}));
    EXPECT_FALSE(value.complexMark);
    value = TableOf({{1, 2, 3}, {4, 5, 6}});
    value.SetReal(-5);
    EXPECT_EQ(RowsOf(value), Rows{{-5}});
    EXPECT_TRUE(value.IsScalar());
}

TEST(Clear, LeavesAnEmptyValueWithoutMark) {
    for (const ShapeCase& shape : shapeCases) {
        Value value = TableOf(shape.rows, true);
        SCOPED_TRACE(value.ToText(0));
        value.Clear();
        EXPECT_EQ(value.GetDimensions(), (Dimensions{0, 0}));
        EXPECT_FALSE(value.complexMark);
        EXPECT_TRUE(value.AllCells().empty());
        EXPECT_FALSE(value.IsScalar());
    }
}

TEST(Clear, LetsEveryShapeFollowEveryOther) {
    for (const ShapeCase& before : shapeCases) {
        for (const ShapeCase& after : shapeCases) {
            Value value = TableOf(before.rows, true);
            value.Clear();
            for (const auto& row : after.rows) {
                const ValueRow cells = value.AppendRow(static_cast<std::int32_t>(row.size()));
                for (const double cell : cells) EXPECT_EQ(cell, 0);
                std::ranges::copy(row, cells.begin());
            }
            EXPECT_EQ(RowsOf(value), after.rows);
            EXPECT_EQ(value.GetDimensions(), after.size);
        }
    }
}

TEST(CopyFrom, TakesRowsAndMarkOfEveryShapeOverEveryOther) {
    for (const ShapeCase& before : shapeCases) {
        for (const ShapeCase& source : shapeCases) {
            for (const bool mark : {false, true}) {
                Value value = TableOf(before.rows, !mark);
                value.CopyFrom(TableOf(source.rows, mark));
                EXPECT_EQ(RowsOf(value), source.rows);
                EXPECT_EQ(value.complexMark, mark);
            }
        }
    }
}

TEST(CopyFrom, NegatesEveryElementAndKeepsTheMark) {
    Value complex;
    complex.SetComplex(3, -4);
    Value value;
    value.CopyFrom(complex, true);
    EXPECT_EQ(RowsOf(value), (Rows{{-3, 4}}));
    EXPECT_TRUE(value.complexMark);
    EXPECT_EQ(RowsOf(complex), (Rows{{3, -4}}));

    value.CopyFrom(TableOf({{1, -2, 3}, {-4}, {0, infinite}}), true);
    EXPECT_TRUE(test::SameBits(RowsOf(value), Rows{{-1, 2, -3}, {4}, {-0.0, -infinite}}));
    EXPECT_FALSE(value.complexMark);
    value.CopyFrom(Value(), true);
    EXPECT_EQ(RowsOf(value), Rows{});
}

TEST(CopyFrom, MayCopyFromItself) {
    for (const ShapeCase& shape : shapeCases) {
        Value value = TableOf(shape.rows, true);
        SCOPED_TRACE(value.ToText(0));
        value.CopyFrom(value);
        EXPECT_EQ(RowsOf(value), shape.rows);
        EXPECT_TRUE(value.complexMark);
        value.CopyFrom(value, true);
        value.CopyFrom(value, true);
        EXPECT_EQ(RowsOf(value), shape.rows);
    }
    Value number;
    number.SetReal(2);
    number.CopyFrom(number, true);
    EXPECT_EQ(number.At(0, 0), -2);
}

TEST(CopyFrom, SharesNothingWithItsSource) {
    Value source = TableOf({{1, 2, 3}, {4, 5, 6}});
    Value copy;
    copy.CopyFrom(source);
    copy.Row(1)[2] = 60;
    source.Row(0)[0] = 10;
    EXPECT_EQ(RowsOf(copy), (Rows{{1, 2, 3}, {4, 5, 60}}));
    EXPECT_EQ(RowsOf(source), (Rows{{10, 2, 3}, {4, 5, 6}}));
}

// What a cleared value keeps for later is no part of its content.
TEST(CopyFrom, TakesOnlyTheRowsThatStand) {
    Value source = TableOf({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    source.Clear();
    Value copy = TableOf({{5}});
    copy.CopyFrom(source);
    EXPECT_EQ(RowsOf(copy), Rows{});
    source.AppendRow(3)[1] = 2;
    copy.CopyFrom(source);
    EXPECT_EQ(RowsOf(copy), (Rows{{0, 2, 0}}));
}

TEST(AppendScalar, BuildsAColumn) {
    Value value;
    Rows expected;
    for (int at = 0; at < 5; ++at) {
        value.AppendScalar(at * 1.5);
        expected.push_back({at * 1.5});
        EXPECT_EQ(RowsOf(value), expected);
    }
    EXPECT_EQ(value.GetDimensions(), (Dimensions{5, 1}));
}

TEST(AppendScalar, LeavesATableWithLongerRowsRagged) {
    Value value = TableOf({{1, 2}});
    value.AppendScalar(3);
    EXPECT_EQ(RowsOf(value), (Rows{{1, 2}, {3}}));
    EXPECT_EQ(value.GetDimensions(), (Dimensions{2, -1}));
    value = TableOf({{1, 2, 3}, {4, 5, 6}});
    value.AppendScalar(7);
    EXPECT_EQ(value.GetDimensions(), (Dimensions{3, -1}));
    EXPECT_EQ(value.At(2, 0), 7);
}

TEST(AppendScalar, LeavesTheMarkAlone) {
    Value value;
    value.complexMark = true;
    value.AppendScalar(1);
    value.AppendScalar(2);
    EXPECT_TRUE(value.complexMark);
    EXPECT_EQ(RowsOf(value), (Rows{{1}, {2}}));
}

TEST(ExtractColumn, AppendsTheElementOfEveryRow) {
    const Value value = TableOf({{1, 2, 3}, {4, 5, 6}});
    DoubleList list;
    list.Append(9);
    value.ExtractColumn(2, list);
    value.ExtractColumn(0, list);
    const std::vector<double> elements(list.Elements().begin(), list.Elements().end());
    EXPECT_EQ(elements, (std::vector<double>{9, 3, 6, 1, 4}));
    Value().ExtractColumn(0, list);
    EXPECT_EQ(list.Count(), 5u);
}

TEST(Value, MovesItsContent) {
    for (const ShapeCase& shape : shapeCases) {
        Value source = TableOf(shape.rows, true);
        SCOPED_TRACE(source.ToText(0));
        Value moved = std::move(source);
        EXPECT_EQ(RowsOf(moved), shape.rows);
        EXPECT_TRUE(moved.complexMark);
        source.Clear();
        EXPECT_TRUE(source.AllCells().empty());
        source.AppendRow(3)[0] = 1;
        EXPECT_EQ(RowsOf(source), (Rows{{1, 0, 0}}));
        source = std::move(moved);
        EXPECT_EQ(RowsOf(source), shape.rows);
    }
}

TEST(Value, HoldsManyRows) {
    Value value;
    for (std::int32_t row = 0; row < 10000; ++row) value.AppendRow(3)[1] = row;
    EXPECT_EQ(value.GetDimensions(), (Dimensions{10000, 3}));
    EXPECT_EQ(value.At(9999, 1), 9999);
    EXPECT_EQ(value.At(9999, 2), 0);
    EXPECT_EQ(value.At(0, 1), 0);
    EXPECT_EQ(value.At(5000, 1), 5000);
}

TEST(ToText, JoinsElementsByCommasAndClosesRowsByLineFeeds) {
    struct {
        Rows rows;
        int precision;
        const char* text;
    } const cases[] = {
        {{{1, 2}, {3, 4}}, 1, "1.0,2.0\n3.0,4.0\n"},
        {{{1.25, -2.5}}, 1, "1.2,-2.5\n"},
        {{{1.25, -2.5}}, 0, "1,-2\n"},
        {{{1.25}, {-2.5}, {1e3}}, 3, "1.250\n-2.500\n1000.000\n"},
        {{{1.25, -2.5}, {0}}, -1, "+1.25,-2.5\n+0\n"},
        {{{100, 0.1}}, -5, "+100,+0.10000000000000000555111512312578\n"},
        {{{1, 2}, {3}}, 0, "1,2\n3\n"},
        {{{7}}, 1, "7.0\n"},
        {{}, 1, ""},
        {{{}}, 1, "\n"},
    };
    for (const auto& [rows, precision, text] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(TableOf(rows).ToText(precision), text);
    }
}

}  // namespace
}  // namespace orvane
