// Signal values as raw counts.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "platform/gfx/types.h"

namespace embedded {

// The difference of any two counts up to this size fits into 32 bits.
inline constexpr LONG kMaxCount = (LONG{1} << 30) - 1;

// value = count × unitsPerCount, with a scale that a record's float holds exactly.
struct Counts {
  std::vector<LONG> counts;
  float unitsPerCount = 1.0F;
};

// Counts of `values`. Whole numbers up to kMaxCount keep their value (scale 1). Everything else
// takes the finest power of ten (as the nearest float) from 1e-37 to 1e38 with which no count
// exceeds kMaxCount; counts are rounded to nearest, halves away from zero. A value is then off by
// at most half a count, which is 5e-9 of the largest absolute value (more only below 1e-28).
// Returns the empty text, or which value (counted from 0) cannot be held: not a number, infinite,
// beyond 1e47; `result` is then unchanged.
std::string Quantise(std::span<const double> values, Counts& result);

}  // namespace embedded
