#include "functions/body_samples.h"

#include <algorithm>

#include "core/calc_parameters.h"
#include "core/function_node.h"

namespace orvane {

bool BodySamples::HasProgramFor(const GridBlock& block) {
    if (!isPrepared) {
        const std::size_t fewest = body.children.empty() ? fewestOfLeaf : fewestPlaces;
        if (block.count < fewest || !call.family.parameters.sweepByColumns) return false;
        program = BodyProgramBuilder::Build(call.family, body, call.variableName, nestedRule);
        isPrepared = true;
    }
    return program != nullptr;
}

// False where the block is the tree's.
bool BodySamples::Prepare(const SweepGrid& grid, const GridBlock& block, SideFold& side) {
    if (call.Failed() || !HasProgramFor(block)) return false;
    if (program->Nested() != nullptr) program->Nested()->Begin(block.count);
    double* const numbers = program->Numbers();
    FillGrid(numbers, block.first, grid.step, grid.lower, PaddedCount(block.count), side);
    // What stands behind the last place must not fail where the block does not.
    std::fill(numbers + block.count, numbers + PaddedCount(block.count), numbers[block.count - 1]);
    return true;
}

const double* BodySamples::Fill(const SweepGrid& grid, const GridBlock& block) {
    SideFold nothing;
    if (!Prepare(grid, block, nothing)) {
        Settle();
        return nullptr;
    }
    const double* const values = program->Run(program->Numbers(), block.count, nothing);
    TakeNote(block, values != nullptr);
    return values;
}

bool BodySamples::FillFinite(const SweepGrid& grid, const GridBlock& block, SampleColumn& samples,
                             SideFold& side) {
    if (!Prepare(grid, block, side)) {
        Settle();
        return false;
    }
    const bool isFilled =
        program->RunFinite(program->Numbers(), block.count, samples.Block(), side);
    TakeNote(block, isFilled);
    return isFilled;
}

bool BodySamples::FillFinite(const SweepGrid& grid, const GridBlock& block, SampleColumn& samples) {
    SideFold nothing;
    return FillFinite(grid, block, samples, nothing);
}

// Behind a block that was tried.
void BodySamples::TakeNote(const GridBlock& block, bool isFilled) {
    if (isFilled) {
        lastNumber = program->Numbers()[block.count - 1];
    } else {
        TakeNestedBack();
        Settle();
    }
}

// There is no other try: what is nested in the block is done twice.
void BodySamples::TakeNestedBack() {
    if (program->Nested() == nullptr) return;
    program->Nested()->TakeBack();
    program.reset();
}

void BodySamples::UseBlock() {
    if (program->Nested() != nullptr) program->Nested()->HandOnSteps();
}

void BodySamples::LeaveBlock() {
    TakeNestedBack();
    VisitByTree();
}

void BodySamples::Settle() {
    if (!lastNumber) return;
    CalcParameters parameters = call.family.parameters;
    parameters.progress = nullptr;  // the block had it
    const FamilyCall family = {call.family.node, call.family.keyword, call.family.sentence,
                               parameters, call.family.errorText};
    StepCall silent{family};
    silent.variableName = call.variableName;
    double value = 0.0;
    EvaluateBody(silent, body, *lastNumber, false, value);
    lastNumber.reset();
}

}  // namespace orvane
