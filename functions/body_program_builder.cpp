#include "functions/body_program_builder.h"

#include <algorithm>
#include <utility>

namespace orvane {

namespace {

bool IsGroup(const FunctionNode& node, KeywordGroup group) {
    return node.keyword != nullptr && node.keyword->group == group;
}

bool IsChoice(const FunctionNode& node) { return IsGroup(node, KeywordGroup::condition); }

// A bracket around one value gives that value.
bool IsBracket(const FunctionNode& node) {
    return node.kind == NodeKind::brace && node.keyword == nullptr && node.children.size() == 1;
}

bool IsScalarCall(const FunctionNode& node) {
    if (node.keyword == nullptr || node.keyword->body.scalar == nullptr) return false;
    if (node.keyword->group == KeywordGroup::bits) return !node.children.empty();
    if (node.keyword->group != KeywordGroup::normal) return false;
    const auto count = static_cast<std::int32_t>(node.children.size());
    const std::int32_t most = node.keyword->maxParams;
    return count >= node.keyword->minParams && (most < 0 || count <= most);
}

bool HasOperation(const FunctionNode& node) {
    if (IsBracket(node) || IsScalarCall(node)) return true;
    if (IsChoice(node)) return node.children.size() == 3 || node.children.size() == 4;
    return IsGroup(node, KeywordGroup::operators) &&
           OperatorKernel(node.keyword->body.value, node.children.size()) != nullptr;
}

bool IsLeaf(const FunctionNode& node) {
    return node.kind == NodeKind::number || node.kind == NodeKind::formulaReference ||
           node.kind == NodeKind::variable;
}

}  // namespace

std::unique_ptr<BodyProgram> BodyProgramBuilder::Build(const FamilyCall& call, FunctionNode& body,
                                                       std::string_view variableName) {
    auto program = std::make_unique<BodyProgram>(call);
    return BodyProgramBuilder(*program, variableName).Walk(body) ? std::move(program) : nullptr;
}

bool BodyProgramBuilder::Walk(FunctionNode& body) {
    AddColumn();  // the variable
    isVariable[BodyProgram::variablePlace] = true;
    if (!Enter(body)) return false;
    while (!frames.empty()) {
        Frame& frame = frames.back();
        const bool isChoice = IsChoice(*frame.node);
        if (isChoice && frame.next > 1) EndBranch(frame);
        if (frame.next < frame.node->children.size()) {
            if (isChoice && frame.next > 0 && !BeginBranch(frame)) return false;
            FunctionNode& child = frame.node->children[frame.next++];
            if (!Enter(child)) return false;
        } else {
            const Frame done = frame;
            frames.pop_back();
            if (!Leave(done)) return false;
        }
    }
    program.result = values.back();
    return true;
}

bool BodyProgramBuilder::Enter(FunctionNode& node) {
    if (IsLeaf(node)) return EnterLeaf(node);
    if (!HasOperation(node)) return false;
    frames.push_back({&node, 0, 0, {}});
    return true;
}

// A variable of a sweep further out keeps its value during this one; one that nobody has set has
// none, which the tree has words for.
bool BodyProgramBuilder::EnterLeaf(const FunctionNode& node) {
    if (node.kind == NodeKind::variable && node.variableName == variableName) {
        values.push_back(variable);
        return true;
    }
    if (!node.evaluated || !node.result.IsScalar() || node.result.complexMark) return false;
    return PushConstant(node.result.At(0, 0));
}

bool BodyProgramBuilder::Leave(const Frame& frame) {
    FunctionNode& node = *frame.node;
    if (IsBracket(node)) return true;  // its child's value is its own
    if (IsChoice(node)) {
        program.steps[frame.choice].end = static_cast<std::uint32_t>(program.steps.size());
        variable = *frame.outerVariable;
        --choiceDepth;
        values.push_back(program.steps[frame.choice].out);
        return true;
    }
    return IsScalarCall(node) ? EmitScalar(node) : EmitOperator(node);
}

// In front of the first branch the choice itself is written down: its condition is the last value.
bool BodyProgramBuilder::BeginBranch(Frame& frame) {
    if (frame.next == 1) {
        if (++choiceDepth > deepestChoice) return false;
        Step step;
        step.kind = Step::Kind::choice;
        step.a = values.back();
        step.b = variable;
        step.out = TakeColumn();
        step.first = static_cast<std::uint32_t>(program.branches.size());
        step.count = static_cast<std::uint32_t>(frame.node->children.size() - 1);
        frame.choice = program.steps.size();
        frame.outerVariable = variable;
        program.steps.push_back(step);
        program.branches.resize(program.branches.size() + step.count);
        PopOperands(1);
    }
    if (constant.size() > mostColumns) return false;
    // Not used for anything else later: while all elements take the branch, its place stands for
    // the column of the variable around it.
    variable = AddColumn();
    isVariable[variable] = true;
    BodyProgram::Branch& branch =
        program.branches[program.steps[frame.choice].first + frame.next - 1];
    branch.variable = variable;
    branch.begin = static_cast<std::uint32_t>(program.steps.size());
    return true;
}

void BodyProgramBuilder::EndBranch(Frame& frame) {
    BodyProgram::Branch& branch =
        program.branches[program.steps[frame.choice].first + frame.next - 2];
    branch.end = static_cast<std::uint32_t>(program.steps.size());
    branch.result = values.back();
    PopOperands(1);
    variable = *frame.outerVariable;
}

bool BodyProgramBuilder::EmitOperator(const FunctionNode& node) {
    const std::size_t count = node.children.size();
    return EmitKernel(OperatorKernel(node.keyword->body.value, count), count);
}

bool BodyProgramBuilder::EmitScalar(FunctionNode& node) {
    const std::size_t count = node.children.size();
    const ColumnKernels* const kernels = KernelsOf(node.keyword->body.scalar);
    if (kernels == nullptr) return EmitBody(node, count);
    return EmitKernel(node.keepNonFinite ? kernels->plain : kernels->tested, count);
}

bool BodyProgramBuilder::EmitKernel(ColumnKernel kernel, std::size_t count) {
    Step step;
    step.kernel = kernel;
    step.a = Operand(count, 0);
    step.b = Operand(count, count - 1);
    return Emit(step, count);
}

bool BodyProgramBuilder::EmitBody(FunctionNode& node, std::size_t count) {
    Step step;
    step.kind = Step::Kind::body;
    step.tested = !node.keepNonFinite;
    step.node = &node;
    step.first = static_cast<std::uint32_t>(program.operands.size());
    step.count = static_cast<std::uint32_t>(count);
    program.operands.insert(program.operands.end(), values.end() - static_cast<long>(count),
                            values.end());
    program.parameters.resize(std::max(program.parameters.size(), count));
    return Emit(step, count);
}

// What depends on no variable is calculated once, here, unless it fails: then it fails where the
// sheet asks for it, if it does.
bool BodyProgramBuilder::Emit(Step step, std::size_t count) {
    if (constant.size() > mostColumns) return false;
    const bool isConstant = std::all_of(values.end() - static_cast<long>(count), values.end(),
                                        [this](Place place) { return IsConstant(place); });
    step.out = isConstant ? AddColumn() : TakeColumn();
    program.steps.push_back(step);
    const auto last = static_cast<std::uint32_t>(program.steps.size());
    if (isConstant && program.RunSteps(last - 1, last, columnLength, nullptr)) {
        program.steps.pop_back();
        constant[step.out] = true;
    }
    PopOperands(count);
    values.push_back(step.out);
    return true;
}

void BodyProgramBuilder::PopOperands(std::size_t count) {
    for (; count > 0; --count) {
        const Place place = values.back();
        values.pop_back();
        if (!constant[place] && !isVariable[place]) unused.push_back(place);
    }
}

// A column that nothing else uses. An operation never writes into one of its operands.
BodyProgramBuilder::Place BodyProgramBuilder::TakeColumn() {
    if (unused.empty()) return AddColumn();
    const Place place = unused.back();
    unused.pop_back();
    return place;
}

BodyProgramBuilder::Place BodyProgramBuilder::AddColumn() {
    program.columns.emplace_back();
    program.cells.push_back(program.columns.back().cells.data());
    constant.push_back(false);
    isVariable.push_back(false);
    return static_cast<Place>(program.columns.size() - 1);
}

bool BodyProgramBuilder::PushConstant(double number) {
    if (constant.size() > mostColumns) return false;
    const Place place = AddColumn();
    program.columns.back().cells.fill(number);
    constant[place] = true;
    values.push_back(place);
    return true;
}

}  // namespace orvane
