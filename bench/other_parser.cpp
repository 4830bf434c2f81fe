#include "bench/other_parser.h"

#include <algorithm>
#include <limits>
#include <vector>

#ifdef ORVANE_MUPARSER
#include <dlfcn.h>
#include <muParser.h>
#endif

namespace orvane::bench {

#ifdef ORVANE_MUPARSER

namespace {

// The parser spreads a column over all processors where it was built for that; here each has one.
void StayOnOneProcessor() {
    using SetThreads = void (*)(int);
    void* const found = dlsym(RTLD_DEFAULT, "omp_set_num_threads");
    if (found != nullptr) reinterpret_cast<SetThreads>(found)(1);
}

}  // namespace

double SumByOtherParser(const std::string& body, double lower, double step, std::int64_t count) {
    constexpr std::int64_t columnRows = 4096;  // within the second cache
    std::vector<double> x(columnRows);
    std::vector<double> terms(columnRows);
    StayOnOneProcessor();
    mu::Parser parser;
    parser.DefineVar("x", x.data());
    parser.SetExpr(body);
    double sum = 0.0;
    for (std::int64_t first = 0; first < count; first += columnRows) {
        const std::int64_t rows = std::min(columnRows, count - first);
        for (std::int64_t row = 0; row < rows; ++row) {
            x[static_cast<std::size_t>(row)] = static_cast<double>(first + row) * step + lower;
        }
        parser.Eval(terms.data(), static_cast<int>(rows));
        for (std::int64_t row = 0; row < rows; ++row) sum += terms[static_cast<std::size_t>(row)];
    }
    return sum;
}

#else

double SumByOtherParser(const std::string&, double, double, std::int64_t) {
    return std::numeric_limits<double>::quiet_NaN();
}

#endif

}  // namespace orvane::bench
