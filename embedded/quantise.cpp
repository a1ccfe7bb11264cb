#include "embedded/quantise.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace embedded {
namespace {

constexpr double kMaxValue = 1e47;
constexpr int kFinest = -37;
constexpr int kCoarsest = 38;

float PowerOfTen(int exponent) {
  // The C runtime's conversion gives the nearest float.
  return std::strtof(("1e" + std::to_string(exponent)).c_str(), nullptr);
}

float FinestScale(double largest) {
  int exponent = largest > 0.0 ? static_cast<int>(std::ceil(std::log10(largest / kMaxCount))) : 0;
  exponent = std::clamp(exponent, kFinest, kCoarsest);
  // The logarithm and the float's own rounding may be off by a step, never by two.
  if (exponent > kFinest && largest / PowerOfTen(exponent - 1) <= kMaxCount) --exponent;
  if (exponent < kCoarsest && largest / PowerOfTen(exponent) > kMaxCount) ++exponent;
  return PowerOfTen(exponent);
}

}  // namespace

std::string Quantise(std::span<const double> values, Counts& result) {
  double largest = 0.0;
  bool whole = true;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double size = std::fabs(values[i]);
    if (!(size <= kMaxValue)) {
      return "sample " + std::to_string(i) +
             (std::isnan(size) ? " is not a number" : " is too large for a chromatogram");
    }
    largest = std::max(largest, size);
    whole = whole && size == std::floor(size);
  }
  const float scale = whole && largest <= kMaxCount ? 1.0F : FinestScale(largest);
  std::vector<LONG> counts(values.size());
  std::transform(values.begin(), values.end(), counts.begin(), [&](double value) {
    return static_cast<LONG>(std::round(value / static_cast<double>(scale)));
  });
  result.counts = std::move(counts);
  result.unitsPerCount = scale;
  return {};
}

}  // namespace embedded
