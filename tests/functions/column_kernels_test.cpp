#include "functions/column_kernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "functions/function_bodies.h"
#include "functions/pair_kernels.h"
#include "tests/functions/family_call.h"
#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

using test::CallOnNumbers;
using test::CallResult;
using test::SameBits;
using test::SameNumber;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double untouched = 123456.75;

std::vector<KernelForm> FormsHere() {
    if (FastestForm() == KernelForm::wide) return {KernelForm::baseline, KernelForm::wide};
    return {KernelForm::baseline};
}

std::string NameOf(KernelForm form) { return form == KernelForm::wide ? "wide" : "baseline"; }

// Both signs of what is special: zeros, halves, ends of the ranges of normal and subnormal numbers,
// whole numbers around 2^53, and numbers at which functions leave their domain or overflow.
std::vector<double> SpecialNumbers() {
    const double upward[] = {0.0,
                             5e-324,
                             1.1e-308,
                             2.225073858507201e-308,
                             2.2250738585072014e-308,
                             1e-300,
                             1e-9,
                             0.1,
                             0.49999999999999994,
                             0.5,
                             0.9999999999999999,
                             1.0,
                             1.0000000000000002,
                             1.5,
                             2.0,
                             2.5,
                             3.0,
                             std::numbers::pi / 2,
                             std::numbers::pi,
                             45.0,
                             170.0,
                             709.782712893384,
                             709.7827128933841,
                             745.2,
                             1e5,
                             105414350.0,
                             2147483648.5,
                             4503599627370495.5,
                             4503599627370496.5,
                             9007199254740991.0,
                             9007199254740992.0,
                             9007199254740994.0,
                             9.3e18,
                             1e154,
                             1.4e154,
                             1e300,
                             1.7976931348623157e308,
                             infinity,
                             noNumber};
    std::vector<double> numbers;
    for (const double number : upward) {
        numbers.push_back(number);
        numbers.push_back(-number);
    }
    return numbers;
}

// Those, and random bits, and random numbers of the usual sizes.
std::vector<double> ManyNumbers(std::size_t count) {
    std::vector<double> numbers = SpecialNumbers();
    std::mt19937_64 random(7);
    while (numbers.size() < count) {
        numbers.push_back(std::bit_cast<double>(random()));
        numbers.push_back((static_cast<double>(random() >> 11) * 0x1p-53 - 0.5) * 40.0);
    }
    return numbers;
}

struct Operands {
    double a = 0.0, b = 0.0, c = 0.0;
};

// What stands in one element: the numbers and what the functions' own bodies give.
struct Element {
    Operands in;
    double result = 0.0;
    bool failsPlain = false;
};

using Reference = std::function<Element(const Operands&)>;

// The function itself, through its keyword; what is not finite is let through.
Element CallWord(const std::string& keyword, const std::vector<double>& numbers) {
    const CallResult got = CallOnNumbers(keyword, numbers, {{}, true});
    return {{}, got.number, !got.stored};
}

Reference ReferenceOf(const std::string& keyword, std::size_t operands) {
    return [=](const Operands& in) {
        std::vector<double> numbers = {in.a};
        if (operands == 2) numbers.push_back(in.b);
        Element element = CallWord(keyword, numbers);
        element.in = in;
        return element;
    };
}

std::vector<Element> ElementsOf(const Reference& reference, std::size_t operands) {
    std::vector<Element> elements;
    const std::vector<double> numbers = operands == 1 ? ManyNumbers(6000) : SpecialNumbers();
    for (const double a : numbers) {
        if (operands == 1) {
            elements.push_back(reference({a, a, a}));
            continue;
        }
        for (const double b : numbers) elements.push_back(reference({a, b, b}));
    }
    return elements;
}

// One run over some of the elements, which must give what they hold and touch nothing else.
void ExpectRun(const ColumnKernel& kernel, const std::vector<Element>& elements, bool failure) {
    alignas(64) std::array<double, columnLength> a, b, c, out;
    const std::size_t padded = PaddedCount(elements.size());
    for (std::size_t i = 0; i < columnLength; ++i) {
        const Operands& in = elements[std::min(i, elements.size() - 1)].in;
        a[i] = in.a;
        b[i] = in.b;
        c[i] = in.c;
        out[i] = untouched;
    }
    SideFold nothing;
    EXPECT_EQ(kernel.loop({a.data(), b.data(), c.data()}, out.data(), padded, nothing, 0), failure);
    for (std::size_t i = 0; i < columnLength; ++i) {
        const double wanted =
            i < padded ? elements[std::min(i, elements.size() - 1)].result : untouched;
        // The sign of what is no number has no meaning, and no function looks at it.
        if (elements[std::min(i, elements.size() - 1)].failsPlain && i < padded) continue;
        const Operands& in = elements[std::min(i, elements.size() - 1)].in;
        ASSERT_TRUE(SameNumber(out[i], wanted))
            << "at " << i << " of (" << in.a << "," << in.b << "," << in.c << "): " << out[i]
            << " instead of " << wanted;
    }
}

// Columns of all lengths that are full of elements of which none fails, and the same with one that
// does, at the first place, the last one or between.
void ExpectKernel(const ColumnKernel& kernel, const std::vector<Element>& elements,
                  const std::function<bool(const Element&)>& fails) {
    constexpr std::size_t lengths[] = {
        1, 7, 31, 32, 33, 64, 100, 127, 128, 200, columnLength - 1, columnLength};
    std::vector<Element> sound;
    std::vector<Element> failing;
    for (const Element& element : elements) {
        (fails(element) ? failing : sound).push_back(element);
    }
    ASSERT_FALSE(sound.empty());
    std::size_t turn = 0;
    for (std::size_t at = 0; at < sound.size();) {
        const std::size_t length =
            std::min(lengths[turn++ % std::size(lengths)], sound.size() - at);
        ExpectRun(
            kernel,
            {sound.begin() + static_cast<long>(at), sound.begin() + static_cast<long>(at + length)},
            false);
        at += length;
    }
    for (std::size_t at = 0; at < failing.size(); ++at) {
        const std::size_t length = lengths[at % std::size(lengths)];
        std::vector<Element> column(length, sound[at % sound.size()]);
        column[at % 3 == 0 ? 0 : at % 3 == 1 ? length - 1 : at % length] = failing[at];
        ExpectRun(kernel, column, true);
    }
}

void ExpectKernels(const ColumnKernels& kernels, const std::vector<Element>& elements) {
    const auto failsPlain = [](const Element& element) { return element.failsPlain; };
    const auto failsTested = [](const Element& element) {
        return element.failsPlain || !std::isfinite(element.result);
    };
    {
        SCOPED_TRACE("plain");
        ExpectKernel(kernels.plain, elements, failsPlain);
    }
    SCOPED_TRACE("tested");
    ExpectKernel(kernels.tested, elements, failsTested);
}

TEST(ColumnKernels, GiveWhatTheFunctionsGive) {
    int withKernel = 0;
    for (const KeywordEntry& row : keywordRows) {
        if (row.body.scalar == nullptr || KernelsOf(row.body.scalar) == nullptr) continue;
        SCOPED_TRACE(row.name);
        ++withKernel;
        ASSERT_EQ(row.minParams, row.maxParams);
        const auto operands = static_cast<std::size_t>(row.minParams);
        ASSERT_LE(operands, 2U);
        const std::vector<Element> elements = ElementsOf(ReferenceOf(row.name, operands), operands);
        for (const KernelForm form : FormsHere()) {
            SCOPED_TRACE(NameOf(form));
            ExpectKernels(*KernelsOf(row.body.scalar, form), elements);
            if (HasFatalFailure()) return;
        }
    }
    EXPECT_EQ(withKernel, 46);  // rows, aliases too
}

TEST(ColumnKernels, AreThereForAllFunctionsOfOneFormula) {
    for (const ScalarBody body : {Median, Sum, Reminder, BitAnd, Days, Factorial, Maximum}) {
        EXPECT_EQ(KernelsOf(body), nullptr);
    }
}

struct OperatorRow {
    const char* keyword;
    ValueBody body;
    std::size_t operands;
};
constexpr OperatorRow operatorRows[] = {
    {"neg", Negate, 1},  {"plus", Plus, 2},     {"minus", Minus, 2},
    {"times", Times, 2}, {"divide", Divide, 2}, {"abs", Absolute, 1},
};

TEST(OperatorKernels, GiveWhatTheOperatorsGive) {
    for (const OperatorRow& row : operatorRows) {
        SCOPED_TRACE(row.keyword);
        const std::vector<Element> elements =
            ElementsOf(ReferenceOf(row.keyword, row.operands), row.operands);
        for (const KernelForm form : FormsHere()) {
            SCOPED_TRACE(NameOf(form));
            ExpectKernels(OperatorKernels(row.body, row.operands, form), elements);
            if (HasFatalFailure()) return;
        }
    }
}

TEST(OperatorKernels, AreThereForTheUsualCountOfOperandsAlone) {
    for (const OperatorRow& row : operatorRows) {
        SCOPED_TRACE(row.keyword);
        for (const std::size_t operands : {0U, 1U, 2U, 3U}) {
            const bool isThere = operands == row.operands;
            EXPECT_EQ(OperatorKernels(row.body, operands).plain != nullptr, isThere);
            EXPECT_EQ(OperatorKernels(row.body, operands).tested != nullptr, isThere);
        }
    }
    EXPECT_TRUE(OperatorKernels(BuildComplex, 2).plain == nullptr);
}

Reference ReferenceOfPair(const OperatorRow& first, const OperatorRow& second, bool reversed) {
    return [=](const Operands& in) {
        Element inner = CallWord(first.keyword, {in.a, in.b});
        Element outer;
        if (!inner.failsPlain) {
            outer = reversed ? CallWord(second.keyword, {in.c, inner.result})
                             : CallWord(second.keyword, {inner.result, in.c});
        }
        return Element{in, outer.result, inner.failsPlain || outer.failsPlain};
    };
}

TEST(PairKernels, GiveWhatTheOperatorsGiveOneBehindTheOther) {
    const double numbers[] = {0.0,       -0.0,     1.0,
                              -2.5,      0.1,      3.0,
                              5e-324,    -1e-300,  9007199254740993.0,
                              1.5e308,   -1.5e308, infinity,
                              -infinity, noNumber, 0x1.fffffffffffffp+600,
                              -7.25};
    for (const OperatorRow& first : operatorRows) {
        for (const OperatorRow& second : operatorRows) {
            if (first.operands != 2 || second.operands != 2) continue;
            SCOPED_TRACE(std::string(first.keyword) + " " + second.keyword);
            for (const bool reversed : {false, true}) {
                SCOPED_TRACE(reversed);
                const Reference reference = ReferenceOfPair(first, second, reversed);
                std::vector<Element> elements;
                for (const double a : numbers) {
                    for (const double b : numbers) {
                        for (const double c : numbers) elements.push_back(reference({a, b, c}));
                    }
                }
                for (const KernelForm form : FormsHere()) {
                    SCOPED_TRACE(NameOf(form));
                    ExpectKernels(PairKernels(first.body, second.body, reversed, form), elements);
                    if (HasFatalFailure()) return;
                }
            }
        }
    }
}

TEST(PairKernels, AreThereForOperatorsOfTwoNumbersAlone) {
    EXPECT_TRUE(PairKernels(nullptr, Plus, false).plain == nullptr);
    EXPECT_TRUE(PairKernels(Negate, Plus, false).plain == nullptr);
    EXPECT_TRUE(PairKernels(Plus, Absolute, true).plain == nullptr);
}

// In the order of the terms, to the last bit.
TEST(SideFold, IsTakenFurtherByEveryKernelAsItStands) {
    std::vector<double> terms;
    std::mt19937_64 random(11);
    for (std::size_t i = 0; i < columnLength; ++i) {
        terms.push_back(0.5 + static_cast<double>(random() >> 11) * 0x1p-53);
    }
    alignas(64) std::array<double, columnLength> in, out;
    in.fill(1.25);
    constexpr std::size_t strides = columnLength / columnStride;
    for (const KernelForm form : FormsHere()) {
        SCOPED_TRACE(NameOf(form));
        for (const bool multiplies : {false, true}) {
            SCOPED_TRACE(multiplies);
            for (const std::size_t rounds : {0U, 1U, 2U, 4U}) {
                SCOPED_TRACE(rounds);
                for (const ColumnKernel& kernel :
                     {OperatorKernels(Plus, 2, form).plain, OperatorKernels(Divide, 2, form).tested,
                      KernelsOf(Sine, form)->tested,
                      PairKernels(Times, Minus, true, form).tested}) {
                    SideFold side{0.75, multiplies, terms.data(), terms.data() + terms.size()};
                    kernel.loop({in.data(), in.data(), in.data()}, out.data(), columnLength, side,
                                rounds);
                    const std::size_t taken = rounds * strides * sideRound;
                    double wanted = 0.75;
                    for (std::size_t i = 0; i < terms.size(); ++i) {
                        if (i == taken) {
                            EXPECT_TRUE(SameBits(side.total, wanted));
                        }
                        wanted = multiplies ? wanted * terms[i] : wanted + terms[i];
                    }
                    EXPECT_EQ(side.Left(), terms.size() - taken);
                    side.Finish();
                    EXPECT_TRUE(SameBits(side.total, wanted));
                    EXPECT_EQ(side.Left(), 0U);
                }
            }
        }
    }
}

TEST(SideFold, FinishesTermsOfAnyCount) {
    std::vector<double> terms;
    for (std::size_t count = 0; count < 40; ++count) {
        SCOPED_TRACE(count);
        SideFold sum{0.0, false, terms.data(), terms.data() + count};
        SideFold product{1.0, true, terms.data(), terms.data() + count};
        double wantedSum = 0.0;
        double wantedProduct = 1.0;
        for (const double term : terms) {
            wantedSum += term;
            wantedProduct *= term;
        }
        sum.Finish();
        product.Finish();
        EXPECT_TRUE(SameBits(sum.total, wantedSum));
        EXPECT_TRUE(SameBits(product.total, wantedProduct));
        terms.push_back(0.1 * static_cast<double>(count + 1));
    }
}

TEST(FillGrid, GivesTheNumbersOfTheTree) {
    struct GridRow {
        std::int64_t first;
        double step;
        double lower;
    };
    constexpr GridRow rows[] = {{0, 1.0, 0.0},           {0, 0.1, -3.0},   {256, -0.3, 1e9},
                                {4294967040, 0.7, -1.5}, {512, 0.0, -0.0}, {1000, 5e-324, 1e-310},
                                {768, infinity, 1.0},    {0, 1e306, 0.0},  {128, 0.0, noNumber}};
    for (const KernelForm form : FormsHere()) {
        SCOPED_TRACE(NameOf(form));
        for (const GridRow& row : rows) {
            SCOPED_TRACE(row.step);
            for (const std::size_t count : {columnStride, columnStride * 3, columnLength}) {
                alignas(64) std::array<double, columnLength> out;
                out.fill(untouched);
                SideFold side;
                FillGrid(out.data(), row.first, row.step, row.lower, count, side, form);
                for (std::size_t i = 0; i < columnLength; ++i) {
                    const auto index = row.first + static_cast<std::int64_t>(i);
                    const double number = static_cast<double>(index) * row.step + row.lower;
                    ASSERT_TRUE(SameNumber(out[i], i < count ? number : untouched)) << i;
                }
            }
        }
    }
}

TEST(FillGrid, TakesOneRoundOfTermsForEachStride) {
    std::array<double, columnLength> terms;
    for (std::size_t i = 0; i < columnLength; ++i) terms[i] = 1.0 / static_cast<double>(i + 3);
    for (const KernelForm form : FormsHere()) {
        SCOPED_TRACE(NameOf(form));
        for (const std::size_t left : {0U, 31U, 32U, 500U}) {
            SCOPED_TRACE(left);
            alignas(64) std::array<double, columnLength> out;
            SideFold side{0.25, false, terms.data(), terms.data() + left};
            FillGrid(out.data(), 0, 1.0, 0.0, 4 * columnStride, side, form);
            EXPECT_EQ(side.Left(), left < 4 * sideRound ? left : left - 4 * sideRound);
            double wanted = 0.25;
            for (const double* term = terms.data(); term != side.next; ++term) wanted += *term;
            EXPECT_TRUE(SameBits(side.total, wanted));
        }
    }
}

TEST(CopyFinite, CopiesAndTells) {
    for (const KernelForm form : FormsHere()) {
        SCOPED_TRACE(NameOf(form));
        for (const double number : SpecialNumbers()) {
            SCOPED_TRACE(number);
            for (const std::size_t place : {0U, 1U, 31U, 32U, 63U}) {
                alignas(64) std::array<double, columnLength> from, to;
                from.fill(-0.0);
                to.fill(untouched);
                from[place] = number;
                from[64] = infinity;  // behind the count
                EXPECT_EQ(CopyFinite(from.data(), to.data(), 64, form), !std::isfinite(number));
                for (std::size_t i = 0; i < 64; ++i) EXPECT_TRUE(SameNumber(to[i], from[i]));
                EXPECT_EQ(to[64], untouched);
            }
        }
    }
}

// Below zero, zero, or anything else; without signs, zero or not.
int KindOf(double number, bool bySign) {
    if (number == 0.0) return 1;
    return bySign && number < 0.0 ? 0 : 2;
}

TEST(IsOfOneKind, ComparesEveryNumberUpToTheCount) {
    for (const KernelForm form : FormsHere()) {
        SCOPED_TRACE(NameOf(form));
        for (const bool bySign : {false, true}) {
            SCOPED_TRACE(bySign);
            for (const double number : SpecialNumbers()) {
                SCOPED_TRACE(number);
                for (const double stray : SpecialNumbers()) {
                    SCOPED_TRACE(stray);
                    const bool isSame = KindOf(number, bySign) == KindOf(stray, bySign);
                    for (const std::size_t place : {0U, 1U, 31U, 32U, 63U}) {
                        alignas(64) std::array<double, columnLength> column;
                        column.fill(number);
                        column[place] = stray;
                        EXPECT_EQ(IsOfOneKind(column.data(), 64, bySign, form), isSame) << place;
                    }
                    alignas(64) std::array<double, columnLength> column;
                    column.fill(number);
                    column[64] = stray;  // behind the count
                    EXPECT_TRUE(IsOfOneKind(column.data(), 64, bySign, form));
                }
            }
        }
    }
}

}  // namespace
}  // namespace orvane
