#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "editor/editor_model.h"

// Where the caret goes: by the keys that move it, by the mouse, and to words.

namespace orvane {

enum class CaretKey { pageUp, pageDown, end, home, left, right, up, down };

// What the view shows: the row at its top and how many rows fit.
struct VisibleRows {
    std::int32_t top = 0;
    std::int32_t page = 0;
};

struct CaretKeyRow {
    CaretKey key;
    // Where the key leads; the caret's own position where it leads nowhere.
    TextPosition (*target)(const EditorModel& model, VisibleRows rows);
    bool keepsGoal;  // the goal cell stays, so that a way over short lines leads back to its column
};
extern const std::array<CaretKeyRow, 8> caretKeyRows;

// Moves the caret; to extend means that the selection's end goes along. A key that leads nowhere
// changes nothing at all: a selection stays, and so does the goal cell.
EditOutcome MoveCaret(EditorModel& model, CaretKey key, bool extend, VisibleRows rows);

// How pixels stand to cells: the size of a cell, and the line and the cell at the view's top left.
struct CellGrid {
    std::int32_t cellWidth = 1;
    std::int32_t lineHeight = 1;
    std::int32_t topLine = 0;
    std::int32_t leftCell = 0;

    // The pixel at which a cell or a line starts; negative left of the view and above it. What lies
    // further away than any screen is wide stands at `farthestPixel`.
    std::int32_t LeftOf(std::int32_t cell) const;
    std::int32_t TopOf(std::int32_t line) const;
    static constexpr std::int32_t farthestPixel = 1 << 28;
};

// The position nearest to a point of the view, which may lie outside of it. A point in the middle
// of a character belongs to the position behind it.
TextPosition HitTest(const TextLines& text, const CellGrid& grid, std::int32_t x, std::int32_t y);

// Double click, with the caret where the press has put it: selects the word with its points, or the
// one symbol at the caret, or nothing at blanks and at the line's end.
EditOutcome SelectAtCaret(EditorModel& model);

// A word within its line.
struct WordSpan {
    std::int32_t line = 0;
    std::int32_t start = 0;
    std::int32_t end = 0;  // the column behind it

    bool operator==(const WordSpan&) const = default;
};

// The word at a position. A position directly in front of a word is not in it.
std::optional<WordSpan> WordAt(const TextLines& text, TextPosition position);

// What the help key asks about: the selected text where it lies in one line, else the word at the
// caret. A view into the model's text.
std::optional<std::string_view> HelpWord(const EditorModel& model);

}  // namespace orvane
