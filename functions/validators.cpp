#include "functions/validators.h"

#include <algorithm>

#include "core/calc_parameters.h"
#include "functions/whole_number.h"

namespace orvane {

namespace {

bool Fail(const CheckContext& context, std::string_view message) {
    return FunctionErrorText(context.code, context.sentence, context.functionName, message,
                             context.errorText);
}

bool FailWithWidth(const CheckContext& context, std::string_view form) {
    return Fail(context, FillForm(form, {std::to_string(largestWordBits)}));
}

bool IsUnsigned(double value, bool rejectZero) {
    return IsCount(value, false) && !(rejectZero && value == 0.0);
}

}  // namespace

bool CheckWordBits(const CheckContext& context, double value) {
    return IsIntegerInRange(value, smallestWordBits, largestWordBits) ||
           FailWithWidth(context, "parameter must be an integer between 2 to %d");
}

bool CheckUnsigned(const CheckContext& context, double value, bool rejectZero) {
    return IsUnsigned(value, rejectZero) || Fail(context, "parameter must be a positive integer");
}

bool CheckUnsignedList(const CheckContext& context, std::span<const double> values,
                       bool rejectZero) {
    return std::all_of(values.begin(), values.end(),
                       [&](double value) { return IsUnsigned(value, rejectZero); }) ||
           Fail(context, "parameter must be positive integers");
}

bool CheckSameSign(const CheckContext& context, double x, double y) {
    return (x < 0.0) == (y < 0.0) || Fail(context, "parameters must be in same sign");
}

bool CheckBitOperands(const CheckContext& context, double first, double second, double third) {
    if (!IsCount(first, false)) return Fail(context, "first param must be an integer >= 0");
    if (!IsCount(second, false)) return Fail(context, "second param must be an integer >= 0");
    return (IsIntegerValue(third) && third <= largestWordBits) ||
           FailWithWidth(context, "third param must be an integer and < %d");
}

bool CheckAtMost53(const CheckContext& context, double value) {
    return value <= largestWordBits ? false : FailWithWidth(context, "parameter must be <= %d");
}

}  // namespace orvane
