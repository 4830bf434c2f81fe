#include "editor/view_geometry.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/editor/line_cells.h"

namespace orvane {
namespace {

TEST(NextCell, TakesATabToTheNextMultipleOfFourAndAllElseByOne) {
    constexpr std::int32_t behindTab[] = {4, 4, 4, 4, 8, 8, 8, 8, 12};
    for (std::int32_t cell = 0; cell <= 8; ++cell) {
        SCOPED_TRACE(cell);
        EXPECT_EQ(NextCell('\t', cell), behindTab[cell]);
        for (int code = 0; code < 256; ++code) {
            if (code == '\t') continue;
            EXPECT_EQ(NextCell(static_cast<char>(code), cell), cell + 1) << code;
        }
    }
}

// Counting on would be beyond what a number can hold.
TEST(NextCell, StaysAtTheLastTabStop) {
    static_assert(largestCell == 2147483644);
    for (const char ch : {'\t', 'a'}) {
        SCOPED_TRACE(static_cast<int>(ch));
        EXPECT_EQ(NextCell(ch, largestCell - 1), largestCell);
        EXPECT_EQ(NextCell(ch, largestCell), largestCell);
        EXPECT_EQ(NextCell(ch, std::numeric_limits<std::int32_t>::max()), largestCell);
    }
    EXPECT_EQ(NextCell('\t', largestCell - 5), largestCell - 4);
    EXPECT_EQ(CellBehind("\t\ta\tbc", largestCell - 6), largestCell);
}

TEST(CellBehind, GoesOnFromTheCellWhereTheTextStarts) {
    struct Row {
        std::string_view text;
        std::int32_t cell;
        std::int32_t behind;
    };
    constexpr Row rows[] = {
        {"", 7, 7}, {"abc", 7, 10}, {"\t", 7, 8}, {"\t", 8, 12}, {"a\tb", 3, 9}, {"\t\t", 1, 8},
    };
    for (const auto& [text, cell, behind] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(CellBehind(text, cell), behind);
    }
}

struct ColumnRow {
    std::string_view line;
    std::int32_t col;
    std::int32_t cell;
};

TEST(VisualCol, CountsTheCellsUpToAColumn) {
    constexpr ColumnRow rows[] = {
        {"", 0, 0},
        {"", 5, 0},
        {"abc", 0, 0},
        {"abc", 2, 2},
        {"abc", 3, 3},
        {"abc", 99, 3},
        {"abc", -1, 0},
        {"abc", std::numeric_limits<std::int32_t>::min(), 0},
        {"abc", std::numeric_limits<std::int32_t>::max(), 3},
        {"\ta", 0, 0},
        {"\ta", 1, 4},
        {"\ta", 2, 5},
        {"a\tb", 2, 4},
        {"abc\td", 4, 4},
        {"abcd\te", 5, 8},
        {"\t\t", 1, 4},
        {"\t\t", 2, 8},
        {"\xE9\xFF\tx", 3, 4},
    };
    for (const auto& [line, col, cell] : rows) {
        SCOPED_TRACE(line);
        SCOPED_TRACE(col);
        EXPECT_EQ(VisualCol(line, col), cell);
    }
}

struct GoalRow {
    std::string_view line;
    std::int32_t goal;
    std::int32_t col;
};

TEST(ColumnFromVisual, FindsTheColumnAtTheGoalOrNearestToIt) {
    constexpr GoalRow rows[] = {
        {"", 0, 0},
        {"", 9, 0},
        {"abc", 0, 0},
        {"abc", 2, 2},
        {"abc", 3, 3},
        {"abc", 4, 3},
        {"abc", std::numeric_limits<std::int32_t>::max(), 3},
        {"abc", -3, 0},
        {"\tb", -3, 0},
        // A tab over four cells: its middle belongs to the far side.
        {"\tb", 0, 0},
        {"\tb", 1, 0},
        {"\tb", 2, 1},
        {"\tb", 3, 1},
        {"\tb", 4, 1},
        {"\tb", 5, 2},
        // Over three cells there is no middle.
        {"a\tb", 1, 1},
        {"a\tb", 2, 1},
        {"a\tb", 3, 2},
        {"a\tb", 4, 2},
        // Over two.
        {"ab\tb", 2, 2},
        {"ab\tb", 3, 3},
        // Over one: nothing is jumped.
        {"abc\td", 3, 3},
        {"abc\td", 4, 4},
        // A line that ends in a tab.
        {"\t", 1, 0},
        {"\t", 2, 1},
        {"\t", 8, 1},
        {"\t\t", 5, 1},
        {"\t\t", 6, 2},
    };
    for (const auto& [line, goal, col] : rows) {
        SCOPED_TRACE(line);
        SCOPED_TRACE(goal);
        EXPECT_EQ(ColumnFromVisual(line, goal), col);
    }
}

// Of all columns the nearest one, and of two that are equally near the one further right.
std::int32_t NearestColumn(const std::vector<std::int32_t>& cells, std::int32_t goal) {
    std::size_t nearest = 0;
    for (std::size_t col = 1; col < cells.size(); ++col) {
        if (std::abs(cells[col] - goal) <= std::abs(cells[nearest] - goal)) nearest = col;
    }
    return static_cast<std::int32_t>(nearest);
}

TEST(ViewGeometry, AgreesWithTheNearestOfAllColumns) {
    std::mt19937 random(421);
    constexpr std::string_view characters = "ab \t\t\t\xE9\"/";
    for (int round = 0; round < 20000; ++round) {
        std::string line(random() % 14, ' ');
        for (char& ch : line) ch = characters[random() % characters.size()];
        SCOPED_TRACE(line);
        const std::vector<std::int32_t> cells = test::CellsOf(line);
        for (std::size_t col = 0; col < cells.size(); ++col) {
            const std::int32_t column = static_cast<std::int32_t>(col);
            ASSERT_EQ(VisualCol(line, column), cells[col]);
            ASSERT_EQ(ColumnFromVisual(line, cells[col]), column);
        }
        for (std::int32_t goal = 0; goal < cells.back() + 6; ++goal) {
            ASSERT_EQ(ColumnFromVisual(line, goal), NearestColumn(cells, goal)) << goal;
        }
    }
}

}  // namespace
}  // namespace orvane
