#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "core/function_node.h"
#include "functions/body_program.h"

// Walks a body once and writes down its operations.

namespace orvane {

// Whether sweeps may be nested in a body. They may where a block is used as a whole or not at all.
enum class NestedRule { never, inWholeBlocks };

class BodyProgramBuilder {
public:
    // The program of a body of the sweep `call`. Nothing where something in it is not covered.
    // Formula references and the variables of sweeps further out are read now: the program holds
    // for one run of the sweep.
    static std::unique_ptr<BodyProgram> Build(const FamilyCall& call, FunctionNode& body,
                                              std::string_view variableName,
                                              NestedRule nestedRule = NestedRule::never);

private:
    using Place = BodyProgram::Place;
    using Step = BodyProgram::Step;

    BodyProgramBuilder(BodyProgram& built, std::string_view name)
        : program(built), variableName(name) {}
    static bool IsCovered(FunctionNode& body, std::string_view variableName, NestedRule nestedRule);
    bool Walk(FunctionNode& body);
    void Finish();

    // More columns would leave every cache, deeper choices the stack.
    static constexpr std::size_t mostColumns = 4096;
    static constexpr int deepestChoice = 64;
    // As far as an operation moves: a body of a million terms must not look at all for each one.
    static constexpr std::size_t nearSteps = 16;

    // A node whose children are under way.
    struct Frame {
        FunctionNode* node = nullptr;
        std::size_t next = 0;                  // child
        std::size_t choice = 0;                // of an `if`: its step
        std::optional<Place> outerVariable{};  // of an `if`: the variable around it
    };

    bool Enter(FunctionNode& node);
    bool EnterLeaf(const FunctionNode& node);
    bool Leave(const Frame& frame);
    bool BeginBranch(Frame& frame);
    void EndBranch(Frame& frame);

    bool EmitOperator(const FunctionNode& node);
    bool EmitScalar(FunctionNode& node);
    bool EmitPair(ValueBody second, bool reversed);
    std::optional<std::size_t> FindStep(Place result) const;
    bool MultipliesInstead();
    bool EmitKernel(Step step, const ColumnKernel& finiteForm, std::size_t count);
    bool EmitBody(FunctionNode& node, std::size_t count);
    bool EmitSweep(FunctionNode& node);
    bool Emit(Step step, std::size_t count);

    // The values of the children that are done, the last child's last.
    Place Operand(std::size_t count, std::size_t index) const {
        return values[values.size() - count + index];
    }
    bool IsConstant(Place place) const { return constant[place]; }
    void PopOperands(std::size_t count);
    Place TakeColumn();
    Place AddColumn();
    bool PushConstant(double number);
    void FillWith(Place place, double number);

    BodyProgram& program;
    std::string_view variableName;
    std::vector<Frame> frames;
    std::vector<Place> values;
    std::vector<Place> unused;   // columns that hold nothing any more
    std::vector<bool> constant;  // of each place
    std::vector<bool> isVariable;
    Place variable = BodyProgram::variablePlace;
    int choiceDepth = 0;
    std::size_t movable = 0;  // the steps from here on run wherever the next one does
    ColumnKernel tested;      // form of the newest operation
};

}  // namespace orvane
