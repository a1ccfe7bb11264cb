// What a Run keeps behind its records.
#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "embedded/run.h"

namespace embedded {

inline constexpr double kMsPerSec = 1000.0;
inline constexpr double kTableRoundingMs = 0.5;
inline constexpr BYTE kAcquiring = 5;  // a record's state

inline LONG RoundToMs(double ms) { return static_cast<LONG>(std::lround(ms)); }

// Makes Run::Of know a record of a run.
void Enter(const void* record, Run* run);

struct Run::Channel : TChannel {
  std::vector<LONG> sampleStore;
  bool hasTable = false;
  std::vector<LONG> timeStore;
  std::string descriptionStore;
  double measuredEndSec = 0.0;  // time of the last acquired sample from the first; 0: unknown
  bool rangeGiven = false;
  std::size_t rangedSamples = 0;  // how many the range covers
  std::vector<PeakRecord> peakStore;
  bool ownPeaks = false;
  bool keepBaselines = false;

  // Points the record to the stores and widens its range by the samples that are new.
  void Publish();
  // Milliseconds from the run's first sample.
  double TimeMs(LONG index) const;
  bool SameGridAs(const Channel& other) const;
};

// Sets the baselines of the peaks on the channel's samples. Peaks that share their boundaries form
// a cluster; its baseline is the lower convex hull of the cluster's boundary points, so straight
// from its start to its end unless that would cut through a valley.
void DrawBaselines(const std::vector<LONG>& samples, std::vector<PeakRecord>& peaks);

}  // namespace embedded
