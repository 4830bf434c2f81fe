#include "editor/undo_list.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

#include "tests/editor/stored_text.h"

namespace orvane {
namespace {

void ExpectRecord(const UndoRecord& record, TextPosition at, std::string_view removed,
                  std::string_view inserted) {
    EXPECT_EQ(record.line, at.line);
    EXPECT_EQ(record.col, at.col);
    EXPECT_EQ(record.removed, removed);
    EXPECT_EQ(record.inserted, inserted);
}

// Types a character as the view does: into the text and into the list.
void Type(TextLines& text, UndoList& list, TextPosition at, char ch) {
    ASSERT_TRUE(text.InsertChar(at.line, at.col, ch));
    list.AddInsertChar(at, ch);
}

// The character of the `number`th edit.
char Letter(int number) { return static_cast<char>('a' + number % 26); }

std::string Letters(int from, int to) {
    std::string letters;
    for (int number = from; number < to; ++number) letters += Letter(number);
    return letters;
}

TEST(UndoList, IsEmptyAtFirst) {
    TextLines text;
    UndoList list;
    EXPECT_EQ(list.current, -1);
    EXPECT_EQ(list.count, 0);
    EXPECT_EQ(list.capacity, 20);
    EXPECT_FALSE(list.CanUndo());
    EXPECT_FALSE(list.CanRedo());
    EXPECT_FALSE(list.Undo(text).done);
    EXPECT_FALSE(list.Redo(text).done);
    EXPECT_EQ(list.current, -1);
    EXPECT_EQ(StoredText(text), "");
}

TEST(UndoList, AddsAtAPositionInFiveWays) {
    UndoList list;
    list.AddDelete({1, 2}, "a\nb");
    list.AddDeleteChar({3, 4}, '\0');
    list.AddReplaceWithChar({5, 6}, "cd", '\n');
    list.AddReplace({7, 8}, "e", "f\ng");
    list.AddInsertChar({9, 10}, 'h');
    ASSERT_EQ(list.count, 5);
    EXPECT_EQ(list.current, 4);
    ExpectRecord(list.RecordAt(0), {1, 2}, "a\nb", "");
    ExpectRecord(list.RecordAt(1), {3, 4}, std::string(1, '\0'), "");
    ExpectRecord(list.RecordAt(2), {5, 6}, "cd", "\n");
    ExpectRecord(list.RecordAt(3), {7, 8}, "e", "f\ng");
    ExpectRecord(list.RecordAt(4), {9, 10}, "", "h");
}

SelRange Range(TextPosition start, TextPosition end) {
    SelRange range;
    range.SetRange(start.line, start.col, end.line, end.col);
    return range;
}

using Edit = std::function<void(TextLines&, UndoList&)>;

// Deletes a selection as each of the edits does that replace one; gives what it held.
std::string TakeOut(TextLines& text, TextPosition start, TextPosition end) {
    std::string selected = text.GetSelected(Range(start, end));
    EXPECT_TRUE(text.DeleteSelected(Range(start, end)));
    return selected;
}

void Paste(TextLines& text, UndoList& list, TextPosition at, std::string_view removed,
           std::string_view pasted) {
    TextPosition end;
    std::int32_t added = 0;
    EXPECT_TRUE(text.InsertText(at.line, at.col, pasted, end, added));
    list.AddReplace(at, removed, pasted);
}

TEST(UndoList, TakesEveryKindOfEditBackAndForth) {
    const std::string_view before = "abcd\nef\ngh";
    struct Row {
        const char* name;
        Edit edit;
        std::string_view after;
        TextPosition caretOfUndo, caretOfRedo;
        std::int32_t breaksRemoved, breaksAdded;  // of the undo; the redo does the reverse
    };
    const Row rows[] = {
        {"Backspace on a character",
         [](TextLines& text, UndoList& list) {
             list.AddDeleteChar({0, 1}, text.DeleteChar(0, 1));
         },
         "acd\nef\ngh",
         {0, 2},
         {0, 1},
         0,
         0},
        {"Backspace at the start of a line",
         [](TextLines& text, UndoList& list) {
             EXPECT_TRUE(text.JoinWithNext(0));
             list.AddDeleteChar({0, 4}, '\n');
         },
         "abcdef\ngh",
         {1, 0},
         {0, 4},
         0,
         1},
        {"Delete on a character",
         [](TextLines& text, UndoList& list) {
             list.AddDeleteChar({1, 0}, text.DeleteChar(1, 0));
         },
         "abcd\nf\ngh",
         {1, 1},
         {1, 0},
         0,
         0},
        {"Delete at the end of a line",
         [](TextLines& text, UndoList& list) {
             EXPECT_TRUE(text.JoinWithNext(1));
             list.AddDeleteChar({1, 2}, '\n');
         },
         "abcd\nefgh",
         {2, 0},
         {1, 2},
         0,
         1},
        {"Backspace or Delete on a selection, Cut, the menu's Delete",
         [](TextLines& text, UndoList& list) {
             list.AddDelete({0, 3}, TakeOut(text, {2, 1}, {0, 3}));
         },
         "abch",
         {2, 1},
         {0, 3},
         0,
         2},
        {"Typed character, no selection",
         [](TextLines& text, UndoList& list) {
             Type(text, list, {1, 2}, 'x');
         },
         "abcd\nefx\ngh",
         {1, 2},
         {1, 3},
         0,
         0},
        {"Typed character on a selection",
         [](TextLines& text, UndoList& list) {
             const std::string selected = TakeOut(text, {0, 2}, {1, 1});
             EXPECT_TRUE(text.InsertChar(0, 2, 'x'));
             list.AddReplaceWithChar({0, 2}, selected, 'x');
         },
         "abxf\ngh",
         {1, 1},
         {0, 3},
         0,
         1},
        {"Enter, no selection",
         [](TextLines& text, UndoList& list) {
             EXPECT_TRUE(text.SplitLine(0, 2));
             list.AddInsertChar({0, 2}, '\n');
         },
         "ab\ncd\nef\ngh",
         {0, 2},
         {1, 0},
         1,
         0},
        {"Enter on a selection",
         [](TextLines& text, UndoList& list) {
             const std::string selected = TakeOut(text, {0, 1}, {1, 1});
             EXPECT_TRUE(text.SplitLine(0, 1));
             list.AddReplaceWithChar({0, 1}, selected, '\n');
         },
         "a\nf\ngh",
         {1, 1},
         {1, 0},
         1,
         1},
        {"Paste without a selection",
         [](TextLines& text, UndoList& list) {
             Paste(text, list, {0, 2}, "", "x\ny\nz");
         },
         "abx\ny\nzcd\nef\ngh",
         {0, 2},
         {2, 1},
         2,
         0},
        {"Paste on a selection",
         [](TextLines& text, UndoList& list) {
             const std::string selected = TakeOut(text, {1, 0}, {2, 2});
             Paste(text, list, {1, 0}, selected, "x\ny\nz\n");
         },
         "abcd\nx\ny\nz\n",
         {2, 2},
         {4, 0},
         3,
         1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TextLines text;
        UndoList list;
        ASSERT_TRUE(text.SetText(before));
        row.edit(text, list);
        EXPECT_EQ(StoredText(text), row.after);
        for (int round = 0; round < 2; ++round) {
            const UndoOutcome undone = list.Undo(text);
            EXPECT_TRUE(undone.done);
            EXPECT_EQ(StoredText(text), before);
            EXPECT_EQ(undone.caret, row.caretOfUndo);
            EXPECT_EQ(undone.linesRemoved, row.breaksRemoved);
            EXPECT_EQ(undone.linesAdded, row.breaksAdded);
            EXPECT_FALSE(list.CanUndo());
            EXPECT_TRUE(list.CanRedo());

            const UndoOutcome redone = list.Redo(text);
            EXPECT_TRUE(redone.done);
            EXPECT_EQ(StoredText(text), row.after);
            EXPECT_EQ(redone.caret, row.caretOfRedo);
            EXPECT_EQ(redone.linesRemoved, row.breaksAdded);
            EXPECT_EQ(redone.linesAdded, row.breaksRemoved);
            EXPECT_TRUE(list.CanUndo());
            EXPECT_FALSE(list.CanRedo());
        }
    }
}

TEST(UndoList, MergesNothing) {
    TextLines text;
    UndoList list;
    for (int col = 0; col < 3; ++col) Type(text, list, {0, col}, 'x');
    EXPECT_EQ(list.count, 3);
    EXPECT_TRUE(list.Undo(text).done);
    EXPECT_EQ(StoredText(text), "xx");
}

TEST(UndoList, ANewEditEndsAllRedo) {
    TextLines text;
    UndoList list;
    for (int col = 0; col < 5; ++col) Type(text, list, {0, col}, Letter(col));
    for (int step = 0; step < 3; ++step) EXPECT_TRUE(list.Undo(text).done);
    EXPECT_EQ(StoredText(text), "ab");
    EXPECT_EQ(list.current, 1);
    EXPECT_EQ(list.count, 5);

    Type(text, list, {0, 2}, 'z');
    EXPECT_EQ(list.current, 2);
    EXPECT_EQ(list.count, 3);
    EXPECT_FALSE(list.CanRedo());
    EXPECT_FALSE(list.Redo(text).done);
    EXPECT_EQ(StoredText(text), "abz");

    while (list.CanUndo()) ASSERT_TRUE(list.Undo(text).done);
    EXPECT_EQ(StoredText(text), "");
    while (list.CanRedo()) ASSERT_TRUE(list.Redo(text).done);
    EXPECT_EQ(StoredText(text), "abz");
}

TEST(UndoList, GrowsByTwentyWhenItIsFull) {
    UndoList list;
    for (int added = 1; added <= 199; ++added) {
        list.AddInsertChar({0, 0}, 'x');
        EXPECT_EQ(list.count, added);
        EXPECT_EQ(list.current, added - 1);
        EXPECT_EQ(list.capacity, (added + 19) / 20 * 20) << added;
    }
    for (int added = 0; added < 1000; ++added) list.AddInsertChar({0, 0}, 'x');
    EXPECT_EQ(list.capacity, 200);
}

TEST(UndoList, RecordsThatWereUndoneDoNotMakeItGrow) {
    TextLines text;
    UndoList list;
    for (int number = 0; number < 20; ++number) Type(text, list, {0, number}, 'x');
    EXPECT_TRUE(list.Undo(text).done);
    Type(text, list, {0, 19}, 'y');
    EXPECT_EQ(list.count, 20);
    EXPECT_EQ(list.capacity, 20);
    Type(text, list, {0, 20}, 'z');
    EXPECT_EQ(list.capacity, 40);
}

TEST(UndoList, TheTwoHundredthRecordDropsTheOldestFifty) {
    TextLines text;
    UndoList list;
    for (int number = 0; number < 199; ++number) Type(text, list, {0, number}, Letter(number));
    EXPECT_EQ(list.count, 199);
    EXPECT_EQ(list.current, 198);

    Type(text, list, {0, 199}, Letter(199));
    EXPECT_EQ(list.count, 150);
    EXPECT_EQ(list.current, 149);
    EXPECT_TRUE(list.CanUndo());
    EXPECT_FALSE(list.CanRedo());
    ExpectRecord(list.RecordAt(0), {0, 50}, "", Letters(50, 51));
    ExpectRecord(list.RecordAt(149), {0, 199}, "", Letters(199, 200));

    int undone = 0;
    for (; list.CanUndo(); ++undone) ASSERT_TRUE(list.Undo(text).done);
    EXPECT_EQ(undone, 150);
    EXPECT_EQ(StoredText(text), Letters(0, 50));
    EXPECT_FALSE(list.Undo(text).done);
    EXPECT_EQ(StoredText(text), Letters(0, 50));
    while (list.CanRedo()) ASSERT_TRUE(list.Redo(text).done);
    EXPECT_EQ(StoredText(text), Letters(0, 200));
}

TEST(UndoList, TrimsAgainAfterFiftyMore) {
    UndoList list;
    for (int number = 0; number < 249; ++number) list.AddInsertChar({0, number}, 'x');
    EXPECT_EQ(list.count, 199);
    list.AddInsertChar({0, 249}, 'x');
    EXPECT_EQ(list.count, 150);
    EXPECT_EQ(list.RecordAt(0).col, 100);
}

TEST(UndoList, RecordsThatWereUndoneDoNotCountForTheTrim) {
    TextLines text;
    UndoList list;
    for (int number = 0; number < 199; ++number) Type(text, list, {0, number}, 'x');
    EXPECT_TRUE(list.Undo(text).done);
    Type(text, list, {0, 198}, 'y');
    EXPECT_EQ(list.count, 199);
    EXPECT_EQ(list.current, 198);
    EXPECT_EQ(list.RecordAt(0).col, 0);
}

TEST(UndoList, LeavesTheListWhereTheTextNoLongerMatches) {
    struct Row {
        const char* name;
        TextPosition at;
        std::string_view removed, inserted, text;
    };
    constexpr Row rows[] = {
        {"another character", {0, 1}, "", "x", "abc"},
        {"nothing at the position", {0, 1}, "", "x", "a"},
        {"position past the line", {0, 4}, "", "x", "a"},
        {"line gone", {3, 0}, "", "x", "a\nb"},
        {"no next line", {1, 1}, "", "\n", "a\nb"},
        {"nowhere to restore", {1, 3}, "x\ny", "", "a\nb"},
        {"no line to restore in", {2, 0}, "x", "", "a\nb"},
        {"replaced text differs", {0, 0}, "old", "new", "now"},
    };
    for (const auto& [name, at, removed, inserted, content] : rows) {
        SCOPED_TRACE(name);
        TextLines text;
        UndoList list;
        ASSERT_TRUE(text.SetText(content));
        list.AddReplace(at, removed, inserted);
        EXPECT_FALSE(list.Undo(text).done);
        EXPECT_EQ(StoredText(text), content);
        EXPECT_EQ(list.current, 0);
        EXPECT_EQ(list.count, 1);
        EXPECT_TRUE(list.CanUndo());
        ExpectRecord(list.RecordAt(0), at, removed, inserted);
    }
}

TEST(UndoList, LeavesTheListWhereARedoNoLongerMatches) {
    TextLines text;
    UndoList list;
    ASSERT_TRUE(text.SetText("new"));
    list.AddReplace({0, 0}, "old", "new");
    EXPECT_TRUE(list.Undo(text).done);
    ASSERT_TRUE(text.SetText("other"));
    EXPECT_FALSE(list.Redo(text).done);
    EXPECT_EQ(StoredText(text), "other");
    EXPECT_EQ(list.current, -1);
    EXPECT_EQ(list.count, 1);

    ASSERT_TRUE(text.SetText("old"));
    EXPECT_TRUE(list.Redo(text).done);
    EXPECT_EQ(StoredText(text), "new");
}

TEST(UndoList, WorksAgainOnceTheTextMatchesAgain) {
    TextLines text;
    UndoList list;
    Type(text, list, {0, 0}, 'x');
    ASSERT_TRUE(text.SetText("y"));
    EXPECT_FALSE(list.Undo(text).done);
    ASSERT_TRUE(text.SetText("xy"));
    EXPECT_TRUE(list.Undo(text).done);
    EXPECT_EQ(StoredText(text), "y");
}

TEST(UndoList, ReportsTheLineBreaksOfAStepThatFailedHalfWay) {
    TextLines text;
    UndoList list;
    ASSERT_TRUE(text.SetText("a\nb\nX"));
    list.AddReplace({0, 0}, "old", "a\nb\nc");
    const UndoOutcome outcome = list.Undo(text);
    EXPECT_FALSE(outcome.done);
    EXPECT_EQ(outcome.linesRemoved, 2);
    EXPECT_EQ(outcome.linesAdded, 0);
    EXPECT_EQ(StoredText(text), "X");
    EXPECT_EQ(list.current, 0);
}

TEST(UndoList, StopsAtARecordWithoutTexts) {
    TextLines text;
    UndoList list;
    Type(text, list, {0, 0}, 'x');
    list.AddReplace({0, 0}, "", "");
    EXPECT_EQ(list.count, 2);
    EXPECT_FALSE(list.Undo(text).done);
    EXPECT_EQ(list.current, 1);
    EXPECT_EQ(StoredText(text), "x");
}

TEST(UndoList, TakesTheTextsOfItsOwnRecords) {
    UndoList list;
    TextLines text;
    ASSERT_TRUE(text.SetText("x"));
    list.AddReplace({0, 0}, "removed and long enough to be allocated", "x");
    EXPECT_TRUE(list.Undo(text).done);
    list.AddDelete({0, 0}, list.RecordAt(0).removed);
    ASSERT_EQ(list.count, 1);
    ExpectRecord(list.RecordAt(0), {0, 0}, "removed and long enough to be allocated", "");
}

}  // namespace
}  // namespace orvane
