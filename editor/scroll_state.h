#pragma once

#include <cstdint>

#include "editor/text_lines.h"

// What the view is scrolled to. Both directions count in cells: rows down, columns to the right.

namespace orvane {

struct ScrollAxis {
    std::int32_t maximum = 0;  // the range is 0 to here
    std::int32_t page = 0;     // how many cells fit in the view
    std::int32_t position = 0;

    // The last position; 0 where everything fits.
    std::int32_t Limit() const;
    // Moves to the nearest position there is.
    void MoveTo(std::int64_t wanted);
    // Brings a cell into view under the mouse, which is dragged beyond the edge: `distance` counts
    // the cells from the view's start to it. Within the page nothing moves.
    void FollowDrag(std::int32_t distance);
};

struct ViewScroll {
    ScrollAxis vertical;
    ScrollAxis horizontal;

    // The ranges leave room behind the last line and the longest one. Positions are kept as far as
    // the ranges let them.
    void SetTextSize(std::int32_t lineCount, std::int32_t longestLine);
    void SetPages(std::int32_t rows, std::int32_t columns);

    // After a key has moved the caret.
    // Kept: sideways the column is compared, not the cell, so that lines with tabs scroll late.
    void KeepInView(TextPosition caret);

    // The mouse is dragged to a point that lies outside of the view. A direction in which the point
    // is inside does not scroll.
    struct DragPoint {
        std::int32_t x, y;           // pixels from the view's top left
        std::int32_t width, height;  // of the view
        std::int32_t cellWidth, lineHeight;
    };
    void FollowDrag(const DragPoint& point);
};

// The cells that a distance in pixels reaches into, counted away from zero.
std::int32_t CellsReached(std::int32_t pixels, std::int32_t cellSize);

}  // namespace orvane
