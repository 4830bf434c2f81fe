#include "functions/pair_kernels.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "functions/column_loops.h"
#include "functions/function_bodies.h"

namespace orvane {

namespace {

using namespace loops;

constexpr ValueBody operators[] = {Plus, Minus, Times, Divide};

struct PairForms {
    KernelForms straight;
    KernelForms reversed;
};

template <typename First, typename Second>
constexpr PairForms PairFormsOf() {
    return {FormsOf<PairOf<First, Second, false>>(), FormsOf<PairOf<First, Second, true>>()};
}
// Where the order of the operands makes no difference.
template <typename First, typename Second>
constexpr PairForms EvenFormsOf() {
    constexpr KernelForms forms = FormsOf<PairOf<First, Second, false>>();
    return {forms, forms};
}

template <typename First>
constexpr std::array<PairForms, std::size(operators)> FormsBehind() {
    return {EvenFormsOf<First, AddTwo>(), PairFormsOf<First, SubtractTwo>(),
            EvenFormsOf<First, MultiplyTwo>(), PairFormsOf<First, DivideTwo>()};
}

// By the first operator and the second, in the order of `operators`.
constexpr std::array<PairForms, std::size(operators)> pairs[] = {
    FormsBehind<AddTwo>(), FormsBehind<SubtractTwo>(), FormsBehind<MultiplyTwo>(),
    FormsBehind<DivideTwo>()};

}  // namespace

ColumnKernels PairKernels(ValueBody first, ValueBody second, bool reversed, KernelForm form) {
    const auto* const inner = std::find(std::begin(operators), std::end(operators), first);
    const auto* const outer = std::find(std::begin(operators), std::end(operators), second);
    if (inner == std::end(operators) || outer == std::end(operators)) return {};
    const PairForms& forms = pairs[inner - operators][outer - operators];
    return (reversed ? forms.reversed : forms.straight).Of(form);
}

}  // namespace orvane
