#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace orvane {

// From a name to the numbers that bear it, in ascending order. It holds numbers and hashes alone,
// sixteen bytes a name; the names stay with their owner, who is asked for one again only where the
// hashes agree.
class NameIndex {
public:
    using NameOf = std::function<std::string_view(int number)>;

    static constexpr int none = -1;

    // Takes the numbers from 0 to count - 1, leaving out those with an empty name.
    void Read(int count, const NameOf& nameOf);

    // The lowest number with this name; none if there is none.
    int First(std::string_view name, const NameOf& nameOf) const;
    // The next number with the name of this one; none if it is the last.
    int Next(int number) const { return next.empty() ? none : next[At(number)]; }

private:
    struct Slot {
        std::int32_t number = none;
        std::uint32_t hash = 0;
    };

    static std::size_t At(int number) { return static_cast<std::size_t>(number); }
    static std::size_t HashOf(std::string_view name);
    std::size_t FindSlot(std::string_view name, std::size_t hash, const NameOf& nameOf) const;

    std::vector<Slot> cells;         // open addressing, a power of two, at most half full
    std::vector<std::int32_t> next;  // empty as long as no name stands twice
};

}  // namespace orvane
