#include "elugraph/heightmap/height_map.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <new>

#include "elugraph/heightmap/kernels.h"
#include "elugraph/heightmap/truncation_scope.h"

namespace {

constexpr double kNoWave = 1e27;  // extremes of no channel at all
constexpr double kMaxWave = 1e21;
constexpr double kMinWave = 1e-27;
constexpr double kMinWaveRange = 1e-9;
constexpr LONG kMaxOrder = 2;
// Keeps the last column short of the last bin, so that there is always a bin to its right.
constexpr double kShortOfLastBin = 0.999999999999;
constexpr LONG kBinBlock = 32;

LONG Saturate(std::int64_t value) {
  return static_cast<LONG>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
}

// The leading number of the channel's name; 0 where there is none.
double WavelengthOf(const TChannel& channel) {
  char name[sizeof channel.name + 1] = {};
  std::memcpy(name, channel.name, sizeof channel.name);
  const double value = std::atof(name);
  return std::isfinite(value) ? value : 0;
}

// Samples a channel has for a run of `samples`; a channel that does not tell has them all.
LONG SamplesIn(const TChannel& channel, LONG samples) {
  if (channel.samples == nullptr) return 0;
  const LONG own = channel.sampleCount;
  return own > 0 ? std::min(own, samples) : samples;
}

}  // namespace

HeightMap::HeightMap(chromatogram* run) { Set(run); }
HeightMap::~HeightMap() = default;

bool HeightMap::Set(chromatogram* run) {
  Reset();
  run_ = run;
  waves_.clear();
  lowest_ = kNoWave;
  highest_ = -kNoWave;
  try {
    const LONG channels = run_ != nullptr ? run_->channelCount : 0;
    waves_.reserve(static_cast<std::size_t>(channels));
    for (LONG i = 0; i < channels; ++i) {
      const TChannel* channel = run_->channels.At(i);
      const double wavelength = channel != nullptr ? WavelengthOf(*channel) : 0;
      if (std::fabs(wavelength) < kMinWave) continue;
      waves_.push_back({wavelength, i});
      lowest_ = std::min(lowest_, wavelength);
      highest_ = std::max(highest_, wavelength);
    }
    std::stable_sort(waves_.begin(), waves_.end(), [](const WaveEntry& a, const WaveEntry& b) {
      return a.wavelength < b.wavelength;
    });
  } catch (...) {  // no memory
    waves_.clear();
  }
  if (waves_.empty() || std::fabs(highest_) > kMaxWave || std::fabs(lowest_) > kMaxWave) {
    lowest_ = highest_ = 0;
  }
  return !waves_.empty();
}

void HeightMap::Reset() {
  grid_ = {};
  bins_ = {};
  rows_ = columns_ = terms_ = binCount_ = 0;
  minimum_ = maximum_ = 0;
}

bool HeightMap::DoMap(LONG columns, LONG rows, LONG order) {
  const auto waveCount = static_cast<LONG>(waves_.size());
  if (run_ == nullptr || waveCount < 2 || highest_ - lowest_ < kMinWaveRange || order > kMaxOrder) {
    return false;
  }
  if (columns < 1 || rows < 1) {
    Reset();
    return false;
  }
  const LONG terms = std::min(order + 2, waveCount - 1);
  if (terms < 2) return false;
  if (columns == columns_ && rows == rows_ && terms == terms_) return true;
  try {
    grid_ = {};
    minimum_ = maximum_ = 0;
    columns_ = columns;
    rows_ = rows;
    terms_ = terms;
    const std::uint64_t cells =
        static_cast<std::uint64_t>(rows) * static_cast<std::uint64_t>(columns);
    if (cells > grid_.max_size()) throw std::bad_alloc();
    grid_.resize(static_cast<std::size_t>(cells));
    if (run_->sampleCount <= 0) return true;
    Downsample();
    const TruncationScope truncation;
    FillGrid();
    return true;
  } catch (...) {  // no memory, or the host's matrices
    Reset();
    return false;
  }
}

void HeightMap::Downsample() {
  const LONG samples = run_->sampleCount;
  const LONG perBin = samples / columns_ + (samples % columns_ != 0 ? 1 : 0);
  const LONG bins = samples / perBin;
  if (bins == binCount_) return;
  binCount_ = 0;
  bins_ = {};
  bins_.resize(static_cast<std::size_t>(bins) * waves_.size());
  // Some bins at a time: every channel writes into each bin's row.
  for (LONG first = 0; first < bins; first += kBinBlock) {
    for (std::size_t j = 0; j < waves_.size(); ++j) {
      DownsampleChannel(j, first, std::min(bins, first + kBinBlock), perBin);
    }
  }
  binCount_ = bins;
}

void HeightMap::DownsampleChannel(std::size_t wave, LONG first, LONG end, LONG perBin) {
  const TChannel& channel = *run_->channels.At(waves_[wave].channel);
  const std::int64_t reference = channel.referenceLevel;
  const double inverse = 1.0 / perBin;
  end = std::min(end, SamplesIn(channel, run_->sampleCount) / perBin);
  for (LONG bin = first; bin < end; ++bin) {
    const LONG* sample = channel.samples + static_cast<std::ptrdiff_t>(bin) * perBin;
    LONG& height = bins_[static_cast<std::size_t>(bin) * waves_.size() + wave];
    if (perBin == 1) {
      height = Saturate(*sample - reference);
      continue;
    }
    std::int64_t sum = -reference * perBin;
    for (LONG i = 0; i < perBin; ++i) sum += sample[i];
    height = Saturate(static_cast<std::int64_t>(static_cast<double>(sum) * inverse));
  }
}

// Runs under truncation; see TruncationScope.
[[gnu::noinline]] void HeightMap::FillGrid() {
  const double step = (highest_ - lowest_) / rows_;
  const double half = step / 2;
  const std::vector<ColumnPlace> places = PlaceColumns();
  std::vector<double> heights(static_cast<std::size_t>(binCount_) + 1);
  WaveFit fit(waves_, terms_);
  minimum_ = INT32_MAX;
  maximum_ = -INT32_MAX;
  double centre = lowest_;
  double low = centre - half;
  double high = centre + half;
  LONG* cell = grid_.data();
  for (int row = 0; row < rows_; ++row) {
    const WaveWindow window = fit.WindowAt(low, centre, high);
    FitBins(window, fit.WeightsAt(window, centre), heights);
    for (const ColumnPlace& place : places) {
      const double left = heights[place.bin];
      const double right = heights[place.bin + 1];
      const LONG height = static_cast<LONG>(left + (right - left) * place.fraction);
      minimum_ = std::min(minimum_, height);
      maximum_ = std::max(maximum_, height);
      *cell++ = height;
    }
    centre += step;
    low += step;
    high += step;
  }
}

std::vector<HeightMap::ColumnPlace> HeightMap::PlaceColumns() const {
  const double binsPerColumn =
      columns_ > 1 ? (binCount_ - 1) * kShortOfLastBin / (columns_ - 1) : 0.0;
  std::vector<ColumnPlace> places(static_cast<std::size_t>(columns_));
  ColumnPlace place{0, 0.0};
  for (ColumnPlace& column : places) {
    column = place;
    place.fraction += binsPerColumn;
    if (place.fraction > 1) {
      place.fraction -= 1;
      ++place.bin;
    }
  }
  return places;
}

// The fitted height of every bin, within the 32-bit range, so that everything between two bins is
// as well; NaN gives 0. The last one is there twice: a single bin stands on both sides.
void HeightMap::FitBins(WaveWindow window, const double* weights,
                        std::vector<double>& heights) const {
  const LONG* values = bins_.data() + window.first;
  const auto count = static_cast<unsigned>(window.Size());
  for (int bin = 0; bin < binCount_; ++bin, values += waves_.size()) {
    const double height = static_cast<double>(DotIntDouble(values, weights, count));
    heights[static_cast<std::size_t>(bin)] =
        std::isnan(height) ? 0 : std::clamp<double>(height, INT32_MIN, INT32_MAX);
  }
  heights.back() = heights[heights.size() - 2];
}

bool HeightMap::GetWaves(double* low, double* high) {
  if (run_ == nullptr || waves_.empty()) return false;
  if (low != nullptr) *low = lowest_;
  if (high != nullptr) *high = highest_;
  return true;
}

WORD HeightMap::WaveCount() const { return static_cast<WORD>(waves_.size()); }

const WaveEntry* HeightMap::Wave(WORD index) const {
  return index < waves_.size() ? &waves_[index] : nullptr;
}

LONG* HeightMap::Row(int row) {
  if (row < 0 || row >= rows_ || grid_.empty()) return nullptr;
  return grid_.data() + static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_);
}

bool HeightMap::GetValueRange(LONG* minimum, LONG* maximum) {
  if (run_ == nullptr || waves_.empty() || terms_ == 0) return false;
  if (minimum != nullptr) *minimum = minimum_;
  if (maximum != nullptr) *maximum = maximum_;
  return true;
}
