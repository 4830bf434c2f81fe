#pragma once

#include <cstddef>
#include <cstdint>

#include "functions/keyword_table.h"

// One function over a column of numbers. A kernel gives, for each element, the very bits that the
// function's body gives for that element alone: it runs the same operations in the same order, only
// for several elements at a time where the processor can.

namespace orvane {

// Numbers in a column. Short enough that the columns of a body stay in the nearest cache.
inline constexpr std::size_t columnLength = 128;
// A count that is handed to a kernel is a multiple of this.
inline constexpr std::size_t columnStride = 8;
// That many elements must be there to be read and written, whatever stands in them.
constexpr std::size_t PaddedCount(std::size_t count) {
    return (count + columnStride - 1) / columnStride * columnStride;
}

// `out` is a column of its own. A function of one number reads `a` alone. True when an element
// fails, which is then in `out` as it came.
using ColumnKernel = bool (*)(const double* a, const double* b, double* out, std::size_t count);

struct ColumnKernels {
    ColumnKernel plain = nullptr;   // nothing fails
    ColumnKernel tested = nullptr;  // what is not finite fails
};

// Null where the body has no kernel.
const ColumnKernels* KernelsOf(ScalarBody body);

// Of an operator on plain numbers with that many operands; null where there is none. What is not
// finite passes; a divisor of 0 fails.
ColumnKernel OperatorKernel(ValueBody body, std::size_t operands);

// Copies a column; what is not finite fails.
bool CopyFinite(const double* from, double* to, std::size_t count);

// (first + j) * step + lower for j from 0: the values of a variable on a grid.
void FillGrid(double* out, std::int64_t first, double step, double lower, std::size_t count);

}  // namespace orvane
