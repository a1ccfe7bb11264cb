// Choice of axis ticks, apart from any device.
#pragma once

#include <cmath>
#include <cstdint>
#include <optional>

namespace plots {

// Ticks stand at the multiples of `step` from `first` on, which is one of them. Labels show
// `decimals` decimals. A descending axis has a negative step.
struct TickChoice {
  double first;
  double step;
  int decimals;
};

// Part of a step within which a multiple counts as equal to the end of a range: decimal bounds such
// as 0.7 and multiples of decimal steps such as 7 × 0.1 are equal only up to rounding.
inline constexpr double kSameTick = 1e-9;

// Ticks of a horizontal axis that spans the values `first` to `last` (descending allowed) over
// `pixels` (their sign does not matter), with digits `digitWidth` pixels wide. The step is 1, 2 or
// 5 times a power of ten and wider than the widest label plus half a digit; 0 … 11 decimals.
// None where a bound is not finite, first equals last, the arithmetic overflows, or steps are too
// small to be told apart next to `first`.
std::optional<TickChoice> ChooseHorizontalTicks(double first, double last, std::int64_t pixels,
                                                int digitWidth);

// Ticks of a vertical axis from `lowest` to `highest` whose labels are `labelHeight` axis units
// high: the step is the smallest value 1, 2 or 5 × 10^n above twice the label height, or above the
// whole range where that is smaller. A height below 1e-100 (or NaN) counts as 1. None as above.
std::optional<TickChoice> ChooseVerticalTicks(double lowest, double highest, double labelHeight);

// Far more than fit on any device.
inline constexpr std::int64_t kMostTicks = 100'000;

// Calls visit(value) for every tick that lies before `end` in the direction of the step. Each is
// one product, not a sum of steps, so that zero is 0 and the end of the range gets no tick. Ends
// early where a step no longer changes the value, and after one tick per pixel or kMostTicks.
template <typename Visit>
void ForEachTick(const TickChoice& ticks, double end, std::int64_t pixels, Visit visit) {
  const bool ascending = ticks.step > 0;
  const auto before = [ascending](double a, double b) { return ascending ? a < b : a > b; };
  const std::int64_t most = pixels < kMostTicks ? pixels + 1 : kMostTicks;
  const double limit = end - kSameTick * ticks.step;
  const double firstMultiple = std::round(ticks.first / ticks.step);
  double value = ticks.first;
  for (std::int64_t count = 1; count <= most && before(value, limit); ++count) {
    visit(value);
    const double next = (firstMultiple + static_cast<double>(count)) * ticks.step + 0.0;
    if (!before(value, next)) return;
    value = next;
  }
}

}  // namespace plots
