#pragma once

#include <cstdint>
#include <optional>

#include "editor/text_lines.h"

// A selection as the rows of the view know it: which rows it covers, and from which cell to which
// it is filled in one of them.

namespace orvane {

// Rows first to last, both included; none where last lies before first.
struct RowSpan {
    std::int32_t first = 0;
    std::int32_t last = -1;

    bool operator==(const RowSpan&) const = default;

    bool IsEmpty() const { return last < first; }
    // The smallest span with all rows of both.
    RowSpan With(const RowSpan& other) const;
};

// None for an empty selection.
RowSpan RowsCovered(const SelRange& selection);
// The rows that change where one end of a selection goes from one line to another.
RowSpan RowsBetween(std::int32_t lineA, std::int32_t lineB);

struct CellStretch {
    std::int32_t from = 0;
    std::int32_t to = 0;  // the cell behind it; the same as `from` in an empty row

    bool operator==(const CellStretch&) const = default;
};

// What is filled in a row that the selection covers. All rows but its last are filled up to the end
// of their text.
std::optional<CellStretch> SelectedCells(const TextLines& text, const SelRange& selection,
                                         std::int32_t line);

}  // namespace orvane
