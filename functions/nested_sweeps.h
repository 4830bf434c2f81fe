#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/calc_parameters.h"
#include "core/function_node.h"
#include "core/run_stop.h"
#include "functions/keyword_table.h"

// The sweeps that stand inside the body of another one, while that one goes over columns. Each is
// run for one element after the other, as the tree runs it: it is a single operation to the columns
// around it.
//
// What it does besides giving its number must come out as if the tree had done all. Progress steps
// are held back until the whole block stands, and where the block does not, the variables of the
// nested sweeps are put back to what they were in front of it: nothing else in the body outlasts
// the next value of the outer variable.

namespace orvane {

class NestedSweeps {
public:
    // In a body that is swept by `call`; the name is that of its variable.
    NestedSweeps(const FamilyCall& call, std::string_view variableName);

    // Whether a node may be one of them, apart from what lies under it.
    static bool CanBe(const FunctionNode& node);
    // A sweep with more below it takes so long that what is around it makes no difference.
    static constexpr std::size_t mostNodes = 64;

    void Add(FunctionNode& node);

    // In front of a block of that many elements.
    void Begin(std::size_t count);
    // The number of a nested sweep where the outer variable is `x`. False where the tree has to do
    // the block: `error` may have a text, or there is no single number.
    bool Evaluate(FunctionNode& node, double x, double& number, std::string& error) const;
    // The block stands.
    void HandOnSteps();
    // The tree does the block.
    void TakeBack();

private:
    // Asks the nested sweeps to stop when they step too often: nobody should wait for a sign of
    // life until a block of long ones stands.
    class HeldSteps : public Progress {
    public:
        explicit HeldSteps(const RunStop* stop) : tooMany(stop) {}
        void Step() override {
            if (++held > most) tooMany.Ask();
        }

        RunStop tooMany;
        std::size_t held = 0;
        std::size_t most = 0;
    };
    struct Variable {
        FunctionNode* node;
        Value value;  // in front of the block
        bool evaluated;
    };
    // More steps than one for each run.
    static constexpr std::size_t extraSteps = 64;

    Progress* const progress;  // that of the run around them; none: nobody watches
    HeldSteps steps;
    CalcParameters parameters;  // those of the run, with what is above in their place
    int sentence;
    std::string_view outerVariable;
    std::size_t sweeps = 0;
    std::vector<Variable> variables;
};

}  // namespace orvane
