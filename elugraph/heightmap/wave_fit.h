// Local polynomial least-squares fits over wavelength.
#pragma once

#include <vector>

#include "elugraph/host/engine.h"

// One spectral channel.
struct WaveEntry {
  double wavelength;
  LONG channel;  // index in the chromatogram
};

// The channels first … last of a wave table, both included.
struct WaveWindow {
  int first;
  int last;

  int Size() const { return last - first + 1; }
  bool operator==(const WaveWindow&) const = default;
};

// Fits polynomials of `terms` coefficients to the channels of a window and gives the value at one
// wavelength as a weighted sum of the channels' values. A fit is done anew only when the window
// changes. The wave table is borrowed, ascending, and longer than `terms`, which is at least 2.
// Rows must be asked for in ascending order.
class WaveFit {
 public:
  // May raise what the host's matrices raise, here and in WeightsAt.
  WaveFit(const std::vector<WaveEntry>& waves, int terms);

  // Channels for a row centred at `centre` that reaches from `low` to `high`: from the first one
  // at or above `low` to the first later one at or above `high`, widened to terms + 1 channels by
  // the nearer outer neighbour, upward on a tie.
  WaveWindow WindowAt(double low, double centre, double high);

  // Weights of the window's channels for the value at `centre`: least squares with the powers of
  // the distance to the fit's centre as base functions (Savitzky and Golay, Anal. Chem. 36 (1964)
  // 1627, for unequal distances). Borrowed; valid until the next call.
  const double* WeightsAt(WaveWindow window, double centre);

 private:
  void Fit(WaveWindow window, double centre);

  const std::vector<WaveEntry>& waves_;
  int terms_;
  int scanStart_ = 0;
  WaveWindow fitted_{-1, -1};
  double fitCentre_ = 0;
  TDoubleMatrix inverse_;  // of the normal matrix
  TDoubleMatrix normal_;
  TDoubleMatrix powers_;  // [m][k]: distance of channel k to the fit's centre, to the power m
  std::vector<double> weights_;
};
