#include "elugraph/chrom2d/path_moves.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace {

// The middle third of the channels, as far as 16 bits with a sign count.
SIPathItem DefaultSegment(int channelCount) {
  constexpr int kMost = std::numeric_limits<std::int16_t>::max();
  return {static_cast<std::int16_t>(std::min(channelCount / 3, kMost)),
          static_cast<std::int16_t>(std::min(2 * channelCount / 3, kMost)), kOpenEnd};
}

}  // namespace

void AddWholeRun(SIPath& path, int channelCount) {
  if (SIPathItem* const item = path.Insert(0)) *item = DefaultSegment(channelCount);
}

void CutPath(SIPath& path, double end) {
  for (int i = 0; i < path.count - 1; ++i) {
    if (!(path.items[i].endTime > end)) continue;
    path.items[i].endTime = kOpenEnd;
    path.Resize(i + 1);
    return;
  }
}

int SplitPath(SIPath& path, double t, int channelCount) {
  if (path.count >= kMaxSegments) return -1;
  int i = 0;
  while (i < path.count && !(path.items[i].endTime > t)) ++i;
  SIPathItem* const item = path.Insert(i);
  if (item == nullptr) return -1;
  const SIPathItem* const split = path.Item(i + 1);
  *item = split != nullptr ? *split : DefaultSegment(channelCount);
  item->endTime = t;
  return i;
}

int MoveBoundary(SIPath& path, int k, double t, double timeStep) {
  if (path.items[k].endTime < t) {
    for (int m = path.count - 2; m > k; --m) {
      if (path.items[m].endTime - t < timeStep) path.Erase(m);
    }
  } else {
    int first = 0;
    while (first < k && !(t - path.items[first].endTime < timeStep)) ++first;
    for (; k > first; --k) path.Erase(k);
  }
  path.items[k].endTime = t;
  for (int m = path.count - 2; m >= 0; --m) {
    if (!(path.items[m].endTime < timeStep)) continue;
    path.Erase(m);
    if (m == k) {
      k = -1;
    } else if (m < k) {
      --k;
    }
  }
  return k;
}
