#include "functions/body_program.h"

#include <algorithm>
#include <cmath>

#include "core/function_node.h"
#include "functions/scalar_call.h"

namespace orvane {

namespace {

constexpr std::size_t mostBranches = 3;

// Which branch an element takes: the rules of `if`.
std::size_t BranchOf(double condition, std::size_t branches) {
    if (branches == 2) return condition != 0.0 ? 0 : 1;
    if (condition < 0.0) return 0;
    return condition == 0.0 ? 1 : 2;
}

}  // namespace

const double* BodyProgram::Run(const double* x, std::size_t count, GapWork* gaps) {
    cells[variablePlace] = x;
    if (!RunSteps(0, static_cast<std::uint32_t>(steps.size()), count, gaps)) return nullptr;
    return cells[result];
}

bool BodyProgram::RunSteps(std::uint32_t begin, std::uint32_t end, std::size_t count,
                           GapWork* gaps) {
    const std::size_t padded = PaddedCount(count);
    for (std::uint32_t at = begin; at < end;) {
        const Step& step = steps[at];
        switch (step.kind) {
            case Step::Kind::kernel:
                if (step.kernel(cells[step.a], cells[step.b], Room(step.out), padded)) return false;
                ++at;
                break;
            case Step::Kind::body:
                if (!RunBody(step, count)) return false;
                ++at;
                break;
            case Step::Kind::choice:
                if (!RunChoice(step, count)) return false;
                at = step.end;
                break;
        }
        if (gaps != nullptr) gaps->Advance(end - begin);
    }
    return true;
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

// Only the elements that take a branch run through it, so nothing is evaluated that the choice
// guards.
bool BodyProgram::RunChoice(const Step& step, std::size_t count) {
    const double* const condition = cells[step.a];
    std::array<std::array<std::uint8_t, columnLength>, mostBranches> takers;
    std::array<std::size_t, mostBranches> taken{};
    for (std::size_t element = 0; element < count; ++element) {
        const std::size_t branch = BranchOf(condition[element], step.count);
        takers[branch][taken[branch]++] = static_cast<std::uint8_t>(element);
    }
    double* const out = Room(step.out);
    const double* const x = cells[step.b];
    for (std::size_t i = 0; i < step.count; ++i) {
        if (taken[i] == 0) continue;
        const Branch& branch = branches[step.first + i];
        const std::size_t padded = PaddedCount(taken[i]);
        if (taken[i] == count) {
            cells[branch.variable] = x;
        } else {
            double* const own = Room(branch.variable);
            for (std::size_t j = 0; j < taken[i]; ++j) own[j] = x[takers[i][j]];
            std::fill(own + taken[i], own + padded, own[taken[i] - 1]);
            cells[branch.variable] = own;
        }
        if (!RunSteps(branch.begin, branch.end, taken[i], nullptr)) return false;
        const double* const values = cells[branch.result];
        if (taken[i] == count) {
            std::copy(values, values + padded, out);
        } else {
            for (std::size_t j = 0; j < taken[i]; ++j) out[takers[i][j]] = values[j];
        }
    }
    std::fill(out + count, out + PaddedCount(count), out[count - 1]);
    return true;
}

}  // namespace orvane
