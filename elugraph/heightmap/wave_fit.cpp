#include "elugraph/heightmap/wave_fit.h"

#include <algorithm>

#include "elugraph/heightmap/kernels.h"

WaveFit::WaveFit(const std::vector<WaveEntry>& waves, int terms)
    : waves_(waves),
      terms_(terms),
      inverse_(terms, terms),
      normal_(terms, terms),
      powers_(terms, static_cast<int>(waves.size())),
      weights_(waves.size()) {}

WaveWindow WaveFit::WindowAt(double low, double centre, double high) {
  const int end = static_cast<int>(waves_.size()) - 1;
  const auto at = [this](int i) { return waves_[static_cast<std::size_t>(i)].wavelength; };
  while (scanStart_ < end && at(scanStart_) < low) ++scanStart_;
  WaveWindow window{scanStart_, scanStart_ + 1};
  while (window.last < end && at(window.last) < high) ++window.last;
  window.last = std::min(window.last, end);

  while (window.last - window.first < terms_) {
    if (window.first == 0) {
      window.last = terms_;
    } else if (window.last == end) {
      window.first = end - terms_;
    } else if (centre - at(window.first - 1) < at(window.last + 1) - centre) {
      --window.first;
    } else {
      ++window.last;
    }
  }
  return window;
}

const double* WaveFit::WeightsAt(WaveWindow window, double centre) {
  const bool fresh = window != fitted_;
  if (fresh) Fit(window, centre);
  const double shift = centre - fitCentre_;
  const auto count = static_cast<std::size_t>(window.Size());
  std::fill_n(weights_.begin(), count, 0.0);
  for (int m = 0; m < terms_; ++m) {
    const double factor = fresh
                              ? inverse_[0][m]
                              : static_cast<double>(EvalPolynomial(shift, terms_ - 1, inverse_[m]));
    for (std::size_t k = 0; k < count; ++k) weights_[k] += factor * powers_[m][k];
  }
  return weights_.data();
}

void WaveFit::Fit(WaveWindow window, double centre) {
  fitted_ = {-1, -1};
  const int count = window.Size();
  for (int k = 0; k < count; ++k) {
    const auto channel = static_cast<std::size_t>(window.first + k);
    const double distance = waves_[channel].wavelength - centre;
    powers_[0][k] = 1.0;
    for (int m = 1; m < terms_; ++m) powers_[m][k] = powers_[m - 1][k] * distance;
  }
  inverse_.Zer();
  for (int m = 0; m < terms_; ++m) {
    inverse_[m][m] = 1.0;
    for (int p = 0; p <= m; ++p) {
      normal_[m][p] = normal_[p][m] =
          static_cast<double>(DotDouble(powers_[m], powers_[p], static_cast<unsigned>(count)));
    }
  }
  inverse_ /= normal_;
  fitted_ = window;
  fitCentre_ = centre;
}
