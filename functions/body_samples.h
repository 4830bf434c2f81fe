#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "functions/body_program_builder.h"
#include "functions/column_kernels.h"
#include "functions/step_call.h"

// The values of a sweep's body on a grid, a block at a time, and sums over them. What a block can't
// do, and a block in which something fails, is left to the tree from the block's first place on: so
// messages, what was recorded until then and the state left behind are those of the tree.

namespace orvane {

// The place `index` has the number index * step + lower.
struct SweepGrid {
    double lower = 0.0;
    double step = 0.0;
};

// Walks the places from 0 to the one before `places` in blocks.
struct GridBlock {
    std::int64_t first = 0;
    std::size_t count = 0;

    static GridBlock First(std::int64_t places) { return At(0, places); }
    GridBlock Next(std::int64_t places) const {
        return At(first + static_cast<std::int64_t>(count), places);
    }
    bool IsEmpty() const { return count == 0; }

private:
    static GridBlock At(std::int64_t first, std::int64_t places) {
        const auto most = static_cast<std::int64_t>(columnLength);
        return {first, static_cast<std::size_t>(std::min(most, places - first))};
    }
};

// Room for a block, with one more element in front. Nothing stands there until it is written: a
// sweep of a few steps does not pay for the room.
struct SampleColumn {
    alignas(64) std::array<double, columnLength + columnStride> cells;

    double* Block() { return cells.data() + columnStride; }
    // -1 is the one in front of the block.
    double At(std::int64_t index) const { return cells[columnStride + index]; }
    void SetInFront(double sample) { cells[columnStride - 1] = sample; }
};

class BodySamples {
public:
    BodySamples(const StepCall& sweep, FunctionNode& node,
                NestedRule sweepsInside = NestedRule::never)
        : call(sweep), body(node), nestedRule(sweepsInside) {}

    // The body's values at the places of a block, until the next call; null where the tree has to
    // do them, and the body is as the tree left it in front of the block then. The padding behind
    // holds values of the block.
    const double* Fill(const SweepGrid& grid, const GridBlock& block);
    // The same into a column, and null as well where a value is not finite.
    bool FillFinite(const SweepGrid& grid, const GridBlock& block, SampleColumn& samples);
    // Some terms of `side` are taken meanwhile.
    bool FillFinite(const SweepGrid& grid, const GridBlock& block, SampleColumn& samples,
                    SideFold& side);
    // Behind each block that was filled finite, where sweeps may be nested in the body: it is used,
    // and they step the progress; or the tree does it for another reason, and they do it again.
    void UseBlock();
    void LeaveBlock();
    // The place that the sweep has come to since, where it takes blocks apart: done by a block, or
    // by the tree.
    void Visit(double number) { lastNumber = number; }
    void VisitByTree() { lastNumber.reset(); }
    // Behind the last place of all: leaves the body as the tree leaves it there, with no progress.
    // Does nothing when the last block was the tree's.
    void Settle();

private:
    // A shorter block is not worth the preparation; that of a body which is but a number or a
    // variable needs more of them.
    static constexpr std::size_t fewestPlaces = 32;
    static constexpr std::size_t fewestOfLeaf = 128;

    bool HasProgramFor(const GridBlock& block);
    bool Prepare(const SweepGrid& grid, const GridBlock& block, SideFold& side);
    void TakeNote(const GridBlock& block, bool isFilled);
    void TakeNestedBack();

    const StepCall& call;
    FunctionNode& body;
    NestedRule nestedRule;
    std::unique_ptr<BodyProgram> program;  // none behind the preparation: all is the tree's
    bool isPrepared = false;
    std::optional<double> lastNumber;  // the newest one, where the tree did not do it
};

// A sum or a product in the order of the grid. It lags behind by one block, whose terms are taken
// on the side of the operations on the next one.
class OrderedFold {
public:
    static OrderedFold Sum() { return OrderedFold(0.0, false); }
    static OrderedFold Product() { return OrderedFold(1.0, true); }

    SideFold& Side() { return side; }
    void Finish() { side.Finish(); }
    // Room for the terms of a block, to be handed over by Start.
    SampleColumn& Room() { return columns[current ^ 1]; }
    // The terms in the room from `begin` to `end` are next.
    void Start(std::size_t begin, std::size_t end) {
        Finish();
        current ^= 1;
        side.next = columns[current].Block() + begin;
        side.end = columns[current].Block() + end;
    }
    // Behind all terms that were handed over.
    void Add(double term) { side.total = side.multiplies ? side.total * term : side.total + term; }
    double Total() const { return side.total; }

private:
    OrderedFold(double start, bool multiplies) : side{start, multiplies} {}

    SideFold side;
    std::size_t current = 0;
    SampleColumn columns[2];
};

}  // namespace orvane
