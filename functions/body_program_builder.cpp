#include "functions/body_program_builder.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "functions/function_bodies.h"
#include "functions/pair_kernels.h"

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
           OperatorKernels(node.keyword->body.value, node.children.size()).plain != nullptr;
}

bool IsLeaf(const FunctionNode& node) {
    return node.kind == NodeKind::number || node.kind == NodeKind::formulaReference ||
           node.kind == NodeKind::variable;
}

bool IsVariable(const FunctionNode& node, std::string_view name) {
    return node.kind == NodeKind::variable && node.variableName == name;
}

// A variable of a sweep further out keeps its value during this one; one that nobody has set has
// none, which the tree has words for.
bool HasNumber(const FunctionNode& leaf) {
    return leaf.evaluated && leaf.result.IsScalar() && !leaf.result.complexMark;
}

// A sweep whose parts are plain numbers, so that the bounds of what values take do not matter. It
// has no further one in itself: each level would do its blocks twice for each that the level around
// it does twice. A variable is for itself to judge.
bool IsNestedSweep(FunctionNode& sweep) {
    if (!NestedSweeps::CanBe(sweep) || sweep.children.empty()) return false;
    std::size_t nodes = 0;
    for (FunctionNode* at = &sweep.children.front(); at != nullptr; at = NextInTree(&sweep, at)) {
        if (++nodes > NestedSweeps::mostNodes) return false;
        if (at->kind == NodeKind::variable) continue;
        const bool isNumber = HasNumber(*at) && !at->result.HasTable();
        if (IsLeaf(*at) ? !isNumber : !HasOperation(*at)) return false;
    }
    return true;
}

}  // namespace

std::unique_ptr<BodyProgram> BodyProgramBuilder::Build(const FamilyCall& call, FunctionNode& body,
                                                       std::string_view variableName,
                                                       NestedRule nestedRule) {
    if (!IsCovered(body, variableName, nestedRule)) return nullptr;
    auto program = std::make_unique<BodyProgram>(call);
    return BodyProgramBuilder(*program, variableName).Walk(body) ? std::move(program) : nullptr;
}

// One look, which costs less than one evaluation: a sweep that runs in another one comes here each
// time.
bool BodyProgramBuilder::IsCovered(FunctionNode& body, std::string_view variableName,
                                   NestedRule nestedRule) {
    if (IsNestedSweep(body)) return false;  // nothing around it would go over columns
    std::size_t numbers = 0;
    bool isSweep = false;
    for (FunctionNode* at = &body; at != nullptr; at = NextInTree(&body, at, !isSweep)) {
        isSweep = nestedRule == NestedRule::inWholeBlocks && IsNestedSweep(*at);
        if (isSweep || IsVariable(*at, variableName)) continue;
        if (IsLeaf(*at) ? !HasNumber(*at) || ++numbers > mostColumns : !HasOperation(*at)) {
            return false;
        }
    }
    return true;
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
    Finish();
    return true;
}

// The last operation tests what comes out. The terms of the block before are shared out among the
// slow operations, which hide them; where there is none, among all. Of the branches of a choice one
// runs, as a rule.
void BodyProgramBuilder::Finish() {
    std::vector<Step>& steps = program.steps;
    const auto isKernel = [](const Step& step) { return step.kind == Step::Kind::kernel; };
    if (steps.empty()) return;
    if (isKernel(steps.back()) && steps.back().out == program.result) program.finish = tested;

    const auto isSlow = [&](const Step& step) { return isKernel(step) && step.kernel.isSlow; };
    const bool onlySlow = std::ranges::any_of(steps, isSlow);
    const auto takes = [&](const Step& step) { return onlySlow ? isSlow(step) : isKernel(step); };
    const auto countTakers = [&](std::size_t begin, std::size_t end) {
        return std::count_if(steps.begin() + static_cast<long>(begin),
                             steps.begin() + static_cast<long>(end), takes);
    };
    long takers = countTakers(0, steps.size());
    for (const Step& choice : steps) {
        long most = 0;
        for (std::uint32_t i = 0; i < choice.count && choice.kind == Step::Kind::choice; ++i) {
            const BodyProgram::Branch& branch = program.branches[choice.first + i];
            const long inBranch = countTakers(branch.begin, branch.end);
            takers -= std::min(most, inBranch);
            most = std::max(most, inBranch);
        }
    }
    if (takers <= 0) return;
    constexpr std::size_t all = columnStride / sideRound - 1;  // without that of the grid
    const std::size_t share =
        (all + static_cast<std::size_t>(takers) - 1) / static_cast<std::size_t>(takers);
    for (Step& step : steps) step.rounds = takes(step) ? share : 0;
}

bool BodyProgramBuilder::Enter(FunctionNode& node) {
    if (IsLeaf(node)) return EnterLeaf(node);
    if (NestedSweeps::CanBe(node)) return EmitSweep(node);
    frames.push_back({&node, 0, 0, {}});
    return true;
}

bool BodyProgramBuilder::EnterLeaf(const FunctionNode& node) {
    if (!IsVariable(node, variableName)) return PushConstant(node.result.At(0, 0));
    values.push_back(variable);
    return true;
}

bool BodyProgramBuilder::Leave(const Frame& frame) {
    FunctionNode& node = *frame.node;
    if (IsBracket(node)) return true;  // its child's value is its own
    if (IsChoice(node)) {
        program.steps[frame.choice].end = static_cast<std::uint32_t>(program.steps.size());
        movable = program.steps.size();
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
        step.out = AddColumn();  // of its own: the column of a branch may stand for it
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
    movable = program.steps.size();
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
    ValueBody body = node.keyword->body.value;
    if (body == Divide && MultipliesInstead()) body = Times;
    if (count == 2 && (EmitPair(body, true) || EmitPair(body, false))) return true;
    const ColumnKernels kernels = OperatorKernels(body, count);
    Step step;
    step.kernel = kernels.plain;
    step.alone = count == 2 ? body : nullptr;
    return EmitKernel(step, kernels.tested, count);
}

// Dividing by a power of two and multiplying with its inverse are the same number, rounded once.
bool BodyProgramBuilder::MultipliesInstead() {
    const Place divisor = values.back();
    if (!IsConstant(divisor)) return false;
    const double number = program.cells[divisor][0];
    int exponent = 0;
    if (std::fabs(std::frexp(number, &exponent)) != 0.5 || !std::isnormal(1.0 / number)) {
        return false;
    }
    if (!PushConstant(1.0 / number)) return false;
    values.erase(values.end() - 2);
    return true;
}

// Puts the operator behind the operation that gives one of its operands: reversed, the right one.
// That operation moves behind those that were written down since; false where it can't.
bool BodyProgramBuilder::EmitPair(ValueBody second, bool reversed) {
    const Place inner = Operand(2, reversed ? 1 : 0);
    const auto found = FindStep(inner);
    if (!found || IsConstant(inner)) return false;
    const Step first = program.steps[*found];
    const ColumnKernels kernels = PairKernels(first.alone, second, reversed);
    if (kernels.plain == nullptr) return false;
    program.steps.erase(program.steps.begin() + static_cast<long>(*found));

    Step step;
    step.kernel = kernels.plain;
    step.a = first.a;
    step.b = first.b;
    step.c = Operand(2, reversed ? 0 : 1);
    // The operands of the first operation are in use again.
    const auto isOperand = [&](Place place) { return place == first.a || place == first.b; };
    const auto free = std::ranges::find_if_not(unused, isOperand);
    step.out = free == unused.end() ? AddColumn() : *free;
    if (free != unused.end()) unused.erase(free);
    tested = kernels.tested;
    program.steps.push_back(step);
    PopOperands(2);
    values.push_back(step.out);
    return true;
}

// The operator that gives `result`, if it is one of the newest and can move to the end.
std::optional<std::size_t> BodyProgramBuilder::FindStep(Place result) const {
    const std::vector<Step>& steps = program.steps;
    const std::size_t begin = std::max(movable + nearSteps, steps.size()) - nearSteps;
    for (std::size_t at = steps.size(); at-- > begin;) {
        const Step& step = steps[at];
        if (step.out != result) continue;
        const bool isOverwritten = std::any_of(
            steps.begin() + static_cast<long>(at) + 1, steps.end(),
            [&](const Step& later) { return later.out == step.a || later.out == step.b; });
        if (step.alone == nullptr || isOverwritten) return std::nullopt;
        return at;
    }
    return std::nullopt;
}

bool BodyProgramBuilder::EmitScalar(FunctionNode& node) {
    const std::size_t count = node.children.size();
    const ColumnKernels* const kernels = KernelsOf(node.keyword->body.scalar);
    if (kernels == nullptr) return EmitBody(node, count);
    Step step;
    step.kernel = node.keepNonFinite ? kernels->plain : kernels->tested;
    return EmitKernel(step, kernels->tested, count);
}

bool BodyProgramBuilder::EmitKernel(Step step, const ColumnKernel& finiteForm, std::size_t count) {
    step.a = Operand(count, 0);
    step.b = Operand(count, count - 1);
    step.c = step.b;
    tested = finiteForm;
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

// Run for each element even where it depends on no variable: it has progress to show.
bool BodyProgramBuilder::EmitSweep(FunctionNode& node) {
    if (constant.size() > mostColumns) return false;
    if (!program.nested) {
        program.nested = std::make_unique<NestedSweeps>(program.family, variableName);
    }
    program.nested->Add(node);
    Step step;
    step.kind = Step::Kind::sweep;
    step.node = &node;
    step.a = variable;
    step.out = TakeColumn();
    program.steps.push_back(step);
    values.push_back(step.out);
    return true;
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
    SideFold nothing;
    if (isConstant && program.RunSteps(last - 1, last, 1, nothing)) {
        program.steps.pop_back();
        FillWith(step.out, program.cells[step.out][0]);
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
    FillWith(place, number);
    values.push_back(place);
    return true;
}

void BodyProgramBuilder::FillWith(Place place, double number) {
    program.columns[place].cells.fill(number);
    constant[place] = true;
}

}  // namespace orvane
