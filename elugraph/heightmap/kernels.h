// Floating-point primitives of the height map and of the axes.
//
// Intermediate values stay in extended precision (64-bit significand) where the target has it, and
// are doubles or long doubles elsewhere; results are the widest floating type, and only the caller
// narrows them. All but RoundToInt compute under the rounding mode in force and leave it alone. No
// kernel checks ranges: infinities and NaN go through as the arithmetic takes them. No state; any
// thread.
#pragma once

#include <cfloat>
#include <cstdint>
#include <type_traits>

namespace kernels {
using Extended = std::conditional_t<LDBL_MANT_DIG == 64, long double, double>;
}

// 10 to the power x, as 2^k × 2^f with k = x × log2(10) rounded to an integer in the current mode
// and f the rest, |f| < 1. Overflow gives infinity, underflow 0 (or what the rounding mode makes
// of them: the largest or smallest finite value); an infinite x and NaN give NaN.
long double PowerOfTen(double x);

// Sum of a[i] × b[i] for i = 0 … count − 1, added in this order; 0 for an empty array.
long double DotIntDouble(const std::int32_t* a, const double* b, unsigned count);
long double DotDouble(const double* a, const double* b, unsigned count);

// coefficients[0] + coefficients[1] x + … + coefficients[degree] x^degree by Horner's scheme
// (degree + 1 coefficients); 0 for a negative degree.
long double EvalPolynomial(double x, int degree, const double* coefficients);

// The nearest integer, ties to even, whatever the rounding mode in force; values beyond the 32-bit
// range, infinities and NaN give the limit on the side of their sign. Floating-point flags and
// mode stay as they are.
std::int32_t RoundToInt(double x);

namespace kernels {
// PowerOfTen in plain arithmetic: 2^f − 1 as a power series. What targets without the x87 unit use;
// accurate to a few units in the last place of long double, and 4 × |x| more for large |x|.
long double PowerOfTenSeries(double x);
}  // namespace kernels
