#pragma once

#include "functions/column_kernels.h"

// Two operators in one kernel: what is between them never leaves the processor.

namespace orvane {

// Of two operators on plain numbers, each with two operands: `second` takes what `first` gives of
// `a` and `b`, on its right where it is reversed, and `c`. Null where a kernel does not take both.
ColumnKernels PairKernels(ValueBody first, ValueBody second, bool reversed,
                          KernelForm form = FastestForm());

}  // namespace orvane
