#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

// Sheets with one sweep each, its body written at random: every function that takes numbers, every
// operator, choices, brackets, sweeps inside sweeps, names of formulas in front, and now and then
// what fails or gives no number. The same seed writes the same sheets everywhere.

namespace orvane::test {

// How a sweep is written.
struct SweepWords {
    std::string_view name;
    bool stepIsGiven = false;  // in place of the right end
    int bodies = 1;
    bool hasOption = false;  // one that counts
    int samplesPerStep = 1;  // on the grid
    int mostSteps = 600;
};

class RandomSweeps {
public:
    explicit RandomSweeps(std::uint64_t seed) : source(seed) {}

    std::string Sheet(const SweepWords& sweep);

private:
    // What the grid of a sweep is, for terms that fail at one place of it.
    struct Grid {
        double lower = 0.0;
        double step = 0.0;  // from one place to the next
        int steps = 0;
        int places = 0;
    };

    std::uint32_t Below(std::uint32_t limit) {
        return static_cast<std::uint32_t>((source() >> 32) % limit);
    }
    bool OneIn(std::uint32_t count) { return Below(count) == 0; }
    template <typename Item, std::size_t size>
    const Item& OneOf(const Item (&items)[size]) {
        return items[Below(static_cast<std::uint32_t>(size))];
    }

    Grid RandomGrid(const SweepWords& sweep);
    std::string Body(const Grid& grid);
    std::string FailingTerm(const Grid& grid);
    std::string Term(int depth);
    std::string Operation(int depth);
    std::string Call(int depth);
    std::string Choice(int depth);
    std::string Oddity(int depth);
    std::string InnerSweep(int depth);
    std::string InnerCount(int most);
    std::string Leaf();
    std::string Parameters(int count, int depth);

    std::mt19937_64 source;
    std::string variables;                  // of the sweeps around what is written, one letter each
    std::vector<std::size_t> usedFormulas;  // places in the list of those in front
    bool hasInnerSweeps = false;
    Grid outerGrid;
};

}  // namespace orvane::test
