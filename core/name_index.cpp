#include "core/name_index.h"

#include <bit>

namespace orvane {

void NameIndex::Read(int count, const NameOf& nameOf) {
    cells.assign(std::bit_ceil(At(count) * 2 + 2), Slot{});
    next.clear();
    // From the last number to the first, so that the lowest one ends up in the slot.
    for (int number = count - 1; number >= 0; --number) {
        const std::string_view name = nameOf(number);
        if (name.empty()) continue;
        const std::size_t hash = HashOf(name);
        Slot& slot = cells[FindSlot(name, hash, nameOf)];
        if (slot.number != none) {
            if (next.empty()) next.assign(At(count), none);
            next[At(number)] = slot.number;
        }
        slot = {number, static_cast<std::uint32_t>(hash)};
    }
}

int NameIndex::First(std::string_view name, const NameOf& nameOf) const {
    return cells.empty() ? none : cells[FindSlot(name, HashOf(name), nameOf)].number;
}

std::size_t NameIndex::HashOf(std::string_view name) { return std::hash<std::string_view>()(name); }

// The slot that holds the name, or the free one where it would be put.
std::size_t NameIndex::FindSlot(std::string_view name, std::size_t hash,
                                const NameOf& nameOf) const {
    const std::size_t mask = cells.size() - 1;
    const auto shortHash = static_cast<std::uint32_t>(hash);
    std::size_t at = (hash >> 32) & mask;  // other bits than those that are kept
    while (cells[at].number != none &&
           (cells[at].hash != shortHash || nameOf(cells[at].number) != name)) {
        at = (at + 1) & mask;
    }
    return at;
}

}  // namespace orvane
