#include "output/number_text.h"

#include "core/number_literal.h"

namespace orvane {

std::string FormatNumber(double value, const CalcParameters& parameters) {
    const char* const zero = parameters.showSign ? "+0" : "0";
    if (value == 0.0) return zero;
    std::string text = FormatStripped(value, parameters.floatPrecision, parameters.showSign);
    // A negative number that rounded away reads as zero; its minus would tell nothing.
    if (text == "-0") return zero;
    return text;
}

std::string FormatPlain(double value, int precision) {
    return FormatStripped(value, precision, false);
}

std::string FormatSigned(double value, int precision) {
    if (value == 0.0) return "+0";
    return FormatStripped(value, precision, true);
}

}  // namespace orvane
