// Smoothing and noise of a sampled signal.
#pragma once

#include <span>
#include <vector>

#include "platform/gfx/types.h"

namespace embedded {

// Least-squares smoothing with a polynomial of degree 2 (and so 3) over 2 × halfWindow + 1 samples:
// A. Savitzky, M. J. E. Golay, Anal. Chem. 36 (1964) 1627. Near the ends the window shrinks to what
// fits. `halfWindow` is limited to 0 … kMaxHalfWindow; below 2 nothing changes.
inline constexpr int kMaxHalfWindow = 400;
std::vector<double> Smooth(std::span<const LONG> samples, int halfWindow);

// Limits each smoothed value to the range of the samples within half a window of it: without the
// ringing that a polynomial shows at cut-off tops and beside peaks much narrower than its window.
void LimitToWindow(std::span<const LONG> samples, int halfWindow, std::vector<double>& smooth);

// Standard deviation that smoothing leaves of white noise of standard deviation 1.
double NoiseGain(int halfWindow);

// Standard deviation of the noise on a scale of `lag` samples, from the second differences
// x[i − lag] − 2 x[i] + x[i + lag], in which straight baselines cancel. It is taken from the lower
// quartile of their absolute values (0.3186 standard deviations of a normal distribution), so that
// peaks over most of the run do not raise it; compare the median absolute deviation of
// F. R. Hampel, J. Am. Stat. Assoc. 69 (1974) 383. 0 for fewer than 2 × lag + 1 samples.
double NoiseAt(std::span<const double> signal, int lag);

// Smallest step of a digitised signal: its smallest difference above 0; 0 for a constant one.
LONG SmallestStep(std::span<const LONG> samples);

}  // namespace embedded
