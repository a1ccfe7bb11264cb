#include "embedded/peak_detection.h"

#include <algorithm>
#include <cmath>

#include "embedded/peak_limits.h"

namespace embedded {
namespace {

constexpr std::size_t kMinSamples = 5;
constexpr std::size_t kMaxPeaks = 0xFFFF;
constexpr double kFootPart = 0.25;  // of a peak's height
constexpr double kNarrowFactor = 2.0;

using Index = std::ptrdiff_t;

// What the noise of the whole trace rarely exceeds, in standard deviations: sqrt(2 ln N) for N
// independent values.
double LargestNoise(std::size_t samples, int halfWindow) {
  const double independent = static_cast<double>(samples) / (halfWindow + 1.0);
  return std::sqrt(2.0 * std::log(std::max(independent, 20.0)));
}

// Samples of the peak above its foot.
Index SamplesOf(const std::vector<double>& signal, const Candidate& peak) {
  const auto at = [&](Index i) { return signal[static_cast<std::size_t>(i)]; };
  const double foot = at(peak.apex) - (1.0 - kFootPart) * peak.prominence;
  Index first = peak.apex;
  Index last = peak.apex;
  while (first > 0 && at(first - 1) > foot) --first;
  while (last + 1 < static_cast<Index>(signal.size()) && at(last + 1) > foot) ++last;
  return last - first + 1;
}

// The highest raw sample near the smoothed apex.
LONG RawApex(std::span<const LONG> samples, const Candidate& peak, const Limits& limits,
             int halfWindow) {
  const Index reach = halfWindow / 2 + 1;
  const Index first = std::max(peak.apex - reach, limits.start);
  const Index last = std::min(peak.apex + reach, limits.end);
  const auto begin = samples.begin();
  const auto highest = std::max_element(begin + first, begin + last + 1);
  const Index apex = begin[peak.apex] == *highest ? peak.apex : highest - begin;
  // The middle of a flat top.
  Index from = apex, to = apex;
  while (from > limits.start && begin[from - 1] == begin[apex]) --from;
  while (to < limits.end && begin[to + 1] == begin[apex]) ++to;
  return static_cast<LONG>(from + (to - from) / 2);
}

void KeepHighest(std::vector<Candidate>& peaks) {
  if (peaks.size() <= kMaxPeaks) return;
  std::sort(peaks.begin(), peaks.end(),
            [](const Candidate& a, const Candidate& b) { return a.prominence > b.prominence; });
  peaks.resize(kMaxPeaks);
  std::sort(peaks.begin(), peaks.end(),
            [](const Candidate& a, const Candidate& b) { return a.apex < b.apex; });
}

std::vector<PeakRecord> Records(std::span<const LONG> samples, const Smoothed& smoothed,
                                const std::vector<Candidate>& peaks, double skimRatio) {
  const std::vector<Limits> limits = LimitCandidates(smoothed, peaks, skimRatio);
  std::vector<PeakRecord> records(peaks.size());
  for (std::size_t k = 0; k < peaks.size(); ++k) {
    PeakRecord& record = records[k];
    record = PeakRecord{};
    record.start = static_cast<LONG>(limits[k].start);
    record.apex = RawApex(samples, peaks[k], limits[k], smoothed.halfWindow);
    record.end = static_cast<LONG>(limits[k].end);
    record.baselineStart = static_cast<LONG>(std::lround(limits[k].baselineStart));
    record.baselineEnd = static_cast<LONG>(std::lround(limits[k].baselineEnd));
  }
  return records;
}

}  // namespace

std::vector<PeakRecord> DetectPeaks(std::span<const LONG> samples,
                                    const DetectionOptions& options) {
  if (samples.size() < kMinSamples) return {};
  const Smoothed smoothed = SmoothByWidth(samples);
  const double factor = options.noiseFactor * LargestNoise(samples.size(), smoothed.halfWindow);
  std::vector<Candidate> peaks =
      FindCandidates(smoothed.signal, std::max(factor * smoothed.noise, options.minHeight));
  const NoiseByWidth noise(smoothed);
  std::erase_if(peaks, [&](const Candidate& peak) {
    const double least = factor * noise.At(peak.Width());
    if (peak.Width() >= options.minWidth) return peak.prominence < least;
    return peak.prominence < kNarrowFactor * least ||
           SamplesOf(smoothed.signal, peak) < options.minSamples;
  });
  KeepHighest(peaks);
  return Records(samples, smoothed, peaks, options.skimRatio);
}

std::vector<PeakRecord> LimitPeaks(std::span<const LONG> samples, std::vector<LONG> apexes,
                                   const DetectionOptions& options) {
  std::erase_if(apexes, [&](LONG apex) {
    return apex < 0 || static_cast<std::size_t>(apex) >= samples.size();
  });
  std::sort(apexes.begin(), apexes.end());
  apexes.erase(std::unique(apexes.begin(), apexes.end()), apexes.end());
  if (samples.size() < kMinSamples || apexes.empty()) return {};
  const Smoothed smoothed = SmoothByWidth(samples);
  const std::vector<Candidate> peaks =
      CandidatesAt(smoothed.signal, apexes, std::max(smoothed.width / 2, 1));
  return Records(samples, smoothed, peaks, options.skimRatio);
}

}  // namespace embedded
