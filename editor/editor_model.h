#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "editor/repaint_rule.h"
#include "editor/selection_rows.h"
#include "editor/text_lines.h"
#include "editor/undo_list.h"

// The sheet under the caret, without a window: text, caret, selection and history, and every edit
// that a key or a command makes. Each operation answers what the view must do about it.

namespace orvane {

// What EditChar takes besides characters.
inline constexpr char backspaceCode = 0;
inline constexpr char deleteCode = 1;
inline constexpr char enterCode = 2;

struct EditOutcome {
    bool textChanged = false;
    bool caretMoved = false;
    RepaintArea area;  // what the change of the text repaints
    RowSpan rows;      // rows to repaint whole, since they are selected otherwise than before

    bool operator==(const EditOutcome&) const = default;
};

class EditorModel {
public:
    EditorModel();

    // Replaces the text and puts the caret at its start. The history is kept: steps back and forth
    // work as far as its records still match.
    EditOutcome SetText(std::string_view newText);
    std::string GetText() const;

    // A typed character, or the code of an edit key. A line break is typed by its code alone.
    EditOutcome EditChar(char code);
    // Takes the selected text away; nothing without a selection.
    EditOutcome DeleteSelection();
    // Replaces the selection by the text, with every "\r" left out, and puts the caret behind it;
    // nothing where the text is empty.
    EditOutcome Paste(std::string_view pasted);
    EditOutcome Undo();
    EditOutcome Redo();

    // The lines joined by "\n"; empty without a selection.
    std::string SelectedText() const { return text.GetSelected(selection); }
    bool HasSelection() const { return !selection.IsEmpty(); }
    EditOutcome SelectAll();

    TextPosition Caret() const { return {caretLine, caretCol}; }
    // The cell that the caret is painted in. Not always `caretCell`, which is where up and down aim
    // at.
    std::int32_t PaintedCell() const;
    // Puts the caret at a position of the text; the selection collapses there or, to extend it, its
    // end goes along. Either way the goal cell is found anew.
    EditOutcome PlaceCaret(TextPosition to, bool extend);
    // Ends the selection where the caret is; the goal cell stays.
    EditOutcome CollapseSelection();
    // Selects between two positions of the text; the caret goes to the second one.
    EditOutcome Select(TextPosition from, TextPosition to);

    TextLines text;
    SelRange selection;  // collapsed on the caret where nothing is selected; else it ends there
    UndoList history;
    std::int32_t caretLine = 0;
    std::int32_t caretCol = 0;   // in characters
    std::int32_t caretCell = 0;  // the goal of up and down

private:
    // What stood there before an edit that touches no other lines than these.
    struct EditStart {
        RowSpan lines;
        std::int32_t count = 0;
        std::int32_t longest = 0;  // of those lines
        TextPosition caret;
        std::string rowText;
    };
    using HistoryStep = UndoOutcome (UndoList::*)(TextLines&);

    EditStart StartEdit(RowSpan lines, std::int32_t row) const;
    EditOutcome FinishEdit(const EditStart& start, const EditEffect& effect);
    EditOutcome StepHistory(HistoryStep step, const UndoRecord& record, std::string_view leaving);

    std::string_view RowText(std::int32_t row) const;
    RowSpan LinesAround(RowSpan lines) const;
    std::int32_t LongestOf(RowSpan lines) const;
    void RefreshSizes(const EditStart& start);
    std::string TakeSelection();
    bool ApplyCode(char code, const std::string& removed);
    bool Backspace();
    bool DeleteAhead();
    bool BreakLine(const std::string& removed);
    bool InsertTyped(char ch, const std::string& removed);
    void SetCaret(TextPosition position);
    void CollapseOnCaret();
};

}  // namespace orvane
