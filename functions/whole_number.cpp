#include "functions/whole_number.h"

#include <cmath>
#include <limits>

namespace orvane {

namespace {

// x, whole, modulo 2^32 and read as a signed number.
std::int32_t LowWord(double x) {
    constexpr double wordCount = 4294967296.0;
    if (!std::isfinite(x)) return 0;
    const double low = std::fmod(x, wordCount);  // exact, with the sign of x
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::int64_t>(low)));
}

}  // namespace

double FractionOf(double x) {
    double whole = 0.0;
    return std::modf(x, &whole);
}

bool IsIntegerValue(double x) { return FractionOf(x) == 0.0; }

bool IsCount(double x, bool atLeastOne) {
    return IsIntegerValue(x) && x >= (atLeastOne ? 1.0 : 0.0);
}

bool IsIntegerInRange(double x, double low, double high) {
    return IsIntegerValue(x) && low <= x && x <= high;
}

std::int32_t RoundToInt(double x) {
    const std::int32_t truncated = LowWord(std::trunc(x));
    const double difference = x - truncated;
    // Steps past the ends of the word wrap around, like the truncation.
    const auto word = static_cast<std::uint32_t>(truncated);
    if (difference > 0.5) return static_cast<std::int32_t>(word + 1);
    if (difference < -0.5) return static_cast<std::int32_t>(word - 1);
    return truncated;
}

void ModuloFrac(double divisor, double& value) {
    const bool applies = value >= divisor && divisor != 0.0 && value >= 0.0 && divisor >= 0.0;
    if (applies) value = FractionOf(value / divisor) * divisor;
}

}  // namespace orvane
