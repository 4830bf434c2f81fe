#include "editor/repaint_rule.h"

#include <algorithm>
#include <cstddef>

#include "core/text_scan.h"
#include "editor/view_geometry.h"

namespace orvane {

namespace {

// The column of the first difference, or the end of the shorter text.
std::size_t FindDifference(std::string_view before, std::string_view now) {
    const std::size_t shorter = std::min(before.size(), now.size());
    const auto end = before.begin() + static_cast<std::ptrdiff_t>(shorter);
    const auto differs = std::mismatch(before.begin(), end, now.begin()).first;
    return static_cast<std::size_t>(differs - before.begin());
}

bool HasWordCharAt(std::string_view line, std::size_t col) {
    return col < line.size() && IsWordChar(line[col]);
}

// The cells from the column back to where the word in front of it starts. The character in front
// of the column is stepped over whatever it is.
std::int32_t CellsToStepBack(std::string_view line, std::size_t col) {
    if (col == 0) return 0;
    --col;
    std::int32_t cells = line[col] == '\t' ? tabCells : 1;
    while (col > 0 && IsWordChar(line[col - 1])) {
        --col;
        ++cells;
    }
    return cells;
}

}  // namespace

EditEffect EditEffect::OfPaste(std::int32_t line, std::string_view pasted) {
    return {.line = line, .linesChanged = pasted.find('\n') != std::string_view::npos};
}

EditEffect EditEffect::OfHistoryStep(std::int32_t line, std::int32_t linesRemoved,
                                     std::int32_t linesAdded) {
    return {.line = line, .linesChanged = linesRemoved + linesAdded != 0};
}

RepaintArea ChooseRepaint(const EditEffect& effect, std::string_view before, std::string_view now) {
    if (effect.linesChanged || effect.selectionReplaced) return {RepaintKind::wholeWindow, 0, 0};
    // A ':' may turn the word in front of it into a header.
    if (effect.typed == ':') return {RepaintKind::wholeRow, effect.line, 0};
    return {RepaintKind::restOfRow, effect.line, FirstChangedCell(before, now)};
}

std::int32_t FirstChangedCell(std::string_view before, std::string_view now) {
    const std::size_t col = FindDifference(before, now);
    const std::int32_t cell = VisualCol(now, static_cast<std::int32_t>(col));
    const bool wordIsThere = HasWordCharAt(now, col) || HasWordCharAt(before, col);
    return wordIsThere ? cell - CellsToStepBack(now, col) : cell;
}

RepaintArea ClipToView(RepaintArea area, std::int32_t topLine, std::int32_t leftCell) {
    const bool ofOneRow = area.kind == RepaintKind::restOfRow || area.kind == RepaintKind::wholeRow;
    if (ofOneRow && area.line < topLine) return {};
    if (area.kind == RepaintKind::restOfRow) area.cell = std::max(area.cell, leftCell);
    return area;
}

}  // namespace orvane
