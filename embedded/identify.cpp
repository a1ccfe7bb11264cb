// Identification of the current channel's peaks, and their amounts.
#include <algorithm>
#include <cmath>
#include <tuple>

#include "embedded/run_parts.h"

namespace embedded {
namespace {

double BaselineAt(const PeakRecord& peak, LONG index) {
  const double length = static_cast<double>(peak.end) - peak.start;
  const double part = length > 0.0 ? (static_cast<double>(index) - peak.start) / length : 0.0;
  return peak.baselineStart + part * (static_cast<double>(peak.baselineEnd) - peak.baselineStart);
}

struct Candidate {
  double distance;
  std::size_t component;
  std::size_t peak;
  bool operator<(const Candidate& other) const {
    return std::tie(distance, component, peak) <
           std::tie(other.distance, other.component, other.peak);
  }
};

}  // namespace

double Run::PeakHeight(int number) const {
  const Channel* channel = At(shownChannel_);
  const PeakRecord* peak = peaks.At(number - 1);
  if (channel == nullptr || peak == nullptr) return 0.0;
  const double apex = channel->sampleStore[static_cast<std::size_t>(peak->apex)];
  return (apex - BaselineAt(*peak, peak->apex)) * static_cast<double>(channel->unitsPerCount);
}

double Run::AreaWithin(const Channel& channel, const PeakRecord& peak) const {
  const auto height = [&](LONG i) {
    return channel.sampleStore[static_cast<std::size_t>(i)] - BaselineAt(peak, i);
  };
  double sum = 0.0;
  for (LONG i = peak.start; i < peak.end; ++i) {
    sum += 0.5 * (height(i) + height(i + 1)) * (channel.TimeMs(i + 1) - channel.TimeMs(i));
  }
  return sum * 1e-3 * static_cast<double>(channel.unitsPerCount);
}

double Run::PeakArea(int number) const {
  const Channel* channel = At(shownChannel_);
  const PeakRecord* peak = peaks.At(number - 1);
  if (channel == nullptr || peak == nullptr) return 0.0;
  double area = AreaWithin(*channel, *peak);
  // Peaks are in the order of their starts: those within follow at once.
  for (LONG i = number; i < peaks.count && peaks.At(i)->end <= peak->end; ++i) {
    if (peaks.At(i)->start > peak->start) area -= AreaWithin(*channel, *peaks.At(i));
  }
  return area;
}

// Every component with a window takes the peak nearest to its retention time inside the window;
// where several claim a peak the nearest one has it, and the others their next nearest. Peaks of
// components without a window keep theirs.
void Run::Identify() {
  Channel* channel = Current();
  if (channel == nullptr) return;
  std::vector<Candidate> candidates;
  for (std::size_t c = 0; c < components_.size(); ++c) {
    const ComponentData& wanted = components_[c]->data;
    if (!(wanted.halfWindowSec > 0.0)) continue;
    for (std::size_t p = 0; p < channel->peakStore.size(); ++p) {
      PeakRecord& peak = channel->peakStore[p];
      if (peak.component == c + 1) peak.component = 0;
      const double distance = std::fabs(TimeAt(currentChannel_, peak.apex) - wanted.retentionSec);
      if (distance <= wanted.halfWindowSec) candidates.push_back({distance, c, p});
    }
  }
  std::sort(candidates.begin(), candidates.end());
  std::vector<bool> taken(components_.size());
  for (const Candidate& each : candidates) {
    PeakRecord& peak = channel->peakStore[each.peak];
    if (taken[each.component] || peak.component != 0) continue;
    peak.component = static_cast<WORD>(each.component + 1);
    taken[each.component] = true;
  }
  ShowPeaks(currentChannel_);
}

// Amounts of the peaks whose component has a curve; the others keep theirs.
void Run::Quantify() {
  Channel* channel = Current();
  if (channel == nullptr) return;
  for (std::size_t p = 0; p < channel->peakStore.size(); ++p) {
    PeakRecord& peak = channel->peakStore[p];
    if (peak.component == 0 || peak.component > components_.size()) continue;
    const CalibrationCurve& curve = components_[peak.component - 1U]->curve;
    if (curve.coefficients.empty()) continue;
    const int number = static_cast<int>(p) + 1;
    const double response =
        areaUnitSec_ > 0.0 ? PeakArea(number) / areaUnitSec_ : PeakHeight(number);
    peak.amount = static_cast<float>(curve.AmountAt(response));
  }
  ShowPeaks(currentChannel_);
}

}  // namespace embedded
