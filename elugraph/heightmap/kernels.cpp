#include "elugraph/heightmap/kernels.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace {

using kernels::Extended;

#if defined(__x86_64__) || defined(__i386__)
#define ELUGRAPH_X87 1

// The unit's own operations. The C library's exp2l and pow switch to round-to-nearest inside and
// would hide the caller's mode.
long double LogTwoOfTen() {
  long double constant;
  __asm__ volatile("fldl2t" : "=t"(constant));
  return constant;
}

long double ToIntegral(long double value) {
  __asm__ volatile("frndint" : "+t"(value));
  return value;
}

// 2^f − 1 for |f| ≤ 1.
long double TwoToMinusOne(long double f) {
  __asm__ volatile("f2xm1" : "+t"(f));
  return f;
}

long double Scale(long double value, long double exponent) {
  __asm__ volatile("fscale" : "+t"(value) : "u"(exponent));
  return value;
}
#endif

// Beyond the reach of any exponent: scaling by it overflows or underflows.
constexpr long double kExponentLimit = 100000;

}  // namespace

long double kernels::PowerOfTenSeries(double x) {
  constexpr long double kLogTwoOfTen = 3.3219280948873623478703194294893901758648L;
  constexpr long double kLnTwo = 0.6931471805599453094172321214581765680755L;
  // |f ln 2| < 0.7: the first term left out is below 2^-113, the significand of any long double.
  constexpr int kTerms = 28;

  const long double t = x * kLogTwoOfTen;
  const long double k = std::nearbyint(t);
  const long double y = (t - k) * kLnTwo;
  long double series = 1;
  for (int n = kTerms; n > 1; --n) series = 1 + series * y / n;
  const long double power = 1 + series * y;
  if (std::isnan(power)) return power;
  return std::scalbn(power, static_cast<int>(std::clamp(k, -kExponentLimit, kExponentLimit)));
}

long double PowerOfTen(double x) {
#ifdef ELUGRAPH_X87
  const long double t = x * LogTwoOfTen();
  const long double k = ToIntegral(t);
  return Scale(1 + TwoToMinusOne(t - k), k);
#else
  return kernels::PowerOfTenSeries(x);
#endif
}

long double DotIntDouble(const std::int32_t* a, const double* b, unsigned count) {
  Extended sum = 0;
  for (unsigned i = 0; i < count; ++i) sum += static_cast<Extended>(a[i]) * b[i];
  return sum;
}

long double DotDouble(const double* a, const double* b, unsigned count) {
  Extended sum = 0;
  for (unsigned i = 0; i < count; ++i) sum += static_cast<Extended>(a[i]) * b[i];
  return sum;
}

long double EvalPolynomial(double x, int degree, const double* coefficients) {
  if (degree < 0) return 0;
  Extended value = coefficients[degree];
  for (int k = degree - 1; k >= 0; --k) value = value * x + coefficients[k];
  return value;
}

// On the bits alone: no mode to switch and no flag to raise.
std::int32_t RoundToInt(double x) {
  static_assert(std::numeric_limits<double>::is_iec559);
  constexpr std::uint64_t kHalf = std::uint64_t{1} << 63;
  constexpr std::uint64_t kImplicitBit = std::uint64_t{1} << 52;
  const auto bits = std::bit_cast<std::uint64_t>(x);
  const bool negative = bits >> 63 != 0;
  const std::int32_t limit = negative ? INT32_MIN : INT32_MAX;
  const int exponent = static_cast<int>(bits >> 52 & 0x7FF) - 1023;
  if (exponent > 30) return limit;  // |x| ≥ 2^31, infinite, or NaN
  if (exponent < -1) return 0;      // |x| < 1/2

  const std::uint64_t significand = (bits & (kImplicitBit - 1)) | kImplicitBit;
  const int fractionBits = 52 - exponent;  // 22 … 53
  std::int64_t whole = static_cast<std::int64_t>(significand >> fractionBits);
  const std::uint64_t fraction = significand << (64 - fractionBits);
  if (fraction > kHalf || (fraction == kHalf && whole % 2 != 0)) ++whole;
  if (whole > INT32_MAX) return limit;
  return static_cast<std::int32_t>(negative ? -whole : whole);
}
