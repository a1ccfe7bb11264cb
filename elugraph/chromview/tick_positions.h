// Device positions of evenly spaced ticks.
#pragma once

#include <cmath>
#include <cstdint>

#include "elugraph/trace/arithmetic.h"

// Positions in pixels × 65536, walked in whole steps of that unit: the rounding of the step adds up
// along an axis, the same way on every axis. Visits end after kMostTicks, and after the first one
// where the step is not positive. A start that is not finite, or lies beyond 2^31 pixels, has no
// ticks.
class TickPositions {
 public:
  static constexpr int kMostTicks = 32'768;  // one per pixel of the widest device

  // In pixels.
  TickPositions(double first, double step)
      : usable_(std::abs(first) < 2147483648.0),
        position_(usable_ ? TruncToInt64(first * 65536) : 0),
        step_(TruncToInt64(step * 65536)) {}

  // Those of the same step that start one step above row `y`; none where the step is not positive.
  TickPositions AboveRow(int y) const {
    TickPositions moved = *this;
    moved.usable_ = step_ > 0;
    moved.position_ = SaturatingSub64(std::int64_t{y} * 65536, step_);
    return moved;
  }

  // Calls visit(pixel) while inside(pixel), in the given direction: 1 rightward or downward, −1
  // upward.
  template <typename Inside, typename Visit>
  void Walk(int direction, Inside inside, Visit visit) const {
    if (!usable_) return;
    std::int64_t position = position_;
    for (int count = 0; count < kMostTicks; ++count) {
      const std::int64_t pixel = position >> 16;
      if (pixel > INT32_MAX || pixel < INT32_MIN || !inside(static_cast<int>(pixel))) return;
      visit(static_cast<int>(pixel));
      if (step_ <= 0) return;
      position =
          direction > 0 ? SaturatingAdd64(position, step_) : SaturatingSub64(position, step_);
    }
  }

 private:
  bool usable_;
  std::int64_t position_;
  std::int64_t step_;
};
