#include "functions/column_kernels.h"

#include <cmath>
#include <cstring>
#include <iterator>
#include <numbers>

#include "functions/function_bodies.h"

namespace orvane {

namespace {

// --- what marks a number that fails: the sign bit of a word, so that marks are gathered by OR

std::int64_t BitsOf(double number) {
    std::int64_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

// Negative for an infinity and for what is no number.
std::int64_t NonFiniteMark(double number) {
    constexpr std::int64_t exponent = 0x7FF0000000000000;
    return ((BitsOf(number) & exponent) ^ exponent) - 1;
}

// Negative for either zero.
std::int64_t ZeroMark(double number) { return (BitsOf(number) & 0x7FFFFFFFFFFFFFFF) - 1; }

// --- what a kernel does to each element; the formulas are those of the bodies

struct NegateOne {
    static double Apply(double a, double) { return -a; }
};
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
    static double Apply(double a, double b) { return a / b; }
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
    static double Apply(double a, double) { return std::sqrt(a); }
};
struct InvertOne {
    static double Apply(double a, double) { return 1.0 / a; }
};
struct RadiansOne {
    static double Apply(double a, double) { return std::numbers::pi * a * 0.005555555555555556; }
};
struct DegreesOne {
    static double Apply(double a, double) { return (a * 180.0) / std::numbers::pi; }
};

// --- the loops

enum class Fails { nothing, nonFinite, zeroDivisor };

template <typename Operation, Fails fails>
[[gnu::always_inline]] inline bool RunLoop(const double* a, const double* b, double* __restrict out,
                                           std::size_t count) {
    std::int64_t marks = 0;
    for (std::size_t i = 0; i < count / columnStride * columnStride; ++i) {
        const double result = Operation::Apply(a[i], b[i]);
        out[i] = result;
        if constexpr (fails == Fails::nonFinite) marks |= NonFiniteMark(result);
        if constexpr (fails == Fails::zeroDivisor) marks |= ZeroMark(b[i]);
    }
    return marks < 0;
}

template <typename Operation, Fails fails>
bool Baseline(const double* a, const double* b, double* out, std::size_t count) {
    return RunLoop<Operation, fails>(a, b, out, count);
}

// The same loop for processors that work on four numbers at a time. No fused operations: they
// would round differently.
#if defined(__x86_64__)
template <typename Operation, Fails fails>
[[gnu::target("avx2")]] bool Wide(const double* a, const double* b, double* out,
                                  std::size_t count) {
    return RunLoop<Operation, fails>(a, b, out, count);
}
bool IsWideThere() { return __builtin_cpu_supports("avx2") != 0; }
#else
template <typename Operation, Fails fails>
constexpr ColumnKernel Wide = Baseline<Operation, fails>;
bool IsWideThere() { return false; }
#endif

// One kernel in both forms.
struct KernelForms {
    ColumnKernel baseline = nullptr;
    ColumnKernel wide = nullptr;

    ColumnKernel ForThisMachine() const { return IsWideThere() ? wide : baseline; }
};

template <typename Operation, Fails fails>
constexpr KernelForms FormsOf() {
    return {Baseline<Operation, fails>, Wide<Operation, fails>};
}

// Functions of the mathematics library are called for one element after the other: no other code
// is known to give the same bits.
template <double (*function)(double)>
struct CallOne {
    static double Apply(double a, double) { return function(a); }
};
template <double (*function)(double, double)>
struct CallTwo {
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
    KernelForms plain;
    KernelForms tested;
};

template <typename Operation>
constexpr BodyRow RowOf(ScalarBody body) {
    return {body, FormsOf<Operation, Fails::nothing>(), FormsOf<Operation, Fails::nonFinite>()};
}
// What comes out is always finite.
template <typename Operation>
constexpr BodyRow SafeRowOf(ScalarBody body) {
    return {body, FormsOf<Operation, Fails::nothing>(), FormsOf<Operation, Fails::nothing>()};
}
template <typename Operation>
constexpr BodyRow LibraryRowOf(ScalarBody body) {
    constexpr ColumnKernel plain = Baseline<Operation, Fails::nothing>;
    constexpr ColumnKernel tested = Baseline<Operation, Fails::nonFinite>;
    return {body, {plain, plain}, {tested, tested}};
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
    {Negate, 1, FormsOf<NegateOne, Fails::nothing>()},
    {Plus, 2, FormsOf<AddTwo, Fails::nothing>()},
    {Minus, 2, FormsOf<SubtractTwo, Fails::nothing>()},
    {Times, 2, FormsOf<MultiplyTwo, Fails::nothing>()},
    {Divide, 2, FormsOf<DivideTwo, Fails::zeroDivisor>()},
    {Absolute, 1, FormsOf<AbsoluteOne, Fails::nothing>()},
};

// The kernels of every row for this machine, in the order of the rows.
struct MachineKernels {
    ColumnKernels bodies[std::size(bodyRows)];
    ColumnKernel operators[std::size(operatorRows)];

    MachineKernels() {
        for (std::size_t i = 0; i < std::size(bodyRows); ++i) {
            bodies[i] = {bodyRows[i].plain.ForThisMachine(), bodyRows[i].tested.ForThisMachine()};
        }
        for (std::size_t i = 0; i < std::size(operatorRows); ++i) {
            operators[i] = operatorRows[i].forms.ForThisMachine();
        }
    }
};

const MachineKernels& Machine() {
    static const MachineKernels kernels;
    return kernels;
}

struct KeepOne {
    static double Apply(double a, double) { return a; }
};

[[gnu::always_inline]] inline void RunGridLoop(double* __restrict out, double first, double step,
                                               double lower, std::size_t count) {
    // Whole numbers far below 2^53, so the sum of the first index and a place is exact.
    for (std::size_t i = 0; i < count / columnStride * columnStride; ++i) {
        out[i] = (first + static_cast<double>(static_cast<std::int32_t>(i))) * step + lower;
    }
}

using GridFiller = void (*)(double*, double, double, double, std::size_t);

void FillBaseline(double* out, double first, double step, double lower, std::size_t count) {
    RunGridLoop(out, first, step, lower, count);
}
#if defined(__x86_64__)
[[gnu::target("avx2")]] void FillWide(double* out, double first, double step, double lower,
                                      std::size_t count) {
    RunGridLoop(out, first, step, lower, count);
}
#else
constexpr GridFiller FillWide = FillBaseline;
#endif

}  // namespace

const ColumnKernels* KernelsOf(ScalarBody body) {
    for (std::size_t i = 0; i < std::size(bodyRows); ++i) {
        if (bodyRows[i].body == body) return &Machine().bodies[i];
    }
    return nullptr;
}

ColumnKernel OperatorKernel(ValueBody body, std::size_t operands) {
    for (std::size_t i = 0; i < std::size(operatorRows); ++i) {
        const OperatorRow& row = operatorRows[i];
        if (row.body == body && row.operands == operands) return Machine().operators[i];
    }
    return nullptr;
}

bool CopyFinite(const double* from, double* to, std::size_t count) {
    static const ColumnKernel copy = FormsOf<KeepOne, Fails::nonFinite>().ForThisMachine();
    return copy(from, from, to, count);
}

void FillGrid(double* out, std::int64_t first, double step, double lower, std::size_t count) {
    static const GridFiller fill = IsWideThere() ? FillWide : FillBaseline;
    fill(out, static_cast<double>(first), step, lower, count);
}

}  // namespace orvane
