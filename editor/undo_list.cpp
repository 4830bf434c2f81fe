#include "editor/undo_list.h"

#include <algorithm>
#include <utility>

namespace orvane {

namespace {

// Takes `oldText` away at the record's position and puts `newText` there: a step back with the
// texts one way round, a step forth with them the other.
UndoOutcome Exchange(TextLines& text, const UndoRecord& record, std::string_view oldText,
                     std::string_view newText) {
    UndoOutcome outcome;
    if (oldText.empty() && newText.empty()) return outcome;
    outcome.caret = {record.line, record.col};
    if (!oldText.empty() &&
        !text.RemoveExact(record.line, record.col, oldText, outcome.caret, outcome.linesRemoved)) {
        return outcome;
    }
    if (!newText.empty() &&
        !text.RestoreText(record.line, record.col, newText, outcome.caret, outcome.linesAdded)) {
        return outcome;
    }
    outcome.done = true;
    return outcome;
}

}  // namespace

UndoList::UndoList() : records(std::make_unique<std::unique_ptr<UndoRecord>[]>(slotStep)) {}

void UndoList::AddDelete(TextPosition at, std::string_view removed) { AddReplace(at, removed, {}); }

void UndoList::AddDeleteChar(TextPosition at, char removed) { AddReplace(at, {&removed, 1}, {}); }

void UndoList::AddReplaceWithChar(TextPosition at, std::string_view removed, char inserted) {
    AddReplace(at, removed, {&inserted, 1});
}

void UndoList::AddInsertChar(TextPosition at, char inserted) { AddReplace(at, {}, {&inserted, 1}); }

void UndoList::AddReplace(TextPosition at, std::string_view removed, std::string_view inserted) {
    // Made first: the texts may be those of a record that is dropped now.
    auto record = std::make_unique<UndoRecord>(
        UndoRecord{at.line, at.col, std::string(removed), std::string(inserted)});
    DropRedo();
    if (count == capacity) Grow();
    ++current;
    records[current] = std::move(record);
    if (current == count) ++count;
    if (count == trimAt) DropOldest();
}

UndoOutcome UndoList::Undo(TextLines& text) {
    if (!CanUndo()) return {};
    const UndoRecord& record = RecordAt(current);
    const UndoOutcome outcome = Exchange(text, record, record.inserted, record.removed);
    if (outcome.done) --current;
    return outcome;
}

UndoOutcome UndoList::Redo(TextLines& text) {
    if (!CanRedo()) return {};
    const UndoRecord& record = RecordAt(current + 1);
    const UndoOutcome outcome = Exchange(text, record, record.removed, record.inserted);
    if (outcome.done) ++current;
    return outcome;
}

void UndoList::DropRedo() {
    for (; count > current + 1; --count) records[count - 1].reset();
}

void UndoList::Grow() {
    capacity += slotStep;
    auto grown =
        std::make_unique<std::unique_ptr<UndoRecord>[]>(static_cast<std::size_t>(capacity));
    std::move(records.get(), records.get() + count, grown.get());
    records = std::move(grown);
}

void UndoList::DropOldest() {
    std::move(records.get() + trimBy, records.get() + count, records.get());
    count -= trimBy;
    current -= trimBy;
}

}  // namespace orvane
