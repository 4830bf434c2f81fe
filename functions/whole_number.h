#pragma once

#include <cstdint>

// What counts as a whole number, and the modulo of the system. There is no tolerance anywhere:
// 2.9999999999999996 is not whole.

namespace orvane {

// The fractional part is exactly 0. Infinities are whole, NaN is not.
bool IsIntegerValue(double x);

// Whole and at least 0; with `atLeastOne`, at least 1.
bool IsCount(double x, bool atLeastOne);

// Whole and low <= x <= high.
bool IsIntegerInRange(double x, double low, double high);

// To the nearest whole number, exact halves toward zero. Kept: beyond 32 bits the low 32 bits of
// the whole part are kept as a signed number and are then one off toward x, which is still far
// away. NaN gives 0.
std::int32_t RoundToInt(double x);

// The fraction of x with the sign of x, from modf.
double FractionOf(double x);

// Reduces `value` to frac(value / divisor) * divisor where value >= divisor > 0. In all other
// cases it stays: a negative value is left alone. Kept: the division's rounding is part of the
// result, so 10 modulo 3 is 1.0000000000000004. Sheets show it.
void ModuloFrac(double divisor, double& value);

}  // namespace orvane
