// Regular times, found or made.
#include <algorithm>
#include <cmath>

#include "embedded/run_parts.h"

namespace embedded {
namespace {

constexpr double kRegularTolerance = 0.05;  // of the period
constexpr double kMaxGrowth = 10.0;

}  // namespace

std::optional<Regular> FindRegular(std::span<const double> timesSec) {
  if (timesSec.size() < 2) return std::nullopt;
  const double start = timesSec.front();
  const double period = (timesSec.back() - start) / static_cast<double>(timesSec.size() - 1);
  if (!(period > 0.0)) return std::nullopt;
  const double tolerance = std::max(kTableRoundingMs / kMsPerSec, kRegularTolerance * period);
  for (std::size_t i = 0; i < timesSec.size(); ++i) {
    const double distance = timesSec[i] - (start + period * static_cast<double>(i));
    if (!(std::fabs(distance) <= tolerance)) return std::nullopt;
  }
  return Regular{start, period};
}

std::string MakeRegular(ChannelData& data) {
  const std::vector<double>& times = data.timesSec;
  if (times.size() < 2 || times.size() != data.values.size()) {
    return "no signal values with a time each";
  }
  std::vector<double> steps;
  for (std::size_t i = 1; i < times.size(); ++i) {
    const double step = times[i] - times[i - 1];
    if (!(step >= 0.0) || !std::isfinite(step)) return "times that do not advance";
    if (step > 0.0) steps.push_back(step);
  }
  if (steps.empty()) return "times that do not advance";
  const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
  std::nth_element(steps.begin(), middle, steps.end());
  const double span = times.back() - times.front();
  const double count = std::floor(span / *middle + 0.5);
  if (!(count <= kMaxGrowth * static_cast<double>(times.size()))) {
    return "gaps too long for a regular grid";
  }
  // The grid ends with the last time: the period is the median, adjusted to a whole number of
  // steps.
  const auto last = static_cast<std::size_t>(std::max(count, 1.0));
  const double period = span / static_cast<double>(last);
  std::vector<double> values;
  std::size_t behind = 1;
  for (std::size_t k = 0; k <= last; ++k) {
    const double time = std::min(times.front() + static_cast<double>(k) * period, times.back());
    while (behind + 1 < times.size() && times[behind] < time) ++behind;
    const double step = times[behind] - times[behind - 1];
    const double part = step > 0.0 ? (time - times[behind - 1]) / step : 1.0;
    values.push_back(data.values[behind - 1] +
                     part * (data.values[behind] - data.values[behind - 1]));
  }
  data.values = std::move(values);
  data.startSec = times.front();
  data.periodSec = period;
  data.timesSec.clear();
  return {};
}

}  // namespace embedded
