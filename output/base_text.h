#pragma once

#include <string>
#include <string_view>

#include "core/calc_parameters.h"
#include "output/line_layout.h"

// The output keywords of a formula: `percent`, and the base forms that show a number as the bit
// pattern it has on a word of the system bits. A negative number is its two's complement.

namespace orvane {

// Fills `value` and `note` of the line with the number in the form that the keyword asks for; an
// empty keyword means plain float text. The note says what the word or the missing point cut off:
// a positive number is trimmed from the word modulus upward, a negative one below the smallest
// signed number. A number beyond the whole numbers of a double, or none at all, keeps its float
// text, with a note that the form was ignored; so does any number under an unknown keyword.
void FormatWithKeyword(std::string_view keyword, double value, const CalcParameters& parameters,
                       const NumberLimits& limits, ReportLine& line);

// As many digits as modulus - 1 has in the base (2 to 16), above 9 the capitals from 'A'. `value`
// is whole, from 0 to modulus - 1.
std::string FormatInBase(double modulus, int base, double value);

// What a trim remark holds: how many words (half words of a negative number) were taken away, such
// as "1 of +256". `amount` is the number without what was left of it.
std::string FormatTrimCount(double amount, const CalcParameters& parameters);

}  // namespace orvane
