#include <gtest/gtest.h>

#include <string_view>

#include "editor/editor_model.h"
#include "editor_checks.h"

// Which area of the view each edit asks to be painted.

namespace orvane {
namespace {

using test::ModelWith;

constexpr RepaintArea wholeWindow = {RepaintKind::wholeWindow, 0, 0};

RepaintArea RestOfRow(std::int32_t line, std::int32_t cell) {
    return {RepaintKind::restOfRow, line, cell};
}

struct CodeRow {
    const char* name;
    std::string_view text;
    TextPosition caret;
    char code;
    RepaintArea area;
};

TEST(EditorRepaint, AsksForTheRestOfTheRowWhereOneCharacterChanged) {
    const CodeRow rows[] = {
        {"a symbol at the end", "a+b", {0, 3}, '+', RestOfRow(0, 3)},
        {"a letter makes its word new", "1+sin", {0, 5}, 'h', RestOfRow(0, 2)},
        {"a letter in the second row", "x\n+ab", {1, 3}, 'c', RestOfRow(1, 1)},
        {"a tab", "+ +", {0, 1}, '\t', RestOfRow(0, 1)},
        {"a quote", "+ +", {0, 2}, '"', RestOfRow(0, 2)},
        {"behind a tab", "\t+", {0, 2}, '+', RestOfRow(0, 5)},
        {"Backspace on a symbol", "+-*", {0, 2}, backspaceCode, RestOfRow(0, 1)},
        {"Backspace in a word", "+sin", {0, 4}, backspaceCode, RestOfRow(0, 1)},
        {"Delete on a symbol", "+-*", {0, 1}, deleteCode, RestOfRow(0, 1)},
        {"Delete between words", "sin+cos", {0, 3}, deleteCode, RestOfRow(0, 0)},
        {"a colon takes the whole row", "  hex", {0, 5}, ':', {RepaintKind::wholeRow, 0, 0}},
        {"a colon deleted", "  hex:", {0, 6}, backspaceCode, RestOfRow(0, 5)},
    };
    for (const auto& [name, text, caret, code, area] : rows) {
        SCOPED_TRACE(name);
        EditorModel model = ModelWith(text, caret);
        EXPECT_EQ(model.EditChar(code).area, area);
    }
}

TEST(EditorRepaint, AsksForTheWholeWindowWhereLinesChanged) {
    const CodeRow rows[] = {
        {"Enter", "a\nb", {0, 1}, enterCode, wholeWindow},
        {"Backspace joins", "a\nb", {1, 0}, backspaceCode, wholeWindow},
        {"Delete joins", "a\nb", {0, 1}, deleteCode, wholeWindow},
    };
    for (const auto& [name, text, caret, code, area] : rows) {
        SCOPED_TRACE(name);
        EditorModel model = ModelWith(text, caret);
        EXPECT_EQ(model.EditChar(code).area, area);
    }
}

TEST(EditorRepaint, AsksForTheWholeWindowWhereASelectionWentByAKey) {
    for (const char code : {backspaceCode, deleteCode, enterCode, 'x', ':', '\t'}) {
        SCOPED_TRACE(static_cast<int>(code));
        EditorModel model = ModelWith("abc", {0, 1}, {0, 2});
        EXPECT_EQ(model.EditChar(code).area, wholeWindow);
    }
}

struct PasteRow {
    const char* name;
    std::string_view text;
    TextPosition from, caret;
    std::string_view pasted;
    RepaintArea area;
};

TEST(EditorRepaint, JudgesAPasteByItsText) {
    const PasteRow rows[] = {
        {"a piece", "a+b", {0, 3}, {0, 3}, "(", RestOfRow(0, 3)},
        {"a colon", "hex", {0, 3}, {0, 3}, ":", RestOfRow(0, 3)},
        {"over a selection", "+-*", {0, 1}, {0, 2}, "/", RestOfRow(0, 1)},
        // Kept: one row is enough for it.
        {"over a selection of several lines", "+\n-\n*+", {0, 1}, {2, 1}, "/", RestOfRow(0, 1)},
        {"the same backward", "+\n-\n*+", {2, 1}, {0, 1}, "/", RestOfRow(0, 1)},
        {"in a lower row", "x\n+\n-", {1, 1}, {2, 0}, "/", RestOfRow(1, 1)},
        {"with a line break", "a+b", {0, 2}, {0, 2}, "x\ny", wholeWindow},
        {"a line break", "a+b", {0, 2}, {0, 2}, "\n", wholeWindow},
        {"with a return alone", "+", {0, 1}, {0, 1}, "\r-", RestOfRow(0, 1)},
    };
    for (const auto& [name, text, from, caret, pasted, area] : rows) {
        SCOPED_TRACE(name);
        EditorModel model = ModelWith(text, from, caret);
        EXPECT_EQ(model.Paste(pasted).area, area);
    }
}

TEST(EditorRepaint, AsksForTheRowWhereAStepHadNoLineBreaks) {
    EditorModel model = ModelWith("x\n1+sin", {1, 5});
    model.EditChar('h');
    EXPECT_EQ(model.Undo().area, RestOfRow(1, 2));
    EXPECT_EQ(model.Redo().area, RestOfRow(1, 2));
    // A colon counts as any character where it comes back.
    model.EditChar(':');
    EXPECT_EQ(model.Undo().area, RestOfRow(1, 6));
    EXPECT_EQ(model.Redo().area, RestOfRow(1, 6));
}

TEST(EditorRepaint, AsksForTheWholeWindowWhereAStepHadLineBreaks) {
    EditorModel model = ModelWith("ab", {0, 1});
    model.EditChar(enterCode);
    EXPECT_EQ(model.Undo().area, wholeWindow);
    EXPECT_EQ(model.Redo().area, wholeWindow);
    // A break that comes for a break leaves their number as it was.
    model.Select({0, 1}, {1, 0});
    model.Paste("+\n");
    EXPECT_EQ(model.Undo().area, wholeWindow);
    EXPECT_EQ(model.Redo().area, wholeWindow);
}

}  // namespace
}  // namespace orvane
