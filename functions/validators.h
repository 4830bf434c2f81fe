#pragma once

#include <span>
#include <string>
#include <string_view>

#include "core/error_text.h"

// Checks that several families make of their parameters. They write the function form of a
// message with the code that they are given, which is a class without a number, and give true
// when the value passes.

namespace orvane {

struct CheckContext {
    ErrorCode code;
    int sentence;  // from zero
    std::string_view functionName;
    std::string& errorText;
};

// Whole, 2 to 53.
bool CheckWordBits(const CheckContext& context, double value);

// Whole and at least 0; with `rejectZero`, not 0 either.
bool CheckUnsigned(const CheckContext& context, double value, bool rejectZero);

// The same for each element in order. An empty list passes.
bool CheckUnsignedList(const CheckContext& context, std::span<const double> values,
                       bool rejectZero);

// Both below 0, or neither: zero counts as not negative.
bool CheckSameSign(const CheckContext& context, double x, double y);

// The first two whole and at least 0, the third whole and at most 53. Kept: the message says
// "< 53" while 53 itself passes, and the third may be negative, which selects the system bits.
bool CheckBitOperands(const CheckContext& context, double first, double second, double third);

// At most 53. Gives false in both cases; only the error text tells, so the caller goes on and its
// result is thrown away.
bool CheckAtMost53(const CheckContext& context, double value);

}  // namespace orvane
