#include "app/label_room.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <numeric>

namespace app {
namespace {

bool Contains(const RECT& area, const RECT& box) {
  return box.left >= area.left && box.right <= area.right && box.top >= area.top &&
         box.bottom <= area.bottom;
}

void DropThinBands(std::vector<TraceBands>& traces, int thinPx) {
  for (TraceBands& bands : traces) {
    for (Band& band : bands) {
      const std::int64_t rows = std::int64_t{band.bottom} - band.top + 1;
      if (rows > 0 && rows <= thinPx) band = {0, -1};
    }
  }
}

}  // namespace

bool Overlap(const RECT& a, const RECT& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

bool IsCrossed(const RECT& box, const std::vector<TraceBands>& traces) {
  for (const TraceBands& bands : traces) {
    const LONG end = std::min<LONG>(box.right, static_cast<LONG>(bands.size()));
    for (LONG x = std::max<LONG>(box.left, 0); x < end; ++x) {
      const Band& band = bands[static_cast<std::size_t>(x)];
      if (band.top <= band.bottom && band.top < box.bottom && band.bottom >= box.top) return true;
    }
  }
  return false;
}

std::vector<bool> LabelsWithRoom(const std::vector<LabelBox>& labels,
                                 std::vector<TraceBands> traces, const RECT& area, int thinPx,
                                 std::vector<RECT> taken, std::size_t maxCount) {
  std::vector<std::size_t> order(labels.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&labels](std::size_t a, std::size_t b) {
    return labels[a].weight > labels[b].weight;
  });
  std::vector<bool> chosen(labels.size());
  const auto serve = [&](double minWeight) {
    for (const std::size_t i : order) {
      const RECT& box = labels[i].box;
      const auto overlaps = [&box](const RECT& other) { return Overlap(box, other); };
      if (chosen[i] || labels[i].weight < minWeight || maxCount == 0 || !Contains(area, box) ||
          IsCrossed(box, traces) || std::any_of(taken.begin(), taken.end(), overlaps)) {
        continue;
      }
      taken.push_back(box);
      chosen[i] = true;
      --maxCount;
    }
  };
  if (labels.empty()) return chosen;
  serve(-std::numeric_limits<double>::infinity());
  DropThinBands(traces, thinPx);
  serve(labels[order.front()].weight * kMinorPart);
  return chosen;
}

}  // namespace app
