#include "functions/stride_division.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

#include "functions/column_kernels.h"
#include "functions/function_bodies.h"
#include "tests/support/sheet_run.h"

// Approximations against the divider: what counts as proven must be its number to the last bit, and
// nearly all of the usual numbers must count.

#if defined(__x86_64__)

namespace orvane {
namespace {

using test::SameBits;

struct Pair {
    double a;
    double b;
};
using Four = std::array<double, 4>;

struct Outcome {
    Four results;
    int proven;  // a bit for each
};

template <typename Operation>
[[gnu::target("avx2,fma")]] Outcome Approximate(const Four& a, const Four& b) {
    Outcome outcome;
    __m256d proven = _mm256_castsi256_pd(_mm256_set1_epi64x(-1));
    const __m256d results =
        Operation::Approximated(_mm256_loadu_pd(a.data()), _mm256_loadu_pd(b.data()), proven);
    _mm256_storeu_pd(outcome.results.data(), results);
    outcome.proven = _mm256_movemask_pd(proven);
    return outcome;
}

// The share of proven elements among many of a source.
template <typename Operation, typename Source, typename Wanted>
double CheckMany(Source source, Wanted wanted) {
    constexpr int rounds = 100'000;
    int proven = 0;
    for (int round = 0; round < rounds; ++round) {
        Four a, b;
        for (std::size_t i = 0; i < a.size(); ++i) {
            const Pair pair = source();
            a[i] = pair.a;
            b[i] = pair.b;
        }
        const Outcome outcome = Approximate<Operation>(a, b);
        for (std::size_t i = 0; i < a.size(); ++i) {
            if ((outcome.proven >> i & 1) == 0) continue;
            ++proven;
            EXPECT_TRUE(SameBits(outcome.results[i], wanted(a[i], b[i]))) << a[i] << " " << b[i];
        }
    }
    return proven / (4.0 * rounds);
}

class Numbers {
public:
    // Any digits, the exponent between both.
    double Any(int least, int most) {
        const auto digits = static_cast<double>(random() >> 11) * 0x1p-53 + 1.0;
        const auto range = static_cast<std::uint64_t>(most - least + 1);
        return std::ldexp(digits, least + static_cast<int>(random() % range));
    }
    double Signed(int least, int most) {
        return random() % 2 == 0 ? Any(least, most) : -Any(least, most);
    }
    // One of the numbers next to this one.
    double Around(double number) {
        const auto bits = std::bit_cast<std::uint64_t>(number);
        return std::bit_cast<double>(bits + random() % 9 - 4);
    }
    double Whole(std::uint64_t most) { return static_cast<double>(1 + random() % most); }
    double Bits() { return std::bit_cast<double>(random()); }

private:
    std::mt19937_64 random{5};
};

bool IsWideThere() { return FastestForm() == KernelForm::wide; }

double Quotient(double a, double b) { return a / b; }
double Root(double a, double) { return std::sqrt(a); }

TEST(WideQuotient, IsTheDividersNumberWhereItIsProven) {
    if (!IsWideThere()) GTEST_SKIP() << "this processor has no wide form";
    Numbers numbers;
    const auto check = [](auto source) { return CheckMany<loops::WideQuotient>(source, Quotient); };
    EXPECT_GT(check([&] {
                  return Pair{numbers.Signed(-120, 120), numbers.Signed(-120, 120)};
              }),
              0.9999);
    EXPECT_GT(check([&] {
                  return Pair{numbers.Signed(-800, 800), numbers.Signed(-100, 100)};
              }),
              0.9999);
    EXPECT_GT(check([&] { return Pair{numbers.Whole(1000), numbers.Whole(1000)}; }), 0.9999);
    // Around powers of two, where the neighbours are not equally far. Many of these results are so
    // close to the middle between two numbers that the approximation is the wrong one.
    check([&] { return Pair{numbers.Around(1.0), numbers.Around(1.0)}; });
    EXPECT_GT(check([&] {
                  const double b = numbers.Any(-20, 20);
                  return Pair{numbers.Around(b), b};
              }),
              0.9999);
    // As close to the middle between two numbers as a quotient comes.
    EXPECT_GT(check([&] {
                  const double b = numbers.Any(0, 0);
                  const double odd = numbers.Around(1.5);
                  return Pair{numbers.Around(b * odd), b};
              }),
              0.9999);
    check([&] { return Pair{numbers.Bits(), numbers.Bits()}; });
    check([&] { return Pair{numbers.Signed(-1022, -880), numbers.Signed(-126, 126)}; });
    check([&] { return Pair{numbers.Any(-1022, -1022) * 0x1p-40, numbers.Any(-3, 3)}; });
}

TEST(WideRoot, IsTheDividersNumberWhereItIsProven) {
    if (!IsWideThere()) GTEST_SKIP() << "this processor has no wide form";
    Numbers numbers;
    const auto check = [](auto source) { return CheckMany<loops::WideRoot>(source, Root); };
    EXPECT_GT(check([&] { return Pair{numbers.Any(-125, 126), 0.0}; }), 0.9999);
    EXPECT_GT(check([&] { return Pair{numbers.Whole(100000), 0.0}; }), 0.9999);
    check([&] { return Pair{numbers.Around(1.0), 0.0}; });
    check([&] { return Pair{numbers.Around(4.0), 0.0}; });
    // Around squares, and around squares of what is between two numbers.
    EXPECT_GT(check([&] {
                  const double root = numbers.Any(-3, 3);
                  return Pair{numbers.Around(root * root), 0.0};
              }),
              0.9999);
    EXPECT_GT(check([&] {
                  const double root = numbers.Around(1.0) + 1.0 + numbers.Whole(64) * 0x1p-27;
                  return Pair{numbers.Around(root * root), 0.0};
              }),
              0.9);
    check([&] { return Pair{numbers.Bits(), 0.0}; });
}

// A zero under the root is its own root, and all others are for the divider to judge.
TEST(WideOperations, LeaveWhatIsSpecialToTheDivider) {
    if (!IsWideThere()) GTEST_SKIP() << "this processor has no wide form";
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
    for (const double number : {0.0, -0.0, infinity, -infinity, noNumber, 5e-324, 1e300, 1e-300}) {
        SCOPED_TRACE(number);
        const Four special{number, number, number, number};
        EXPECT_EQ(Approximate<loops::WideQuotient>({1.0, -2.0, 1e300, number}, special).proven, 0);
        EXPECT_EQ(Approximate<loops::WideInverse>(special, special).proven, 0);
        EXPECT_EQ(Approximate<loops::WideRoot>(special, special).proven, 0);
    }
    for (const double number : {0.0, -0.0, infinity, -infinity, noNumber, 5e-324}) {
        SCOPED_TRACE(number);
        const Four special{number, number, number, number};
        EXPECT_EQ(Approximate<loops::WideQuotient>(special, {1.0, -2.0, 7.0, 0.1}).proven, 0);
    }
    EXPECT_EQ(Approximate<loops::WideRoot>({-1.0, -2.5, -1e20, -1e-20}, {}).proven, 0);
}

// One such element among usual ones, at each place of a stride: the others stay right.
TEST(WideOperations, GiveTheWholeStrideAroundWhatIsSpecial) {
    if (!IsWideThere()) GTEST_SKIP() << "this processor has no wide form";
    Numbers numbers;
    const ColumnKernel divide = OperatorKernels(Divide, 2, KernelForm::wide).tested;
    const ColumnKernel root = KernelsOf(SquareRoot, KernelForm::wide)->tested;
    const ColumnKernel invert = KernelsOf(Invert, KernelForm::wide)->tested;
    std::array<double, columnStride> a, b, out;
    for (std::size_t place = 0; place < columnStride; ++place) {
        SCOPED_TRACE(place);
        for (std::size_t i = 0; i < columnStride; ++i) {
            a[i] = numbers.Any(-30, 30);
            b[i] = numbers.Any(-30, 30);
        }
        EXPECT_FALSE(divide(a.data(), b.data(), out.data(), columnStride));
        a[place] = 1e-310;
        EXPECT_FALSE(divide(a.data(), b.data(), out.data(), columnStride));
        for (std::size_t i = 0; i < columnStride; ++i) EXPECT_TRUE(SameBits(out[i], a[i] / b[i]));
        EXPECT_FALSE(root(a.data(), a.data(), out.data(), columnStride));
        for (std::size_t i = 0; i < columnStride; ++i) {
            EXPECT_TRUE(SameBits(out[i], std::sqrt(a[i])));
        }
        b[place] = 0.0;
        EXPECT_TRUE(divide(a.data(), b.data(), out.data(), columnStride));
        EXPECT_TRUE(invert(b.data(), b.data(), out.data(), columnStride));
        for (std::size_t i = 0; i < columnStride; ++i) EXPECT_TRUE(SameBits(out[i], 1.0 / b[i]));
        a[place] = -1.0;
        EXPECT_TRUE(root(a.data(), a.data(), out.data(), columnStride));
    }
}

}  // namespace
}  // namespace orvane

#endif
