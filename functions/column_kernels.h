#pragma once

#include <cstddef>
#include <cstdint>

#include "functions/column_kernel.h"
#include "functions/keyword_table.h"

// One function over a column of numbers. A kernel gives, for each element, the very bits that the
// function's body gives for that element alone: it runs the same operations in the same order, only
// for several elements at a time where the processor can.

namespace orvane {

// The wide form where this processor can run it.
KernelForm FastestForm();

// Null where the body has no kernel.
const ColumnKernels* KernelsOf(ScalarBody body, KernelForm form = FastestForm());

// Of an operator on plain numbers with that many operands; null where there is none. A divisor of 0
// fails. What is not finite passes the plain one.
ColumnKernels OperatorKernels(ValueBody body, std::size_t operands,
                              KernelForm form = FastestForm());

// Whether all numbers are zero or none is; by their sign, whether all are below, all are zero or
// all are something else.
bool IsOfOneKind(const double* numbers, std::size_t count, bool bySign,
                 KernelForm form = FastestForm());
// Copies a column; what is not finite fails.
bool CopyFinite(const double* from, double* to, std::size_t count, KernelForm form = FastestForm());

// (first + j) * step + lower for j from 0: the values of a variable on a grid. A round of terms for
// each stride is taken on the side, where so many are there.
void FillGrid(double* out, std::int64_t first, double step, double lower, std::size_t count,
              SideFold& side, KernelForm form = FastestForm());

}  // namespace orvane
