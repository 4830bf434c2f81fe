#include "functions/body_samples.h"

#include "core/calc_parameters.h"
#include "core/function_node.h"
#include "functions/body_program_builder.h"

namespace orvane {

BodySamples::BodySamples(const StepCall& sweep, FunctionNode& node, std::int64_t places)
    : call(sweep), body(node) {
    if (places < fewestPlaces || !call.family.parameters.sweepByColumns) return;
    program = BodyProgramBuilder::Build(call.family, body, call.variableName);
}

const double* BodySamples::Fill(const SweepGrid& grid, const GridBlock& block, GapWork* gaps) {
    lastNumber.reset();
    if (!program || call.Failed()) return nullptr;
    FillGrid(numbers.data(), block.first, grid.step, grid.lower, PaddedCount(block.count));
    // What stands behind the last place must not fail where the block does not.
    const double last = numbers[block.count - 1];
    std::fill(numbers.begin() + static_cast<long>(block.count),
              numbers.begin() + static_cast<long>(PaddedCount(block.count)), last);
    const double* const values = program->Run(numbers.data(), block.count, gaps);
    if (values != nullptr) lastNumber = last;
    return values;
}

bool BodySamples::FillFinite(const SweepGrid& grid, const GridBlock& block, SampleColumn& samples,
                             GapWork* gaps) {
    const double* const values = Fill(grid, block, gaps);
    if (values == nullptr) return false;
    if (!CopyFinite(values, samples.Block(), PaddedCount(block.count))) return true;
    lastNumber.reset();
    return false;
}

void BodySamples::Settle() {
    if (!lastNumber) return;
    double value = 0.0;
    EvaluateBody(call, body, *lastNumber, false, value);
    lastNumber.reset();
}

}  // namespace orvane
