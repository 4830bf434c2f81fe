#pragma once

#include <optional>
#include <string>
#include <string_view>

// Numbers as a sheet spells them, and doubles as fixed-point text. Reading and writing go through
// from_chars and to_chars, so no locale can turn a point into a comma.

namespace orvane {

// The value of a literal with its run of signs, such as "- -0x1F " or "1.50". An odd count of '-'
// negates. Nothing when the text is no literal: a point needs a digit in front, two points are
// too many, there is no exponent, and the prefixes 0b 0q 0o 0u 0h 0x are lower case. A literal
// with a prefix saturates at 4294967295; one beyond the double range is infinite.
std::optional<double> ParseNumberLiteral(std::string_view text);

// Whether a run of word characters and points that starts with a digit is spelled as a number.
bool IsNumberShape(std::string_view run);

// The text of C's "%.*f", with a '+' in front of values that are not negative when `showPlus` is
// set ("%+.*f"). A negative count of decimals counts as none given: six; no more than 4096 are
// written. Values that are not finite give "inf", "-inf" and "nan", and "+inf" with `showPlus`.
std::string FormatFixed(double value, int decimals, bool showPlus);

// The same without trailing '0's, and then without one trailing '.'. Kept: the zeros go whether or
// not there is a point, so with no decimals 1200 loses its own.
std::string FormatStripped(double value, int decimals, bool showPlus);

// The shortest digits that read back as the same double, with an exponent where that is shorter:
// for other programs, not for a report. Values that are not finite give "inf", "-inf" and "nan".
std::string FormatShortest(double value);

// "%+.32f", stripped: the full form for a person who looks into a value.
std::string FormatFull(double value);

// "%.32f", stripped: the form in which a number goes back into a sentence. It reads back as the
// same double down to 1e-15 or so. Nothing for a value that is not finite.
std::optional<std::string> FormatForSentence(double value);

}  // namespace orvane
