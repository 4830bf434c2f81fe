#include "storage/archive.h"

#include <algorithm>
#include <cstring>

namespace orvane {

namespace {

constexpr std::size_t npos = std::string_view::npos;

bool IsTooLong(std::size_t length) { return length > TextBuffer::largestLength; }

// Takes new memory for a text of `newLength` bytes; the first `kept` bytes come along.
void Reallocate(TextBuffer& buffer, std::int32_t newLength, std::int32_t kept) {
    buffer.capacity = newLength + buffer.growthStep;
    auto moved = std::make_unique_for_overwrite<char[]>(static_cast<std::size_t>(buffer.capacity));
    std::memcpy(moved.get(), buffer.data.get(), static_cast<std::size_t>(kept));
    buffer.data = std::move(moved);
}

// Sets the length, with the NUL behind it. The bytes that were there stay as far as they fit.
void SetLength(TextBuffer& buffer, std::int32_t newLength) {
    if (newLength >= buffer.capacity) Reallocate(buffer, newLength, buffer.length);
    buffer.length = newLength;
    buffer.data[static_cast<std::size_t>(newLength)] = '\0';
}

std::string SearchKey(std::string_view name) {
    std::string key;
    key.reserve(name.size() + 2);
    key += nameMark;
    key += name;
    key += textMark;
    return key;
}

// For each beginning of the key: how long the longest shorter beginning is with which it ends
// (Knuth, Morris and Pratt).
std::vector<std::int32_t> BordersOf(std::string_view key) {
    std::vector<std::int32_t> borders(key.size(), 0);
    std::size_t matched = 0;
    for (std::size_t at = 1; at < key.size(); ++at) {
        while (matched > 0 && key[at] != key[matched]) {
            matched = static_cast<std::size_t>(borders[matched - 1]);
        }
        if (key[at] == key[matched]) ++matched;
        borders[at] = static_cast<std::int32_t>(matched);
    }
    return borders;
}

// One walk over the text, whatever it holds: a damaged archive may be millions of name marks, and
// its names as well, where comparing anew at each of them would never end.
std::optional<std::size_t> FindFirst(std::string_view text, std::string_view key) {
    if (key.size() > text.size()) return std::nullopt;
    const std::vector<std::int32_t> borders = BordersOf(key);
    std::size_t matched = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        while (matched > 0 && text[at] != key[matched]) {
            matched = static_cast<std::size_t>(borders[matched - 1]);
        }
        if (text[at] == key[matched]) ++matched;
        if (matched == key.size()) return at + 1 - key.size();
    }
    return std::nullopt;
}

// Where an entry ends: the first name mark at or behind `from`, or the end of what searches see.
std::size_t EntryEnd(std::string_view text, std::size_t from) {
    return std::min(text.find(nameMark, from), text.size());
}

// A piece of the archive, from its first byte to the one behind its last.
struct Piece {
    std::int32_t from = 0;
    std::int32_t to = 0;
};

Piece PieceOf(std::size_t from, std::size_t to) {
    return {static_cast<std::int32_t>(from), static_cast<std::int32_t>(to)};
}

// A sheet's text, from behind its text mark.
std::optional<Piece> FindText(const TextBuffer& archive, std::string_view name) {
    const std::string_view text = archive.SearchableView();
    const std::optional<std::size_t> key = FindFirst(text, SearchKey(name));
    if (!key) return std::nullopt;
    const std::size_t from = *key + name.size() + 2;
    return PieceOf(from, EntryEnd(text, from));
}

// A whole entry. Kept: it is searched for its end right behind its name mark, so that an entry
// whose name holds a name mark ends there.
std::optional<Piece> FindEntry(const TextBuffer& archive, std::string_view name) {
    const std::string_view text = archive.SearchableView();
    const std::optional<std::size_t> key = FindFirst(text, SearchKey(name));
    if (!key) return std::nullopt;
    return PieceOf(*key, EntryEnd(text, *key + 1));
}

// Puts [middle, to) in front of [from, middle).
void SwapNeighbours(TextBuffer& archive, std::int32_t from, std::int32_t middle, std::int32_t to) {
    char* const bytes = archive.data.get();
    std::rotate(bytes + from, bytes + middle, bytes + to);
}

}  // namespace

TextBuffer::TextBuffer(std::int32_t step)
    : data(std::make_unique_for_overwrite<char[]>(startCapacity)), growthStep(step) {
    data[0] = '\0';
}

std::string_view TextBuffer::SearchableView() const {
    const std::string_view all = View();
    return all.substr(0, all.find('\0'));
}

void TextBuffer::Assign(std::string_view bytes) {
    if (IsTooLong(bytes.size())) return;
    const auto newLength = static_cast<std::int32_t>(bytes.size());
    const bool shrinksFar =
        newLength < length && newLength < capacity - 2 * std::int64_t{growthStep};
    if (shrinksFar || newLength >= capacity) Reallocate(*this, newLength, 0);
    bytes.copy(data.get(), bytes.size());
    SetLength(*this, newLength);
}

void TextBuffer::Append(std::string_view bytes) { ReplaceRange(length, length, bytes); }

void TextBuffer::AppendByte(char byte) { Append({&byte, 1}); }

void TextBuffer::Resize(std::int32_t newLength) {
    if (newLength < 0 || newLength > largestLength) return;
    SetLength(*this, newLength);
}

void TextBuffer::DeleteRange(std::int32_t from, std::int32_t to) { ReplaceRange(from, to, {}); }

void TextBuffer::ReplaceRange(std::int32_t from, std::int32_t to, std::string_view bytes) {
    const auto tail = static_cast<std::size_t>(length - to);
    const auto head = static_cast<std::size_t>(from);
    // Neither sum can overflow: a view is never nearly as long as its type could tell.
    const std::size_t newLength = head + bytes.size() + tail;
    if (IsTooLong(newLength)) return;
    if (static_cast<std::int32_t>(newLength) > length) {
        SetLength(*this, static_cast<std::int32_t>(newLength));
    }
    std::memmove(data.get() + head + bytes.size(), data.get() + to, tail);
    bytes.copy(data.get() + head, bytes.size());
    SetLength(*this, static_cast<std::int32_t>(newLength));
}

std::optional<std::int32_t> TextBuffer::FindBackwards(char byte, std::int32_t from) const {
    if (from < 0) return std::nullopt;
    const std::size_t found = View().rfind(byte, static_cast<std::size_t>(from));
    if (found == npos) return std::nullopt;
    return static_cast<std::int32_t>(found);
}

std::vector<std::string> ListNames(const TextBuffer& archive) {
    const std::string_view text = archive.SearchableView();
    std::vector<std::string> names;
    std::size_t behindMark = 0;
    while (true) {
        const std::size_t start = text.find(nameMark, behindMark);
        if (start == npos) return names;
        const std::size_t end = text.find(textMark, start);
        if (end == npos) return names;
        names.emplace_back(text.substr(start + 1, end - start - 1));
        behindMark = end + 1;
    }
}

std::optional<std::int32_t> FindSheet(const TextBuffer& archive, std::string_view name) {
    const std::optional<Piece> entry = FindEntry(archive, name);
    if (!entry) return std::nullopt;
    return entry->from;
}

std::string ReadSheetText(const TextBuffer& archive, std::string_view name) {
    const std::optional<Piece> text = FindText(archive, name);
    if (!text) return {};
    return std::string(archive.data.get() + text->from, archive.data.get() + text->to);
}

void AppendSheet(TextBuffer& archive, std::string_view name, std::string_view text) {
    // One growth for all of it: a second one would find the buffer half changed if it can't be
    // done.
    std::string entry = SearchKey(name);
    entry += text;
    archive.Append(entry);
}

void ReplaceSheetText(TextBuffer& archive, std::string_view name, std::string_view text) {
    const std::optional<Piece> old = FindText(archive, name);
    if (old) archive.ReplaceRange(old->from, old->to, text);
}

void RenameSheet(TextBuffer& archive, std::string_view oldName, std::string_view newName) {
    const std::optional<Piece> text = FindText(archive, oldName);
    if (!text) return;
    const auto keyLength = static_cast<std::int32_t>(oldName.size() + 2);
    archive.ReplaceRange(text->from - keyLength, text->from, SearchKey(newName));
}

void DeleteSheet(TextBuffer& archive, std::string_view name) {
    const std::optional<Piece> entry = FindEntry(archive, name);
    if (entry) archive.DeleteRange(entry->from, entry->to);
}

bool MoveSheetUp(TextBuffer& archive, std::string_view name) {
    const std::optional<Piece> entry = FindEntry(archive, name);
    if (!entry) return false;
    const std::optional<std::int32_t> previous = archive.FindBackwards(nameMark, entry->from - 1);
    if (!previous) return false;
    SwapNeighbours(archive, *previous, entry->from, entry->to);
    return true;
}

bool MoveSheetDown(TextBuffer& archive, std::string_view name) {
    const std::optional<Piece> entry = FindEntry(archive, name);
    if (!entry) return false;
    const std::string_view text = archive.SearchableView();
    const auto next = static_cast<std::size_t>(entry->to);
    if (next == text.size()) return false;
    const Piece following = PieceOf(next, EntryEnd(text, next + 1));
    SwapNeighbours(archive, entry->from, following.from, following.to);
    return true;
}

}  // namespace orvane
