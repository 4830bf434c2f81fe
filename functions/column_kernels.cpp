#include "functions/column_kernels.h"

#include <cmath>
#include <numbers>

#include "functions/column_loops.h"
#include "functions/function_bodies.h"

namespace orvane {

namespace {

using namespace loops;

// --- what a kernel does to each element; the formulas are those of the bodies

struct NegateOne {
    static double Apply(double a, double) { return -a; }
};
struct AbsoluteOne {
    static double Apply(double a, double) { return std::fabs(a); }
};
struct SignOne {
    static double Apply(double a, double) { return a < 0.0 ? -1.0 : 1.0; }
};
struct NotOne {
    static double Apply(double a, double) { return a == 0.0 ? 1.0 : 0.0; }
};
struct TruthOne {
    static double Apply(double a, double) { return a != 0.0 ? 1.0 : 0.0; }
};
struct CompareTwo {
    static double Apply(double a, double b) {
        const double rest = a == b ? 0.0 : -1.0;
        return a > b ? 1.0 : rest;
    }
};
struct EqualTwo {
    static double Apply(double a, double b) { return a == b ? 1.0 : 0.0; }
};
struct NotEqualTwo {
    static double Apply(double a, double b) { return a != b ? 1.0 : 0.0; }
};
struct GreaterTwo {
    static double Apply(double a, double b) { return a > b ? 1.0 : 0.0; }
};
struct GreaterEqualTwo {
    static double Apply(double a, double b) { return a >= b ? 1.0 : 0.0; }
};
struct LessTwo {
    static double Apply(double a, double b) { return a < b ? 1.0 : 0.0; }
};
struct LessEqualTwo {
    static double Apply(double a, double b) { return a <= b ? 1.0 : 0.0; }
};
struct TruncateOne {
    static double Apply(double a, double) { return std::trunc(a); }
};
struct SquareRootOne {
    static constexpr bool isSlow = true;
#if defined(__x86_64__)
    using WideOperation = WideRoot;
#endif
    static double Apply(double a, double) { return std::sqrt(a); }
};
struct InvertOne {
    static constexpr bool isSlow = true;
#if defined(__x86_64__)
    using WideOperation = WideInverse;
#endif
    static double Apply(double a, double) { return 1.0 / a; }
};
struct RadiansOne {
    static double Apply(double a, double) { return std::numbers::pi * a * 0.005555555555555556; }
};
struct DegreesOne {
    static constexpr bool isSlow = true;
    static double Apply(double a, double) { return (a * 180.0) / std::numbers::pi; }
};

// Functions of the mathematics library are called for one element after the other: no other code
// is known to give the same bits.
template <double (*function)(double)>
struct CallOne {
    static constexpr bool isCall = true;
    static constexpr bool isSlow = true;
    static double Apply(double a, double) { return function(a); }
};
template <double (*function)(double, double)>
struct CallTwo {
    static constexpr bool isCall = true;
    static constexpr bool isSlow = true;
    static double Apply(double a, double b) { return function(a, b); }
};

double CubeRootBy(double a) { return std::pow(a, 0.3333333333333333); }
double RootBy(double a, double b) { return std::pow(a, 1.0 / b); }
double PowerBy(double a, double b) { return std::pow(a, b); }
double LogarithmBy(double a) { return std::log(a); }
double CommonLogarithmBy(double a) { return std::log10(a); }
double LogarithmToBaseBy(double a, double b) { return std::log10(b) / std::log10(a); }
double ExponentialBy(double a) { return std::exp(a); }
double SineBy(double a) { return std::sin(a); }
double CosineBy(double a) { return std::cos(a); }
double TangentBy(double a) { return std::tan(a); }
double CotangentBy(double a) { return std::cos(a) / std::sin(a); }
double ArcSineBy(double a) { return std::asin(a); }
double ArcCosineBy(double a) { return std::acos(a); }
double ArcTangentBy(double a) { return std::atan(a); }
double ArcCotangentBy(double a) { return std::atan(1.0 / a); }
double HyperbolicSineBy(double a) { return std::sinh(a); }
double HyperbolicCosineBy(double a) { return std::cosh(a); }
double HyperbolicTangentBy(double a) { return std::sinh(a) / std::cosh(a); }
double HyperbolicCotangentBy(double a) { return std::cosh(a) / std::sinh(a); }
double FractionBy(double a) {
    double whole = 0.0;
    return std::modf(a, &whole);
}

struct BodyRow {
    ScalarBody body;
    KernelForms forms;
};

template <typename Operation>
constexpr BodyRow RowOf(ScalarBody body) {
    return {body, FormsOf<Operation>()};
}
// What comes out is always finite.
template <typename Operation>
constexpr BodyRow SafeRowOf(ScalarBody body) {
    BodyRow row = RowOf<Operation>(body);
    row.forms.baseline.tested = row.forms.baseline.plain;
    row.forms.wide.tested = row.forms.wide.plain;
    return row;
}
template <typename Operation>
constexpr BodyRow LibraryRowOf(ScalarBody body) {
    BodyRow row = RowOf<Operation>(body);
    row.forms.wide = row.forms.baseline;
    return row;
}

constexpr BodyRow bodyRows[] = {
    SafeRowOf<SignOne>(SignOf),
    SafeRowOf<NotOne>(LogicalNot),
    SafeRowOf<TruthOne>(TruthOf),
    SafeRowOf<CompareTwo>(Compare),
    SafeRowOf<EqualTwo>(Equals),
    SafeRowOf<NotEqualTwo>(NotEquals),
    SafeRowOf<GreaterTwo>(GreatThan),
    SafeRowOf<GreaterEqualTwo>(GreatEquals),
    SafeRowOf<LessTwo>(LessThan),
    SafeRowOf<LessEqualTwo>(LessEquals),
    RowOf<TruncateOne>(IntegerPart),
    RowOf<SquareRootOne>(SquareRoot),
    RowOf<InvertOne>(Invert),
    RowOf<RadiansOne>(DegreesToRadians),
    RowOf<DegreesOne>(RadiansToDegrees),
    LibraryRowOf<CallOne<FractionBy>>(FractionalPart),
    LibraryRowOf<CallOne<CubeRootBy>>(CubeRoot),
    LibraryRowOf<CallTwo<RootBy>>(RootOf),
    LibraryRowOf<CallTwo<PowerBy>>(Power),
    LibraryRowOf<CallOne<LogarithmBy>>(NaturalLogarithm),
    LibraryRowOf<CallOne<CommonLogarithmBy>>(CommonLogarithm),
    LibraryRowOf<CallTwo<LogarithmToBaseBy>>(LogarithmToBase),
    LibraryRowOf<CallOne<ExponentialBy>>(Exponential),
    LibraryRowOf<CallOne<SineBy>>(Sine),
    LibraryRowOf<CallOne<CosineBy>>(Cosine),
    LibraryRowOf<CallOne<TangentBy>>(Tangent),
    LibraryRowOf<CallOne<CotangentBy>>(Cotangent),
    LibraryRowOf<CallOne<ArcSineBy>>(ArcSine),
    LibraryRowOf<CallOne<ArcCosineBy>>(ArcCosine),
    LibraryRowOf<CallOne<ArcTangentBy>>(ArcTangent),
    LibraryRowOf<CallOne<ArcCotangentBy>>(ArcCotangent),
    LibraryRowOf<CallOne<HyperbolicSineBy>>(HyperbolicSine),
    LibraryRowOf<CallOne<HyperbolicCosineBy>>(HyperbolicCosine),
    LibraryRowOf<CallOne<HyperbolicTangentBy>>(HyperbolicTangent),
    LibraryRowOf<CallOne<HyperbolicCotangentBy>>(HyperbolicCotangent),
};

struct OperatorRow {
    ValueBody body;
    std::size_t operands;
    KernelForms forms;
};

constexpr OperatorRow operatorRows[] = {
    {Negate, 1, FormsOf<NegateOne>()},  {Plus, 2, FormsOf<AddTwo>()},
    {Minus, 2, FormsOf<SubtractTwo>()}, {Times, 2, FormsOf<MultiplyTwo>()},
    {Divide, 2, FormsOf<DivideTwo>()},  {Absolute, 1, FormsOf<AbsoluteOne>()},
};

struct KeepOne {
    static double Apply(double a, double) { return a; }
};

[[gnu::always_inline]] inline void RunGridLoop(double* __restrict out, double first, double step,
                                               double lower, std::size_t count, SideFold& side,
                                               std::size_t rounds) {
    // Whole numbers far below 2^53, so the sums are exact.
    double places[columnStride];
    for (std::size_t j = 0; j < columnStride; ++j) places[j] = static_cast<double>(j);
    double total = side.total;
    const double* next = side.next;
    const bool multiplies = side.multiplies;
    for (std::size_t i = 0; i < count; i += columnStride) {
        for (std::size_t j = 0; j < columnStride; ++j)
            out[i + j] = (first + places[j]) * step + lower;
        first += static_cast<double>(columnStride);
        for (std::size_t round = 0; round < rounds; ++round, next += sideRound) {
            total = FoldRound(total, next, multiplies);
        }
    }
    side.total = total;
    side.next = next;
}

void FillBaseline(double* out, double first, double step, double lower, std::size_t count,
                  SideFold& side, std::size_t rounds) {
    RunGridLoop(out, first, step, lower, count, side, rounds);
}
#if defined(__x86_64__)
[[gnu::target("avx2")]] void FillWide(double* out, double first, double step, double lower,
                                      std::size_t count, SideFold& side, std::size_t rounds) {
    RunGridLoop(out, first, step, lower, count, side, rounds);
}
#else
constexpr auto* FillWide = FillBaseline;
#endif

// Gathers whether any element, and whether every element, is marked.
struct MarkUse {
    std::int64_t any = 0;
    std::int64_t all = -1;

    void Take(std::int64_t mark) {
        any |= mark;
        all &= mark;
    }
    bool IsEven() const { return any == 0 || all != 0; }
};

template <bool bySign>
[[gnu::always_inline]] inline bool RunKindLoop(const double* numbers, std::size_t count) {
    MarkUse zero;
    MarkUse negative;
    for (std::size_t done = 0; done < count; done += columnStride, numbers += columnStride) {
        for (std::size_t i = 0; i < columnStride; ++i) {
            zero.Take(ZeroMark(numbers[i]));
            if constexpr (bySign) negative.Take(numbers[i] < 0.0 ? -1 : 0);
        }
    }
    return zero.IsEven() && negative.IsEven();
}

template <bool bySign>
bool KindBaseline(const double* numbers, std::size_t count) {
    return RunKindLoop<bySign>(numbers, count);
}
#if defined(__x86_64__)
template <bool bySign>
[[gnu::target("avx2")]] bool KindWide(const double* numbers, std::size_t count) {
    return RunKindLoop<bySign>(numbers, count);
}
#else
template <bool bySign>
constexpr auto* KindWide = KindBaseline<bySign>;
#endif

}  // namespace

KernelForm FastestForm() {
#if defined(__x86_64__)
    static const bool isWideThere =
        __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("fma") != 0;
    return isWideThere ? KernelForm::wide : KernelForm::baseline;
#else
    return KernelForm::baseline;
#endif
}

const ColumnKernels* KernelsOf(ScalarBody body, KernelForm form) {
    for (const BodyRow& row : bodyRows) {
        if (row.body == body) return &row.forms.Of(form);
    }
    return nullptr;
}

ColumnKernels OperatorKernels(ValueBody body, std::size_t operands, KernelForm form) {
    for (const OperatorRow& row : operatorRows) {
        if (row.body == body && row.operands == operands) return row.forms.Of(form);
    }
    return {};
}

bool IsOfOneKind(const double* numbers, std::size_t count, bool bySign, KernelForm form) {
    const bool isWide = form == KernelForm::wide;
    if (bySign) return (isWide ? KindWide<true> : KindBaseline<true>)(numbers, count);
    return (isWide ? KindWide<false> : KindBaseline<false>)(numbers, count);
}

bool CopyFinite(const double* from, double* to, std::size_t count, KernelForm form) {
    static constexpr KernelForms copy = FormsOf<KeepOne>();
    return copy.Of(form).tested(from, from, to, count);
}

void FillGrid(double* out, std::int64_t first, double step, double lower, std::size_t count,
              SideFold& side, KernelForm form) {
    const auto fill = form == KernelForm::wide ? FillWide : FillBaseline;
    const std::size_t rounds = side.RoundsOf(1, count);
    fill(out, static_cast<double>(first), step, lower, count, side, rounds);
}

}  // namespace orvane
