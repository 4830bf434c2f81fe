#pragma once

#include <string>

#include "core/calc_parameters.h"

// Doubles as text for people, in fixed notation throughout: there is no exponent form and no
// grouping of digits. All zeros at the end go, also those of the integer part when there are no
// decimals. Kept: at precision 0, 1200 reads "12" and 0.4 is empty.

namespace orvane {

// The float text of a report: `floatPrecision` decimals, a '+' in front of what is not negative
// when `showSign` is on. What rounds away reads as zero, without a minus.
std::string FormatNumber(double value, const CalcParameters& parameters);

// A number inside a remark: no sign rule, no rule for "-0".
std::string FormatPlain(double value, int precision);

// Always signed; zero is "+0". "-0" stays.
std::string FormatSigned(double value, int precision);

}  // namespace orvane
