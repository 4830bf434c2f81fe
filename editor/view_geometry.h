#pragma once

#include <cstdint>
#include <limits>
#include <string_view>

// Cells and tab stops. Every character takes one cell; a tab goes on to the next multiple of four.

namespace orvane {

inline constexpr std::int32_t tabCells = 4;

// The last tab stop that can be counted. All that lies behind it stands in this cell: a line of
// hundreds of millions of tabs gets there.
inline constexpr std::int32_t largestCell =
    std::numeric_limits<std::int32_t>::max() / tabCells * tabCells;

// The cell behind a character that starts at `cell`, which is not negative.
constexpr std::int32_t NextCell(char ch, std::int32_t cell) {
    if (cell >= largestCell) return largestCell;
    return ch == '\t' ? (cell / tabCells + 1) * tabCells : cell + 1;
}

// The cell behind a text that starts at `cell`.
std::int32_t CellBehind(std::string_view text, std::int32_t cell);

// The cell at which the character at `col` starts; columns past the end count as the end, and
// columns before the start as the start.
std::int32_t VisualCol(std::string_view line, std::int32_t col);

// The column that stands at the goal cell or nearest to it: the line's end where it is shorter;
// inside a tab the column behind it where the goal is nearer or equally near to its far side.
std::int32_t ColumnFromVisual(std::string_view line, std::int32_t goalCell);

}  // namespace orvane
