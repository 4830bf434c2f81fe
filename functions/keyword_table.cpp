#include "functions/keyword_table.h"

#include <algorithm>

namespace orvane {

namespace {

// Indexed by group. Kept: the complex builder has no word of its own.
constexpr std::array<std::string_view, keywordGroupCount> groupWords = {
    "constant", "header", "bits",     "normal",    "string", "point",
    "vector",   "matrix", "variable", "condition", "normal", "unknown"};

struct ConstantWord {
    std::string_view name;
    std::size_t lettersCompared;  // of a word that is as long as the name
    double value;
    std::string_view text;
};

// Kept: two letters stand for `false`, so "falls" and "fanny" are 0 as well.
constexpr ConstantWord constantWords[] = {
    {"e", 1, 2.718281828459045, "2.718281828459045235360287471352"},
    {"pi", 2, 3.141592653589793, "3.141592653589793238462643383279"},
    {"true", 4, 1.0, "+1"},
    {"false", 2, 0.0, "0"},
};

const ConstantWord* FindConstant(std::string_view word) {
    for (const ConstantWord& constant : constantWords) {
        if (word.size() != constant.name.size()) continue;
        const std::size_t letters = constant.lettersCompared;
        if (word.substr(0, letters) == constant.name.substr(0, letters)) return &constant;
    }
    return nullptr;
}

// The name's character at that position, NUL behind its end.
char CharacterAt(std::string_view name, std::size_t position) {
    return position < name.size() ? name[position] : '\0';
}

bool HasLowerName(const KeywordEntry* left, const KeywordEntry* right) {
    return std::string_view(left->name) < right->name;
}

}  // namespace

KeywordTable::KeywordTable() {
    std::transform(keywordRows.begin(), keywordRows.end(), sorted.begin(),
                   [](const KeywordEntry& row) { return &row; });
    std::sort(sorted.begin(), sorted.end(), HasLowerName);
    static_assert(keywordCount < 256);
    for (std::size_t row = 0; row < sorted.size(); ++row) {
        sortedNames[row] = sorted[row]->name;
        std::size_t slot = FirstSlot(sortedNames[row]);
        while (nameSlots[slot] != 0) slot = (slot + 1) % slotCount;
        nameSlots[slot] = static_cast<std::uint8_t>(row + 1);
    }
}

// By the length and four of the characters; the walk behind it compares the names.
std::size_t KeywordTable::FirstSlot(std::string_view name) {
    const auto code = [&](std::size_t at) -> std::size_t {
        return static_cast<unsigned char>(name[at]);
    };
    const std::size_t size = name.size();
    const std::size_t mixed =
        size + code(0) * 7 + code(size / 4) * 31 + code(size / 2) * 127 + code(size - 1) * 289;
    return mixed % slotCount;
}

const KeywordEntry* KeywordTable::Find(std::string_view name) const {
    if (name.empty()) return nullptr;
    for (std::size_t slot = FirstSlot(name); nameSlots[slot] != 0; slot = (slot + 1) % slotCount) {
        const std::size_t row = nameSlots[slot] - std::size_t{1};
        if (sortedNames[row] == name) return sorted[row];
    }
    return nullptr;
}

const KeywordEntry* KeywordTable::FindFunction(std::string_view name) const {
    const KeywordEntry* row = Find(name);
    const bool canBeCalled = row != nullptr && row->group != KeywordGroup::constant &&
                             row->group != KeywordGroup::header;
    return canBeCalled ? row : nullptr;
}

bool KeywordTable::IsHeader(std::string_view name) const {
    const KeywordEntry* row = Find(name);
    return row != nullptr && row->group == KeywordGroup::header;
}

bool KeywordTable::IsStringFunction(std::string_view name) const {
    const KeywordEntry* row = Find(name);
    return row != nullptr && row->group == KeywordGroup::string;
}

int KeywordTable::FindByPrefix(std::string_view typed) const {
    int found = -1;
    std::size_t row = 0;
    for (std::size_t position = 0; position < typed.size(); ++position) {
        // Kept: only this one character of a row is compared, not the ones ahead of it, so the
        // walk can come to rest on a row that begins otherwise. The list jumps as its users know.
        while (typed[position] != CharacterAt(sorted[row]->name, position)) {
            const bool isLower = typed[position] < CharacterAt(sorted[row]->name, position);
            if (isLower || row + 1 == sorted.size()) return found;
            ++row;
        }
        found = static_cast<int>(row);
    }
    return found;
}

std::optional<double> KeywordTable::ConstantValue(std::string_view word) {
    const ConstantWord* constant = FindConstant(word);
    return constant != nullptr ? std::optional(constant->value) : std::nullopt;
}

std::optional<std::string_view> KeywordTable::ConstantText(std::string_view word) {
    const ConstantWord* constant = FindConstant(word);
    return constant != nullptr ? std::optional(constant->text) : std::nullopt;
}

KeywordTable::WidestTexts KeywordTable::LongestNames() const {
    const KeywordEntry* longest = *std::max_element(
        sorted.begin(), sorted.end(), [](const KeywordEntry* left, const KeywordEntry* right) {
            return std::string_view(left->name).size() < std::string_view(right->name).size();
        });
    return {longest->name, groupWords[static_cast<std::size_t>(KeywordGroup::condition)]};
}

std::string_view KeywordTable::GroupWord(const KeywordEntry& entry) {
    const auto group = static_cast<std::size_t>(entry.group);
    return group < groupWords.size() ? groupWords[group] : "unknown";
}

const KeywordTable keywordTable;

const FamilyEntry& FamilyOf(KeywordGroup group) {
    return familyRows[static_cast<std::size_t>(group)];
}

}  // namespace orvane
