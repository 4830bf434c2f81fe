#include "editor/editor_model.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "editor_checks.h"

namespace orvane {
namespace {

using test::ModelWith;
using test::Range;

// What must hold after every operation.
void ExpectSound(const EditorModel& model) {
    ASSERT_LT(model.caretLine, model.text.count);
    EXPECT_LE(model.caretCol, model.text.LineAt(model.caretLine).length);
    EXPECT_EQ((TextPosition{model.selection.endLine, model.selection.endCol}), model.Caret());
    TextLines measured;
    measured.SetText(model.GetText());
    measured.Measure();
    EXPECT_EQ(model.text.longestLine, measured.longestLine);
    EXPECT_EQ(model.text.lineCountSeen, measured.lineCountSeen);
}

void ExpectCaret(const EditorModel& model, TextPosition caret) {
    EXPECT_EQ(model.Caret(), caret);
    EXPECT_EQ(model.selection, Range(caret, caret));
    EXPECT_EQ(model.caretCell, model.PaintedCell());
}

TEST(EditorModel, StartsAsAnEmptySheet) {
    const EditorModel model;
    EXPECT_EQ(model.GetText(), "");
    EXPECT_EQ(model.text.count, 1);
    ExpectCaret(model, {0, 0});
    EXPECT_FALSE(model.HasSelection());
    EXPECT_EQ(model.SelectedText(), "");
    EXPECT_FALSE(model.history.CanUndo());
    ExpectSound(model);
}

// EditChar without a selection.

struct CaretEdit {
    const char* name;
    std::string_view text;
    TextPosition caret;
    char code;
    std::string_view newText;
    TextPosition newCaret;
    UndoRecord record;
};

const CaretEdit caretEdits[] = {
    {"Backspace in a line", "abc", {0, 2}, backspaceCode, "ac", {0, 1}, {0, 1, "b", ""}},
    {"Backspace at a line's end", "abc", {0, 3}, backspaceCode, "ab", {0, 2}, {0, 2, "c", ""}},
    {"Backspace on a tab", "a\tb", {0, 2}, backspaceCode, "ab", {0, 1}, {0, 1, "\t", ""}},
    {"Backspace joins", "ab\ncd", {1, 0}, backspaceCode, "abcd", {0, 2}, {0, 2, "\n", ""}},
    {"Backspace joins to an empty line",
     "\ncd",
     {1, 0},
     backspaceCode,
     "cd",
     {0, 0},
     {0, 0, "\n", ""}},
    {"Delete in a line", "abc", {0, 1}, deleteCode, "ac", {0, 1}, {0, 1, "b", ""}},
    {"Delete at a line's start", "abc", {0, 0}, deleteCode, "bc", {0, 0}, {0, 0, "a", ""}},
    {"Delete joins", "ab\ncd", {0, 2}, deleteCode, "abcd", {0, 2}, {0, 2, "\n", ""}},
    {"Delete joins an empty line", "ab\n", {0, 2}, deleteCode, "ab", {0, 2}, {0, 2, "\n", ""}},
    {"Enter in a line", "abcd", {0, 2}, enterCode, "ab\ncd", {1, 0}, {0, 2, "", "\n"}},
    {"Enter at a line's end", "ab\ncd", {0, 2}, enterCode, "ab\n\ncd", {1, 0}, {0, 2, "", "\n"}},
    {"Enter at a line's start", "ab", {0, 0}, enterCode, "\nab", {1, 0}, {0, 0, "", "\n"}},
    {"Enter in an empty sheet", "", {0, 0}, enterCode, "\n", {1, 0}, {0, 0, "", "\n"}},
    {"a letter", "ac", {0, 1}, 'b', "abc", {0, 2}, {0, 1, "", "b"}},
    {"a letter in the second line", "x\nac", {1, 1}, 'b', "x\nabc", {1, 2}, {1, 1, "", "b"}},
    {"a tab is a real one", "ab", {0, 1}, '\t', "a\tb", {0, 2}, {0, 1, "", "\t"}},
    {"a colon", "hex", {0, 3}, ':', "hex:", {0, 4}, {0, 3, "", ":"}},
    {"the lowest typed code",
     "ab",
     {0, 1},
     '\x03',
     "a\x03"
     "b",
     {0, 2},
     {0, 1, "", "\x03"}},
    {"the highest typed code", "ab", {0, 1}, '~', "a~b", {0, 2}, {0, 1, "", "~"}},
};

TEST(EditChar, EditsAtTheCaret) {
    for (const auto& [name, text, caret, code, newText, newCaret, record] : caretEdits) {
        SCOPED_TRACE(name);
        EditorModel model = ModelWith(text, caret);
        const EditOutcome outcome = model.EditChar(code);
        EXPECT_EQ(model.GetText(), newText);
        ExpectCaret(model, newCaret);
        ExpectSound(model);
        EXPECT_TRUE(outcome.textChanged);
        EXPECT_EQ(outcome.caretMoved, caret != newCaret);
        EXPECT_TRUE(outcome.rows.IsEmpty());
        ASSERT_EQ(model.history.count, 1);
        EXPECT_EQ(model.history.RecordAt(0), record);
    }
}

TEST(EditChar, IsTakenBackAndMadeAgain) {
    for (const auto& [name, text, caret, code, newText, newCaret, record] : caretEdits) {
        SCOPED_TRACE(name);
        EditorModel model = ModelWith(text, caret);
        model.EditChar(code);
        EXPECT_TRUE(model.Undo().textChanged);
        EXPECT_EQ(model.GetText(), text);
        ExpectSound(model);
        EXPECT_TRUE(model.Redo().textChanged);
        EXPECT_EQ(model.GetText(), newText);
        ExpectSound(model);
    }
}

struct NothingRow {
    const char* name;
    std::string_view text;
    TextPosition caret;
    char code;
};

TEST(EditChar, DoesNothingAtTheEndsOfTheText) {
    const NothingRow rows[] = {
        {"Backspace at the start", "ab\ncd", {0, 0}, backspaceCode},
        {"Backspace in an empty sheet", "", {0, 0}, backspaceCode},
        {"Delete at the end", "ab\ncd", {1, 2}, deleteCode},
        {"Delete in an empty sheet", "", {0, 0}, deleteCode},
        {"Delete in an empty last line", "ab\n", {1, 0}, deleteCode},
        {"a line feed that is no Enter", "ab", {0, 1}, '\n'},
        {"a return", "ab", {0, 1}, '\r'},
    };
    for (const auto& [name, text, caret, code] : rows) {
        SCOPED_TRACE(name);
        EditorModel model = ModelWith(text, caret);
        EXPECT_EQ(model.EditChar(code), EditOutcome{});
        EXPECT_EQ(model.GetText(), text);
        ExpectCaret(model, caret);
        EXPECT_EQ(model.history.count, 0);
        ExpectSound(model);
    }
}

// The goal cell is found anew by an edit key even where there is nothing to delete.
TEST(EditChar, FindsTheGoalCellAnewWhereNothingIsDeleted) {
    EditorModel model = ModelWith("ab", {0, 2});
    model.caretCell = 17;
    model.EditChar(deleteCode);
    EXPECT_EQ(model.caretCell, 2);
}

TEST(EditChar, FindsTheGoalCellBehindTabs) {
    EditorModel model = ModelWith("ab", {0, 1});
    model.EditChar('\t');
    EXPECT_EQ(model.caretCell, 4);
    EXPECT_EQ(model.GetText(), "a\tb");
    model.EditChar('x');
    EXPECT_EQ(model.caretCell, 5);
}

// EditChar with a selection, which may run either way.

struct SelectionEdit {
    const char* name;
    std::string_view text;
    TextPosition left;
    TextPosition right;
    char code;
    std::string_view newText;
    TextPosition newCaret;
    UndoRecord record;
};

const SelectionEdit selectionEdits[] = {
    {"Backspace", "abcd", {0, 1}, {0, 3}, backspaceCode, "ad", {0, 1}, {0, 1, "bc", ""}},
    {"Backspace over lines",
     "abc\nd\nefg",
     {0, 1},
     {2, 2},
     backspaceCode,
     "ag",
     {0, 1},
     {0, 1, "bc\nd\nef", ""}},
    {"Backspace on a line end alone",
     "ab\ncd",
     {0, 2},
     {1, 0},
     backspaceCode,
     "abcd",
     {0, 2},
     {0, 2, "\n", ""}},
    {"Delete", "abcd", {0, 0}, {0, 4}, deleteCode, "", {0, 0}, {0, 0, "abcd", ""}},
    {"Delete over lines",
     "abc\nd\nefg",
     {1, 0},
     {2, 0},
     deleteCode,
     "abc\nefg",
     {1, 0},
     {1, 0, "d\n", ""}},
    // Kept: behind Enter the caret stays at the end of the first part.
    {"Enter", "abcd", {0, 1}, {0, 3}, enterCode, "a\nd", {0, 1}, {0, 1, "bc", "\n"}},
    {"Enter over lines",
     "abc\ndef",
     {0, 2},
     {1, 1},
     enterCode,
     "ab\nef",
     {0, 2},
     {0, 2, "c\nd", "\n"}},
    {"a letter", "abcd", {0, 1}, {0, 3}, 'x', "axd", {0, 2}, {0, 1, "bc", "x"}},
    {"a letter over lines",
     "abc\nd\nefg",
     {0, 3},
     {2, 3},
     'x',
     "abcx",
     {0, 4},
     {0, 3, "\nd\nefg", "x"}},
    {"a tab", "abcd", {0, 0}, {0, 2}, '\t', "\tcd", {0, 1}, {0, 0, "ab", "\t"}},
    {"a colon", "abcd", {0, 0}, {0, 2}, ':', ":cd", {0, 1}, {0, 0, "ab", ":"}},
};

TEST(EditChar, ReplacesTheSelectionWhicheverWayItRuns) {
    for (const auto& [name, text, left, right, code, newText, newCaret, record] : selectionEdits) {
        for (const bool backward : {false, true}) {
            SCOPED_TRACE(std::string(name) + (backward ? ", backward" : ", forward"));
            EditorModel model =
                backward ? ModelWith(text, right, left) : ModelWith(text, left, right);
            const EditOutcome outcome = model.EditChar(code);
            EXPECT_EQ(model.GetText(), newText);
            ExpectCaret(model, newCaret);
            ExpectSound(model);
            EXPECT_TRUE(outcome.textChanged);
            EXPECT_EQ(outcome.area, (RepaintArea{RepaintKind::wholeWindow, 0, 0}));
            ASSERT_EQ(model.history.count, 1);
            EXPECT_EQ(model.history.RecordAt(0), record);
            model.Undo();
            EXPECT_EQ(model.GetText(), text);
            ExpectCaret(model, right);
            ExpectSound(model);
            model.Redo();
            EXPECT_EQ(model.GetText(), newText);
            ExpectSound(model);
        }
    }
}

// Commands.

TEST(EditorModel, DeletesTheSelectionAndNothingWithoutOne) {
    EditorModel model = ModelWith("ab\ncd", {1, 1}, {0, 1});
    EXPECT_EQ(model.SelectedText(), "b\nc");
    const EditOutcome outcome = model.DeleteSelection();
    EXPECT_TRUE(outcome.textChanged);
    EXPECT_EQ(outcome.area, (RepaintArea{RepaintKind::wholeWindow, 0, 0}));
    EXPECT_EQ(model.GetText(), "ad");
    ExpectCaret(model, {0, 1});
    ASSERT_EQ(model.history.count, 1);
    EXPECT_EQ(model.history.RecordAt(0), (UndoRecord{0, 1, "b\nc", ""}));

    EXPECT_EQ(model.DeleteSelection(), EditOutcome{});
    EXPECT_EQ(model.GetText(), "ad");
    EXPECT_EQ(model.history.count, 1);
}

struct PasteRow {
    const char* name;
    std::string_view text;
    TextPosition left;
    TextPosition right;
    std::string_view pasted;
    std::string_view newText;
    TextPosition newCaret;
    UndoRecord record;
};

TEST(EditorModel, PastesOverTheSelection) {
    const PasteRow rows[] = {
        {"at the caret", "abcd", {0, 2}, {0, 2}, "xy", "abxycd", {0, 4}, {0, 2, "", "xy"}},
        {"lines", "abcd", {0, 2}, {0, 2}, "x\ny\nz", "abx\ny\nzcd", {2, 1}, {0, 2, "", "x\ny\nz"}},
        {"without returns", "ab", {0, 1}, {0, 1}, "x\r\ny\r", "ax\nyb", {1, 1}, {0, 1, "", "x\ny"}},
        {"over a selection", "abcd", {0, 1}, {0, 3}, "x", "axd", {0, 2}, {0, 1, "bc", "x"}},
        {"over lines", "abc\ndef", {0, 1}, {1, 2}, "x", "axf", {0, 2}, {0, 1, "bc\nde", "x"}},
        {"lines over lines",
         "abc\ndef",
         {0, 1},
         {1, 2},
         "\n",
         "a\nf",
         {1, 0},
         {0, 1, "bc\nde", "\n"}},
        {"high bytes",
         "ab",
         {0, 1},
         {0, 1},
         "\x80\xFF",
         "a\x80\xFF"
         "b",
         {0, 3},
         {0, 1, "", "\x80\xFF"}},
        {"what was selected", "abc", {0, 0}, {0, 2}, "ab", "abc", {0, 2}, {0, 0, "ab", "ab"}},
    };
    for (const auto& [name, text, left, right, pasted, newText, newCaret, record] : rows) {
        for (const bool backward : {false, true}) {
            SCOPED_TRACE(std::string(name) + (backward ? ", backward" : ", forward"));
            EditorModel model =
                backward ? ModelWith(text, right, left) : ModelWith(text, left, right);
            EXPECT_TRUE(model.Paste(pasted).textChanged);
            EXPECT_EQ(model.GetText(), newText);
            ExpectCaret(model, newCaret);
            ExpectSound(model);
            ASSERT_EQ(model.history.count, 1);
            EXPECT_EQ(model.history.RecordAt(0), record);
            model.Undo();
            EXPECT_EQ(model.GetText(), text);
            model.Redo();
            EXPECT_EQ(model.GetText(), newText);
            ExpectCaret(model, newCaret);
            ExpectSound(model);
        }
    }
}

TEST(EditorModel, PastesNothingWhereOnlyReturnsAreLeft) {
    for (const std::string_view pasted : {"", "\r", "\r\r"}) {
        EditorModel model = ModelWith("abc", {0, 0}, {0, 2});
        EXPECT_EQ(model.Paste(pasted), EditOutcome{});
        EXPECT_EQ(model.GetText(), "abc");
        EXPECT_EQ(model.selection, Range({0, 0}, {0, 2}));
        EXPECT_EQ(model.history.count, 0);
    }
}

TEST(EditorModel, SelectsAll) {
    EditorModel model = ModelWith("ab\n\tcd", {1, 1});
    const EditOutcome outcome = model.SelectAll();
    EXPECT_EQ(model.selection, Range({0, 0}, {1, 3}));
    EXPECT_EQ(model.Caret(), (TextPosition{1, 3}));
    EXPECT_EQ(model.caretCell, 6);
    EXPECT_EQ(model.SelectedText(), "ab\n\tcd");
    EXPECT_FALSE(outcome.textChanged);
    EXPECT_EQ(outcome.rows, (RowSpan{0, 1}));
}

TEST(EditorModel, SelectsNothingInAnEmptySheet) {
    EditorModel model;
    EXPECT_EQ(model.SelectAll(), EditOutcome{});
    EXPECT_FALSE(model.HasSelection());
}

TEST(EditorModel, MovesBothEndsWhereItSelects) {
    EditorModel model = ModelWith("abc\ndef\nghi", {2, 1}, {1, 1});
    const EditOutcome outcome = model.Select({0, 2}, {0, 1});
    EXPECT_EQ(model.selection, Range({0, 2}, {0, 1}));
    EXPECT_EQ(model.Caret(), (TextPosition{0, 1}));
    EXPECT_TRUE(outcome.caretMoved);
    EXPECT_EQ(outcome.rows, (RowSpan{0, 2}));
}

TEST(EditorModel, RepaintsTheRowsThatAMoveSelectsOtherwise) {
    EditorModel model = ModelWith("a\nb\nc\nd\ne", {1, 0});
    EXPECT_EQ(model.PlaceCaret({3, 1}, true).rows, (RowSpan{1, 3}));
    EXPECT_EQ(model.PlaceCaret({2, 0}, true).rows, (RowSpan{2, 3}));
    EXPECT_EQ(model.PlaceCaret({0, 0}, true).rows, (RowSpan{0, 2}));
    EXPECT_TRUE(model.PlaceCaret({0, 0}, true).rows.IsEmpty());
    EXPECT_EQ(model.PlaceCaret({4, 1}, false).rows, (RowSpan{0, 1}));
    EXPECT_TRUE(model.PlaceCaret({0, 1}, false).rows.IsEmpty());
}

TEST(EditorModel, CollapsesASelectionWhereTheCaretIsPutAgain) {
    EditorModel model = ModelWith("abc", {0, 0}, {0, 2});
    const EditOutcome outcome = model.PlaceCaret({0, 2}, false);
    EXPECT_FALSE(outcome.caretMoved);
    EXPECT_EQ(outcome.rows, (RowSpan{0, 0}));
    ExpectCaret(model, {0, 2});
}

TEST(EditorModel, KeepsTheGoalCellWhereTheSelectionJustEnds) {
    EditorModel model = ModelWith("abc\nde", {0, 1}, {1, 2});
    model.caretCell = 9;
    const EditOutcome outcome = model.CollapseSelection();
    EXPECT_EQ(outcome.rows, (RowSpan{0, 1}));
    EXPECT_FALSE(outcome.caretMoved);
    EXPECT_EQ(model.selection, Range({1, 2}, {1, 2}));
    EXPECT_EQ(model.caretCell, 9);
    EXPECT_EQ(model.CollapseSelection(), EditOutcome{});
}

// Taking back.

TEST(EditorModel, CollapsesTheSelectionWhereAStepEnds) {
    EditorModel model = ModelWith("abc\ndef", {0, 1});
    model.EditChar('x');
    model.PlaceCaret({1, 0}, false);
    model.PlaceCaret({0, 2}, true);
    const EditOutcome back = model.Undo();
    EXPECT_EQ(back.rows, (RowSpan{0, 1}));
    EXPECT_EQ(back.area, (RepaintArea{RepaintKind::restOfRow, 0, 0}));
    ExpectCaret(model, {0, 1});
    const EditOutcome forth = model.Redo();
    EXPECT_TRUE(forth.rows.IsEmpty());
    ExpectCaret(model, {0, 2});
}

TEST(EditorModel, LeavesASelectionWhereThereIsNothingToTakeBack) {
    EditorModel model = ModelWith("abc", {0, 0}, {0, 2});
    EXPECT_EQ(model.Undo(), EditOutcome{});
    EXPECT_EQ(model.Redo(), EditOutcome{});
    EXPECT_EQ(model.selection, Range({0, 0}, {0, 2}));
}

TEST(EditorModel, DoesNothingWhereTheTextNoLongerMatches) {
    EditorModel model;
    model.EditChar('a');
    model.EditChar('b');
    model.SetText("xy");
    model.PlaceCaret({0, 1}, true);
    EXPECT_EQ(model.Undo(), EditOutcome{});
    EXPECT_EQ(model.GetText(), "xy");
    EXPECT_EQ(model.selection, Range({0, 0}, {0, 1}));
    EXPECT_TRUE(model.history.CanUndo());
    EXPECT_FALSE(model.history.CanRedo());

    // Once the text matches again, the step can be made.
    model.SetText("ab");
    EXPECT_TRUE(model.Undo().textChanged);
    EXPECT_EQ(model.GetText(), "a");
}

// What had matched of the record is gone, so the caret may have stood in it.
TEST(EditorModel, StaysInTheTextWhereAStepStopsHalfWay) {
    EditorModel model;
    model.Paste("ab\ncd\nef");
    model.SetText("ab\ncd\nxx\nyy");
    model.PlaceCaret({3, 0}, false);
    model.PlaceCaret({3, 2}, true);
    const EditOutcome outcome = model.Undo();
    EXPECT_EQ(model.GetText(), "xx\nyy");
    EXPECT_TRUE(outcome.textChanged);
    EXPECT_EQ(outcome.area, (RepaintArea{RepaintKind::wholeWindow, 0, 0}));
    ExpectCaret(model, {1, 2});
    ExpectSound(model);
    EXPECT_TRUE(model.history.CanUndo());
}

TEST(EditorModel, SeesARowThatAStepHalfWayTookAway) {
    EditorModel model;
    model.Paste("ab\ncd");
    model.SetText("abx");
    model.PlaceCaret({0, 3}, false);
    const EditOutcome outcome = model.Undo();
    EXPECT_EQ(model.GetText(), "x");
    EXPECT_TRUE(outcome.textChanged);
    EXPECT_EQ(outcome.area.kind, RepaintKind::restOfRow);
    ExpectCaret(model, {0, 1});
    ExpectSound(model);
}

TEST(EditorModel, DoesNothingWhereTheLineOfARecordIsGone) {
    EditorModel model = ModelWith("a\nb\nc", {2, 1});
    model.EditChar('x');
    model.SetText("a");
    EXPECT_EQ(model.Undo(), EditOutcome{});
    EXPECT_EQ(model.GetText(), "a");
    ExpectSound(model);
}

// Texts.

TEST(EditorModel, PutsTheCaretAtTheStartOfANewText) {
    EditorModel model = ModelWith("abc\ndef", {0, 1}, {1, 2});
    model.EditChar('x');
    const EditOutcome outcome = model.SetText("one\r\ntwo\n");
    EXPECT_EQ(model.GetText(), "one\ntwo\n");
    ExpectCaret(model, {0, 0});
    EXPECT_TRUE(outcome.textChanged);
    EXPECT_TRUE(outcome.caretMoved);
    EXPECT_EQ(outcome.area, (RepaintArea{RepaintKind::wholeWindow, 0, 0}));
    EXPECT_TRUE(model.history.CanUndo());
    EXPECT_EQ(model.text.count, 3);
    ExpectSound(model);
    model.SetText("");
    EXPECT_EQ(model.GetText(), "");
    ExpectSound(model);
}

// The longest line, which the width of the view's range follows.

TEST(EditorModel, KnowsTheLongestLineThroughAllEdits) {
    EditorModel model = ModelWith("aaaa\nbb\ncccc", {0, 4});
    model.EditChar(backspaceCode);
    ExpectSound(model);
    EXPECT_EQ(model.text.longestLine, 4);
    model.PlaceCaret({2, 4}, false);
    model.EditChar(backspaceCode);
    ExpectSound(model);
    EXPECT_EQ(model.text.longestLine, 3);
    model.EditChar(enterCode);
    ExpectSound(model);
    model.PlaceCaret({1, 0}, false);
    model.EditChar(backspaceCode);
    EXPECT_EQ(model.text.longestLine, 5);
    ExpectSound(model);
    model.Undo();
    ExpectSound(model);
    model.SelectAll();
    model.EditChar('x');
    EXPECT_EQ(model.text.longestLine, 1);
    ExpectSound(model);
}

}  // namespace
}  // namespace orvane
