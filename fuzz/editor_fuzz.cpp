#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>

#include "editor/call_hints.h"
#include "editor/caret_moves.h"
#include "editor/editor_model.h"
#include "fuzz/fuzzed_bytes.h"

// Keys, mouse and commands on the editor: caret and selection stay in the text, and every edit can
// be taken back and made again.

namespace orvane::fuzz {

namespace {

constexpr int mostOperations = 150;
constexpr std::size_t longestText = 4000;

void RequirePosition(const EditorModel& model, TextPosition position, const char* what) {
    Require(position.line >= 0 && position.line < model.text.count, what);
    Require(position.col >= 0 && position.col <= model.text.LineAt(position.line).length, what);
}

void CheckModel(const EditorModel& model) {
    const SelRange& range = model.selection;
    RequirePosition(model, model.Caret(), "the caret is in the text");
    RequirePosition(model, {range.startLine, range.startCol}, "the selection starts in the text");
    RequirePosition(model, {range.endLine, range.endCol}, "the selection ends in the text");
    Require(TextPosition{range.endLine, range.endCol} == model.Caret(),
            "the selection ends at the caret");
    Require(model.PaintedCell() >= 0, "the caret is somewhere");
    Require(model.HasSelection() || model.SelectedText().empty(), "nothing selected is no text");
}

TextPosition AnyPosition(const EditorModel& model, FuzzedBytes& bytes) {
    const std::int32_t line = static_cast<std::int32_t>(bytes.Byte()) % model.text.count;
    const std::int32_t length = model.text.LineAt(line).length;
    return {line, static_cast<std::int32_t>(bytes.Byte()) % (length + 1)};
}

void Edit(EditorModel& model, FuzzedBytes& bytes) {
    const std::string before = model.GetText();
    const bool hadSelection = model.HasSelection();
    switch (bytes.Below(4)) {
        case 0:
            model.Paste(bytes.Text(60));
            break;
        case 1:
            model.DeleteSelection();
            Require(!hadSelection || !model.HasSelection(), "what was selected is gone");
            break;
        case 2:
            model.EditChar(static_cast<char>(bytes.Below(3)));
            break;
        default:
            model.EditChar(static_cast<char>(bytes.Byte()));
    }
    CheckModel(model);
    const std::string after = model.GetText();
    if (after == before) return;
    model.Undo();
    Require(model.GetText() == before, "an edit is taken back");
    CheckModel(model);
    model.Redo();
    Require(model.GetText() == after, "an edit is made again");
}

void StepBack(EditorModel& model, FuzzedBytes& bytes) {
    for (unsigned count = bytes.Below(8); count > 0; --count) model.Undo();
    CheckModel(model);
    for (unsigned count = bytes.Below(8); count > 0; --count) model.Redo();
}

void Move(EditorModel& model, FuzzedBytes& bytes) {
    const std::string before = model.GetText();
    const VisibleRows rows = {static_cast<std::int32_t>(bytes.Below(16)),
                              static_cast<std::int32_t>(bytes.Below(8)) + 1};
    const CaretKeyRow& row = caretKeyRows[bytes.Below(static_cast<unsigned>(caretKeyRows.size()))];
    MoveCaret(model, row.key, bytes.Below(2) != 0, rows);
    Require(model.GetText() == before, "no move changes the text");
}

void Place(EditorModel& model, FuzzedBytes& bytes) {
    const TextPosition from = AnyPosition(model, bytes);
    switch (bytes.Below(5)) {
        case 0:
            model.Select(from, AnyPosition(model, bytes));
            break;
        case 1:
            model.SelectAll();
            break;
        case 2:
            model.PlaceCaret(from, false);
            SelectAtCaret(model);
            break;
        case 3:
            model.CollapseSelection();
            break;
        default:
            model.PlaceCaret(from, bytes.Below(2) != 0);
    }
    WordAt(model.text, from);
    HelpWord(model);
}

void Click(EditorModel& model, FuzzedBytes& bytes) {
    CellGrid grid;
    grid.cellWidth = static_cast<std::int32_t>(bytes.Below(12)) + 1;
    grid.lineHeight = static_cast<std::int32_t>(bytes.Below(20)) + 1;
    grid.topLine = static_cast<std::int32_t>(bytes.Below(10));
    grid.leftCell = static_cast<std::int32_t>(bytes.Below(10));
    const auto pixel = [&bytes] { return (static_cast<std::int32_t>(bytes.Byte()) - 64) * 5; };
    const std::int32_t x = pixel(), y = pixel();
    const TextPosition hit = HitTest(model.text, grid, x, y);
    RequirePosition(model, hit, "a click hits the text");
    model.PlaceCaret(hit, bytes.Below(2) != 0);
}

constexpr void (*operations[])(EditorModel&, FuzzedBytes&) = {Edit, Edit,  Edit, StepBack,
                                                              Move, Place, Click};

}  // namespace

}  // namespace orvane::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvane;
    using namespace orvane::fuzz;
    FuzzedBytes bytes(data, size);
    EditorModel model;
    for (int count = 0; count < mostOperations && !bytes.IsEmpty(); ++count) {
        operations[bytes.Below(std::size(operations))](model, bytes);
        CheckModel(model);
        if (model.GetText().size() > longestText) break;
    }
    return 0;
}
