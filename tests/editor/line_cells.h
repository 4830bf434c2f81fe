#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "editor/line_scanner.h"

// What the tests of lines on the screen share.

namespace orvane {

// How a failed comparison shows a piece.
inline void PrintTo(const ColouredPiece& piece, std::ostream* out) {
    *out << textClassNames[static_cast<std::size_t>(piece.textClass)] << " at " << piece.start
         << " of " << piece.length << " in cell " << piece.cell;
}

namespace test {

// The cells at which all columns of a line start, its end included; counted one at a time.
inline std::vector<std::int32_t> CellsOf(const std::string& line) {
    std::vector<std::int32_t> cells = {0};
    for (const char ch : line) {
        std::int32_t cell = cells.back() + 1;
        while (ch == '\t' && cell % 4 != 0) ++cell;
        cells.push_back(cell);
    }
    return cells;
}

}  // namespace test
}  // namespace orvane
