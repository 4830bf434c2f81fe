#include "editor/repaint_rule.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "editor/line_scanner.h"
#include "editor/view_geometry.h"

namespace orvane {

void PrintTo(const RepaintArea& area, std::ostream* out) {
    *out << "kind " << static_cast<int>(area.kind) << ", line " << area.line << ", cell "
         << area.cell;
}

namespace {

// Choosing the area.

struct EffectRow {
    const char* edit;
    EditEffect effect;
    std::string_view before;
    std::string_view now;
    RepaintArea area;
};

void ExpectAreas(const std::vector<EffectRow>& rows) {
    for (const auto& [edit, effect, before, now, area] : rows) {
        SCOPED_TRACE(edit);
        EXPECT_EQ(ChooseRepaint(effect, before, now), area);
    }
}

constexpr RepaintArea wholeWindow = {RepaintKind::wholeWindow, 0, 0};

TEST(ChooseRepaint, TakesTheWholeWindowForLinesAndSelections) {
    ExpectAreas({
        {"Enter", {.line = 3, .linesChanged = true}, "ab", "a", wholeWindow},
        {"Backspace joins", {.line = 3, .linesChanged = true}, "b", "ab", wholeWindow},
        {"Delete on a selection", {.line = 3, .selectionReplaced = true}, "ab", "a", wholeWindow},
        {"Enter on a selection",
         {.line = 3, .linesChanged = true, .selectionReplaced = true},
         "ab",
         "a",
         wholeWindow},
        {"a character on a selection",
         {.line = 3, .selectionReplaced = true, .typed = 'x'},
         "ab",
         "x",
         wholeWindow},
        {"':' on a selection",
         {.line = 3, .selectionReplaced = true, .typed = ':'},
         "ab",
         ":",
         wholeWindow},
        {"':' where lines changed", {.linesChanged = true, .typed = ':'}, "ab", ":", wholeWindow},
    });
}

TEST(ChooseRepaint, TakesTheWholeRowForATypedColonOnly) {
    ExpectAreas({
        {"typed", {.line = 5, .typed = ':'}, "hex", "hex:", {RepaintKind::wholeRow, 5, 0}},
        {"typed elsewhere", {.line = 5, .typed = ':'}, "1+", "1:+", {RepaintKind::wholeRow, 5, 0}},
        {"another one", {.line = 5, .typed = ';'}, "hex", "hex;", {RepaintKind::restOfRow, 5, 3}},
        {"pasted", EditEffect::OfPaste(5, ":"), "hex", "hex:", {RepaintKind::restOfRow, 5, 3}},
        {"undone",
         EditEffect::OfHistoryStep(5, 0, 0),
         "hex:",
         "hex",
         {RepaintKind::restOfRow, 5, 3}},
        {"deleted", {.line = 5}, "hex:", "hex", {RepaintKind::restOfRow, 5, 3}},
    });
}

TEST(ChooseRepaint, TakesTheRestOfTheRowOtherwise) {
    ExpectAreas({
        {"typed at the start",
         {.line = 2, .typed = '+'},
         "1",
         "+1",
         {RepaintKind::restOfRow, 2, 0}},
        {"typed in a word",
         {.line = 2, .typed = 'n'},
         "1+si",
         "1+sin",
         {RepaintKind::restOfRow, 2, 2}},
        {"tab", {.line = 2, .typed = '\t'}, "1+(", "1+\t(", {RepaintKind::restOfRow, 2, 2}},
        {"Backspace", {.line = 2}, "1+(2", "1+(", {RepaintKind::restOfRow, 2, 2}},
        {"nothing differs", {.line = 2}, "a+", "a+", {RepaintKind::restOfRow, 2, 2}},
    });
}

TEST(ChooseRepaint, JudgesAPasteByThePastedTextAlone) {
    ExpectAreas({
        {"in a row", EditEffect::OfPaste(4, "pi"), "1+", "1+pi", {RepaintKind::restOfRow, 4, 0}},
        {"with a line break", EditEffect::OfPaste(4, "a\nb"), "", "a", wholeWindow},
        {"a line break alone", EditEffect::OfPaste(4, "\n"), "ab", "a", wholeWindow},
        // Three lines became one, and still only the row is painted.
        {"over several lines",
         EditEffect::OfPaste(4, "x"),
         "1+b",
         "1+x",
         {RepaintKind::restOfRow, 4, 0}},
    });
}

TEST(ChooseRepaint, TakesTheWholeWindowForUndoAndRedoWithLineBreaks) {
    ExpectAreas({
        {"none", EditEffect::OfHistoryStep(6, 0, 0), "1", "12", {RepaintKind::restOfRow, 6, 0}},
        {"taken out", EditEffect::OfHistoryStep(6, 1, 0), "1", "12", wholeWindow},
        {"put in", EditEffect::OfHistoryStep(6, 0, 2), "1", "12", wholeWindow},
        {"as many put in as taken out", EditEffect::OfHistoryStep(6, 3, 3), "1", "12", wholeWindow},
    });
}

TEST(EditEffect, TellsOfAPasteAndOfAHistoryStepNoMoreThanTheirLineBreaks) {
    EXPECT_EQ(EditEffect::OfPaste(7, ""), (EditEffect{.line = 7}));
    EXPECT_EQ(EditEffect::OfPaste(7, ":"), (EditEffect{.line = 7}));
    EXPECT_EQ(EditEffect::OfPaste(7, "a\n"), (EditEffect{.line = 7, .linesChanged = true}));
    EXPECT_EQ(EditEffect::OfHistoryStep(7, 0, 0), (EditEffect{.line = 7}));
    EXPECT_EQ(EditEffect::OfHistoryStep(7, 0, 1), (EditEffect{.line = 7, .linesChanged = true}));
}

// The first changed cell.

struct CellRow {
    std::string_view before;
    std::string_view now;
    std::int32_t cell;
};

TEST(FirstChangedCell, IsTheFirstDifferenceWhereNoWordStands) {
    constexpr CellRow rows[] = {
        {"", "", 0},         {"", "+", 0},
        {"abc", "abc", 3},   {"abc+", "abc", 3},
        {"abc", "abc+", 3},  {"a+b", "a-b", 1},
        {"\t", "\t+", 4},    {"a\t", "a\t(", 4},
        {"\t\t", "\t", 4},   {"a \xE9", "a \xE8", 2},
        {"ab(", "ab\t(", 2},
    };
    for (const auto& [before, now, cell] : rows) {
        SCOPED_TRACE(before);
        SCOPED_TRACE(now);
        EXPECT_EQ(FirstChangedCell(before, now), cell);
    }
}

TEST(FirstChangedCell, StepsBackToTheStartOfTheWord) {
    constexpr CellRow rows[] = {
        {"", "a", 0},
        {"b", "ab", 0},
        {"si", "sin", 0},
        {"1+si", "1+sin", 2},
        {"1+sinx", "1+sin", 2},
        {"1+sin_", "1+sin+", 2},
        {"1+sin+", "1+sin9", 2},
        {"pi2", "pi", 0},
        {"\xE9pi", "\xE9pix", 1},
        // The character in front is stepped over whatever it is, and the word in front of it too.
        {"+", "+a", 0},
        {"a+", "a+b", 0},
        {"xy (", "xy (z", 3},
        {"(xy ", "(xy z", 1},
        {"a b", "a ", 0},
        {"((", "((a", 1},
        // A word character behind the change counts as the one that is there now.
        {"a+b", "a+(b", 0},
        {"((b", "(((b", 1},
    };
    for (const auto& [before, now, cell] : rows) {
        SCOPED_TRACE(before);
        SCOPED_TRACE(now);
        EXPECT_EQ(FirstChangedCell(before, now), cell);
    }
}

TEST(FirstChangedCell, CountsFourCellsForATabWhateverItCovers) {
    constexpr CellRow rows[] = {
        {"\t", "\ta", 0},
        {"\t\t", "\t\ta", 4},
        {"(((\t", "(((\ta", 0},
        {"(\t", "(\ta", 0},
        {"((((\t", "((((\ta", 4},
        // The word in front of the tab is stepped over as well, which ends left of the line.
        {"a\t", "a\tb", -1},
        {"abc\t", "abc\td", -3},
        {"\tabc\t", "\tabc\td", 1},
    };
    for (const auto& [before, now, cell] : rows) {
        SCOPED_TRACE(before);
        SCOPED_TRACE(now);
        EXPECT_EQ(FirstChangedCell(before, now), cell);
    }
}

// A plain restatement, going cell by cell.

bool IsWordPlainly(const std::string& line, std::size_t col) {
    constexpr std::string_view wordChars =
        "_0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    return col < line.size() && wordChars.find(line[col]) != std::string_view::npos;
}

std::size_t DifferencePlainly(const std::string& before, const std::string& now) {
    std::size_t col = std::min(before.size(), now.size());
    while (before.substr(0, col) != now.substr(0, col)) --col;
    return col;
}

std::int32_t FirstChangedCellPlainly(const std::string& before, const std::string& now) {
    const std::size_t col = DifferencePlainly(before, now);
    std::int32_t cell = 0;
    for (std::size_t i = 0; i < col; ++i) {
        ++cell;
        while (now[i] == '\t' && cell % 4 != 0) ++cell;
    }
    if (!IsWordPlainly(now, col) && !IsWordPlainly(before, col)) return cell;
    for (std::size_t i = col; i > 0; --i) {
        if (i < col && !IsWordPlainly(now, i - 1)) break;
        cell -= now[i - 1] == '\t' ? 4 : 1;
    }
    return cell;
}

std::string RandomLine(std::mt19937& random) {
    static const std::vector<std::string> parts = {
        "\"", "/", "/", "//", "\t", " ", ":", ":", "hex",  "hex", "text", "pi", "e",   "sin",
        "_",  ".", "1", "0h", "a",  "=", "+", "(", "\xE9", "!",   "q",    ";",  "hex:"};
    std::string line;
    for (std::size_t count = random() % 8; count > 0; --count) {
        line += parts[random() % parts.size()];
    }
    return line;
}

// One typed or deleted character.
struct SingleEdit {
    std::string before;
    std::string now;
    char typed = 0;
};

SingleEdit RandomEdit(std::mt19937& random) {
    constexpr std::string_view characters = "\"//\t ::hexpisnq_.019=+(!\xE9;";
    SingleEdit edit;
    edit.before = edit.now = RandomLine(random);
    const std::size_t col = random() % (edit.before.size() + 1);
    if (random() % 2 == 0 && col < edit.before.size()) {
        edit.now.erase(col, 1);
    } else {
        edit.typed = characters[random() % characters.size()];
        edit.now.insert(col, 1, edit.typed);
    }
    return edit;
}

TEST(FirstChangedCell, AgreesWithAPlainCount) {
    std::mt19937 random(425);
    for (int round = 0; round < 100000; ++round) {
        const SingleEdit edit = RandomEdit(random);
        ASSERT_EQ(FirstChangedCell(edit.before, edit.now),
                  FirstChangedCellPlainly(edit.before, edit.now))
            << testing::PrintToString(edit.before) << testing::PrintToString(edit.now);
        const std::string other = RandomLine(random);
        ASSERT_EQ(FirstChangedCell(edit.before, other), FirstChangedCellPlainly(edit.before, other))
            << testing::PrintToString(edit.before) << testing::PrintToString(other);
    }
}

// What is on the screen after a repaint.

// The class of each column; -1 for what belongs to no piece.
std::vector<int> ClassesOf(const std::string& line) {
    std::vector<int> classes(line.size(), -1);
    for (const ColouredPiece& piece : ScanLine(line, LanguageWords())) {
        std::fill_n(classes.begin() + piece.start, piece.length, static_cast<int>(piece.textClass));
    }
    return classes;
}

// The columns that stand left of the repainted area in a colour that is no longer theirs. A
// column that an edit moved would be one, too.
std::vector<std::size_t> StaleColumns(const SingleEdit& edit) {
    const RepaintArea area = ChooseRepaint({.line = 0, .typed = edit.typed}, edit.before, edit.now);
    const std::vector<int> before = ClassesOf(edit.before);
    const std::vector<int> now = ClassesOf(edit.now);
    std::vector<std::size_t> stale;
    for (std::size_t col = 0; col < now.size(); ++col) {
        const std::int32_t column = static_cast<std::int32_t>(col);
        const std::int32_t cell = VisualCol(edit.now, column);
        if (cell >= area.cell) break;
        const bool stays = col < before.size() && edit.before[col] == edit.now[col] &&
                           VisualCol(edit.before, column) == cell && before[col] == now[col];
        if (!stays) stale.push_back(col);
    }
    return stale;
}

TEST(ChooseRepaint, LeavesOldColoursInFrontOfSlashesAndBehindHeadersAlone) {
    struct Row {
        const char* what;
        SingleEdit edit;
        std::vector<std::size_t> stale;
    };
    const Row rows[] = {
        {"a second slash makes a comment", {"1 /", "1 //", '/'}, {2}},
        {"the second slash of a comment goes", {"1 // b", "1 / b"}, {2}},
        {"a header loses its colon", {"hex:", "hex"}, {0, 1, 2}},
        {"something comes ahead of the colon", {"hex:", "hex+:", '+'}, {0, 1, 2}},
        {"something goes that stood ahead of the colon", {"hex+:", "hex:"}, {0, 1, 2}},
        {"a word comes two blanks behind", {"hex  :", "hex  a:", 'a'}, {0, 1, 2}},
        // These are covered.
        {"a colon is typed", {"hex", "hex:", ':'}, {}},
        {"a word comes one blank behind", {"hex :", "hex a:", 'a'}, {}},
        {"a slash in front of a word", {"1//b", "1/b"}, {}},
        {"a name becomes a function", {"1+si", "1+sin", 'n'}, {}},
        {"a header word becomes longer", {"hex:", "hexa:", 'a'}, {}},
        {"a quote opens a string", {"pi+pi", "pi+\"pi", '"'}, {}},
    };
    for (const auto& [what, edit, stale] : rows) {
        SCOPED_TRACE(what);
        EXPECT_EQ(StaleColumns(edit), stale);
    }
}

// Whether the rule is known not to reach this column: a '/' right in front of a '/' that came or
// went, or a header word with nothing but blanks and tabs between it and the change.
bool IsOutOfReach(const SingleEdit& edit, std::size_t col) {
    const std::size_t changed = DifferencePlainly(edit.before, edit.now);
    if (edit.now[col] == '/') return col + 1 == changed;
    std::size_t end = col;
    while (IsWordPlainly(edit.now, end)) ++end;
    const std::vector<int> before = ClassesOf(edit.before);
    const std::vector<int> now = ClassesOf(edit.now);
    const bool isHeaderInOne = before[col] == static_cast<int>(TextClass::headerKeyword) ||
                               now[col] == static_cast<int>(TextClass::headerKeyword);
    return isHeaderInOne && end <= changed &&
           edit.now.substr(end, changed - end).find_first_not_of(" \t") == std::string::npos;
}

TEST(ChooseRepaint, LeavesEverythingElseOnTheLeftInItsOwnColour) {
    std::mt19937 random(426);
    for (int round = 0; round < 150000; ++round) {
        const SingleEdit edit = RandomEdit(random);
        for (const std::size_t col : StaleColumns(edit)) {
            ASSERT_TRUE(IsOutOfReach(edit, col))
                << testing::PrintToString(edit.before) << testing::PrintToString(edit.now) << col;
        }
    }
}

// The view.

TEST(ClipToView, LeavesOutRowsAboveTheViewAndStartsAtItsEdge) {
    struct Row {
        RepaintArea area;
        std::int32_t topLine;
        std::int32_t leftCell;
        RepaintArea shown;
    };
    constexpr RepaintArea nothing;
    constexpr Row rows[] = {
        {{RepaintKind::restOfRow, 5, 9}, 0, 0, {RepaintKind::restOfRow, 5, 9}},
        {{RepaintKind::restOfRow, 5, 9}, 5, 9, {RepaintKind::restOfRow, 5, 9}},
        {{RepaintKind::restOfRow, 5, 9}, 5, 10, {RepaintKind::restOfRow, 5, 10}},
        {{RepaintKind::restOfRow, 5, -3}, 5, 0, {RepaintKind::restOfRow, 5, 0}},
        {{RepaintKind::restOfRow, 5, 9}, 6, 0, nothing},
        {{RepaintKind::wholeRow, 5, 0}, 5, 7, {RepaintKind::wholeRow, 5, 0}},
        {{RepaintKind::wholeRow, 5, 0}, 6, 0, nothing},
        {wholeWindow, 6, 7, wholeWindow},
        {nothing, 6, 7, nothing},
    };
    for (const auto& [area, topLine, leftCell, shown] : rows) {
        SCOPED_TRACE(testing::PrintToString(area));
        EXPECT_EQ(ClipToView(area, topLine, leftCell), shown);
    }
}

}  // namespace
}  // namespace orvane
