#include "core/calc_parameters.h"

#include <cmath>

namespace orvane {

CalcParameters calcParameters;

void CalcParameters::SetWordLimits() {
    wordModulus = std::pow(2.0, SystemBits());
    wordMaxUnsigned = wordModulus - 1.0;
    wordMaxSigned = wordModulus * 0.5 - 1.0;
    wordMinSigned = wordModulus * -0.5;
}

NumberLimits FindNumberLimits() {
    double power = std::pow(2.0, 200);
    for (int bits = 200; bits > 0 && !(power > power - 1.0); --bits) {
        power = std::pow(2.0, bits - 1);
    }
    return {power, power - 1.0, power * 0.5 - 1.0, power * -0.5};
}

}  // namespace orvane
