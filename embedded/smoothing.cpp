#include "embedded/smoothing.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <limits>

namespace embedded {
namespace {

// A quartile of this many is within a percent of that of all.
constexpr std::size_t kEnoughDifferences = 1 << 17;
constexpr double kLowerQuartile = 0.31864;  // of |x| for a standard normal x

// The smoothed value is (a × sum of x − b × sum of i² x) / norm over i = −m … m.
struct Weights {
  double a, b, norm;
};

Weights WeightsOf(double m) {
  return {3.0 * (3.0 * m * m + 3.0 * m - 1.0), 15.0,
          (2.0 * m + 3.0) * (2.0 * m + 1.0) * (2.0 * m - 1.0)};
}

// Sums of x, i x and i² x over a window, exact in 64 bits for windows up to kMaxHalfWindow.
struct Moments {
  std::int64_t s0 = 0, s1 = 0, s2 = 0;

  void Add(std::int64_t i, std::int64_t x) {
    s0 += x;
    s1 += i * x;
    s2 += i * i * x;
  }
  void Remove(std::int64_t i, std::int64_t x) { Add(i, -x); }
  // Counts i from the next sample.
  void Shift() {
    s2 += s0 - 2 * s1;
    s1 -= s0;
  }
};

}  // namespace

std::vector<double> Smooth(std::span<const LONG> samples, int halfWindow) {
  std::vector<double> smooth(samples.begin(), samples.end());
  const auto count = static_cast<std::int64_t>(samples.size());
  const std::int64_t window = std::clamp(halfWindow, 0, kMaxHalfWindow);
  std::int64_t m = 0;
  Moments sums;
  if (count > 0) sums.Add(0, samples[0]);
  const auto at = [&](std::int64_t i) {
    return std::int64_t{samples[static_cast<std::size_t>(i)]};
  };
  for (std::int64_t centre = 0; centre < count; ++centre) {
    if (centre > 0) {
      // From the window of centre − 1 to that of centre: grow, shrink or move.
      const std::int64_t next = std::min({window, centre, count - 1 - centre});
      sums.Shift();
      for (std::int64_t i = centre - 1 - m; i < centre - next; ++i) sums.Remove(i - centre, at(i));
      for (std::int64_t i = centre + m; i <= centre + next; ++i) sums.Add(i - centre, at(i));
      m = next;
    }
    if (m < 2) continue;
    const Weights w = WeightsOf(static_cast<double>(m));
    smooth[static_cast<std::size_t>(centre)] =
        (w.a * static_cast<double>(sums.s0) - w.b * static_cast<double>(sums.s2)) / w.norm;
  }
  return smooth;
}

void LimitToWindow(std::span<const LONG> samples, int halfWindow, std::vector<double>& smooth) {
  const auto count = static_cast<std::int64_t>(samples.size());
  const std::int64_t reach = std::clamp(halfWindow, 0, kMaxHalfWindow);
  // Indices that may still become an extreme of a window, from the best on.
  std::deque<std::int64_t> low, high;
  const auto at = [&](std::int64_t i) { return samples[static_cast<std::size_t>(i)]; };
  std::int64_t next = 0;
  for (std::int64_t centre = 0; centre < count; ++centre) {
    for (; next < count && next <= centre + reach; ++next) {
      while (!low.empty() && at(low.back()) >= at(next)) low.pop_back();
      while (!high.empty() && at(high.back()) <= at(next)) high.pop_back();
      low.push_back(next);
      high.push_back(next);
    }
    if (low.front() < centre - reach) low.pop_front();
    if (high.front() < centre - reach) high.pop_front();
    double& value = smooth[static_cast<std::size_t>(centre)];
    value = std::clamp<double>(value, at(low.front()), at(high.front()));
  }
}

double NoiseGain(int halfWindow) {
  if (halfWindow < 2) return 1.0;
  const Weights w = WeightsOf(std::min(halfWindow, kMaxHalfWindow));
  return std::sqrt(w.a / w.norm);  // the sum of the squared weights is the central weight
}

double NoiseAt(std::span<const double> signal, int lag) {
  const auto distance = static_cast<std::size_t>(std::max(lag, 1));
  if (signal.size() < 2 * distance + 1) return 0.0;
  const std::size_t places = signal.size() - 2 * distance;
  const std::size_t stride = std::max<std::size_t>(places / kEnoughDifferences, 1);
  std::vector<double> differences;
  differences.reserve(places / stride + 1);
  for (std::size_t i = 0; i < places; i += stride) {
    differences.push_back(
        std::fabs(signal[i] - 2.0 * signal[i + distance] + signal[i + 2 * distance]));
  }
  const auto quartile = differences.begin() + static_cast<std::ptrdiff_t>(differences.size() / 4);
  std::nth_element(differences.begin(), quartile, differences.end());
  return *quartile / kLowerQuartile / std::sqrt(6.0);
}

LONG SmallestStep(std::span<const LONG> samples) {
  std::int64_t smallest = std::numeric_limits<LONG>::max();
  bool found = false;
  for (std::size_t i = 1; i < samples.size(); ++i) {
    const std::int64_t step = std::llabs(std::int64_t{samples[i]} - samples[i - 1]);
    if (step == 0) continue;
    smallest = std::min(smallest, step);
    found = true;
  }
  return found ? static_cast<LONG>(smallest) : 0;
}

}  // namespace embedded
