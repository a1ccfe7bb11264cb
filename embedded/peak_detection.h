// Finding and limiting the peaks of a trace.
//
// Method, in the order of work (compare A. Felinger, Data Analysis and Signal Processing in
// Chromatography, Elsevier 1998, chapters 8 and 9; N. Dyson, Chromatographic Integration Methods,
// 2nd ed., RSC 1998, chapters 2 and 3):
// 1. Smoothing by Savitzky–Golay over a window of 0.7 of the narrow peaks' width at half height,
//    where quadratic smoothing still keeps their height (C. G. Enke, T. A. Nieman, Anal. Chem. 48
//    (1976) 705A). The width comes from searches for clear peaks.
// 2. Noise of the smoothed trace on the scale of half that width: a robust second difference.
// 3. Peaks are the maxima that stand far enough above the higher one of the two lowest points that
//    separate them from higher maxima (their prominence): `noiseFactor` times what the noise alone
//    rarely exceeds in a trace of N independent values, sqrt(2 ln N) standard deviations (D. L.
//    Donoho, I. M. Johnstone, Biometrika 81 (1994) 425), and `minHeight`. The noise is that on the
//    scale of the peak's own width, so that slow wandering does not pass for wide peaks.
// 4. Each peak reaches at most 5 half-widths to the front and 8 to the tail of its apex, and never
//    past the valley to its neighbour. Peaks that meet in a valley form a cluster.
// 5. Baselines are the edges of the lower convex hull of the smoothed trace over a cluster:
// straight
//    under peaks whose valleys stay above it, broken where a valley reaches it. Peaks over one edge
//    are divided by drop lines at the valleys.
// 6. Outer limits move inward to where the trace leaves the baseline by twice the noise or by 0.3 %
//    of the peak's height.
// 7. A small peak on the tail of one `skimRatio` times as high is skimmed: it gets the tangent from
//    the valley to its own far side as its baseline, and stands within the limits of the large one
//    (J. P. Foley, J. Chromatogr. 384 (1987) 301: below a tenth of the height a drop line errs
//    more).
// Not found: shoulders without a maximum of their own, negative peaks.
#pragma once

#include <span>
#include <vector>

#include "elugraph/host/records.h"

namespace embedded {

struct DetectionOptions {
  double noiseFactor = 2.0;  // noise goes up and down: twice its largest value
  double minHeight = 0.0;    // counts
  // Peaks narrower than this at half height, in samples, are taken for spikes, but for those twice
  // as high as the noise asks for that have minSamples above a quarter of their height.
  double minWidth = 2.5;
  int minSamples = 3;
  double skimRatio = 10.0;
};

// The peaks in order of their start, with baselines; components and amounts 0. At most 65535, the
// highest ones.
std::vector<PeakRecord> DetectPeaks(std::span<const LONG> samples,
                                    const DetectionOptions& options = {});

// The limits and baselines of peaks whose apexes are known, as a report lists them. Apexes outside
// the trace, and all but one of equal ones, are left out; each may move by half a peak's width to
// the maximum that it stands for. In order of the apexes.
std::vector<PeakRecord> LimitPeaks(std::span<const LONG> samples, std::vector<LONG> apexes,
                                   const DetectionOptions& options = {});

}  // namespace embedded
