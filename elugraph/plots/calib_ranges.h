// Ranges of the calibration view's axes, apart from any device. x and y are in calibration units.
#pragma once

#include "elugraph/host/records.h"

namespace plots {

// The component shown and the pool its points come from; both borrowed from a chromatogram.
struct CalibSource {
  CalibPool& pool;
  component* of;

  // Points the pool lists, excluded ones too; at most 65535.
  int PointCount() const;
};

// Display settings in force: the component's own ones where it has them, otherwise the pool's.
struct CalibSettings {
  bool fromZero;     // neither zero is suppressed: the axes reach down to zero
  int originMode;    // with fromZero: even: the origin joins the ranges; 1: x 0 and the curve there
  bool swapped;      // response on x, quantity on y
  int quantityType;  // 0 … 3
};
CalibSettings SettingsOf(const CalibSource& source);

struct CalibRanges {
  double xLow;
  double xHigh;
  double yLow;
  double yHigh;
  double curveStart;  // x
  double yLowMargin;  // the lower y value before it is lowered to zero
};

// The extent of the points that are not excluded, widened where it is degenerate, with a margin of
// a tenth of the x range and a quarter of the y range. Without points 0 … 0.9 before the margin.
// Coordinates of NaN do not count; infinite ones give infinite or NaN ranges. May raise what the
// host's operations raise.
CalibRanges ChooseCalibRanges(const CalibSource& source, const CalibSettings& settings);

// The power of ten that labels of an axis over `span` are divided by: the truncated logarithm of a
// fifth of the span, where that is neither 0 nor 1; 0 for a span that has none.
int FactorExponent(double span);

}  // namespace plots
