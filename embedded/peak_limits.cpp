#include "embedded/peak_limits.h"

#include <algorithm>
#include <limits>

namespace embedded {
namespace {

constexpr double kFrontReach = 5.0;  // half-widths
constexpr double kTailReach = 8.0;
constexpr double kTrimHeight = 0.003;  // of the peak's height
constexpr double kTrimNoise = 2.0;
constexpr double kHullBias = 3.0;  // standard deviations of the noise

using Index = std::ptrdiff_t;

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

class Limiter {
 public:
  Limiter(const Smoothed& smoothed, const std::vector<Candidate>& peaks, double skimRatio)
      : signal_(smoothed.signal), peaks_(peaks), noise_(smoothed.noise), skimRatio_(skimRatio) {}

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
  double skimRatio_;
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
    if (parentHeight < skimRatio_ * over || valley < over) break;
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

}  // namespace

std::vector<Limits> LimitCandidates(const Smoothed& smoothed, const std::vector<Candidate>& peaks,
                                    double skimRatio) {
  return Limiter(smoothed, peaks, skimRatio).Run();
}

}  // namespace embedded
