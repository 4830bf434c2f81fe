#include "editor/scroll_state.h"

#include <algorithm>

namespace orvane {

namespace {

// What the ranges have beyond the text.
constexpr std::int32_t spareRows = 5;
constexpr std::int32_t spareColumns = 36;

// Sideways the view jumps, so that the caret does not stick to the edge.
constexpr std::int32_t columnsBefore = 20;
constexpr std::int32_t columnsBehind = 37;

}  // namespace

std::int32_t ScrollAxis::Limit() const { return std::max(maximum - page + 1, 0); }

void ScrollAxis::MoveTo(std::int64_t wanted) {
    position = static_cast<std::int32_t>(std::clamp<std::int64_t>(wanted, 0, Limit()));
}

void ScrollAxis::FollowDrag(std::int32_t distance) {
    const std::int64_t from = position;
    if (distance < 0) {
        MoveTo(from + distance);
    } else if (distance >= page) {
        MoveTo(from - page + distance + 1);
    }
}

void ViewScroll::SetTextSize(std::int32_t lineCount, std::int32_t longestLine) {
    vertical.maximum = lineCount + spareRows;
    horizontal.maximum = longestLine + spareColumns;
    vertical.MoveTo(vertical.position);
    horizontal.MoveTo(horizontal.position);
}

void ViewScroll::SetPages(std::int32_t rows, std::int32_t columns) {
    vertical.page = rows;
    horizontal.page = columns;
    vertical.MoveTo(vertical.position);
    horizontal.MoveTo(horizontal.position);
}

void ViewScroll::KeepInView(TextPosition caret) {
    if (caret.line < vertical.position) {
        vertical.MoveTo(caret.line);
    } else if (caret.line >= vertical.position + vertical.page) {
        vertical.MoveTo(caret.line - vertical.page + 1);
    }
    if (caret.col < horizontal.position) {
        horizontal.MoveTo(caret.col - columnsBefore);
    } else if (caret.col > horizontal.position + horizontal.page + 1) {
        horizontal.MoveTo(caret.col - horizontal.page + columnsBehind);
    }
}

void ViewScroll::FollowDrag(const DragPoint& point) {
    if (point.y < 0 || point.y >= point.height) {
        vertical.FollowDrag(CellsReached(point.y, point.lineHeight));
    }
    if (point.x < 0 || point.x >= point.width) {
        horizontal.FollowDrag(CellsReached(point.x, point.cellWidth));
    }
}

std::int32_t CellsReached(std::int32_t pixels, std::int32_t cellSize) {
    const std::int32_t away = pixels < 0 ? 1 - cellSize : cellSize - 1;
    return (pixels + away) / cellSize;
}

}  // namespace orvane
