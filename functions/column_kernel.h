#pragma once

#include <cstddef>

// Columns of numbers, and what a kernel is: one function over the numbers of a column.

namespace orvane {

// Numbers in a column. Short enough that the columns of a body stay in the nearest cache.
inline constexpr std::size_t columnLength = 512;
// A count that is handed to a kernel is a multiple of this.
inline constexpr std::size_t columnStride = 32;
// That many elements must be there to be read and written, whatever stands in them.
constexpr std::size_t PaddedCount(std::size_t count) {
    return (count + columnStride - 1) / columnStride * columnStride;
}

// Kernels take so many terms at a time on the side.
inline constexpr std::size_t sideRound = 8;

// A sum or a product in order, each of whose operations waits for the one before. Kernels take it
// further on the side, as what they do themselves waits for other things.
struct SideFold {
    double total = 0.0;
    bool multiplies = false;
    const double* next = nullptr;  // the terms that are still to come
    const double* end = nullptr;

    std::size_t Left() const { return static_cast<std::size_t>(end - next); }
    // At most `wished` rounds for each stride of `count` elements, as far as there are terms.
    std::size_t RoundsOf(std::size_t wished, std::size_t count) const {
        const std::size_t termsForRound = count / columnStride * sideRound;
        while (wished * termsForRound > Left()) --wished;
        return wished;
    }
    void Finish() {
        for (; next != end; ++next) total = multiplies ? total * *next : total + *next;
    }
};

// An operation reads as many of them as it has operands; the others point to some column.
struct ColumnOperands {
    const double* a;
    const double* b;
    const double* c;
};

struct ColumnKernel {
    // `rounds` of terms are taken on the side for each stride of elements; they must be there.
    using Loop = bool (*)(const ColumnOperands& in, double* out, std::size_t count, SideFold& side,
                          std::size_t rounds);
    Loop loop = nullptr;
    bool isSlow = false;  // waits for itself long enough to take the terms of a whole block

    // `out` is a column of its own. A function of one number reads `a` alone. True when an element
    // fails, which is then in `out` as it came.
    bool operator()(const double* a, const double* b, double* out, std::size_t count) const {
        SideFold nothing;
        return loop({a, b, b}, out, count, nothing, 0);
    }
    friend bool operator==(const ColumnKernel& kernel, std::nullptr_t) {
        return kernel.loop == nullptr;
    }
};

struct ColumnKernels {
    ColumnKernel plain;   // nothing fails
    ColumnKernel tested;  // what is not finite fails
};

// Every kernel is there in two forms: one for any processor, and one for those that work on four
// numbers at a time.
enum class KernelForm { baseline, wide };

}  // namespace orvane
