#include "editor/caret_moves.h"

#include <algorithm>
#include <cstddef>

#include "core/text_scan.h"
#include "editor/view_geometry.h"

namespace orvane {

namespace {

TextPosition AtGoal(const EditorModel& model, std::int32_t line) {
    return {line, ColumnFromVisual(model.text.GetLine(line), model.caretCell)};
}

TextPosition PageUp(const EditorModel& model, VisibleRows rows) {
    if (model.caretLine == 0) return model.Caret();
    const bool isBelowTop = model.caretLine > rows.top;
    const std::int32_t line = isBelowTop ? rows.top : model.caretLine - rows.page;
    return AtGoal(model, std::max(line, 0));
}

TextPosition PageDown(const EditorModel& model, VisibleRows rows) {
    const std::int32_t last = model.text.count - 1;
    if (model.caretLine == last) return model.Caret();
    const std::int32_t bottom = rows.top + rows.page - 1;
    const bool isAboveBottom = model.caretLine < bottom;
    const std::int32_t line = isAboveBottom ? bottom : model.caretLine + rows.page;
    return AtGoal(model, std::min(line, last));
}

TextPosition End(const EditorModel& model, VisibleRows) {
    return {model.caretLine, model.text.LineAt(model.caretLine).length};
}

TextPosition Home(const EditorModel& model, VisibleRows) { return {model.caretLine, 0}; }

TextPosition Left(const EditorModel& model, VisibleRows) {
    const auto [line, col] = model.Caret();
    if (col > 0) return {line, col - 1};
    if (line == 0) return {line, col};
    return {line - 1, model.text.LineAt(line - 1).length};
}

TextPosition Right(const EditorModel& model, VisibleRows) {
    const auto [line, col] = model.Caret();
    if (col < model.text.LineAt(line).length) return {line, col + 1};
    if (line == model.text.count - 1) return {line, col};
    return {line + 1, 0};
}

TextPosition Up(const EditorModel& model, VisibleRows) {
    if (model.caretLine == 0) return model.Caret();
    return AtGoal(model, model.caretLine - 1);
}

TextPosition Down(const EditorModel& model, VisibleRows) {
    if (model.caretLine == model.text.count - 1) return model.Caret();
    return AtGoal(model, model.caretLine + 1);
}

// Rounded down, so that points above and left of the view lie in rows and cells of their own.
std::int32_t DivideDown(std::int32_t value, std::int32_t divisor) {
    return (value < 0 ? value - (divisor - 1) : value) / divisor;
}

std::int32_t PixelsBetween(std::int64_t start, std::int64_t end, std::int64_t size) {
    constexpr std::int64_t farthest = CellGrid::farthestPixel;
    return static_cast<std::int32_t>(std::clamp((end - start) * size, -farthest, farthest));
}

bool IsWordPart(char c) { return IsWordChar(c) || c == '.'; }

bool IsBlankOrTab(char c) { return c == ' ' || c == '\t'; }

}  // namespace

const std::array<CaretKeyRow, 8> caretKeyRows = {{
    // key             target    keepsGoal
    {CaretKey::pageUp, PageUp, true},
    {CaretKey::pageDown, PageDown, true},
    {CaretKey::end, End, false},
    {CaretKey::home, Home, false},
    {CaretKey::left, Left, false},
    {CaretKey::right, Right, false},
    {CaretKey::up, Up, true},
    {CaretKey::down, Down, true},
}};

EditOutcome MoveCaret(EditorModel& model, CaretKey key, bool extend, VisibleRows rows) {
    const auto row = std::find_if(caretKeyRows.begin(), caretKeyRows.end(),
                                  [key](const CaretKeyRow& entry) { return entry.key == key; });
    const TextPosition target = row->target(model, rows);
    if (target == model.Caret()) return {};
    const std::int32_t goal = model.caretCell;
    const EditOutcome outcome = model.PlaceCaret(target, extend);
    if (row->keepsGoal) model.caretCell = goal;
    return outcome;
}

std::int32_t CellGrid::LeftOf(std::int32_t cell) const {
    return PixelsBetween(leftCell, cell, cellWidth);
}

std::int32_t CellGrid::TopOf(std::int32_t line) const {
    return PixelsBetween(topLine, line, lineHeight);
}

TextPosition HitTest(const TextLines& text, const CellGrid& grid, std::int32_t x, std::int32_t y) {
    const std::int32_t row = DivideDown(y, grid.lineHeight) + grid.topLine;
    const std::int32_t line = std::clamp(row, 0, text.count - 1);
    const double place = static_cast<double>(x) / grid.cellWidth + grid.leftCell;
    std::int32_t col = 0;
    std::int32_t cell = 0;
    for (const char ch : text.GetLine(line)) {
        const std::int32_t next = NextCell(ch, cell);
        if (place <= next) return {line, next - place > place - cell ? col : col + 1};
        cell = next;
        ++col;
    }
    return {line, col};
}

EditOutcome SelectAtCaret(EditorModel& model) {
    const TextPosition caret = model.Caret();
    const std::string_view line = model.text.GetLine(caret.line);
    std::size_t start = static_cast<std::size_t>(caret.col);
    if (start == line.size() || IsBlankOrTab(line[start])) return model.PlaceCaret(caret, false);
    std::size_t end = start + 1;
    if (IsWordChar(line[start])) {
        end = FindNumberEnd(line, start);
        while (start > 0 && IsWordPart(line[start - 1])) --start;
    }
    return model.Select({caret.line, static_cast<std::int32_t>(start)},
                        {caret.line, static_cast<std::int32_t>(end)});
}

std::optional<WordSpan> WordAt(const TextLines& text, TextPosition position) {
    if (position.line < 0 || position.line >= text.count) return std::nullopt;
    const std::string_view line = text.GetLine(position.line);
    const auto at = static_cast<std::size_t>(position.col);
    if (position.col < 1 || at > line.size()) return std::nullopt;
    std::size_t start = at;
    while (start > 0 && IsWordChar(line[start - 1])) --start;
    if (start == at) return std::nullopt;
    return WordSpan{position.line, static_cast<std::int32_t>(start),
                    static_cast<std::int32_t>(FindWordEnd(line, at))};
}

std::optional<std::string_view> HelpWord(const EditorModel& model) {
    WordSpan span;
    if (model.HasSelection()) {
        TextPosition left;
        TextPosition right;
        model.selection.Normalise(left.line, left.col, right.line, right.col);
        if (left.line != right.line) return std::nullopt;
        span = {left.line, left.col, right.col};
    } else {
        const std::optional<WordSpan> word = WordAt(model.text, model.Caret());
        if (!word) return std::nullopt;
        span = *word;
    }
    return model.text.GetLine(span.line).substr(static_cast<std::size_t>(span.start),
                                                static_cast<std::size_t>(span.end - span.start));
}

}  // namespace orvane
