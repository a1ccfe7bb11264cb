// Limits and baselines of peaks.
#pragma once

#include <vector>

#include "embedded/peak_candidates.h"

namespace embedded {

struct Limits {
  std::ptrdiff_t start, end;
  double baselineStart, baselineEnd;
};

// Steps 4 to 7 of peak_detection.h for the peaks of a smoothed trace, in order.
std::vector<Limits> LimitCandidates(const Smoothed& smoothed, const std::vector<Candidate>& peaks,
                                    double skimRatio);

}  // namespace embedded
