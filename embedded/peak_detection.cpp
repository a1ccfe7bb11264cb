#include "embedded/peak_detection.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "embedded/smoothing.h"

namespace embedded {
namespace {

constexpr double kFrontReach = 5.0;  // half-widths
constexpr double kTailReach = 8.0;
constexpr double kTrimHeight = 0.003;  // of the peak's height
constexpr double kTrimNoise = 2.0;
constexpr double kHullBias = 3.0;  // standard deviations of the noise
constexpr double kWindowPerWidth = 0.7;
constexpr double kClearFactor = 12.0;
constexpr int kMaxSearches = 6;
constexpr double kMaxWeight = 50.0;
constexpr std::size_t kMaxPeaks = 0xFFFF;

using Index = std::ptrdiff_t;

struct Candidate {
  Index apex;
  double prominence;
  double front, tail;  // half-widths at half prominence, in samples
  double Width() const { return front + tail; }
};

struct Extremes {
  std::vector<Index> maxima;
  // minima[k]: lowest sample in front of maximum k (behind the one before); one more behind the
  // last.
  std::vector<Index> minima;
};

// Inner maxima, the middle of flat ones. The trace's ends are none: what rises there is cut off.
Extremes FindExtremes(const std::vector<double>& signal) {
  Extremes found;
  const Index count = static_cast<Index>(signal.size());
  const auto at = [&](Index i) { return signal[static_cast<std::size_t>(i)]; };
  Index lowest = 0;
  for (Index i = 1; i < count;) {
    Index last = i;
    while (last + 1 < count && at(last + 1) == at(i)) ++last;
    if (at(i) < at(lowest)) lowest = i;
    if (at(i) > at(i - 1) && last + 1 < count && at(last + 1) < at(i)) {
      found.maxima.push_back(i + (last - i) / 2);
      found.minima.push_back(lowest);
      lowest = last + 1;
    }
    i = last + 1;
  }
  found.minima.push_back(lowest);
  return found;
}

// For each maximum the lowest value that separates it from the next higher one on that side, or
// from the end. Of equal maxima the last one counts as the highest.
std::vector<double> SideMinima(const std::vector<double>& signal, const Extremes& extremes,
                               bool front) {
  const std::size_t count = extremes.maxima.size();
  std::vector<double> lowest(count);
  std::vector<std::size_t> higher;  // maxima passed, falling in height
  const auto at = [&](Index i) { return signal[static_cast<std::size_t>(i)]; };
  for (std::size_t step = 0; step < count; ++step) {
    const std::size_t k = front ? step : count - 1 - step;
    double low = at(extremes.minima[front ? k : k + 1]);
    const auto lower = [&](double other, double own) { return front ? other <= own : other < own; };
    while (!higher.empty() && lower(at(extremes.maxima[higher.back()]), at(extremes.maxima[k]))) {
      low = std::min(low, lowest[higher.back()]);
      higher.pop_back();
    }
    lowest[k] = low;
    higher.push_back(k);
  }
  return lowest;
}

// Distance from the apex to where the signal passes `level`, between samples.
double HalfWidth(const std::vector<double>& signal, Index apex, Index step, double level) {
  const Index count = static_cast<Index>(signal.size());
  const auto at = [&](Index i) { return signal[static_cast<std::size_t>(i)]; };
  Index i = apex;
  while (i + step >= 0 && i + step < count && at(i + step) > level) i += step;
  const double whole = static_cast<double>(step > 0 ? i - apex : apex - i);
  if (i + step < 0 || i + step >= count) return whole;
  return whole + (at(i) - level) / (at(i) - at(i + step));
}

std::vector<Candidate> FindCandidates(const std::vector<double>& signal, double minProminence) {
  const Extremes extremes = FindExtremes(signal);
  const std::vector<double> front = SideMinima(signal, extremes, true);
  const std::vector<double> tail = SideMinima(signal, extremes, false);
  std::vector<Candidate> found;
  for (std::size_t k = 0; k < extremes.maxima.size(); ++k) {
    const Index apex = extremes.maxima[k];
    const double top = signal[static_cast<std::size_t>(apex)];
    const double prominence = top - std::max(front[k], tail[k]);
    if (!(prominence >= minProminence) || !(prominence > 0.0)) continue;
    const double level = top - 0.5 * prominence;
    found.push_back(
        {apex, prominence, HalfWidth(signal, apex, -1, level), HalfWidth(signal, apex, 1, level)});
  }
  return found;
}

// Noise of a signal smoothed over a half window: what is left of white noise, or what there is on
// the scale of the peaks, whichever is larger; at least that of rounding to steps.
double NoiseOf(std::span<const LONG> samples, const std::vector<double>& smooth, int halfWindow,
               int scale) {
  const std::vector<double> raw(samples.begin(), samples.end());
  const double white = NoiseAt(raw, 1) * NoiseGain(halfWindow);
  const double rounding = SmallestStep(samples) / std::sqrt(12.0);
  return std::max({white, NoiseAt(smooth, scale), rounding});
}

// Noise on the scale of wider peaks, in octaves of the width: what drifts and wanders slowly must
// not pass for a wide peak.
class NoiseByWidth {
 public:
  NoiseByWidth(const std::vector<double>& smooth, double noise, int width)
      : smallest_(std::max(width, 4)), octaves_{noise} {
    for (double wide = 2.0 * smallest_; wide < static_cast<double>(smooth.size()) / 8;
         wide *= 2.0) {
      octaves_.push_back(std::max(octaves_.back(), NoiseAt(smooth, static_cast<int>(wide / 2.0))));
    }
  }
  double At(double width) const {
    const double octave = std::floor(std::log2(std::max(width / smallest_, 1.0)));
    return octaves_[std::min(static_cast<std::size_t>(octave), octaves_.size() - 1)];
  }

 private:
  double smallest_;
  std::vector<double> octaves_;
};

std::vector<double> SmoothWithoutRinging(std::span<const LONG> samples, int halfWindow) {
  std::vector<double> smooth = Smooth(samples, halfWindow);
  LimitToWindow(samples, halfWindow, smooth);
  return smooth;
}

// What the noise of the whole trace rarely exceeds, in standard deviations: sqrt(2 ln N) for N
// independent values.
double LargestNoise(std::size_t samples, int halfWindow) {
  const double independent = static_cast<double>(samples) / (halfWindow + 1.0);
  return std::sqrt(2.0 * std::log(std::max(independent, 20.0)));
}

// The lower quartile of the widths, peaks weighted by their height: narrow noise among high peaks
// does not count, and one high peak (a solvent's) not more than kMaxWeight ordinary ones.
int TypicalWidth(std::vector<Candidate> clear) {
  if (clear.empty()) return 0;
  const auto middle = clear.begin() + static_cast<Index>(clear.size() / 2);
  std::nth_element(clear.begin(), middle, clear.end(), [](const Candidate& a, const Candidate& b) {
    return a.prominence < b.prominence;
  });
  const double most = kMaxWeight * middle->prominence;
  std::sort(clear.begin(), clear.end(),
            [](const Candidate& a, const Candidate& b) { return a.Width() < b.Width(); });
  double total = 0.0;
  for (const Candidate& peak : clear) total += std::min(peak.prominence, most);
  std::size_t k = 0;
  for (double sum = 0.0; k < clear.size(); ++k) {
    sum += std::min(clear[k].prominence, most);
    if (sum >= 0.25 * total) break;
  }
  const double width = clear[std::min(k, clear.size() - 1)].Width();
  return std::max(static_cast<int>(std::min(width, 2.0 * kMaxHalfWindow)), 1);
}

// ---- limits and baselines
// -------------------------------------------------------------------------

struct Vertex {
  Index index;
  double value;
};

double ValueOn(const Vertex& a, const Vertex& b, Index index) {
  if (b.index == a.index) return a.value;
  return a.value + (b.value - a.value) * static_cast<double>(index - a.index) /
                       static_cast<double>(b.index - a.index);
}

// Lower convex hull of the signal from first to last (A. M. Andrew, Inf. Process. Lett. 9 (1979)
// 216).
std::vector<Vertex> LowerHull(const std::vector<double>& signal, Index first, Index last) {
  std::vector<Vertex> hull;
  for (Index i = first; i <= last; ++i) {
    const Vertex next{i, signal[static_cast<std::size_t>(i)]};
    while (hull.size() >= 2 &&
           ValueOn(hull[hull.size() - 2], next, hull.back().index) <= hull.back().value) {
      hull.pop_back();
    }
    hull.push_back(next);
  }
  return hull;
}

struct Limits {
  Index start, end;
  double baselineStart, baselineEnd;
};

class Limiter {
 public:
  Limiter(const std::vector<double>& signal, const std::vector<Candidate>& peaks, double noise,
          const DetectionOptions& options)
      : signal_(signal), peaks_(peaks), noise_(noise), options_(options) {}

  std::vector<Limits> Run();

 private:
  struct Reach {
    Index first, last;
  };

  double At(Index i) const { return signal_[static_cast<std::size_t>(i)]; }
  std::vector<Reach> Reaches() const;
  void LimitCluster(std::size_t first, std::size_t last, const std::vector<Reach>& reaches,
                    std::vector<Limits>& limits) const;
  void Trim(const Candidate& peak, bool atFront, bool atTail, Limits& limits) const;
  void Level(std::size_t first, std::size_t last, Reach reach, std::vector<Limits>& limits) const;
  void Skim(std::size_t first, std::size_t last, std::vector<Limits>& limits) const;

  const std::vector<double>& signal_;
  const std::vector<Candidate>& peaks_;
  double noise_;
  const DetectionOptions& options_;
};

std::vector<Limiter::Reach> Limiter::Reaches() const {
  const Index end = static_cast<Index>(signal_.size()) - 1;
  std::vector<Reach> reaches(peaks_.size());
  for (std::size_t k = 0; k < peaks_.size(); ++k) {
    const Candidate& peak = peaks_[k];
    // A half-width that a neighbour's valley cut short says little: the other side may lend its.
    const double front = std::max(peak.front, 0.5 * peak.tail);
    const double tail = std::max(peak.tail, 0.5 * peak.front);
    reaches[k].first = std::max<Index>(peak.apex - static_cast<Index>(kFrontReach * front + 1), 0);
    reaches[k].last = std::min<Index>(peak.apex + static_cast<Index>(kTailReach * tail + 1), end);
  }
  for (std::size_t k = 1; k < peaks_.size(); ++k) {
    const auto from = signal_.begin() + peaks_[k - 1].apex;
    const Index valley =
        std::min_element(from, signal_.begin() + peaks_[k].apex + 1) - signal_.begin();
    reaches[k - 1].last = std::min(reaches[k - 1].last, valley);
    reaches[k].first = std::max(reaches[k].first, valley);
  }
  return reaches;
}

void Limiter::Trim(const Candidate& peak, bool atFront, bool atTail, Limits& limits) const {
  const Vertex a{limits.start, limits.baselineStart};
  const Vertex b{limits.end, limits.baselineEnd};
  const double height = At(peak.apex) - ValueOn(a, b, peak.apex);
  const double level = std::max(kTrimNoise * noise_, kTrimHeight * height);
  const auto low = [&](Index i) { return At(i) - ValueOn(a, b, i) <= level; };
  if (atFront) {
    while (limits.start + 1 < peak.apex && low(limits.start + 1)) ++limits.start;
  }
  if (atTail) {
    while (limits.end - 1 > peak.apex && low(limits.end - 1)) --limits.end;
  }
  limits.baselineStart = ValueOn(a, b, limits.start);
  limits.baselineEnd = ValueOn(a, b, limits.end);
}

// The hull touches the lowest noise. The line under the peaks first … last, which share an edge of
// it, is raised to the mean of the trace in front of and behind them.
void Limiter::Level(std::size_t first, std::size_t last, Reach reach,
                    std::vector<Limits>& limits) const {
  const auto level = [&](Index from, Index to, double touched) {
    double sum = 0.0;
    for (Index i = from; i <= to; ++i) sum += At(i);
    const double mean = sum / static_cast<double>(to - from + 1);
    return std::clamp(mean, touched, touched + kHullBias * noise_);
  };
  Vertex a{limits[first].start, limits[first].baselineStart};
  Vertex b{limits[last].end, limits[last].baselineEnd};
  const auto frontWidth = static_cast<Index>(peaks_[first].front);
  const auto tailWidth = static_cast<Index>(peaks_[last].tail);
  a.value = level(std::max(a.index - frontWidth, reach.first), a.index, a.value);
  b.value = level(b.index, std::min(b.index + tailWidth, reach.last), b.value);
  for (std::size_t k = first; k <= last; ++k) {
    limits[k].baselineStart = ValueOn(a, b, limits[k].start);
    limits[k].baselineEnd = ValueOn(a, b, limits[k].end);
  }
}

void Limiter::LimitCluster(std::size_t first, std::size_t last, const std::vector<Reach>& reaches,
                           std::vector<Limits>& limits) const {
  const std::vector<Vertex> hull = LowerHull(signal_, reaches[first].first, reaches[last].last);
  std::size_t edge = 0;
  for (std::size_t k = first; k <= last;) {
    // The peaks k … shared stand over one edge.
    while (edge + 2 < hull.size() && hull[edge + 1].index <= peaks_[k].apex) ++edge;
    const Vertex& a = hull[edge];
    const Vertex& b = hull[std::min(edge + 1, hull.size() - 1)];
    std::size_t shared = k;
    while (shared < last && peaks_[shared + 1].apex < b.index) ++shared;
    for (std::size_t each = k; each <= shared; ++each) {
      Limits& own = limits[each];
      own.start = each > k ? reaches[each].first : std::max(a.index, reaches[k].first);
      own.end = each < shared ? reaches[each].last : std::min(b.index, reaches[shared].last);
      own.baselineStart = ValueOn(a, b, own.start);
      own.baselineEnd = ValueOn(a, b, own.end);
      Trim(peaks_[each], each == k, each == shared, own);
    }
    Level(k, shared, {a.index, b.index}, limits);
    k = shared + 1;
  }
}

// Peaks on the tail of the cluster's highest one, as long as each is small and its valley high.
void Limiter::Skim(std::size_t first, std::size_t last, std::vector<Limits>& limits) const {
  const auto height = [&](std::size_t k) {
    const Limits& own = limits[k];
    return At(peaks_[k].apex) -
           ValueOn({own.start, own.baselineStart}, {own.end, own.baselineEnd}, peaks_[k].apex);
  };
  std::size_t parent = first;
  for (std::size_t k = first; k <= last; ++k) {
    if (height(k) > height(parent)) parent = k;
  }
  const double parentHeight = height(parent);
  for (std::size_t k = parent + 1; k <= last; ++k) {
    Limits& rider = limits[k];
    if (rider.start != limits[k - 1].end && rider.start >= limits[parent].end) break;
    const double over = At(peaks_[k].apex) - At(rider.start);
    const double valley = At(rider.start) - rider.baselineStart;
    if (parentHeight < options_.skimRatio * over || valley < over) break;
    Index touch = peaks_[k].apex + 1;
    double slope = std::numeric_limits<double>::max();
    for (Index i = touch; i <= rider.end; ++i) {
      const double next = (At(i) - At(rider.start)) / static_cast<double>(i - rider.start);
      if (next < slope) {
        slope = next;
        touch = i;
      }
    }
    limits[parent].end = rider.end;
    limits[parent].baselineEnd = rider.baselineEnd;
    rider.baselineStart = At(rider.start);
    rider.end = touch;
    rider.baselineEnd = At(touch);
  }
}

std::vector<Limits> Limiter::Run() {
  const std::vector<Reach> reaches = Reaches();
  std::vector<Limits> limits(peaks_.size());
  for (std::size_t first = 0; first < peaks_.size();) {
    std::size_t last = first;
    while (last + 1 < peaks_.size() && reaches[last].last == reaches[last + 1].first) ++last;
    LimitCluster(first, last, reaches, limits);
    Skim(first, last, limits);
    first = last + 1;
  }
  return limits;
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

}  // namespace

std::vector<PeakRecord> DetectPeaks(std::span<const LONG> samples,
                                    const DetectionOptions& options) {
  if (samples.size() < 5) return {};
  // Searches for clear peaks until their width no longer changes what the trace is smoothed by.
  int halfWindow = 2;
  int width = 4;
  std::vector<double> smooth = SmoothWithoutRinging(samples, halfWindow);
  double noise = NoiseOf(samples, smooth, halfWindow, width / 2);
  for (int search = 0; search < kMaxSearches; ++search) {
    const int found = TypicalWidth(FindCandidates(smooth, kClearFactor * noise));
    if (found == 0 || found == width) break;
    width = found;
    halfWindow = std::min(static_cast<int>(0.5 * kWindowPerWidth * width), kMaxHalfWindow);
    smooth = SmoothWithoutRinging(samples, halfWindow);
    noise = NoiseOf(samples, smooth, halfWindow, std::max(width / 2, 2));
  }
  const double factor = options.noiseFactor * LargestNoise(samples.size(), halfWindow);
  std::vector<Candidate> peaks =
      FindCandidates(smooth, std::max(factor * noise, options.minHeight));
  const NoiseByWidth noiseByWidth(smooth, noise, width);
  std::erase_if(peaks, [&](const Candidate& peak) {
    return peak.Width() < options.minWidth ||
           peak.prominence < factor * noiseByWidth.At(peak.Width());
  });
  if (peaks.size() > kMaxPeaks) {
    std::sort(peaks.begin(), peaks.end(),
              [](const Candidate& a, const Candidate& b) { return a.prominence > b.prominence; });
    peaks.resize(kMaxPeaks);
    std::sort(peaks.begin(), peaks.end(),
              [](const Candidate& a, const Candidate& b) { return a.apex < b.apex; });
  }
  const std::vector<Limits> limits = Limiter(smooth, peaks, noise, options).Run();
  std::vector<PeakRecord> table(peaks.size());
  for (std::size_t k = 0; k < peaks.size(); ++k) {
    PeakRecord& record = table[k];
    record = PeakRecord{};
    record.start = static_cast<LONG>(limits[k].start);
    record.apex = RawApex(samples, peaks[k], limits[k], halfWindow);
    record.end = static_cast<LONG>(limits[k].end);
    record.baselineStart = static_cast<LONG>(std::lround(limits[k].baselineStart));
    record.baselineEnd = static_cast<LONG>(std::lround(limits[k].baselineEnd));
  }
  return table;
}

}  // namespace embedded
