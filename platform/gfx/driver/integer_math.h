// Exact integer arithmetic the raster driver needs beyond the operators: floor division, integer
// roots, and products of two 64-bit words. Nothing here overflows for the stated arguments.
#pragma once

#include <cstdint>

namespace gfx {

// Rounded toward minus infinity; `divisor` > 0.
constexpr std::int64_t FloorDiv(std::int64_t value, std::int64_t divisor) {
  const std::int64_t quotient = value / divisor;
  return quotient - (value % divisor < 0 ? 1 : 0);
}
constexpr std::int64_t CeilDiv(std::int64_t value, std::int64_t divisor) {
  const std::int64_t quotient = value / divisor;
  return quotient + (value % divisor > 0 ? 1 : 0);
}

// The magnitude, also of the most negative value.
constexpr std::uint64_t Magnitude(std::int64_t value) {
  return value < 0 ? ~static_cast<std::uint64_t>(value) + 1 : static_cast<std::uint64_t>(value);
}

struct Uint128 {
  std::uint64_t high;
  std::uint64_t low;
};
Uint128 Multiply(std::uint64_t a, std::uint64_t b);

// Largest integer whose square is at most `value`.
std::uint64_t IntegerRoot(std::uint64_t value);
// floor(sqrt(a² + b²)); a and b below 2^62.
std::uint64_t IntegerHypotenuse(std::uint64_t a, std::uint64_t b);
// floor(a × b / divisor); divisor > 0 and the result fits 64 bits (a ≤ divisor or b ≤ divisor).
std::uint64_t MultiplyDivide(std::uint64_t a, std::uint64_t b, std::uint64_t divisor);

}  // namespace gfx
