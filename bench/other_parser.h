#pragma once

#include <cstdint>
#include <string>

// The sums of the benchmark's bodies by muParser, whose bulk mode calculates a whole column with
// one call as well. It keeps no order of operations and tests no term.

namespace orvane::bench {

// Where the benchmark was built without it, this gives NaN.
double SumByOtherParser(const std::string& body, double lower, double step, std::int64_t count);

constexpr bool HasOtherParser() {
#ifdef ORVANE_MUPARSER
    return true;
#else
    return false;
#endif
}

}  // namespace orvane::bench
