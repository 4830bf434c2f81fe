#include "editor/view_geometry.h"

#include <algorithm>
#include <cstddef>

namespace orvane {

std::int32_t CellBehind(std::string_view text, std::int32_t cell) {
    for (const char ch : text) cell = NextCell(ch, cell);
    return cell;
}

std::int32_t VisualCol(std::string_view line, std::int32_t col) {
    return CellBehind(line.substr(0, static_cast<std::size_t>(std::max(col, 0))), 0);
}

std::int32_t ColumnFromVisual(std::string_view line, std::int32_t goalCell) {
    std::int32_t col = 0;
    std::int32_t cell = 0;
    for (const char ch : line) {
        if (cell >= goalCell) return col;
        const std::int32_t next = NextCell(ch, cell);
        // Only a tab can jump over the goal.
        if (next > goalCell) return next - goalCell <= goalCell - cell ? col + 1 : col;
        cell = next;
        ++col;
    }
    return col;
}

}  // namespace orvane
