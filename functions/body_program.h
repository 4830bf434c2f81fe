#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "functions/column_kernels.h"
#include "functions/keyword_table.h"
#include "functions/nested_sweeps.h"

// The body of a sweep as a flat list of operations over columns, one column element for each value
// of the variable. It covers bodies whose values are all single numbers: numbers, names of earlier
// formulas, variables, the number and bit functions, operators, comparisons, `if`, brackets with
// one value and sweeps nested one deep. Every element gets the very bits that evaluation of the
// tree gives.

namespace orvane {

class BodyProgram {
public:
    // Empty; BodyProgramBuilder fills it. `call` is that of the sweep.
    explicit BodyProgram(const FamilyCall& call) : family(call) {}

    // None where no sweep is nested in the body. Whoever runs the program tells them about blocks.
    NestedSweeps* Nested() { return nested.get(); }

    // Room for the numbers of a run, a column of it.
    double* Numbers() { return Room(variablePlace); }

    // Gives the body's value for each of the `count` numbers in `x`, at most columnLength; both
    // columns have room for the padded count. Null where evaluation of the tree would fail at one
    // of them. The column stays as it is until the next run. Some terms of `side` are taken.
    const double* Run(const double* x, std::size_t count, SideFold& side);
    // The same into `out`, and false as well where a value is not finite.
    bool RunFinite(const double* x, std::size_t count, double* out, SideFold& side);

private:
    friend class BodyProgramBuilder;
    using Place = std::uint32_t;  // of a column

    struct alignas(64) Column {
        std::array<double, columnLength> cells;
    };

    // One operation: a kernel, or a body that is called for each element, or a nested sweep that is
    // run for each, or a choice.
    struct Step {
        enum class Kind : std::uint8_t { kernel, body, sweep, choice } kind = Kind::kernel;
        bool tested = false;  // of `body`: what is not finite fails
        Place out = 0;
        // Of `kernel`; of `choice`: what decides, and the variable; of `sweep`: the variable.
        Place a = 0, b = 0, c = 0;
        ColumnKernel kernel;
        ValueBody alone = nullptr;     // of `kernel`: an operator that may go into a pair
        std::size_t rounds = 0;        // of `kernel`, wished for on the side
        FunctionNode* node = nullptr;  // of `body` and `sweep`
        std::uint32_t first = 0;       // of `body`, in `operands`; of `choice`, in `branches`
        std::uint32_t count = 0;       // of operands or branches
        std::uint32_t end = 0;         // of `choice`: the step behind its branches
    };
    // A branch has a variable column of its own, which holds the elements that come to it.
    struct Branch {
        std::uint32_t begin = 0, end = 0;  // steps
        Place variable = 0;
        Place result = 0;
    };

    static constexpr Place variablePlace = 0;

    bool RunSteps(std::uint32_t begin, std::uint32_t end, std::size_t count, SideFold& side);
    bool RunKernel(const ColumnKernel& kernel, const Step& step, double* out, std::size_t count,
                   SideFold& side);
    bool RunBody(const Step& step, std::size_t count);
    bool RunSweep(const Step& step, std::size_t count);
    bool RunChoice(const Step& step, std::size_t count, SideFold& side);
    bool RunBranch(const Branch& branch, const double* x, std::size_t count, SideFold& side);
    double* Room(Place place) { return columns[place].cells.data(); }

    FamilyCall family;
    std::deque<Column> columns;
    std::vector<const double*> cells;  // of each place: its column, or the one that stands for it
    std::vector<Step> steps;
    std::vector<Place> operands;
    std::vector<Branch> branches;
    std::vector<double> parameters;  // of one call of a body
    std::unique_ptr<NestedSweeps> nested;
    std::string failure;  // written by bodies; the tree says it again where it counts
    Place result = 0;
    ColumnKernel finish;  // in place of the last step's: what is not finite fails; may be none
};

}  // namespace orvane
