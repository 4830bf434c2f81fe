#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "editor/text_lines.h"

// The edits of a sheet that can be taken back. Every typed character, every Enter, every Delete is
// a step of its own; nothing is merged. The list holds at most 199 records: the 200th drops the
// oldest 50 in one go, so that 150 steps stay open after that.

namespace orvane {

struct UndoRecord {
    std::int32_t line = 0;
    std::int32_t col = 0;
    std::string removed;   // what the edit took away; may hold "\n"
    std::string inserted;  // what it put there; may hold "\n"
};

// What a step back or forth did to the text.
struct UndoOutcome {
    bool done = false;              // false: the list stays as it was
    TextPosition caret;             // the selection collapses there; only when done
    std::int32_t linesRemoved = 0;  // line breaks taken out and put in, also where it failed
    std::int32_t linesAdded = 0;    // half way: a sum that is not 0 wants a full repaint
};

class UndoList {
public:
    UndoList();

    // Five ways to add what was done at a position; a new edit ends all redo.
    void AddDelete(TextPosition at, std::string_view removed);
    void AddDeleteChar(TextPosition at, char removed);
    void AddReplaceWithChar(TextPosition at, std::string_view removed, char inserted);
    void AddReplace(TextPosition at, std::string_view removed, std::string_view inserted);
    void AddInsertChar(TextPosition at, char inserted);

    bool CanUndo() const { return current >= 0; }
    bool CanRedo() const { return current < count - 1; }
    // Do nothing where there is nothing to do, or where the text no longer holds what the record
    // says. Of a text that differs only behind a line break, what was taken away up to there is
    // gone all the same.
    UndoOutcome Undo(TextLines& text);
    UndoOutcome Redo(TextLines& text);

    // `index` must be in range.
    const UndoRecord& RecordAt(std::int32_t index) const { return *records[index]; }

    static constexpr std::int32_t slotStep = 20;
    static constexpr std::int32_t trimAt = 200;
    static constexpr std::int32_t trimBy = 50;

    std::int32_t current = -1;  // the newest applied record; -1: none
    std::int32_t count = 0;
    std::int32_t capacity = slotStep;  // 20 more whenever it is full

private:
    void DropRedo();
    void Grow();
    void DropOldest();

    std::unique_ptr<std::unique_ptr<UndoRecord>[]> records;
};

}  // namespace orvane
