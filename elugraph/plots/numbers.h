// Conversions and degenerate ranges, shared by the plots.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

#include "elugraph/trace/arithmetic.h"
#include "platform/gfx/types.h"

namespace plots {

// base + offset, limited to the 32-bit range.
constexpr LONG Offset(LONG base, std::int64_t offset) { return SaturateToInt32(base + offset); }

// Pixels from `from` to `to`, exact.
constexpr double Span(LONG from, LONG to) { return static_cast<double>(to) - from; }

// The upper end of a range that starts and ends at `value`: 1 above, or, where a double of that
// size cannot tell 1 apart, the next one it can.
inline double WidenedEnd(double value) {
  const double next = std::nextafter(value, std::numeric_limits<double>::infinity());
  return std::fmax(value + 1.0, next);
}

}  // namespace plots
