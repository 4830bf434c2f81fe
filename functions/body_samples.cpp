#include "functions/body_samples.h"

#include <algorithm>

#include "core/calc_parameters.h"
#include "core/function_node.h"
#include "functions/body_program_builder.h"

namespace orvane {

bool BodySamples::HasProgramFor(const GridBlock& block) {
    if (!isPrepared) {
        const std::size_t fewest = body.children.empty() ? fewestOfLeaf : fewestPlaces;
        if (block.count < fewest || !call.family.parameters.sweepByColumns) return false;
        program = BodyProgramBuilder::Build(call.family, body, call.variableName);
        isPrepared = true;
    }
    return program != nullptr;
}

// False where the block is the tree's.
bool BodySamples::Prepare(const SweepGrid& grid, const GridBlock& block, SideFold& side) {
    if (call.Failed() || !HasProgramFor(block)) return false;
    double* const numbers = program->Numbers();
    FillGrid(numbers, block.first, grid.step, grid.lower, PaddedCount(block.count), side);
    // What stands behind the last place must not fail where the block does not.
    std::fill(numbers + block.count, numbers + PaddedCount(block.count), numbers[block.count - 1]);
    return true;
}

const double* BodySamples::Fill(const SweepGrid& grid, const GridBlock& block) {
    SideFold nothing;
    const double* values = nullptr;
    if (Prepare(grid, block, nothing))
        values = program->Run(program->Numbers(), block.count, nothing);
    TakeNote(block, values != nullptr);
    return values;
}

bool BodySamples::FillFinite(const SweepGrid& grid, const GridBlock& block, SampleColumn& samples,
                             SideFold& side) {
    const bool isFilled =
        Prepare(grid, block, side) &&
        program->RunFinite(program->Numbers(), block.count, samples.Block(), side);
    TakeNote(block, isFilled);
    return isFilled;
}

bool BodySamples::FillFinite(const SweepGrid& grid, const GridBlock& block, SampleColumn& samples) {
    SideFold nothing;
    return FillFinite(grid, block, samples, nothing);
}

void BodySamples::TakeNote(const GridBlock& block, bool isFilled) {
    if (isFilled) {
        lastNumber = program->Numbers()[block.count - 1];
    } else {
        Settle();
    }
}

void BodySamples::Settle() {
    if (!lastNumber) return;
    double value = 0.0;
    EvaluateBody(call, body, *lastNumber, false, value);
    lastNumber.reset();
}

}  // namespace orvane
