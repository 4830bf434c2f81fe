#include "functions/body_program.h"

#include <algorithm>
#include <cmath>

#include "core/function_node.h"
#include "functions/scalar_call.h"

namespace orvane {

namespace {

constexpr std::size_t mostBranches = 3;

// The elements that take one branch.
struct Takers {
    std::array<std::uint16_t, columnLength> elements;
    std::size_t count = 0;
};

// Which branch an element takes: the rules of `if`.
std::size_t BranchOf(double condition, std::size_t branches) {
    if (branches == 2) return condition != 0.0 ? 0 : 1;
    if (condition < 0.0) return 0;
    return condition == 0.0 ? 1 : 2;
}

}  // namespace

const double* BodyProgram::Run(const double* x, std::size_t count, SideFold& side) {
    cells[variablePlace] = x;
    if (!RunSteps(0, static_cast<std::uint32_t>(steps.size()), count, side)) return nullptr;
    return cells[result];
}

bool BodyProgram::RunFinite(const double* x, std::size_t count, double* out, SideFold& side) {
    if (finish == nullptr) {
        const double* const values = Run(x, count, side);
        return values != nullptr && !CopyFinite(values, out, PaddedCount(count));
    }
    cells[variablePlace] = x;
    const Step& last = steps.back();
    return RunSteps(0, static_cast<std::uint32_t>(steps.size() - 1), count, side) &&
           RunKernel(finish, last, out, count, side);
}

bool BodyProgram::RunSteps(std::uint32_t begin, std::uint32_t end, std::size_t count,
                           SideFold& side) {
    for (std::uint32_t at = begin; at < end;) {
        const Step& step = steps[at];
        switch (step.kind) {
            case Step::Kind::kernel:
                if (!RunKernel(step.kernel, step, Room(step.out), count, side)) return false;
                ++at;
                break;
            case Step::Kind::body:
                if (!RunBody(step, count)) return false;
                ++at;
                break;
            case Step::Kind::sweep:
                if (!RunSweep(step, count)) return false;
                ++at;
                break;
            case Step::Kind::choice:
                if (!RunChoice(step, count, side)) return false;
                at = step.end;
                break;
        }
    }
    return true;
}

bool BodyProgram::RunKernel(const ColumnKernel& kernel, const Step& step, double* out,
                            std::size_t count, SideFold& side) {
    const std::size_t padded = PaddedCount(count);
    const std::size_t rounds = side.RoundsOf(step.rounds, padded);
    return !kernel.loop({cells[step.a], cells[step.b], cells[step.c]}, out, padded, side, rounds);
}

bool BodyProgram::RunBody(const Step& step, std::size_t count) {
    const FamilyCall call{*step.node, step.node->keyword, family.sentence, family.parameters,
                          failure};
    double* const out = Room(step.out);
    for (std::size_t element = 0; element < count; ++element) {
        for (std::uint32_t i = 0; i < step.count; ++i) {
            parameters[i] = cells[operands[step.first + i]][element];
        }
        ScalarCall scalars{{parameters.data(), step.count}, call};
        out[element] = step.node->keyword->body.scalar(scalars);
        if (!failure.empty() || (step.tested && !std::isfinite(out[element]))) {
            failure.clear();
            return false;
        }
    }
    std::fill(out + count, out + PaddedCount(count), out[count - 1]);
    return true;
}

bool BodyProgram::RunSweep(const Step& step, std::size_t count) {
    const double* const x = cells[step.a];
    double* const out = Room(step.out);
    for (std::size_t element = 0; element < count; ++element) {
        if (nested->Evaluate(*step.node, x[element], out[element], failure)) continue;
        failure.clear();
        return false;
    }
    std::fill(out + count, out + PaddedCount(count), out[count - 1]);
    return true;
}

// Only the elements that take a branch run through it, so nothing is evaluated that the choice
// guards.
bool BodyProgram::RunChoice(const Step& step, std::size_t count, SideFold& side) {
    const double* const condition = cells[step.a];
    const double* const x = cells[step.b];
    double* const out = Room(step.out);
    if (IsOfOneKind(condition, PaddedCount(count), step.count == 3)) {
        // The usual thing: a grid goes through its ranges one after the other.
        const std::size_t first = BranchOf(condition[0], step.count);
        const Branch& branch = branches[step.first + first];
        if (!RunBranch(branch, x, count, side)) return false;
        const double* const values = cells[branch.result];
        // Behind the last choice nothing writes into the branch's column any more.
        const bool isLast = step.end == steps.size();
        cells[step.out] = isLast ? values : out;
        if (!isLast) std::copy_n(values, PaddedCount(count), out);
        return true;
    }

    cells[step.out] = out;
    // All at once: a branch may use the condition's column for something else.
    std::array<Takers, mostBranches> takers;
    for (std::size_t i = 0; i < step.count; ++i) {
        for (std::size_t element = 0; element < count; ++element) {
            takers[i].elements[takers[i].count] = static_cast<std::uint16_t>(element);
            takers[i].count += BranchOf(condition[element], step.count) == i ? 1 : 0;
        }
    }
    for (std::size_t i = 0; i < step.count; ++i) {
        const auto& [elements, taken] = takers[i];
        if (taken == 0) continue;
        const Branch& branch = branches[step.first + i];
        double* const own = Room(branch.variable);
        for (std::size_t j = 0; j < taken; ++j) own[j] = x[elements[j]];
        std::fill(own + taken, own + PaddedCount(taken), own[taken - 1]);
        if (!RunBranch(branch, own, taken, side)) return false;
        const double* const values = cells[branch.result];
        for (std::size_t j = 0; j < taken; ++j) out[elements[j]] = values[j];
    }
    std::fill(out + count, out + PaddedCount(count), out[count - 1]);
    return true;
}

bool BodyProgram::RunBranch(const Branch& branch, const double* x, std::size_t count,
                            SideFold& side) {
    cells[branch.variable] = x;
    return RunSteps(branch.begin, branch.end, count, side);
}

}  // namespace orvane
