// Maxima of a smoothed trace, and the noise that they must stand out of.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "platform/gfx/types.h"

namespace embedded {

// Positions are sample indices.
struct Candidate {
  std::ptrdiff_t apex;
  double prominence;
  double front, tail;  // half-widths at half prominence, in samples
  double Width() const { return front + tail; }
};

// The inner maxima whose prominence (see peak_detection.h) is above 0 and not below
// `minProminence`, in order.
std::vector<Candidate> FindCandidates(const std::vector<double>& signal, double minProminence);
// Given maxima instead of found ones, in order, without repetition: each counts down to the higher
// of the lowest points between it and its neighbours, or the ends. A position that is no maximum
// moves to the highest point within `reach` that lies nearer to it than to its neighbours.
std::vector<Candidate> CandidatesAt(const std::vector<double>& signal, std::span<const LONG> apexes,
                                    std::ptrdiff_t reach);

// A trace smoothed by what suits the width of its narrow clear peaks.
struct Smoothed {
  std::vector<double> signal;
  int halfWindow;
  int width;     // at half height, samples
  double noise;  // standard deviation, on the scale of half the width
};
Smoothed SmoothByWidth(std::span<const LONG> samples);

// Noise on the scale of wider peaks, in octaves of the width: what drifts and wanders slowly must
// not pass for a wide peak.
class NoiseByWidth {
 public:
  explicit NoiseByWidth(const Smoothed& smoothed);
  double At(double width) const;

 private:
  double smallest_;
  std::vector<double> octaves_;
};

}  // namespace embedded
