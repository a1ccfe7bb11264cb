// Integer arithmetic that wraps, truncates or saturates on purpose. Every function is defined for
// all arguments.
#pragma once

#include <cstdint>
#include <limits>

constexpr std::int32_t WrapAdd32(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
constexpr std::int32_t WrapSub32(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}
constexpr std::int32_t WrapMul32(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}
constexpr std::int64_t WrapAdd64(std::int64_t a, std::int64_t b) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
}
constexpr std::int64_t WrapSub64(std::int64_t a, std::int64_t b) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b));
}
constexpr std::int64_t WrapMul64(std::int64_t a, std::int64_t b) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b));
}

// Toward zero. The one quotient that does not fit, the smallest number by −1, wraps; a division by
// zero gives 0.
template <typename Int>
constexpr Int TruncDiv(Int dividend, Int divisor) {
  if (divisor == 0) return 0;
  if (divisor == -1 && dividend == std::numeric_limits<Int>::min()) return dividend;
  return static_cast<Int>(dividend / divisor);
}

constexpr std::int64_t SaturatingAdd64(std::int64_t a, std::int64_t b) {
  std::int64_t sum = 0;
  if (!__builtin_add_overflow(a, b, &sum)) return sum;
  return a < 0 ? std::numeric_limits<std::int64_t>::min()
               : std::numeric_limits<std::int64_t>::max();
}
constexpr std::int64_t SaturatingSub64(std::int64_t a, std::int64_t b) {
  std::int64_t difference = 0;
  if (!__builtin_sub_overflow(a, b, &difference)) return difference;
  return a < 0 ? std::numeric_limits<std::int64_t>::min()
               : std::numeric_limits<std::int64_t>::max();
}
constexpr std::int64_t SaturatingMul64(std::int64_t a, std::int64_t b) {
  std::int64_t product = 0;
  if (!__builtin_mul_overflow(a, b, &product)) return product;
  return (a < 0) != (b < 0) ? std::numeric_limits<std::int64_t>::min()
                            : std::numeric_limits<std::int64_t>::max();
}
constexpr std::int32_t SaturateToInt32(std::int64_t value) {
  if (value > std::numeric_limits<std::int32_t>::max()) {
    return std::numeric_limits<std::int32_t>::max();
  }
  if (value < std::numeric_limits<std::int32_t>::min()) {
    return std::numeric_limits<std::int32_t>::min();
  }
  return static_cast<std::int32_t>(value);
}

// Toward zero; values beyond the range saturate, a NaN gives 0.
constexpr std::int32_t TruncToInt32(double value) {
  if (value >= 2147483647.0) return std::numeric_limits<std::int32_t>::max();
  if (value <= -2147483648.0) return std::numeric_limits<std::int32_t>::min();
  return value == value ? static_cast<std::int32_t>(value) : 0;
}
constexpr std::uint32_t TruncToUint32(double value) {
  if (value >= 4294967295.0) return std::numeric_limits<std::uint32_t>::max();
  return value > 0 ? static_cast<std::uint32_t>(value) : 0;
}
constexpr std::int64_t TruncToInt64(double value) {
  if (value >= 9223372036854775808.0) return std::numeric_limits<std::int64_t>::max();
  if (value < -9223372036854775808.0) return std::numeric_limits<std::int64_t>::min();
  return value == value ? static_cast<std::int64_t>(value) : 0;
}

// a × b / c toward zero, without losing the product's upper bits. The magnitudes must be below
// 2^33, c is not 0; a quotient of 2^48 or more comes out as ±2^48.
constexpr std::int64_t TruncMulDiv(std::int64_t a, std::int64_t b, std::int64_t c) {
  const bool negative = ((a < 0) != (b < 0)) != (c < 0);
  const auto magnitude = [](std::int64_t v) { return static_cast<std::uint64_t>(v < 0 ? -v : v); };
  // b in two halves, so that no partial product needs more than 64 bits.
  const std::uint64_t high = magnitude(a) * (magnitude(b) >> 16);
  const std::uint64_t low = magnitude(a) * (magnitude(b) & 0xFFFF);
  const std::uint64_t highQuotient = high / magnitude(c);
  if (highQuotient >= std::uint64_t{1} << 32) {
    return negative ? -(std::int64_t{1} << 48) : std::int64_t{1} << 48;
  }
  const auto quotient = static_cast<std::int64_t>(
      (highQuotient << 16) + (((high % magnitude(c)) << 16) + low) / magnitude(c));
  return negative ? -quotient : quotient;
}
