#include <cmath>

#include "embedded/run_parts.h"

namespace embedded {
namespace {

struct BoundaryPoint {
  LONG index;
  double value;
};

// Whether b lies on or above the line from a to c.
bool IsAbove(const BoundaryPoint& a, const BoundaryPoint& b, const BoundaryPoint& c) {
  const double run = static_cast<double>(c.index) - a.index;
  const double along = static_cast<double>(b.index) - a.index;
  return (b.value - a.value) * run >= (c.value - a.value) * along;
}

void Extend(std::vector<BoundaryPoint>& hull, BoundaryPoint next) {
  while (hull.size() >= 2 && IsAbove(hull[hull.size() - 2], hull.back(), next)) hull.pop_back();
  if (hull.empty() || hull.back().index != next.index) hull.push_back(next);
}

LONG ValueOn(const std::vector<BoundaryPoint>& hull, LONG index) {
  std::size_t i = 1;
  while (i < hull.size() && hull[i].index < index) ++i;
  if (i >= hull.size()) return static_cast<LONG>(std::lround(hull.back().value));
  const BoundaryPoint& a = hull[i - 1];
  const BoundaryPoint& b = hull[i];
  const double part =
      (static_cast<double>(index) - a.index) / (static_cast<double>(b.index) - a.index);
  return static_cast<LONG>(std::lround(a.value + part * (b.value - a.value)));
}

}  // namespace

void DrawBaselines(const std::vector<LONG>& samples, std::vector<PeakRecord>& peaks) {
  const auto point = [&](LONG index) {
    return BoundaryPoint{index, static_cast<double>(samples[static_cast<std::size_t>(index)])};
  };
  std::vector<BoundaryPoint> hull;
  for (std::size_t first = 0; first < peaks.size();) {
    std::size_t last = first;
    hull.clear();
    Extend(hull, point(peaks[first].start));
    Extend(hull, point(peaks[first].end));
    while (last + 1 < peaks.size() && peaks[last + 1].start == peaks[last].end) {
      ++last;
      Extend(hull, point(peaks[last].end));
    }
    for (; first <= last; ++first) {
      peaks[first].baselineStart = ValueOn(hull, peaks[first].start);
      peaks[first].baselineEnd = ValueOn(hull, peaks[first].end);
    }
  }
}

}  // namespace embedded
