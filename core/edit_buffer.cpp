#include "core/edit_buffer.h"

#include <cstring>

#include "core/number_literal.h"

namespace orvane {

namespace {

using Room = std::unique_ptr<char[], RoomOwner>;

Room MakeRoom(std::size_t capacity) { return Room(new char[capacity + 1]); }

}  // namespace

EditBuffer::EditBuffer(std::string_view text) : EditBuffer(OfLength(text.size())) {
    text.copy(data.get(), text.size());
}

EditBuffer EditBuffer::OfLength(std::size_t size) {
    EditBuffer made;
    made.data = MakeRoom(size);
    made.data[size] = '\0';
    made.capacity = made.length = static_cast<std::int32_t>(size);
    return made;
}

EditBuffer::EditBuffer(char* room, std::size_t size)
    : data(room, RoomOwner{true}), capacity(static_cast<std::int32_t>(size)), length(capacity) {
    room[size] = '\0';
}

char* EditBuffer::Data() {
    if (!data) Assign({});
    return data.get();
}

const char* EditBuffer::Data() const { return data ? data.get() : ""; }

void EditBuffer::Assign(std::string_view text) {
    const auto size = static_cast<std::int32_t>(text.size());
    if (!data || size > capacity) {
        capacity = size + spareRoom;
        data = MakeRoom(static_cast<std::size_t>(capacity));
    }
    if (!text.empty()) std::memmove(data.get(), text.data(), text.size());
    length = size;
    data[text.size()] = '\0';
}

void EditBuffer::AssignExactly(std::string_view text) {
    if (data.get_deleter().isLent && text.size() <= static_cast<std::size_t>(capacity)) {
        Assign(text);
    } else {
        *this = EditBuffer(text);
    }
}

void EditBuffer::Replace(std::size_t from, std::size_t to, std::string_view newText) {
    const auto oldLength = static_cast<std::size_t>(length);
    const std::size_t newLength = oldLength - (to - from) + newText.size();
    const std::size_t tail = oldLength - to;
    if (!data || newLength > static_cast<std::size_t>(capacity)) {
        capacity = static_cast<std::int32_t>(newLength) + spareRoom;
        auto grown = MakeRoom(static_cast<std::size_t>(capacity));
        View().copy(grown.get(), from);
        View().substr(to).copy(grown.get() + from + newText.size(), tail);
        data = std::move(grown);
    } else {
        std::memmove(data.get() + from + newText.size(), data.get() + to, tail);
    }
    newText.copy(data.get() + from, newText.size());
    length = static_cast<std::int32_t>(newLength);
    data[newLength] = '\0';
}

void EditBuffer::Remove(std::size_t from, std::size_t to) { Replace(from, to, {}); }

bool EditBuffer::ReplaceByNumber(std::size_t from, std::size_t to, double value) {
    const std::optional<std::string> text = FormatForSentence(value);
    if (!text) return false;
    Replace(from, to, *text);
    return true;
}

void EditBuffer::Fit() {
    // A little room is not worth a move.
    constexpr std::int32_t worthWhile = 256;
    if (capacity - length < worthWhile || data.get_deleter().isLent) return;
    *this = EditBuffer(View());
}

ForwardEdit::ForwardEdit(EditBuffer& buffer) : target(buffer), ahead(buffer.View()) {}

ForwardEdit::~ForwardEdit() {
    if (!changed) return;
    behind.append(ahead, position);
    target.AssignExactly(behind);
}

void ForwardEdit::Pass(std::size_t count) {
    behind.append(ahead, position, count);
    position += count;
}

void ForwardEdit::Replace(std::size_t count, std::string_view newText) {
    changed = true;
    position += count;
    if (newText.size() > position) {
        // Room for this text and for as much again as is ahead, so that growth stays cheap.
        const std::size_t room = newText.size() + (ahead.size() - position) + EditBuffer::spareRoom;
        ahead.insert(0, room, ' ');
        position += room;
    }
    position -= newText.size();
    ahead.replace(position, newText.size(), newText);
}

}  // namespace orvane
