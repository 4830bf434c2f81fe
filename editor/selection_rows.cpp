#include "editor/selection_rows.h"

#include <algorithm>

#include "editor/view_geometry.h"

namespace orvane {

namespace {

// In place of a column: the end of the row.
constexpr std::int32_t rowEnd = -1;

std::int32_t CellOf(std::string_view row, std::int32_t col) {
    return VisualCol(row, col == rowEnd ? static_cast<std::int32_t>(row.size()) : col);
}

}  // namespace

RowSpan RowSpan::With(const RowSpan& other) const {
    if (IsEmpty()) return other;
    if (other.IsEmpty()) return *this;
    return {std::min(first, other.first), std::max(last, other.last)};
}

RowSpan RowsCovered(const SelRange& selection) {
    if (selection.IsEmpty()) return {};
    return RowsBetween(selection.startLine, selection.endLine);
}

RowSpan RowsBetween(std::int32_t lineA, std::int32_t lineB) {
    return {std::min(lineA, lineB), std::max(lineA, lineB)};
}

std::optional<CellStretch> SelectedCells(const TextLines& text, const SelRange& selection,
                                         std::int32_t line) {
    if (selection.IsEmpty()) return std::nullopt;
    TextPosition start;
    TextPosition end;
    selection.Normalise(start.line, start.col, end.line, end.col);
    if (line < start.line || line > end.line) return std::nullopt;
    const std::string_view row = text.GetLine(line);
    const std::int32_t from = line == start.line ? start.col : 0;
    const std::int32_t to = line == end.line ? end.col : rowEnd;
    return CellStretch{CellOf(row, from), CellOf(row, to)};
}

}  // namespace orvane
