#include "platform/gfx/driver/integer_math.h"

#include <bit>

namespace gfx {
namespace {

bool Less(const Uint128& a, const Uint128& b) {
  return a.high != b.high ? a.high < b.high : a.low < b.low;
}

}  // namespace

Uint128 Multiply(std::uint64_t a, std::uint64_t b) {
  const std::uint64_t aLow = a & 0xFFFFFFFFu, aHigh = a >> 32;
  const std::uint64_t bLow = b & 0xFFFFFFFFu, bHigh = b >> 32;
  const std::uint64_t low = aLow * bLow;
  const std::uint64_t middle = aHigh * bLow + (low >> 32);
  const std::uint64_t middle2 = aLow * bHigh + (middle & 0xFFFFFFFFu);
  return {aHigh * bHigh + (middle >> 32) + (middle2 >> 32), middle2 << 32 | (low & 0xFFFFFFFFu)};
}

std::uint64_t IntegerRoot(std::uint64_t value) {
  if (value < 2) return value;
  // Newton's iteration from above: falls until it reaches the root.
  std::uint64_t root = std::uint64_t{1} << (std::bit_width(value) + 1) / 2;
  for (;;) {
    const std::uint64_t next = (root + value / root) / 2;
    if (next >= root) return root;
    root = next;
  }
}

std::uint64_t IntegerHypotenuse(std::uint64_t a, std::uint64_t b) {
  constexpr std::uint64_t kNarrow = std::uint64_t{1} << 31;
  if (a < kNarrow && b < kNarrow) return IntegerRoot(a * a + b * b);
  const Uint128 aSquare = Multiply(a, a), bSquare = Multiply(b, b);
  Uint128 sum{aSquare.high + bSquare.high, aSquare.low + bSquare.low};
  if (sum.low < aSquare.low) ++sum.high;
  std::uint64_t root = 0;
  for (int bit = 62; bit >= 0; --bit) {
    const std::uint64_t trial = root | std::uint64_t{1} << bit;
    if (!Less(sum, Multiply(trial, trial))) root = trial;
  }
  return root;
}

std::uint64_t MultiplyDivide(std::uint64_t a, std::uint64_t b, std::uint64_t divisor) {
  const Uint128 product = Multiply(a, b);
  if (product.high == 0) return product.low / divisor;
  // Long division, one bit at a time; the remainder stays below the divisor.
  std::uint64_t remainder = product.high % divisor, quotient = 0;
  for (int bit = 63; bit >= 0; --bit) {
    const bool carry = remainder >> 63 != 0;
    remainder = remainder << 1 | (product.low >> bit & 1);
    quotient <<= 1;
    if (carry || remainder >= divisor) {
      remainder -= divisor;
      quotient |= 1;
    }
  }
  return quotient;
}

}  // namespace gfx
