#include "embedded/engine.h"

#include <algorithm>

#include "elugraph/host/engine.h"

namespace {
bool developerAccess = false;
}

void embedded::SetDeveloperAccess(bool on) { developerAccess = on; }

bool developer_access() { return developerAccess; }

// Of equal samples the first counts. `first` below 0 counts as 0. An empty range gives its end (0
// where that is negative): callers bound the end by the number of samples, not the beginning.
LONG minimum(const LONG* samples, LONG first, LONG last) {
  first = std::max<LONG>(first, 0);
  if (samples == nullptr || last < first) return std::max<LONG>(last, 0);
  return static_cast<LONG>(std::min_element(samples + first, samples + last + 1) - samples);
}

LONG maximum(const LONG* samples, LONG first, LONG last) {
  first = std::max<LONG>(first, 0);
  if (samples == nullptr || last < first) return std::max<LONG>(last, 0);
  return static_cast<LONG>(std::max_element(samples + first, samples + last + 1) - samples);
}
