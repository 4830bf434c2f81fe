#include "editor/caret_moves.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

#include "editor_checks.h"

namespace orvane {

inline void PrintTo(const WordSpan& word, std::ostream* out) {
    *out << "line " << word.line << ", columns " << word.start << " to " << word.end;
}

namespace {

using test::ModelWith;
using test::Range;

// Keys.

struct KeyRow {
    const char* name;
    std::string_view text;
    TextPosition caret;
    CaretKey key;
    TextPosition target;
};

constexpr VisibleRows fromTop = {.top = 0, .page = 3};

const KeyRow keyRows[] = {
    {"Left", "ab", {0, 1}, CaretKey::left, {0, 0}},
    {"Left to the line before", "ab\ncd", {1, 0}, CaretKey::left, {0, 2}},
    {"Left at the start", "ab\ncd", {0, 0}, CaretKey::left, {0, 0}},
    {"Right", "ab", {0, 1}, CaretKey::right, {0, 2}},
    {"Right to the line behind", "ab\ncd", {0, 2}, CaretKey::right, {1, 0}},
    {"Right at the end", "ab\ncd", {1, 2}, CaretKey::right, {1, 2}},
    {"Right over a tab", "\tx", {0, 0}, CaretKey::right, {0, 1}},
    {"Home", "abc", {0, 2}, CaretKey::home, {0, 0}},
    {"Home at the start", "abc", {0, 0}, CaretKey::home, {0, 0}},
    {"Home goes in front of blanks", "  abc", {0, 4}, CaretKey::home, {0, 0}},
    {"End", "abc\nd", {0, 1}, CaretKey::end, {0, 3}},
    {"End at the end", "abc\nd", {0, 3}, CaretKey::end, {0, 3}},
    {"Up", "abc\ndef", {1, 2}, CaretKey::up, {0, 2}},
    {"Up on the first line", "abc\ndef", {0, 2}, CaretKey::up, {0, 2}},
    {"Up to a shorter line", "a\ndef", {1, 3}, CaretKey::up, {0, 1}},
    {"Up into a tab, nearer to its start", "\tx\nabc", {1, 1}, CaretKey::up, {0, 0}},
    {"Up into a tab, in its middle", "\tx\nabc", {1, 2}, CaretKey::up, {0, 1}},
    {"Up into a tab, nearer to its end", "\tx\nabc", {1, 3}, CaretKey::up, {0, 1}},
    {"Up from behind a tab", "abcdef\n\tx", {1, 1}, CaretKey::up, {0, 4}},
    {"Down", "abc\ndef", {0, 2}, CaretKey::down, {1, 2}},
    {"Down on the last line", "abc\ndef", {1, 2}, CaretKey::down, {1, 2}},
    {"Down to a shorter line", "abc\nd", {0, 3}, CaretKey::down, {1, 1}},
    {"Page Up on the first line", "a\nb\nc", {0, 1}, CaretKey::pageUp, {0, 1}},
    {"Page Up to the top row", "a\nb\nc", {2, 1}, CaretKey::pageUp, {0, 1}},
    {"Page Down on the last line", "a\nb\nc", {2, 1}, CaretKey::pageDown, {2, 1}},
    {"Page Down to the bottom row", "a\nb\nc\nd\ne", {0, 1}, CaretKey::pageDown, {2, 1}},
    {"Page Down in a short text", "a\nb", {0, 1}, CaretKey::pageDown, {1, 1}},
};

TEST(MoveCaret, GoesWhereTheKeySays) {
    for (const auto& [name, text, caret, key, target] : keyRows) {
        SCOPED_TRACE(name);
        EditorModel model = ModelWith(text, caret);
        const EditOutcome outcome = MoveCaret(model, key, false, fromTop);
        EXPECT_EQ(model.Caret(), target);
        EXPECT_EQ(model.selection, Range(target, target));
        EXPECT_EQ(outcome.caretMoved, caret != target);
        EXPECT_FALSE(outcome.textChanged);
        EXPECT_EQ(outcome.area, RepaintArea{});
        EXPECT_TRUE(outcome.rows.IsEmpty());
    }
}

TEST(MoveCaret, ExtendsTheSelection) {
    for (const auto& [name, text, caret, key, target] : keyRows) {
        SCOPED_TRACE(name);
        EditorModel model = ModelWith(text, caret);
        const EditOutcome outcome = MoveCaret(model, key, true, fromTop);
        EXPECT_EQ(model.Caret(), target);
        EXPECT_EQ(model.selection, Range(caret, target));
        EXPECT_EQ(outcome.caretMoved, caret != target);
        EXPECT_EQ(outcome.rows, caret == target ? RowSpan{} : RowsBetween(caret.line, target.line));
    }
}

// Every key starts out from the selection's end, wherever its other end is.
TEST(MoveCaret, CollapsesTheSelectionOnTheNewCaret) {
    for (const auto& [name, text, caret, key, target] : keyRows) {
        if (caret == target || caret == TextPosition{0, 0}) continue;
        SCOPED_TRACE(name);
        EditorModel model = ModelWith(text, {0, 0}, caret);
        const EditOutcome outcome = MoveCaret(model, key, false, fromTop);
        EXPECT_EQ(model.Caret(), target);
        EXPECT_EQ(model.selection, Range(target, target));
        EXPECT_EQ(outcome.rows, (RowSpan{0, caret.line}));
    }
}

TEST(MoveCaret, ChangesNothingAtAllWhereTheKeyLeadsNowhere) {
    for (const auto& [name, text, caret, key, target] : keyRows) {
        if (caret != target) continue;
        for (const bool extend : {false, true}) {
            SCOPED_TRACE(std::string(name) + (extend ? ", extending" : ""));
            EditorModel model = ModelWith(text, {0, 1}, caret);
            model.caretCell = 9;
            const SelRange selection = model.selection;
            EXPECT_EQ(MoveCaret(model, key, extend, fromTop), EditOutcome{});
            EXPECT_EQ(model.selection, selection);
            EXPECT_EQ(model.caretCell, 9);
        }
    }
}

struct PageRow {
    const char* name;
    std::int32_t caretLine;
    VisibleRows rows;
    CaretKey key;
    std::int32_t line;
};

TEST(MoveCaret, PagesByTheRowsThatShow) {
    const PageRow rows[] = {
        {"up to the top row", 14, {10, 8}, CaretKey::pageUp, 10},
        {"up to the top row from below the view", 19, {10, 8}, CaretKey::pageUp, 10},
        {"up a page from the top row", 10, {10, 8}, CaretKey::pageUp, 2},
        {"up a page from above the view", 9, {10, 8}, CaretKey::pageUp, 1},
        {"up no further than the first line", 5, {5, 8}, CaretKey::pageUp, 0},
        {"down to the bottom row", 10, {10, 8}, CaretKey::pageDown, 17},
        {"down to the bottom row from above the view", 3, {10, 8}, CaretKey::pageDown, 17},
        {"down from the row above it", 16, {10, 8}, CaretKey::pageDown, 17},
        {"down a page from the bottom row", 17, {10, 8}, CaretKey::pageDown, 25},
        {"down a page from below the view", 20, {10, 8}, CaretKey::pageDown, 28},
        {"down no further than the last line", 25, {18, 8}, CaretKey::pageDown, 29},
        {"down to the last line where the view reaches beyond it",
         26,
         {25, 8},
         CaretKey::pageDown,
         29},
    };
    const std::string text = "xy" + [] {
        std::string lines;
        for (int line = 1; line < 30; ++line) lines += "\nxy";
        return lines;
    }();
    for (const auto& [name, caretLine, visible, key, line] : rows) {
        SCOPED_TRACE(name);
        EditorModel model = ModelWith(text, {caretLine, 1});
        MoveCaret(model, key, false, visible);
        EXPECT_EQ(model.Caret(), (TextPosition{line, 1}));
    }
}

TEST(MoveCaret, ComesBackToTheColumnBehindShortLines) {
    EditorModel model = ModelWith("abcdef\na\n\nabcdef", {0, 5});
    MoveCaret(model, CaretKey::down, false, fromTop);
    EXPECT_EQ(model.Caret(), (TextPosition{1, 1}));
    EXPECT_EQ(model.caretCell, 5);
    MoveCaret(model, CaretKey::down, false, fromTop);
    EXPECT_EQ(model.Caret(), (TextPosition{2, 0}));
    MoveCaret(model, CaretKey::down, false, fromTop);
    EXPECT_EQ(model.Caret(), (TextPosition{3, 5}));
    MoveCaret(model, CaretKey::pageUp, false, fromTop);
    EXPECT_EQ(model.Caret(), (TextPosition{0, 5}));
}

TEST(MoveCaret, KeepsTheGoalCellWhereUpExtends) {
    EditorModel model = ModelWith("ab\nabcdef", {1, 6});
    MoveCaret(model, CaretKey::up, true, fromTop);
    EXPECT_EQ(model.selection, Range({1, 6}, {0, 2}));
    EXPECT_EQ(model.caretCell, 6);
    EXPECT_EQ(model.PaintedCell(), 2);
    MoveCaret(model, CaretKey::down, true, fromTop);
    EXPECT_FALSE(model.HasSelection());
    EXPECT_EQ(model.Caret(), (TextPosition{1, 6}));
}

TEST(MoveCaret, FindsTheGoalCellAnewByTheOtherKeys) {
    struct Row {
        CaretKey key;
        std::int32_t cell;
    };
    for (const auto& [key, cell] :
         {Row{CaretKey::left, 1}, {CaretKey::right, 5}, {CaretKey::home, 0}, {CaretKey::end, 5}}) {
        EditorModel model = ModelWith("ab\tx\nabcd", {0, 2});
        model.caretCell = 30;
        if (key != CaretKey::left) MoveCaret(model, CaretKey::right, false, fromTop);
        MoveCaret(model, key, false, fromTop);
        EXPECT_EQ(model.caretCell, cell);
    }
}

TEST(CaretKeyRows, KeepTheGoalForUpAndDownAlone) {
    EXPECT_EQ(caretKeyRows.size(), 8u);
    for (std::size_t index = 0; index < caretKeyRows.size(); ++index) {
        const CaretKeyRow& row = caretKeyRows[index];
        EXPECT_EQ(static_cast<std::size_t>(row.key), index);
        EXPECT_EQ(row.keepsGoal, row.key == CaretKey::up || row.key == CaretKey::down ||
                                     row.key == CaretKey::pageUp || row.key == CaretKey::pageDown);
    }
}

// Mouse. Cells are 8 x 16 pixels.

struct HitRow {
    const char* name;
    std::int32_t x, y;
    TextPosition position;
};

TEST(HitTest, TakesThePositionNearestToThePoint) {
    TextLines text;
    text.SetText("abcdef\n\tx\n\nlast");
    const CellGrid grid = {.cellWidth = 8, .lineHeight = 16, .topLine = 0, .leftCell = 0};
    const HitRow rows[] = {
        {"the corner", 0, 0, {0, 0}},
        {"just left of a middle", 3, 0, {0, 0}},
        {"a middle goes behind", 4, 0, {0, 1}},
        {"just right of a middle", 5, 0, {0, 1}},
        {"between two characters", 8, 0, {0, 1}},
        {"left of the next middle", 11, 0, {0, 1}},
        {"the next middle", 12, 0, {0, 2}},
        {"the last middle", 44, 0, {0, 6}},
        {"beyond the line", 400, 0, {0, 6}},
        {"left of the view", -20, 0, {0, 0}},
        {"the last pixel of a row", 0, 15, {0, 0}},
        {"the next row", 0, 16, {1, 0}},
        {"a tab, left of its middle", 15, 16, {1, 0}},
        {"a tab, its middle", 16, 16, {1, 1}},
        {"a tab, right of its middle", 31, 16, {1, 1}},
        {"behind a tab", 35, 16, {1, 1}},
        {"behind a tab, the middle", 36, 16, {1, 2}},
        {"an empty row", 100, 32, {2, 0}},
        {"the last row", 8, 48, {3, 1}},
        {"below the text", 8, 64, {3, 1}},
        {"far below the text", 8, 6400, {3, 1}},
        {"above the view", 8, -1, {0, 1}},
    };
    for (const auto& [name, x, y, position] : rows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(HitTest(text, grid, x, y), position);
    }
}

TEST(HitTest, CountsFromTheScrolledPosition) {
    TextLines text;
    text.SetText("a\nb\nabcdefgh\nd");
    const CellGrid grid = {.cellWidth = 8, .lineHeight = 16, .topLine = 2, .leftCell = 3};
    EXPECT_EQ(HitTest(text, grid, 0, 0), (TextPosition{2, 3}));
    EXPECT_EQ(HitTest(text, grid, 9, 5), (TextPosition{2, 4}));
    EXPECT_EQ(HitTest(text, grid, -8, 5), (TextPosition{2, 2}));
    EXPECT_EQ(HitTest(text, grid, -80, 5), (TextPosition{2, 0}));
    EXPECT_EQ(HitTest(text, grid, 0, -1), (TextPosition{1, 1}));
    EXPECT_EQ(HitTest(text, grid, 0, -16), (TextPosition{1, 1}));
    EXPECT_EQ(HitTest(text, grid, 0, -17), (TextPosition{0, 1}));
    EXPECT_EQ(HitTest(text, grid, 0, -170), (TextPosition{0, 1}));
}

TEST(CellGrid, KnowsThePixelsOfItsCells) {
    const CellGrid grid = {.cellWidth = 8, .lineHeight = 16, .topLine = 2, .leftCell = 3};
    const std::int32_t farthest = CellGrid::farthestPixel;
    struct Row {
        std::int32_t place, left, top;
    };
    for (const auto& [place, left, top] : {Row{0, -24, -32},
                                           {2, -8, 0},
                                           {3, 0, 16},
                                           {10, 56, 128},
                                           {33'554'434, farthest - 8, farthest},
                                           {280'000'000, farthest, farthest},
                                           {2'147'483'644, farthest, farthest}}) {
        SCOPED_TRACE(place);
        EXPECT_EQ(grid.LeftOf(place), left);
        EXPECT_EQ(grid.TopOf(place), top);
    }
    const CellGrid farRight = {
        .cellWidth = 8, .lineHeight = 16, .topLine = 2'000'000'000, .leftCell = 2'000'000'000};
    EXPECT_EQ(farRight.LeftOf(0), -farthest);
    EXPECT_EQ(farRight.TopOf(0), -farthest);
}

struct DoubleRow {
    const char* name;
    std::string_view text;
    std::int32_t caret;
    std::int32_t from, to;
};

TEST(SelectAtCaret, SelectsTheWordWithItsPoints) {
    const DoubleRow rows[] = {
        {"a word, at its start", "a sum(b)", 2, 2, 5},
        {"a word, within", "a sum(b)", 4, 2, 5},
        {"behind a word, on a symbol", "a sum(b)", 5, 5, 6},
        {"a number with its point", "1.5+2", 2, 0, 3},
        {"before a point", "1.5+2", 0, 0, 3},
        {"points between words", "a.b.c", 2, 0, 5},
        {"on a point itself", "1.5", 1, 1, 2},
        {"on one of many symbols", "a**b", 1, 1, 2},
        {"on a quote", "a\"b", 1, 1, 2},
        {"on a high byte",
         "a\xE4"
         "b",
         1, 1, 2},
        {"on a blank", "ab cd", 2, 2, 2},
        {"on a tab", "ab\tcd", 2, 2, 2},
        {"at the line's end", "ab", 2, 2, 2},
        {"in an empty line", "", 0, 0, 0},
        {"digits and letters", " 0hFF_1 ", 3, 1, 7},
    };
    for (const auto& [name, text, caret, from, to] : rows) {
        SCOPED_TRACE(name);
        EditorModel model = ModelWith(text, {0, caret});
        const EditOutcome outcome = SelectAtCaret(model);
        EXPECT_EQ(model.selection, Range({0, from}, {0, to}));
        EXPECT_EQ(model.Caret(), (TextPosition{0, to}));
        EXPECT_EQ(outcome.rows, from == to ? RowSpan{} : (RowSpan{0, 0}));
    }
}

TEST(SelectAtCaret, CollapsesAnEarlierSelection) {
    EditorModel model = ModelWith("ab\nc d", {0, 0}, {1, 1});
    const EditOutcome outcome = SelectAtCaret(model);
    EXPECT_FALSE(model.HasSelection());
    EXPECT_EQ(outcome.rows, (RowSpan{0, 1}));
}

// Words.

struct WordRow {
    const char* name;
    std::string_view text;
    TextPosition position;
    std::optional<WordSpan> word;
};

TEST(WordAt, NeedsACharacterOfTheWordAheadOfThePosition) {
    const WordRow rows[] = {
        {"within", "a sum(b)", {0, 4}, WordSpan{0, 2, 5}},
        {"behind", "a sum(b)", {0, 5}, WordSpan{0, 2, 5}},
        {"directly in front", "a sum(b)", {0, 2}, std::nullopt},
        {"at the start of the line", "sum", {0, 0}, std::nullopt},
        {"behind the first character", "sum", {0, 1}, WordSpan{0, 0, 3}},
        {"at the end of the line", "sum", {0, 3}, WordSpan{0, 0, 3}},
        {"between symbols", "a+(b", {0, 2}, std::nullopt},
        {"a point is no part of it", "1.25", {0, 3}, WordSpan{0, 2, 4}},
        {"behind a point", "1.25", {0, 2}, std::nullopt},
        {"digits too", "x12", {0, 3}, WordSpan{0, 0, 3}},
        {"an empty line", "", {0, 0}, std::nullopt},
        {"another line", "a\nbc", {1, 1}, WordSpan{1, 0, 2}},
        {"no line above", "ab", {-1, 1}, std::nullopt},
        {"no line below", "ab", {1, 1}, std::nullopt},
        {"behind the end", "ab", {0, 3}, std::nullopt},
    };
    TextLines text;
    for (const auto& [name, sheet, position, word] : rows) {
        SCOPED_TRACE(name);
        text.SetText(sheet);
        EXPECT_EQ(WordAt(text, position), word);
    }
}

struct HelpRow {
    const char* name;
    std::string_view text;
    TextPosition from, caret;
    std::optional<std::string_view> word;
};

TEST(HelpWord, IsTheSelectionOrTheWordAtTheCaret) {
    const HelpRow rows[] = {
        {"at the caret", "a+sin(b)", {0, 4}, {0, 4}, "sin"},
        {"no word", "a+ (b)", {0, 3}, {0, 3}, std::nullopt},
        {"selected", "a+sin(b)", {0, 2}, {0, 5}, "sin"},
        {"selected backward", "a+sin(b)", {0, 5}, {0, 2}, "sin"},
        {"a part of a word", "arcsin", {0, 3}, {0, 6}, "sin"},
        {"whatever is selected", "a+sin(b)", {0, 1}, {0, 6}, "+sin("},
        {"more lines than one", "sin\ncos", {0, 0}, {1, 3}, std::nullopt},
    };
    for (const auto& [name, text, from, caret, word] : rows) {
        SCOPED_TRACE(name);
        const EditorModel model = ModelWith(text, from, caret);
        EXPECT_EQ(HelpWord(model), word);
    }
}

}  // namespace
}  // namespace orvane
