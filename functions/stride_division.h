#pragma once

#include <cstddef>

#include "functions/column_kernel.h"

#if defined(__x86_64__)
#include <immintrin.h>

// Quotients and square roots of a stride of numbers, for processors that work on four numbers at a
// time and multiply and add in one rounding. The divider of such a processor does one operation
// after the other, so it gets a part of the stride; the others are approximated meanwhile by Newton
// steps, whose units would stand idle.
//
// An approximation is never trusted: the remainder of what was found shows whether it is the one
// correctly rounded number, which is the number that the divider gives. Where that is not shown for
// all of a stride, as for zeros, infinities and numbers beyond the range of a float, the divider
// does the whole stride.

#define ORVANE_WIDE [[gnu::target("avx2,fma"), gnu::always_inline]] inline

namespace orvane::loops {

ORVANE_WIDE __m256d Magnitude(__m256d number) {
    return _mm256_andnot_pd(_mm256_set1_pd(-0.0), number);
}

// Half of `scale` times the distance from a number to its neighbour towards zero: of a power of two
// that neighbour is the nearer one. 0 where the number is so small that this is not exact.
ORVANE_WIDE __m256d NeighbourDistance(__m256d number, double scale) {
    // The product has the exponent of that neighbour, less that of the factor.
    constexpr double neighbourOfOne = 0x1.fffffffffffffp-1;
    const __m256d product = _mm256_mul_pd(number, _mm256_set1_pd(0x1p-53 * scale * neighbourOfOne));
    const __m256d exponents = _mm256_castsi256_pd(_mm256_set1_epi64x(0x7ff0000000000000));
    return _mm256_and_pd(product, exponents);
}

// Each operation gives its result by the divider, or approximated. `proven` keeps those elements
// for which the approximation is the right number.

struct WideQuotient {
    static constexpr std::size_t byDivider = 5;  // of 8

    ORVANE_WIDE static __m256d Divided(__m256d a, __m256d b) { return _mm256_div_pd(a, b); }

    ORVANE_WIDE static __m256d Approximated(__m256d a, __m256d b, __m256d& proven) {
        const __m256d one = _mm256_set1_pd(1.0);
        // From 11 bits to 34, and by the remainder to more than a double holds.
        const __m256d near = _mm256_cvtps_pd(_mm_rcp_ps(_mm256_cvtpd_ps(b)));
        const __m256d rest = _mm256_fnmadd_pd(b, near, one);
        const __m256d inverse = _mm256_fmadd_pd(near, _mm256_fmadd_pd(rest, rest, rest), near);
        __m256d quotient = _mm256_mul_pd(a, inverse);
        quotient = _mm256_fmadd_pd(_mm256_fnmadd_pd(b, quotient, a), inverse, quotient);

        // a / b is nearer to the quotient than half the way to a neighbour when the remainder is
        // less than b times that. What is taken off keeps numbers away whose product is not exact.
        const __m256d remainder = _mm256_fnmadd_pd(b, quotient, a);
        const __m256d most = _mm256_fmadd_pd(Magnitude(b), NeighbourDistance(quotient, 1.0),
                                             _mm256_set1_pd(-0x1p-1000));
        const __m256d isNear = _mm256_cmp_pd(Magnitude(remainder), most, _CMP_LT_OQ);
        proven = _mm256_and_pd(proven, isNear);
        return quotient;
    }
};

// 1 / a.
struct WideInverse {
    static constexpr std::size_t byDivider = WideQuotient::byDivider;

    ORVANE_WIDE static __m256d Divided(__m256d a, __m256d) {
        return WideQuotient::Divided(_mm256_set1_pd(1.0), a);
    }
    ORVANE_WIDE static __m256d Approximated(__m256d a, __m256d, __m256d& proven) {
        return WideQuotient::Approximated(_mm256_set1_pd(1.0), a, proven);
    }
};

struct WideRoot {
    static constexpr std::size_t byDivider = 4;  // of 8

    ORVANE_WIDE static __m256d Divided(__m256d a, __m256d) { return _mm256_sqrt_pd(a); }

    ORVANE_WIDE static __m256d Approximated(__m256d a, __m256d, __m256d& proven) {
        const __m256d half = _mm256_set1_pd(0.5);
        // From 11 bits to 33, and by the remainder to more than a double holds.
        const __m256d near = _mm256_cvtps_pd(_mm_rsqrt_ps(_mm256_cvtpd_ps(a)));
        const __m256d nearRoot = _mm256_mul_pd(a, near);
        const __m256d halfNear = _mm256_mul_pd(half, near);
        const __m256d rest = _mm256_fnmadd_pd(nearRoot, halfNear, half);
        const __m256d more = _mm256_fmadd_pd(_mm256_mul_pd(rest, rest), _mm256_set1_pd(1.5), rest);
        const __m256d halfInverse = _mm256_fmadd_pd(halfNear, more, halfNear);
        __m256d root = _mm256_fmadd_pd(nearRoot, more, nearRoot);
        root = _mm256_fmadd_pd(_mm256_fnmadd_pd(root, root, a), halfInverse, root);

        // With h for half the way to a neighbour, the root of `a` is between root - h and root + h
        // when the remainder is between -2 * h * root + h * h and 2 * h * root + h * h. All that is
        // known exactly is a multiple of 4 * h * h, so h * h makes no difference.
        const __m256d remainder = _mm256_fnmadd_pd(root, root, a);
        const __m256d most = _mm256_mul_pd(root, NeighbourDistance(root, 2.0));
        const __m256d isNear = _mm256_cmp_pd(Magnitude(remainder), most, _CMP_LT_OQ);
        proven = _mm256_and_pd(proven, isNear);
        return root;
    }
};

// What marks an element. What is proven to be right is neither.
enum class WideMark { none, nonFinite, zeroDivisor };

template <typename Operation, WideMark mark>
ORVANE_WIDE __m256d RunDivided(__m256d left, __m256d right, double* out) {
    const __m256d result = Operation::Divided(left, right);
    _mm256_storeu_pd(out, result);
    const __m256d zero = _mm256_setzero_pd();
    if constexpr (mark == WideMark::nonFinite) return _mm256_sub_pd(result, result);
    if constexpr (mark == WideMark::zeroDivisor) return _mm256_cmp_pd(right, zero, _CMP_EQ_OQ);
    return zero;
}

// Whether an element is marked. `out` is apart from the operands; inverses and roots read `a`
// alone.
template <typename Operation, WideMark mark>
ORVANE_WIDE bool RunWideStride(const double* a, const double* b, double* out) {
    constexpr std::size_t width = 4;
    constexpr std::size_t parts = 8;
    static_assert(columnStride % (width * parts) == 0);
    __m256d proven = _mm256_castsi256_pd(_mm256_set1_epi64x(-1));
    __m256d marks = _mm256_setzero_pd();
    for (std::size_t i = 0, part = 0; i < columnStride; i += width, part = (part + 1) % parts) {
        const __m256d left = _mm256_loadu_pd(a + i);
        const __m256d right = _mm256_loadu_pd(b + i);
        // Spread evenly over the stride.
        if ((part + 1) * Operation::byDivider / parts != part * Operation::byDivider / parts) {
            marks = _mm256_or_pd(marks, RunDivided<Operation, mark>(left, right, out + i));
        } else {
            _mm256_storeu_pd(out + i, Operation::Approximated(left, right, proven));
        }
    }
    if (_mm256_movemask_pd(proven) != 0xf) {
        for (std::size_t i = 0; i < columnStride; i += width) {
            const __m256d left = _mm256_loadu_pd(a + i);
            const __m256d right = _mm256_loadu_pd(b + i);
            marks = _mm256_or_pd(marks, RunDivided<Operation, mark>(left, right, out + i));
        }
    }
    const __m256i bits = _mm256_castpd_si256(marks);
    return _mm256_testz_si256(bits, bits) == 0;
}

}  // namespace orvane::loops

#endif
