// Times in 32.32 fixed point, in milliseconds.
#pragma once

#include <cstdint>

// `value` is the time × 2^32. `whole` is the time rounded toward minus infinity and `fraction` the
// rest × 2^32, so that time = whole + fraction / 2^32 for negative times too. Sums, differences and
// signs are taken on `value`; a step without a fraction may be added to `whole` alone.
union FixedPoint64 {
  std::int64_t value;
  __extension__ struct {
    std::uint32_t fraction;
    std::int32_t whole;
  };

  static constexpr FixedPoint64 OfValue(std::int64_t value) { return {value}; }
  // `time` in whole milliseconds.
  static constexpr FixedPoint64 OfWhole(std::int32_t time) {
    return {static_cast<std::int64_t>(time) * (std::int64_t{1} << 32)};
  }
};

static_assert(sizeof(FixedPoint64) == 8);
