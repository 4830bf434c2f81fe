#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "editor/text_lines.h"
#include "editor/undo_list.h"
#include "tests/editor/plain_text.h"
#include "tests/editor/stored_text.h"

// Long random runs against the plainest model there is: the sheet as one string.

namespace orvane {
namespace {

using namespace std::string_view_literals;
using test::PlainText;
using test::WithoutReturns;

class Dice {
public:
    explicit Dice(std::uint32_t seed) : engine(seed) {}

    // 0 to count - 1. Not by a standard distribution: those differ between libraries.
    std::int32_t Below(std::size_t count) {
        return static_cast<std::int32_t>(engine() % static_cast<std::uint32_t>(count));
    }
    char OneOf(std::string_view chars) { return chars[Below(chars.size())]; }
    std::string Text(std::size_t longest, std::string_view chars) {
        std::string text(Below(longest + 1), ' ');
        for (char& ch : text) ch = OneOf(chars);
        return text;
    }

private:
    std::mt19937 engine;
};

// Every operation with arguments that are good, near the edge or far out.
class HostileCalls {
public:
    explicit HostileCalls(std::uint32_t seed) : dice(seed) {}

    void Step() {
        line = AnyNumber(model.Lines());
        col = AnyColumn(line);
        offset = model.Offset(line, col);
        if (model.text.size() > 300) return SetText();
        // Deleting a selection takes much away, so it is the rarest.
        const std::int32_t choice = dice.Below(100);
        if (choice < 1) return SetText();
        if (choice < 4) return Select(true);
        if (choice < 12) return Select(false);
        if (choice < 20) return Join();
        if (choice < 35) return DeleteChar();
        if (choice < 45) return Split();
        if (choice < 53) return Insert(false);
        if (choice < 61) return Insert(true);
        if (choice < 75) return RemoveExact();
        InsertChar();
    }
    void Compare() {
        ASSERT_EQ(StoredText(text), model.text);
        ASSERT_EQ(static_cast<std::size_t>(text.count), model.Lines());
        longest = std::max(longest, model.text.size());
    }
    std::size_t Longest() const { return longest; }
    int Failed() const { return failed; }
    int Done() const { return done; }

private:
    static constexpr std::string_view chars = "aab \t\n\n\r\0\xff"sv;

    std::int32_t AnyNumber(std::size_t usual) {
        constexpr std::int32_t farOut[] = {INT_MIN, INT_MIN + 1, -1, -2, INT_MAX, INT_MAX - 1};
        if (dice.Below(16) == 0) return farOut[dice.Below(std::size(farOut))];
        return dice.Below(usual + 2) - 1;
    }
    std::int32_t AnyColumn(std::int32_t ofLine) {
        const std::optional<std::size_t> start = model.LineStart(ofLine);
        return AnyNumber(start ? model.LineEnd(*start) - *start + 1 : 3);
    }
    void Count(bool wasDone) { ++(wasDone ? done : failed); }

    void SetText() {
        const std::string content = dice.Text(250, chars);
        EXPECT_TRUE(text.SetText(content));
        model.text = WithoutReturns(content);
    }
    void InsertChar() {
        const char ch = dice.OneOf(chars);
        const bool fits = offset && ch != '\n' && ch != '\r';
        EXPECT_EQ(text.InsertChar(line, col, ch), fits);
        if (fits) model.text.insert(*offset, 1, ch);
        Count(fits);
    }
    void DeleteChar() {
        const bool onOne = offset && *offset < model.LineEnd(*offset);
        EXPECT_EQ(text.DeleteChar(line, col), onOne ? model.text[*offset] : '\0');
        if (onOne) model.text.erase(*offset, 1);
        Count(onOne);
    }
    void Split() {
        const std::optional<std::size_t> at = model.OffsetAtMost(line, col);
        EXPECT_EQ(text.SplitLine(line, col), at.has_value());
        if (at) model.text.insert(*at, 1, '\n');
        Count(at.has_value());
    }
    void Join() {
        const std::optional<std::size_t> start = model.LineStart(line);
        const bool joins = start && model.LineEnd(*start) < model.text.size();
        EXPECT_EQ(text.JoinWithNext(line), joins);
        if (joins) model.text.erase(model.LineEnd(*start), 1);
        Count(joins);
    }
    void Select(bool alsoDelete) {
        SelRange range;
        const std::int32_t endLine = AnyNumber(model.Lines());
        range.SetRange(line, col, endLine, AnyColumn(endLine));
        std::optional<std::size_t> from = model.OffsetAtMost(line, col);
        std::optional<std::size_t> to = model.OffsetAtMost(range.endLine, range.endCol);
        if (to < from) std::swap(from, to);
        const bool inText = from && to;
        EXPECT_EQ(text.GetSelected(range),
                  inText ? model.text.substr(*from, *to - *from) : std::string());
        if (!alsoDelete) return;
        EXPECT_EQ(text.DeleteSelected(range), inText);
        if (inText) model.text.erase(*from, *to - *from);
        Count(inText);
    }
    void Insert(bool restoring) {
        const std::string added = dice.Text(8, chars);
        const std::string kept = WithoutReturns(added);
        TextPosition end;
        std::int32_t breaks = 0;
        const bool succeeded = restoring ? text.RestoreText(line, col, added, end, breaks)
                                         : text.InsertText(line, col, added, end, breaks);
        EXPECT_EQ(succeeded, offset && !(restoring && added.empty()));
        if (offset) model.text.insert(*offset, kept);
        EXPECT_EQ(end,
                  offset ? model.PositionOf(*offset + kept.size()) : (TextPosition{line, col}));
        EXPECT_EQ(breaks, offset ? std::count(kept.begin(), kept.end(), '\n') : 0);
        Count(succeeded);
    }
    void RemoveExact() {
        std::string removed = dice.Text(6, chars);
        // By chance alone it would hardly ever match.
        if (offset && dice.Below(3) > 0) removed = model.text.substr(*offset, dice.Below(8));
        if (!removed.empty() && dice.Below(3) == 0) {
            removed[dice.Below(removed.size())] = dice.OneOf(chars);
        }
        TextPosition position;
        std::int32_t breaks = 0;
        std::int32_t expectedBreaks = 0;
        const bool matches = offset && model.RemoveExact(*offset, removed, expectedBreaks);
        EXPECT_EQ(text.RemoveExact(line, col, removed, position, breaks), matches);
        EXPECT_EQ(position, (TextPosition{line, col}));
        EXPECT_EQ(breaks, expectedBreaks);
        Count(matches);
    }

    Dice dice;
    TextLines text;
    PlainText model;
    std::int32_t line = 0;
    std::int32_t col = 0;
    std::optional<std::size_t> offset;  // of the two, where they are in the text
    std::size_t longest = 0;
    int done = 0;
    int failed = 0;
};

TEST(TextLines, AgreesWithAPlainStringWhateverItIsAsked) {
    for (const std::uint32_t seed : {1U, 2U, 3U}) {
        SCOPED_TRACE(seed);
        HostileCalls calls(seed);
        for (int step = 0; step < 50'000; ++step) {
            calls.Step();
            calls.Compare();
            if (testing::Test::HasFailure()) FAIL() << "at step " << step;
        }
        // Neither side may have stood aside.
        EXPECT_GT(calls.Done(), 10'000);
        EXPECT_GT(calls.Failed(), 10'000);
        EXPECT_GT(calls.Longest(), 200U);
    }
}

// What the list must be able to do, with whole texts in place of records.
struct PlainUndo {
    struct Step {
        std::string before, after;
        TextPosition caretBefore, caretAfter;  // behind what an undo and a redo put there
    };
    std::vector<Step> steps;
    std::size_t applied = 0;

    void Add(const Step& step) {
        steps.resize(applied);
        steps.push_back(step);
        if (steps.size() == 200) steps.erase(steps.begin(), steps.begin() + 50);
        applied = steps.size();
    }
};

// Someone at work in the editor: edits of every kind, now and then some undos and redos.
class Session {
public:
    explicit Session(std::uint32_t seed) : dice(seed) {}

    void Step() {
        if (undosAhead > 0) {
            --undosAhead;
            return Undo();
        }
        if (redosAhead > 0) {
            --redosAhead;
            return Redo();
        }
        const std::int32_t choice = dice.Below(100);
        if (choice < 2) undosAhead = dice.Below(60);
        if (choice < 4) redosAhead = dice.Below(40);
        if (choice < 10) return Undo();
        if (choice < 14) return Redo();
        Edit();
    }
    void Compare() {
        ASSERT_EQ(StoredText(text), model.text);
        ASSERT_EQ(static_cast<std::size_t>(list.count), undo.steps.size());
        ASSERT_EQ(static_cast<std::size_t>(list.current + 1), undo.applied);
        ASSERT_EQ(list.CanUndo(), undo.applied > 0);
        ASSERT_EQ(list.CanRedo(), undo.applied < undo.steps.size());
        mostRecords = std::max(mostRecords, list.count);
    }
    std::int32_t MostRecords() const { return mostRecords; }
    int Undone() const { return undone; }
    int Redone() const { return redone; }

private:
    void Edit() {
        const std::size_t from = dice.Below(model.text.size() + 1);
        // A long sheet is cut down by the selections that are replaced.
        const std::size_t longest = model.text.size() > 1500 ? 200 : 12;
        const bool selects = dice.Below(4) == 0;
        const std::size_t to = selects ? from + dice.Below(longest) : from;
        const std::string selected = model.text.substr(from, to - from);
        switch (dice.Below(6)) {
            case 0:
                return selected.empty() ? DeleteOne(from) : Replace(from, selected, "");
            case 1:
                return Replace(from, selected, "\n");
            case 2:
                return Replace(from, selected, dice.Text(30, "abc (+;\t\n"));
            default:
                return Replace(from, selected, std::string(1, dice.OneOf("abcdefgh(+;\t \"")));
        }
    }

    // Backspace and Delete on a character or on a line break.
    void DeleteOne(std::size_t from) {
        if (from == model.text.size()) return;
        const TextPosition at = model.PositionOf(from);
        const char ch = model.text[from];
        if (ch == '\n') {
            EXPECT_TRUE(text.JoinWithNext(at.line));
        } else {
            EXPECT_EQ(text.DeleteChar(at.line, at.col), ch);
        }
        list.AddDeleteChar(at, ch);
        Note(from, std::string(1, ch), "");
    }

    void Replace(std::size_t from, const std::string& selected, const std::string& put) {
        if (selected.empty() && put.empty()) return;
        const TextPosition at = model.PositionOf(from);
        const TextPosition end = model.PositionOf(from + selected.size());
        SelRange range;
        range.SetRange(at.line, at.col, end.line, end.col);
        if (dice.Below(2) == 0) range.SetRange(end.line, end.col, at.line, at.col);
        EXPECT_EQ(text.GetSelected(range), selected);
        EXPECT_TRUE(text.DeleteSelected(range));
        if (put == "\n") {
            EXPECT_TRUE(text.SplitLine(at.line, at.col));
        } else if (put.size() == 1) {
            EXPECT_TRUE(text.InsertChar(at.line, at.col, put[0]));
        } else {
            TextPosition behind;
            std::int32_t added = 0;
            EXPECT_TRUE(text.InsertText(at.line, at.col, put, behind, added));
        }
        if (put.empty()) {
            list.AddDelete(at, selected);
        } else if (put.size() > 1) {
            list.AddReplace(at, selected, put);
        } else if (selected.empty()) {
            list.AddInsertChar(at, put[0]);
        } else {
            list.AddReplaceWithChar(at, selected, put[0]);
        }
        Note(from, selected, put);
    }

    void Note(std::size_t from, const std::string& removed, const std::string& put) {
        PlainUndo::Step step;
        step.before = model.text;
        step.caretBefore = model.PositionOf(from + removed.size());
        model.text.replace(from, removed.size(), put);
        step.after = model.text;
        step.caretAfter = model.PositionOf(from + put.size());
        undo.Add(step);
    }

    void Undo() {
        const UndoOutcome outcome = list.Undo(text);
        ASSERT_EQ(outcome.done, undo.applied > 0);
        if (!outcome.done) return;
        const PlainUndo::Step& step = undo.steps[--undo.applied];
        Go(step.before, step.caretBefore, outcome);
        ++undone;
    }
    void Redo() {
        const UndoOutcome outcome = list.Redo(text);
        ASSERT_EQ(outcome.done, undo.applied < undo.steps.size());
        if (!outcome.done) return;
        const PlainUndo::Step& step = undo.steps[undo.applied++];
        Go(step.after, step.caretAfter, outcome);
        ++redone;
    }
    void Go(const std::string& reached, TextPosition caret, const UndoOutcome& outcome) {
        const auto linesBefore = static_cast<std::int32_t>(model.Lines());
        model.text = reached;
        EXPECT_EQ(outcome.caret, caret);
        EXPECT_EQ(linesBefore - outcome.linesRemoved + outcome.linesAdded, text.count);
    }

    Dice dice;
    TextLines text;
    UndoList list;
    PlainText model;
    PlainUndo undo;
    int undosAhead = 0;
    int redosAhead = 0;
    int undone = 0;
    int redone = 0;
    std::int32_t mostRecords = 0;
};

TEST(UndoList, AgreesWithKeptTextsOverALongSession) {
    for (const std::uint32_t seed : {11U, 12U}) {
        SCOPED_TRACE(seed);
        Session session(seed);
        for (int step = 0; step < 50'000; ++step) {
            session.Step();
            session.Compare();
            if (testing::Test::HasFailure()) FAIL() << "at step " << step;
        }
        EXPECT_EQ(session.MostRecords(), 199);
        EXPECT_GT(session.Undone(), 5'000);
        EXPECT_GT(session.Redone(), 5'000);
    }
}

}  // namespace
}  // namespace orvane
