#include "elugraph/plots/axis_ticks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "elugraph/heightmap/kernels.h"
#include "elugraph/plots/numbers.h"

namespace plots {

namespace {

constexpr int kMostDecimals = 12;         // the search ends here; labels show one less
constexpr double kMinDigitWidth = 1e-27;  // axis units
constexpr double kMinLabelHeight = 1e-100;
constexpr double kMostShortOfStart = 1e-3;  // steps; further back is before the start

int LabelLength(double value, int decimals) {
  return std::snprintf(nullptr, 0, "%.*f", decimals, value);
}

// The first multiple of `step` at or beyond `start`, `step` giving the direction. 0 has no sign.
std::optional<double> FirstTick(double start, double step) {
  double tick = std::ceil(start / step - kSameTick) * step + 0.0;
  // The product of large numbers may have been rounded to before the start.
  if ((start - tick) / step > kMostShortOfStart) tick += step;
  // Steps that do not move a number so large lead nowhere.
  if (!std::isfinite(tick) || tick + step == tick) return std::nullopt;
  return tick;
}

std::optional<TickChoice> WithFirstTick(double start, double step, int decimals) {
  if (!std::isfinite(step) || step == 0) return std::nullopt;
  const std::optional<double> first = FirstTick(start, step);
  if (!first) return std::nullopt;
  return TickChoice{*first, step, decimals};
}

}  // namespace

std::optional<TickChoice> ChooseHorizontalTicks(double first, double last, std::int64_t pixels,
                                                int digitWidth) {
  const double range = last - first;
  if (!std::isfinite(range) || range == 0) return std::nullopt;
  const double pixelsPerUnit = static_cast<double>(pixels) / range;
  double width = std::fabs(digitWidth / pixelsPerUnit);
  if (width < kMinDigitWidth) width = 1.0;

  // More decimals make labels longer and so the step wider: take the first number of decimals that
  // is more than the decade of two labels needs, then drop one.
  int decimals = 0;
  int decade = 0;
  double labelWidth = 0;
  for (;; ++decimals) {
    const int length = std::max(LabelLength(first, decimals), LabelLength(last, decimals));
    labelWidth = (length + 0.5) * width;
    const double exponent = std::ceil(-std::log10(2 * labelWidth));
    if (!std::isfinite(exponent)) return std::nullopt;
    decade = static_cast<int>(exponent);
    if (decade < decimals || decimals == kMostDecimals) break;
  }
  const int shown = std::max(decimals - 1, 0);
  const double base = static_cast<double>(PowerOfTen(decimals > 0 ? -shown : -decade));
  const double ratio = labelWidth / base;
  const double step = ratio > 2 ? 5 * base : ratio > 1 ? 2 * base : base;
  return WithFirstTick(first, range < 0 ? -step : step, shown);
}

std::optional<TickChoice> ChooseVerticalTicks(double lowest, double highest, double labelHeight) {
  if (!(labelHeight >= kMinLabelHeight)) labelHeight = 1.0;
  const double range = highest - lowest;
  const double distance = range < 2 * labelHeight ? range : 2 * labelHeight;
  if (!std::isfinite(range) || !std::isfinite(distance) || distance <= 0) return std::nullopt;
  int exponent = static_cast<int>(std::floor(std::log10(distance)));
  const double base = static_cast<double>(PowerOfTen(exponent));
  const double ratio = distance / base;
  double step = 2 * base;
  if (ratio >= 5) {
    step = 10 * base;
    ++exponent;
  } else if (ratio >= 2) {
    step = 5 * base;
  }
  return WithFirstTick(lowest, step, std::max(-exponent, 0));
}

}  // namespace plots
