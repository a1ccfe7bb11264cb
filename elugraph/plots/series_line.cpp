#include "elugraph/plots/series_line.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "elugraph/plots/numbers.h"
#include "elugraph/trace/arithmetic.h"

namespace plots {

namespace {

constexpr double kMargin = 16;  // pixels kept around the plot by the cut

// The longest segment whose crossings the pool computes without overflow.
bool IsNear(double dx, double dy) {
  constexpr double kMost = INT32_MAX;
  return std::fabs(dx) <= kMost && std::fabs(dy) <= kMost && std::fabs(dx) * std::fabs(dy) <= kMost;
}

bool FitsLong(double value) { return value >= INT32_MIN && value <= INT32_MAX; }

// Narrows the part [from, to] of a segment, as fractions of its length, to where
// low ≤ start + fraction × length ≤ high. False where nothing is left.
bool Narrow(double start, double length, double low, double high, double& from, double& to) {
  if (length == 0) return start >= low && start <= high;
  double enter = (low - start) / length;
  double leave = (high - start) / length;
  if (enter > leave) std::swap(enter, leave);
  from = std::max(from, enter);
  to = std::min(to, leave);
  return from <= to;
}

}  // namespace

SeriesLine::SeriesLine(int points, const RECT& plot, HDC hdc)
    : plot_(plot), pool_(SaturateToInt32(2 * std::int64_t{points}), &plot_, hdc) {
  pool_.Reset();
}

void SeriesLine::Add(double x, double y) {
  if (!std::isfinite(x) || !std::isfinite(y)) {
    Interrupt();
    hasLast_ = false;
    return;
  }
  const Place place{x, y};
  const bool fits = FitsLong(x) && FitsLong(y);
  if (hasLast_ &&
      !(fits && FitsLong(last_.x) && FitsLong(last_.y) && IsNear(x - last_.x, y - last_.y))) {
    AddFarSegment(last_, place);
  }
  if (fits) pool_(TruncToInt32(x), TruncToInt32(y));
  last_ = place;
  hasLast_ = true;
}

void SeriesLine::Interrupt() {
  pool_.Draw();
  pool_.Reset();
}

// Leaves the pool empty: where the segment ends in sight, its end point starts the next run there.
void SeriesLine::AddFarSegment(Place from, Place to) {
  const double left = plot_.left - kMargin;
  const double right = plot_.right + kMargin;
  const double top = plot_.top - kMargin;
  const double bottom = plot_.bottom + kMargin;
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  double enter = 0;
  double leave = 1;
  const bool visible = std::isfinite(dx) && std::isfinite(dy) &&
                       Narrow(from.x, dx, left, right, enter, leave) &&
                       Narrow(from.y, dy, top, bottom, enter, leave);
  // Limited again: places of astronomical size leave the fractions without precision.
  const auto at = [&](double fraction) {
    const double x = std::clamp(from.x + fraction * dx, left, right);
    const double y = std::clamp(from.y + fraction * dy, top, bottom);
    pool_(TruncToInt32(std::floor(x + 0.5)), TruncToInt32(std::floor(y + 0.5)));
  };
  Interrupt();
  if (visible) {
    at(enter);
    at(leave);
    Interrupt();
  }
}

}  // namespace plots
