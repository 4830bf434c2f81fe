#include "core/name_index.h"

#include <bit>

namespace orvane {

void NameIndex::Read(int count, const NameOf& nameOf) {
    slots.assign(std::bit_ceil(At(count) * 2 + 2), none);
    next.clear();
    // From the last number to the first, so that the lowest one ends up in the slot.
    for (int number = count - 1; number >= 0; --number) {
        const std::string_view name = nameOf(number);
        if (name.empty()) continue;
        std::int32_t& slot = slots[FindSlot(name, nameOf)];
        if (slot != none) {
            if (next.empty()) next.assign(At(count), none);
            next[At(number)] = slot;
        }
        slot = number;
    }
}

int NameIndex::First(std::string_view name, const NameOf& nameOf) const {
    return slots.empty() ? none : slots[FindSlot(name, nameOf)];
}

// The slot that holds the name, or the free one where it would be put.
std::size_t NameIndex::FindSlot(std::string_view name, const NameOf& nameOf) const {
    const std::size_t mask = slots.size() - 1;
    std::size_t slot = std::hash<std::string_view>()(name) & mask;
    while (slots[slot] != none && nameOf(slots[slot]) != name) slot = (slot + 1) & mask;
    return slot;
}

}  // namespace orvane
