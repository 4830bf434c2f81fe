#include "editor/editor_model.h"

#include <algorithm>

#include "editor/view_geometry.h"

namespace orvane {

namespace {

std::int32_t CountLineBreaks(std::string_view text) {
    return static_cast<std::int32_t>(std::count(text.begin(), text.end(), '\n'));
}

// The nearest position that is in the text.
TextPosition Clamped(const TextLines& text, TextPosition position) {
    const std::int32_t line = std::clamp(position.line, 0, text.count - 1);
    return {line, std::clamp(position.col, 0, text.LineAt(line).length)};
}

EditOutcome MoveOutcome(TextPosition from, TextPosition to, RowSpan rows) {
    EditOutcome outcome;
    outcome.caretMoved = from != to;
    outcome.rows = rows;
    return outcome;
}

}  // namespace

EditorModel::EditorModel() { text.Measure(); }

EditOutcome EditorModel::SetText(std::string_view newText) {
    const TextPosition before = Caret();
    SetCaret({0, 0});
    CollapseOnCaret();
    text.SetText(newText);
    text.Measure();
    return {.textChanged = true,
            .caretMoved = before != Caret(),
            .area = {RepaintKind::wholeWindow, 0, 0},
            .rows = {}};
}

std::string EditorModel::GetText() const {
    std::string out;
    text.AppendTextTo(out);
    return out;
}

EditOutcome EditorModel::EditChar(char code) {
    if (code == '\n' || code == '\r') return {};
    const EditStart start =
        StartEdit(RowsBetween(selection.startLine, selection.endLine), caretLine);
    const std::string removed = TakeSelection();
    EditEffect effect{.line = caretLine, .selectionReplaced = !removed.empty()};
    if (!ApplyCode(code, removed)) {
        // Nothing was there to delete. The goal cell is found anew all the same.
        SetCaret(Caret());
        return {};
    }
    effect.linesChanged = text.count != start.count;
    if (code != backspaceCode && code != deleteCode && code != enterCode) effect.typed = code;
    return FinishEdit(start, effect);
}

EditOutcome EditorModel::DeleteSelection() {
    if (!HasSelection()) return {};
    return EditChar(deleteCode);
}

EditOutcome EditorModel::Paste(std::string_view pasted) {
    std::string inserted(pasted);
    std::erase(inserted, '\r');
    if (inserted.empty()) return {};
    TextPosition left;
    TextPosition right;
    selection.Normalise(left.line, left.col, right.line, right.col);
    const EditStart start = StartEdit({left.line, right.line}, left.line);
    const std::string removed = TakeSelection();
    TextPosition end;
    std::int32_t linesAdded = 0;
    text.InsertText(caretLine, caretCol, inserted, end, linesAdded);
    history.AddReplace(Caret(), removed, inserted);
    SetCaret(end);
    return FinishEdit(start, EditEffect::OfPaste(left.line, inserted));
}

EditOutcome EditorModel::Undo() {
    if (!history.CanUndo()) return {};
    const UndoRecord& record = history.RecordAt(history.current);
    return StepHistory(&UndoList::Undo, record, record.inserted);
}

EditOutcome EditorModel::Redo() {
    if (!history.CanRedo()) return {};
    const UndoRecord& record = history.RecordAt(history.current + 1);
    return StepHistory(&UndoList::Redo, record, record.removed);
}

EditOutcome EditorModel::SelectAll() {
    const std::int32_t last = text.count - 1;
    return Select({0, 0}, {last, text.LineAt(last).length});
}

std::int32_t EditorModel::PaintedCell() const {
    return VisualCol(text.GetLine(caretLine), caretCol);
}

EditOutcome EditorModel::PlaceCaret(TextPosition to, bool extend) {
    const TextPosition before = Caret();
    const RowSpan covered = RowsCovered(selection);
    SetCaret(to);
    if (!extend) {
        CollapseOnCaret();
        return MoveOutcome(before, to, covered);
    }
    selection.SetRange(selection.startLine, selection.startCol, to.line, to.col);
    const RowSpan passed = before == to ? RowSpan{} : RowsBetween(before.line, to.line);
    return MoveOutcome(before, to, passed);
}

EditOutcome EditorModel::CollapseSelection() {
    const RowSpan covered = RowsCovered(selection);
    CollapseOnCaret();
    return MoveOutcome(Caret(), Caret(), covered);
}

EditOutcome EditorModel::Select(TextPosition from, TextPosition to) {
    const TextPosition before = Caret();
    const RowSpan covered = RowsCovered(selection);
    SetCaret(to);
    selection.SetRange(from.line, from.col, to.line, to.col);
    return MoveOutcome(before, to, covered.With(RowsCovered(selection)));
}

// An edit at the ends of these lines may reach into the lines beside them.
EditorModel::EditStart EditorModel::StartEdit(RowSpan lines, std::int32_t row) const {
    EditStart start;
    start.lines = lines;
    start.count = text.count;
    start.longest = LongestOf(LinesAround(lines));
    start.caret = Caret();
    start.rowText = RowText(row);
    return start;
}

EditOutcome EditorModel::FinishEdit(const EditStart& start, const EditEffect& effect) {
    SetCaret(Caret());
    CollapseOnCaret();
    RefreshSizes(start);
    return {.textChanged = true,
            .caretMoved = start.caret != Caret(),
            .area = ChooseRepaint(effect, start.rowText, RowText(effect.line)),
            .rows = {}};
}

// `leaving` is what the step takes out of the text, where it still stands there.
EditOutcome EditorModel::StepHistory(HistoryStep step, const UndoRecord& record,
                                     std::string_view leaving) {
    const RowSpan covered = RowsCovered(selection);
    const std::int32_t row = record.line;
    const EditStart start = StartEdit({row, row + CountLineBreaks(leaving)}, row);
    const UndoOutcome taken = (history.*step)(text);
    const EditEffect effect = EditEffect::OfHistoryStep(row, taken.linesRemoved, taken.linesAdded);
    if (!taken.done && !effect.linesChanged && start.rowText == RowText(row)) return {};
    // Where the record no longer matches the text, what did match is gone, and with it may be the
    // place where the caret stood.
    SetCaret(taken.done ? taken.caret : Clamped(text, Caret()));
    EditOutcome outcome = FinishEdit(start, effect);
    outcome.rows = covered;
    return outcome;
}

// A record may name a row that is no longer there.
std::string_view EditorModel::RowText(std::int32_t row) const {
    if (row < 0 || row >= text.count) return {};
    return text.GetLine(row);
}

RowSpan EditorModel::LinesAround(RowSpan lines) const {
    return {std::max(lines.first - 1, 0), std::min(lines.last + 1, text.count - 1)};
}

std::int32_t EditorModel::LongestOf(RowSpan lines) const {
    std::int32_t longest = 0;
    for (std::int32_t line = lines.first; line <= lines.last; ++line) {
        longest = std::max(longest, text.LineAt(line).length);
    }
    return longest;
}

// What Measure answers. The whole text is walked only when the longest line has become shorter: a
// walk over a very long sheet at every key would be felt.
void EditorModel::RefreshSizes(const EditStart& start) {
    const std::int32_t added = text.count - start.count;
    const std::int32_t longest =
        LongestOf(LinesAround({start.lines.first, start.lines.last + added}));
    if (longest < text.longestLine && start.longest == text.longestLine) {
        text.Measure();
        return;
    }
    text.longestLine = std::max(text.longestLine, longest);
    text.lineCountSeen = text.count;
}

// Deletes the selected text and puts the caret where it stood; empty without a selection.
std::string EditorModel::TakeSelection() {
    if (!HasSelection()) return {};
    TextPosition left;
    TextPosition right;
    selection.Normalise(left.line, left.col, right.line, right.col);
    std::string removed = SelectedText();
    text.DeleteSelected(selection);
    SetCaret(left);
    return removed;
}

// With the selection gone and the caret at its left end. False where there is nothing to do.
bool EditorModel::ApplyCode(char code, const std::string& removed) {
    if (code == enterCode) return BreakLine(removed);
    if (code != backspaceCode && code != deleteCode) return InsertTyped(code, removed);
    if (removed.empty()) return code == backspaceCode ? Backspace() : DeleteAhead();
    history.AddDelete(Caret(), removed);
    return true;
}

bool EditorModel::Backspace() {
    if (caretCol > 0) {
        --caretCol;
        history.AddDeleteChar(Caret(), text.DeleteChar(caretLine, caretCol));
        return true;
    }
    if (caretLine == 0) return false;
    const TextPosition end = {caretLine - 1, text.LineAt(caretLine - 1).length};
    if (!text.JoinWithNext(end.line)) return false;
    SetCaret(end);
    history.AddDeleteChar(end, '\n');
    return true;
}

bool EditorModel::DeleteAhead() {
    if (caretCol < text.LineAt(caretLine).length) {
        history.AddDeleteChar(Caret(), text.DeleteChar(caretLine, caretCol));
        return true;
    }
    if (!text.JoinWithNext(caretLine)) return false;
    history.AddDeleteChar(Caret(), '\n');
    return true;
}

// Kept: in place of a selection the caret stays ahead of the break, while without one it goes on to
// the new line.
bool EditorModel::BreakLine(const std::string& removed) {
    text.SplitLine(caretLine, caretCol);
    if (!removed.empty()) {
        history.AddReplaceWithChar(Caret(), removed, '\n');
        return true;
    }
    history.AddInsertChar(Caret(), '\n');
    SetCaret({caretLine + 1, 0});
    return true;
}

bool EditorModel::InsertTyped(char ch, const std::string& removed) {
    if (removed.empty()) {
        history.AddInsertChar(Caret(), ch);
    } else {
        history.AddReplaceWithChar(Caret(), removed, ch);
    }
    text.InsertChar(caretLine, caretCol, ch);
    ++caretCol;
    return true;
}

void EditorModel::SetCaret(TextPosition position) {
    caretLine = position.line;
    caretCol = position.col;
    caretCell = PaintedCell();
}

void EditorModel::CollapseOnCaret() { selection.SetCaret(Caret()); }

}  // namespace orvane
