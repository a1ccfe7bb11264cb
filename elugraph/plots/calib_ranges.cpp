#include "elugraph/plots/calib_ranges.h"

#include <algorithm>
#include <cmath>

#include "elugraph/plots/numbers.h"

namespace plots {

namespace {

constexpr double kMinAxisSpan = 1e-27;
constexpr double kNothing = 1e27;  // extremes of no point at all
constexpr double kNoData = 1e21;
constexpr double kDefaultHigh = 0.9;
constexpr double kXMargin = 0.1;
constexpr double kYMargin = 0.25;

struct Extent {
  double low = kNothing;
  double high = -kNothing;

  bool Degenerate() const { return high - low < kMinAxisSpan; }
  void Include(double value) {
    LowerTo(value);
    if (value > high) high = value;
  }
  void LowerTo(double value) {
    if (low > value) low = value;
  }
  void ReplaceNothing() {
    if (high < -kNoData) high = kDefaultHigh;
    if (low > kNoData) low = 0;
  }
  // Out to zero, then by one.
  void Open() {
    if (!Degenerate()) return;
    if (high > 0) {
      low = 0;
    } else if (low < 0) {
      high = 0;
    }
    if (Degenerate()) high = WidenedEnd(high);
  }
};

}  // namespace

int CalibSource::PointCount() const {
  const LONG count = pool.points.count;  // no reference into a packed record
  return std::clamp<LONG>(count, 0, 0xFFFF);
}

CalibSettings SettingsOf(const CalibSource& source) {
  const CalibPool& pool = source.pool;
  const component& own = *source.of;
  CalibSettings settings{pool.suppressZeroX == 0 && pool.suppressZeroY == 0, pool.originMode,
                         pool.swapAxes != 0, pool.quantityType & component::kQuantityType};
  if ((own.flags & component::kOwnDisplay) != 0) {
    settings.fromZero = own.suppressZeroX == 0 && own.suppressZeroY == 0;
    settings.originMode = own.originMode;
    settings.swapped = own.swapAxes != 0;
  }
  if ((own.flags & component::kOwnQuantityType) != 0) {
    settings.quantityType = own.flags & component::kQuantityType;
  }
  return settings;
}

CalibRanges ChooseCalibRanges(const CalibSource& source, const CalibSettings& settings) {
  CalibPool& pool = source.pool;
  Extent x;
  Extent y;
  const int points = source.PointCount();
  for (int point = 0; point < points; ++point) {
    if (pool.PointIsExcluded(source.of, point)) continue;
    x.Include(pool.PointToX(source.of, point));
    y.Include(pool.PointToY(source.of, point));
  }
  if (settings.fromZero && settings.originMode % 2 == 0) {
    x.LowerTo(0);
    y.LowerTo(0);
  } else if (settings.fromZero && settings.originMode == 1) {
    x.LowerTo(0);
    y.LowerTo(pool.XtoYtab(source.of, 0));
  }
  x.ReplaceNothing();
  y.ReplaceNothing();
  x.Open();
  if (y.Degenerate()) {
    const double start = pool.XtoYtab(source.of, x.low);
    const double end = pool.XtoYtab(source.of, x.high);
    y = {std::min(start, end), std::max(start, end)};
    y.Open();
  }

  const double xMargin = kXMargin * (x.high - x.low);
  const double yMargin = kYMargin * (y.high - y.low);
  CalibRanges ranges{x.low,           x.high + xMargin, y.low, y.high + yMargin,
                     x.low - xMargin, y.low - yMargin};
  if (settings.fromZero) {
    ranges.xLow = std::min(ranges.xLow, 0.0);
    ranges.yLow = std::min(ranges.yLow, 0.0);
    ranges.curveStart = std::max(ranges.curveStart, ranges.xLow);
    ranges.yLowMargin = std::max(ranges.yLowMargin, ranges.yLow);
  } else {
    ranges.xLow = ranges.curveStart;
    ranges.yLow = ranges.yLowMargin;
  }
  return ranges;
}

int FactorExponent(double span) {
  const int exponent = TruncToInt32(std::log10(span / 5));
  return exponent == 1 || !std::isfinite(span) || !(span > 0) ? 0 : exponent;
}

}  // namespace plots
