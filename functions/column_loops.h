#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "functions/column_kernel.h"

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

// `DivisorMark` of the operands stands where an operation fails by dividing by zero.
template <typename Operation>
concept Divides = requires {
    &Operation::DivisorMark;
};

// One operation behind the other, as one: reversed, the first one's result is on the right.
template <typename First, typename Second, bool reversed>
struct PairOf {
    static constexpr bool isPair = true;
    static constexpr bool isSlow = IsSlow<First>() || IsSlow<Second>();
    static double Apply(double a, double b, double c) {
        const double inner = First::Apply(a, b);
        return reversed ? Second::Apply(c, inner) : Second::Apply(inner, c);
    }
    // A divisor of 0 that the result may not show.
    static std::int64_t InnerMark(double a, double b) {
        if constexpr (Divides<First>) return First::DivisorMark(a, b);
        return 0;
    }
    static std::int64_t OuterMark(double a, double b, double c) {
        if constexpr (Divides<Second>) return ZeroMark(reversed ? First::Apply(a, b) : c);
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
        out = Operation::Apply(a, b, c);
        marks |= Operation::InnerMark(a, b);
        if constexpr (fails == Fails::nothing) marks |= Operation::OuterMark(a, b, c);
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

// The same loop for processors that work on four numbers at a time. No fused operations: they
// would round differently.
#if defined(__x86_64__)
template <typename Operation, Fails fails>
[[gnu::target("avx2")]] bool Wide(const ColumnOperands& in, double* out, std::size_t count,
                                  SideFold& side, std::size_t rounds) {
    return RunLoop<Operation, fails>(in, out, count, side, rounds);
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
