#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "core/text_scan.h"
#include "editor/caret_moves.h"
#include "editor/editor_model.h"
#include "editor_checks.h"

// Random keys on the model and, beside it, on a sheet that is one plain string with its line breaks
// in it.

namespace orvane {
namespace {

// A sheet as a string: the caret and the other end of the selection are offsets.
struct PlainSheet {
    struct Step {
        std::size_t at;
        std::string removed, inserted;
    };

    std::string text;
    std::size_t anchor = 0;
    std::size_t caret = 0;
    std::size_t goal = 0;
    std::vector<Step> steps;
    std::size_t applied = 0;

    std::size_t LineStart(std::size_t at) const {
        const std::size_t before = at == 0 ? std::string::npos : text.rfind('\n', at - 1);
        return before == std::string::npos ? 0 : before + 1;
    }
    std::size_t LineEnd(std::size_t at) const { return std::min(text.find('\n', at), text.size()); }
    std::size_t LineOf(std::size_t at) const {
        const auto end = text.begin() + static_cast<std::ptrdiff_t>(at);
        return static_cast<std::size_t>(std::count(text.begin(), end, '\n'));
    }
    std::size_t LineCount() const { return LineOf(text.size()) + 1; }
    std::size_t StartOfLine(std::size_t line) const {
        std::size_t at = 0;
        while (line-- > 0) at = text.find('\n', at) + 1;
        return at;
    }
    TextPosition PositionOf(std::size_t at) const {
        return {static_cast<std::int32_t>(LineOf(at)),
                static_cast<std::int32_t>(at - LineStart(at))};
    }
    std::size_t CellOf(std::size_t at) const {
        std::size_t cell = 0;
        for (std::size_t i = LineStart(at); i < at; ++i) {
            cell = text[i] == '\t' ? cell - cell % 4 + 4 : cell + 1;
        }
        return cell;
    }
    // The offset in a line that lies nearest to the goal, the later one of two.
    std::size_t AtGoal(std::size_t line) const {
        std::size_t best = StartOfLine(line);
        const auto away = [this](std::size_t at) {
            const std::size_t cell = CellOf(at);
            return cell > goal ? cell - goal : goal - cell;
        };
        for (std::size_t at = best; at <= LineEnd(best); ++at) {
            if (away(at) <= away(best)) best = at;
        }
        return best;
    }

    void Collapse(std::size_t at) {
        caret = anchor = at;
        goal = CellOf(at);
    }
    void Change(std::size_t at, std::string removed, std::string inserted) {
        text.replace(at, removed.size(), inserted);
        steps.resize(applied);
        steps.push_back({at, std::move(removed), std::move(inserted)});
        if (steps.size() == 200) steps.erase(steps.begin(), steps.begin() + 50);
        applied = steps.size();
    }
    std::size_t Left() const { return std::min(anchor, caret); }
    std::string Selected() const { return text.substr(Left(), std::max(anchor, caret) - Left()); }

    void Edit(char code) {
        const std::string selected = Selected();
        std::size_t at = Left();
        if (code == backspaceCode || code == deleteCode) {
            if (!selected.empty()) {
                Change(at, selected, "");
            } else if (code == backspaceCode && at > 0) {
                --at;
                Change(at, text.substr(at, 1), "");
            } else if (code == deleteCode && at < text.size()) {
                Change(at, text.substr(at, 1), "");
            }
        } else if (code == enterCode) {
            Change(at, selected, "\n");
            if (selected.empty()) ++at;
        } else {
            Change(at, selected, std::string(1, code));
            ++at;
        }
        Collapse(at);
    }
    void Paste(std::string_view pasted) {
        const std::size_t at = Left();
        Change(at, Selected(), std::string(pasted));
        Collapse(at + pasted.size());
    }
    void Undo() {
        if (applied == 0) return;
        const Step& step = steps[--applied];
        text.replace(step.at, step.inserted.size(), step.removed);
        Collapse(step.at + step.removed.size());
    }
    void Redo() {
        if (applied == steps.size()) return;
        const Step& step = steps[applied++];
        text.replace(step.at, step.removed.size(), step.inserted);
        Collapse(step.at + step.inserted.size());
    }
    void Move(CaretKey key, bool extend, VisibleRows rows) {
        const std::size_t line = LineOf(caret);
        const std::size_t last = LineCount() - 1;
        const auto top = static_cast<std::size_t>(rows.top);
        const auto page = static_cast<std::size_t>(rows.page);
        const std::size_t bottom = top + page - 1;
        std::size_t to = caret;
        bool keepsGoal = true;
        switch (key) {
            case CaretKey::left:
                if (caret > 0) to = caret - 1;
                keepsGoal = false;
                break;
            case CaretKey::right:
                if (caret < text.size()) to = caret + 1;
                keepsGoal = false;
                break;
            case CaretKey::home:
                to = LineStart(caret);
                keepsGoal = false;
                break;
            case CaretKey::end:
                to = LineEnd(caret);
                keepsGoal = false;
                break;
            case CaretKey::up:
                if (line > 0) to = AtGoal(line - 1);
                break;
            case CaretKey::down:
                if (line < last) to = AtGoal(line + 1);
                break;
            case CaretKey::pageUp:
                if (line > 0) to = AtGoal(line > top ? top : line < page ? 0 : line - page);
                break;
            case CaretKey::pageDown:
                if (line < last) to = AtGoal(std::min(line < bottom ? bottom : line + page, last));
                break;
        }
        if (to == caret) return;
        caret = to;
        if (!extend) anchor = to;
        if (!keepsGoal) goal = CellOf(to);
    }
};

std::vector<std::string> LinesOf(const EditorModel& model) {
    std::vector<std::string> lines;
    for (std::int32_t line = 0; line < model.text.count; ++line) {
        lines.emplace_back(model.text.GetLine(line));
    }
    return lines;
}

// What is not repainted looks as it did.
void ExpectOutsideUntouched(const std::vector<std::string>& before,
                            const std::vector<std::string>& now, const RepaintArea& area) {
    if (area.kind == RepaintKind::wholeWindow) return;
    ASSERT_EQ(before.size(), now.size());
    for (std::size_t line = 0; line < now.size(); ++line) {
        if (area.kind == RepaintKind::none || area.line != static_cast<std::int32_t>(line)) {
            EXPECT_EQ(before[line], now[line]);
            continue;
        }
        const std::size_t same = static_cast<std::size_t>(
            std::mismatch(before[line].begin(),
                          before[line].begin() + static_cast<std::ptrdiff_t>(std::min(
                                                     before[line].size(), now[line].size())),
                          now[line].begin())
                .first -
            before[line].begin());
        TextLines row;
        row.SetText(now[line]);
        EditorModel measure;
        measure.SetText(now[line]);
        measure.PlaceCaret({0, static_cast<std::int32_t>(same)}, false);
        EXPECT_LE(area.cell, measure.PaintedCell());
    }
}

class RandomKeys {
public:
    void Run(int steps) {
        for (step = 0; step < steps && !testing::Test::HasFailure(); ++step) Step();
    }
    // Steps with at least these counts have been met: the walk is no shorter than it seems.
    int edits = 0, undone = 0, redone = 0, extended = 0, trimmed = 0;

private:
    int Pick(int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); }

    void Step() {
        SCOPED_TRACE("step " + std::to_string(step));
        const std::vector<std::string> before = LinesOf(model);
        const std::string textBefore = model.GetText();
        const bool selected = model.HasSelection();
        const SelRange selection = model.selection;
        bool isPaste = false;
        const EditOutcome outcome = Act(isPaste);
        Compare();
        EXPECT_TRUE(outcome.textChanged || model.GetText() == textBefore);
        const bool severalLines = selection.startLine != selection.endLine;
        if (!(isPaste && selected && severalLines)) {
            ExpectOutsideUntouched(before, LinesOf(model), outcome.area);
        }
    }

    EditOutcome Act(bool& isPaste) {
        static constexpr std::string_view typed = "ab1.+(:;\t \"/";
        static constexpr const char* pastes[] = {"x", "sin(", "a\nb", "\n", "\tq\n\n", "", "12"};
        const VisibleRows rows = {.top = Pick(4), .page = 1 + Pick(4)};
        // A sheet that has become large is mostly deleted from.
        const bool isLarge = plain.text.size() > 120;
        const int kind = Pick(100);
        if (kind < 40) {
            const auto key = static_cast<CaretKey>(Pick(8));
            const bool extend = Pick(3) == 0;
            extended += extend;
            plain.Move(key, extend, rows);
            return MoveCaret(model, key, extend, rows);
        }
        if (kind < (isLarge ? 80 : 55)) {
            const char code = Pick(2) == 0 ? backspaceCode : deleteCode;
            ++edits;
            plain.Edit(code);
            return model.EditChar(code);
        }
        if (kind < 85) {
            const char code =
                Pick(6) == 0
                    ? enterCode
                    : typed[static_cast<std::size_t>(Pick(static_cast<int>(typed.size())))];
            ++edits;
            plain.Edit(code);
            return model.EditChar(code);
        }
        if (kind < 90) {
            isPaste = true;
            const char* const pasted = pastes[Pick(7)];
            if (*pasted != '\0') plain.Paste(pasted);
            return model.Paste(pasted);
        }
        if (kind < 96) {
            ++undone;
            plain.Undo();
            return model.Undo();
        }
        if (kind < 99) {
            ++redone;
            plain.Redo();
            return model.Redo();
        }
        if (Pick(4) != 0) {
            if (!plain.Selected().empty()) plain.Edit(deleteCode);
            return model.DeleteSelection();
        }
        plain.anchor = 0;
        plain.caret = plain.text.size();
        plain.goal = plain.CellOf(plain.caret);
        return model.SelectAll();
    }

    void Compare() {
        ASSERT_EQ(model.GetText(), plain.text);
        ASSERT_EQ(model.Caret(), plain.PositionOf(plain.caret));
        const TextPosition from = {model.selection.startLine, model.selection.startCol};
        ASSERT_EQ(from, plain.PositionOf(plain.anchor));
        const TextPosition to = {model.selection.endLine, model.selection.endCol};
        ASSERT_EQ(to, model.Caret());
        ASSERT_EQ(model.caretCell, static_cast<std::int32_t>(plain.goal));
        ASSERT_EQ(model.SelectedText(), plain.Selected());
        ASSERT_EQ(model.history.current, static_cast<std::int32_t>(plain.applied) - 1);
        ASSERT_EQ(model.history.count, static_cast<std::int32_t>(plain.steps.size()));
        trimmed += model.history.count == 150;
        std::int32_t longest = 0;
        for (std::int32_t line = 0; line < model.text.count; ++line) {
            longest = std::max(longest, model.text.LineAt(line).length);
        }
        ASSERT_EQ(model.text.longestLine, longest);
        ASSERT_EQ(model.text.lineCountSeen, model.text.count);
    }

    std::mt19937 random{20240917};
    int step = 0;
    EditorModel model;
    PlainSheet plain;
};

TEST(EditorModel, AgreesWithAPlainStringOverRandomKeys) {
    RandomKeys keys;
    keys.Run(100000);
    EXPECT_GT(keys.edits, 10000);
    EXPECT_GT(keys.undone, 3000);
    EXPECT_GT(keys.redone, 1000);
    EXPECT_GT(keys.extended, 5000);
    EXPECT_GT(keys.trimmed, 10);
}

}  // namespace
}  // namespace orvane
