#include "app/sample_grid.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace app {
namespace {

constexpr std::size_t kMaxGrowth = 64;  // samples for one
constexpr std::size_t kMaxSamples = 1 << 22;

std::vector<double> Times(const Trace& trace) {
  std::vector<double> times(trace.values.size());
  for (std::size_t i = 0; i < times.size(); ++i) times[i] = trace.TimeAt(i);
  return times;
}

// 0 where no time differs from the one before.
double MedianStep(const std::vector<double>& times) {
  std::vector<double> steps;
  for (std::size_t i = 1; i < times.size(); ++i) {
    if (times[i] > times[i - 1]) steps.push_back(times[i] - times[i - 1]);
  }
  if (steps.empty()) return 0;
  const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
  std::nth_element(steps.begin(), middle, steps.end());
  return *middle;
}

// As the records count without a grid: in mean steps.
bool Fits(const std::vector<double>& times, double runStartS, double toleranceS) {
  const double steps = static_cast<double>(std::max<std::size_t>(times.size() - 1, 1));
  const double period = (times.back() - times.front()) / steps;
  for (std::size_t i = 0; i < times.size(); ++i) {
    const double distance = times[i] - runStartS - static_cast<double>(i) * period;
    if (std::abs(distance) > toleranceS) return false;
  }
  return true;
}

// The index of each sample; nothing where one would stand too far from its time.
std::optional<std::vector<std::size_t>> Indices(const std::vector<double>& times, double runStartS,
                                                double periodS, double toleranceS) {
  std::vector<std::size_t> indices;
  for (const double time : times) {
    const double exact = std::max((time - runStartS) / periodS, 0.0);
    std::size_t index = static_cast<std::size_t>(std::llround(exact));
    if (!indices.empty()) index = std::max(index, indices.back() + 1);
    if (std::abs(static_cast<double>(index) - exact) * periodS > toleranceS) return std::nullopt;
    indices.push_back(index);
  }
  return indices;
}

void AddSamples(Trace& trace, const std::vector<double>& times,
                const std::vector<std::size_t>& indices) {
  std::vector<double> values(indices.front(), trace.values.front());
  std::vector<double> placed(indices.front(), times.front());
  for (std::size_t i = 0; i < indices.size(); ++i) {
    const std::size_t next = i + 1 < indices.size() ? indices[i + 1] : indices[i] + 1;
    for (std::size_t k = indices[i]; k < next; ++k) {
      const double part =
          static_cast<double>(k - indices[i]) / static_cast<double>(next - indices[i]);
      const std::size_t j = std::min(i + 1, times.size() - 1);
      values.push_back(std::lerp(trace.values[i], trace.values[j], part));
      placed.push_back(std::lerp(times[i], times[j], part));
    }
  }
  trace.values = std::move(values);
  trace.timesS = std::move(placed);
}

void Place(Trace& trace, double runStartS, double toleranceS) {
  const std::vector<double> times = Times(trace);
  const double step = MedianStep(times);
  if (!(step > 0) || !(toleranceS > 0) || Fits(times, runStartS, toleranceS)) return;
  const std::size_t most = std::min(kMaxGrowth * times.size(), kMaxSamples);
  for (double parts = std::ceil(std::max(step / toleranceS, 1.0));; parts *= 2) {
    const double period = step / parts;
    if (!((times.back() - runStartS) / period < static_cast<double>(most))) return;
    const auto indices = Indices(times, runStartS, period, toleranceS);
    if (!indices) continue;
    AddSamples(trace, times, *indices);
    trace.periodS = period;
    trace.grid = {indices->front(), static_cast<std::size_t>(parts)};
    return;
  }
}

}  // namespace

void PlaceSamples(RunData& run, double toleranceS) {
  double startS = std::numeric_limits<double>::infinity();
  for (const Trace& trace : run.channels) startS = std::min(startS, trace.TimeAt(0));
  for (Trace& trace : run.channels) Place(trace, startS, toleranceS);
}

}  // namespace app
