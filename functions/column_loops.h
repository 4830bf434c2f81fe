#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "functions/column_kernel.h"
#include "functions/stride_division.h"

// How kernels walk their columns: what the rooms of the kernels share.

namespace orvane::loops {

// --- what marks an element that fails: bits that are not all 0, so that marks are gathered by OR

inline std::int64_t BitsOf(double number) {
    std::int64_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

// A number less itself is +0; an infinity and what is no number give what is no number.
inline std::int64_t NonFiniteMark(double number) { return BitsOf(number - number); }

inline std::int64_t ZeroMark(double number) { return number == 0.0 ? -1 : 0; }

// --- the operations that others are built of

struct AddTwo {
    static double Apply(double a, double b) { return a + b; }
};
struct SubtractTwo {
    static double Apply(double a, double b) { return a - b; }
};
struct MultiplyTwo {
    static double Apply(double a, double b) { return a * b; }
};
struct DivideTwo {
    static constexpr bool isSlow = true;
#if defined(__x86_64__)
    using WideOperation = WideQuotient;
#endif
    static double Apply(double a, double b) { return a / b; }
    static std::int64_t DivisorMark(double, double b) { return ZeroMark(b); }
};

// `isSlow` stands where the processor or the mathematics library needs long for an operation.
template <typename Operation>
concept HasSlowMark = requires {
    Operation::isSlow;
};
template <typename Operation>
constexpr bool IsSlow() {
    if constexpr (HasSlowMark<Operation>) return Operation::isSlow;
    return false;
}

// `isCall` stands where an operation calls the mathematics library.
template <typename Operation>
concept Calls = requires {
    Operation::isCall;
};

// `WideOperation` stands where an operation has a stride of its own on wide processors.
template <typename Operation>
concept HasWideOperation = requires {
    typename Operation::WideOperation;
};

// `DivisorMark` of the operands stands where an operation fails by dividing by zero.
template <typename Operation>
concept Divides = requires {
    &Operation::DivisorMark;
};

// One operation behind the other, as one: reversed, the first one's result is on the right.
template <typename First, typename Second, bool reversed>
struct PairOf {
    static constexpr bool isPair = true;
    static constexpr bool isReversed = reversed;
    static constexpr bool isSlow = IsSlow<First>() || IsSlow<Second>();
    using Inner = First;
    using Outer = Second;

    static double ApplyOuter(double inner, double c) {
        return reversed ? Second::Apply(c, inner) : Second::Apply(inner, c);
    }
    // A divisor of 0 that the result may not show.
    static std::int64_t InnerMark(double a, double b) {
        if constexpr (Divides<First>) return First::DivisorMark(a, b);
        return 0;
    }
    static std::int64_t OuterMark(double inner, double c) {
        if constexpr (Divides<Second>) return ZeroMark(reversed ? inner : c);
        return 0;
    }
};

template <typename Operation>
concept Pair = requires {
    Operation::isPair;
};

// --- the loops

enum class Fails { nothing, nonFinite };

[[gnu::always_inline]] inline double FoldRound(double total, const double* terms, bool multiplies) {
    if (multiplies) {
        for (std::size_t i = 0; i < sideRound; ++i) total *= terms[i];
    } else {
        for (std::size_t i = 0; i < sideRound; ++i) total += terms[i];
    }
    return total;
}

// Where the result is tested, it shows a divisor of 0 of the last operation.
template <typename Operation, Fails fails>
[[gnu::always_inline]] inline std::int64_t RunElement(double a, double b, double c, double& out) {
    std::int64_t marks = 0;
    if constexpr (Pair<Operation>) {
        const double inner = Operation::Inner::Apply(a, b);
        out = Operation::ApplyOuter(inner, c);
        marks |= Operation::InnerMark(a, b);
        if constexpr (fails == Fails::nothing) marks |= Operation::OuterMark(inner, c);
    } else {
        out = Operation::Apply(a, b);
        if constexpr (Divides<Operation> && fails == Fails::nothing) {
            marks |= Operation::DivisorMark(a, b);
        }
    }
    if constexpr (fails == Fails::nonFinite) marks |= NonFiniteMark(out);
    return marks;
}

// A stride has a count that the compiler knows, so it becomes a few wide operations in a row.
template <typename Operation, Fails fails>
[[gnu::always_inline]] inline bool RunLoop(ColumnOperands in, double* __restrict out,
                                           std::size_t count, SideFold& side, std::size_t rounds) {
    std::int64_t marks = 0;
    double total = side.total;
    const double* next = side.next;
    const bool multiplies = side.multiplies;
    for (std::size_t done = 0; done < count; done += columnStride) {
        if constexpr (Calls<Operation>) {
            // The tests apart, where they go several at a time.
            for (std::size_t i = 0; i < columnStride; ++i) {
                out[i] = Operation::Apply(in.a[i], in.b[i]);
            }
            if constexpr (fails == Fails::nonFinite) {
                for (std::size_t i = 0; i < columnStride; ++i) marks |= NonFiniteMark(out[i]);
            }
        } else {
            for (std::size_t i = 0; i < columnStride; ++i) {
                marks |= RunElement<Operation, fails>(in.a[i], in.b[i], in.c[i], out[i]);
            }
        }
        in = {in.a + columnStride, in.b + columnStride, in.c + columnStride};
        out += columnStride;
        for (std::size_t round = 0; round < rounds; ++round, next += sideRound) {
            total = FoldRound(total, next, multiplies);
        }
    }
    side.total = total;
    side.next = next;
    return marks != 0;
}

template <typename Operation, Fails fails>
bool Baseline(const ColumnOperands& in, double* out, std::size_t count, SideFold& side,
              std::size_t rounds) {
    return RunLoop<Operation, fails>(in, out, count, side, rounds);
}

// The same loop for processors that work on four numbers at a time. The compiler fuses no
// operations: they would round differently.
#if defined(__x86_64__)
template <typename Operation>
constexpr bool HasWideStride() {
    if constexpr (Pair<Operation>) {
        return HasWideStride<typename Operation::Inner>() ||
               HasWideStride<typename Operation::Outer>();
    }
    return HasWideOperation<Operation>;
}

// The marks of an operation that is the last one, or of one whose result goes into another.
template <typename Operation, Fails fails, bool isLast>
ORVANE_WIDE std::int64_t RunStride(const double* a, const double* b, double* __restrict out) {
    constexpr bool testsResult = isLast && fails == Fails::nonFinite;
    if constexpr (HasWideOperation<Operation>) {
        constexpr WideMark mark = testsResult          ? WideMark::nonFinite
                                  : Divides<Operation> ? WideMark::zeroDivisor
                                                       : WideMark::none;
        return RunWideStride<typename Operation::WideOperation, mark>(a, b, out) ? -1 : 0;
    } else {
        std::int64_t marks = 0;
        for (std::size_t i = 0; i < columnStride; ++i) {
            out[i] = Operation::Apply(a[i], b[i]);
            if constexpr (testsResult) marks |= NonFiniteMark(out[i]);
        }
        return marks;
    }
}

template <typename Operation, Fails fails>
ORVANE_WIDE std::int64_t RunStride(const ColumnOperands& in, double* __restrict out) {
    if constexpr (Pair<Operation>) {
        using Inner = typename Operation::Inner;
        using Outer = typename Operation::Outer;
        double inner[columnStride];
        const std::int64_t marks = RunStride<Inner, fails, false>(in.a, in.b, inner);
        const double* const left = Operation::isReversed ? in.c : inner;
        const double* const right = Operation::isReversed ? inner : in.c;
        return marks | RunStride<Outer, fails, true>(left, right, out);
    } else {
        return RunStride<Operation, fails, true>(in.a, in.b, out);
    }
}

template <typename Operation, Fails fails>
[[gnu::target("avx2,fma")]] bool Wide(const ColumnOperands& in, double* out, std::size_t count,
                                      SideFold& side, std::size_t rounds) {
    if constexpr (!HasWideStride<Operation>()) {
        return RunLoop<Operation, fails>(in, out, count, side, rounds);
    } else {
        std::int64_t marks = 0;
        double total = side.total;
        const double* next = side.next;
        const bool multiplies = side.multiplies;
        for (std::size_t i = 0; i < count; i += columnStride) {
            marks |= RunStride<Operation, fails>({in.a + i, in.b + i, in.c + i}, out + i);
            for (std::size_t round = 0; round < rounds; ++round, next += sideRound) {
                total = FoldRound(total, next, multiplies);
            }
        }
        side.total = total;
        side.next = next;
        return marks != 0;
    }
}
#else
template <typename Operation, Fails fails>
constexpr ColumnKernel::Loop Wide = Baseline<Operation, fails>;
#endif

template <typename Operation>
constexpr ColumnKernels KernelsIn(KernelForm form) {
    constexpr bool isSlow = IsSlow<Operation>();
    if (form == KernelForm::wide) {
        return {{Wide<Operation, Fails::nothing>, isSlow},
                {Wide<Operation, Fails::nonFinite>, isSlow}};
    }
    return {{Baseline<Operation, Fails::nothing>, isSlow},
            {Baseline<Operation, Fails::nonFinite>, isSlow}};
}

// The kernels of one operation in both forms.
struct KernelForms {
    ColumnKernels baseline;
    ColumnKernels wide;

    const ColumnKernels& Of(KernelForm form) const {
        return form == KernelForm::wide ? wide : baseline;
    }
};

template <typename Operation>
constexpr KernelForms FormsOf() {
    return {KernelsIn<Operation>(KernelForm::baseline), KernelsIn<Operation>(KernelForm::wide)};
}

}  // namespace orvane::loops
