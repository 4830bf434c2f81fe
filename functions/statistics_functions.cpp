#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <iterator>
#include <limits>
#include <numeric>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/error_text.h"
#include "functions/function_bodies.h"
#include "functions/scalar_call.h"
#include "functions/validators.h"
#include "functions/whole_number.h"

// The members of the normal family that take lists of numbers, that count and choose, and that
// read dates. Sums run in the written order, as their rounding depends on it.

namespace orvane {

namespace {

double SumOf(std::span<const double> numbers) {
    return std::accumulate(numbers.begin(), numbers.end(), 0.0);
}

double MeanOf(std::span<const double> numbers) {
    return SumOf(numbers) / static_cast<double>(numbers.size());
}

// The order of a median's numbers is the one that this sort leaves. It decides which of the zeros 0
// and -0 stands where, and what becomes of NaN.
void ExchangeSort(std::span<double> numbers) {
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        for (std::size_t j = i + 1; j < numbers.size(); ++j) {
            if (numbers[i] > numbers[j]) std::swap(numbers[i], numbers[j]);
        }
    }
}

// The zeros of a list without NaN in the order in which ExchangeSort leaves them. Seen from one
// place of the list, the sort inserts its number into the sorted numbers in front of it: a zero
// goes behind the zeros so far, and a smaller number sends the first of them behind the others.
std::deque<double> ZerosInExchangeOrder(std::span<const double> numbers) {
    std::deque<double> zeros;
    for (const double number : numbers) {
        if (number == 0.0) {
            zeros.push_back(number);
        } else if (number < 0.0 && !zeros.empty()) {
            zeros.push_back(zeros.front());
            zeros.pop_front();
        }
    }
    return zeros;
}

// The same order as ExchangeSort to the last bit, in n log n steps. No comparison with NaN holds,
// so every NaN stays in its place and the others are sorted around it.
void SortLikeExchange(std::span<double> numbers) {
    std::vector<double> sorted;
    sorted.reserve(numbers.size());
    std::copy_if(numbers.begin(), numbers.end(), std::back_inserter(sorted),
                 [](double number) { return !std::isnan(number); });
    const std::deque<double> zeros = ZerosInExchangeOrder(sorted);
    std::sort(sorted.begin(), sorted.end());
    std::copy(zeros.begin(), zeros.end(), std::lower_bound(sorted.begin(), sorted.end(), 0.0));

    auto next = sorted.begin();
    for (double& number : numbers) {
        if (!std::isnan(number)) number = *next++;
    }
}

void SortAscending(std::span<double> numbers) {
    constexpr std::size_t shortList = 32;  // here the plain sort is the quick one
    if (numbers.size() <= shortList) {
        ExchangeSort(numbers);
    } else {
        SortLikeExchange(numbers);
    }
}

// v x (v - 1) x ... down to 2; 1 for everything that is not above 1. An infinite product stays so
// whatever factors follow, which ends the loop for numbers of any size.
double FactorialOf(double v) {
    double product = 1.0;
    for (; v > 1.0 && !std::isinf(product); v -= 1.0) product *= v;
    return product;
}

// Kept: 0 is refused here, unlike by `factorial`.
bool RequireChoice(const ScalarCall& call) { return CheckUnsignedList(call.Check(), call.p, true); }

// --- dates

// Kept: every fourth year is a leap year, whole centuries too.
int DaysInMonth(std::int32_t year, int month) {
    constexpr std::array<int, 12> days = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month == 2 && year % 4 == 0) return 29;
    return days[static_cast<std::size_t>(month - 1)];
}

struct DayCounts {
    std::int64_t beforeYear = 0;
    std::int64_t inYear = 0;  // from 1 on 1 January
};

// Kept: a year counts 355 days here, so dates of different years are not as far apart as their
// numbers say.
std::int64_t DaysBeforeYear(std::int32_t year) {
    const std::int64_t yearsBefore = std::int64_t{year} - 1;
    return 355 * yearsBefore + yearsBefore / 4;
}

std::nullopt_t FailDate(const ScalarCall& call, std::string_view message) {
    const FamilyCall& family = call.family;
    FunctionErrorText({"E006-", "05"}, family.sentence, family.node.functionName, message,
                      family.errorText);
    return std::nullopt;
}

// Year, month and day. A year beyond 32 bits wraps around, even to one below 1.
std::optional<DayCounts> ReadDate(const ScalarCall& call) {
    if (!IsCount(call.p[0], true)) {
        return FailDate(call, "first parameter (year) must be an integer >0");
    }
    if (!IsIntegerInRange(call.p[1], 1.0, 12.0)) {
        return FailDate(call, "second parameter (month) must be an integer between 1 to 12");
    }
    const std::int32_t year = RoundToInt(call.p[0]);
    const std::int32_t month = RoundToInt(call.p[1]);
    const int monthLength = DaysInMonth(year, month);
    if (!IsIntegerInRange(call.p[2], 1.0, monthLength)) {
        return FailDate(call, FillForm("third parameter (day) must be an integer between 1 to %d",
                                       {std::to_string(monthLength)}));
    }
    DayCounts counts{DaysBeforeYear(year), RoundToInt(call.p[2])};
    for (int earlier = 1; earlier < month; ++earlier) counts.inYear += DaysInMonth(year, earlier);
    return counts;
}

}  // namespace

// --- lists

double Maximum(ScalarCall& call) {
    double largest = -std::numeric_limits<double>::infinity();
    for (const double number : call.p) {
        if (number > largest) largest = number;
    }
    return largest;
}

double Minimum(ScalarCall& call) {
    double smallest = std::numeric_limits<double>::infinity();
    for (const double number : call.p) {
        if (number < smallest) smallest = number;
    }
    return smallest;
}

double CountOf(ScalarCall& call) { return static_cast<double>(call.p.size()); }

double Sum(ScalarCall& call) { return SumOf(call.p); }

// The power stands first.
double SumOfPowers(ScalarCall& call) {
    double sum = 0.0;
    for (const double number : call.p.subspan(1)) sum += std::pow(number, call.p[0]);
    return sum;
}

double Mean(ScalarCall& call) { return MeanOf(call.p); }

// Of the whole population: divided by the count, not by one less.
double Variance(ScalarCall& call) {
    const double mean = MeanOf(call.p);
    double squares = 0.0;
    for (const double number : call.p) squares += (number - mean) * (number - mean);
    return squares / static_cast<double>(call.p.size());
}

double Median(ScalarCall& call) {
    SortAscending(call.p);
    const std::size_t middle = call.p.size() / 2;
    if (call.p.size() % 2 != 0) return call.p[middle];
    return (call.p[middle - 1] + call.p[middle]) * 0.5;
}

// --- choosing

double Factorial(ScalarCall& call) {
    return CheckUnsigned(call.Check(), call.p[0], false) ? FactorialOf(call.p[0]) : 0.0;
}

// Kept: a! / b!, not a! / (a - b)!.
double Permutation(ScalarCall& call) {
    if (!RequireChoice(call)) return 0.0;
    return FactorialOf(call.p[0]) / FactorialOf(call.p[1]);
}

// Kept: more may be chosen than there are; the factorial of the negative difference is 1.
double Combination(ScalarCall& call) {
    if (!RequireChoice(call)) return 0.0;
    const double a = call.p[0];
    const double b = call.p[1];
    return FactorialOf(a) / (FactorialOf(a - b) * FactorialOf(b));
}

// --- dates

double Days(ScalarCall& call) {
    const DayCounts counts = ReadDate(call).value_or(DayCounts{});
    return static_cast<double>(counts.beforeYear + counts.inYear);
}

double DaysOfTheYear(ScalarCall& call) {
    return static_cast<double>(ReadDate(call).value_or(DayCounts{}).inYear);
}

// Near a whole number from 0 to 6 and not rounded; a report's precision hides the difference.
double Weekday(ScalarCall& call) { return FractionOf(Days(call) * 0.14285714285714285) * 7.0; }

}  // namespace orvane
