#include "embedded/peak_candidates.h"

#include <algorithm>
#include <cmath>

#include "embedded/smoothing.h"

namespace embedded {
namespace {

constexpr double kWindowPerWidth = 0.7;
constexpr double kClearFactor = 12.0;
constexpr int kMaxSearches = 6;
constexpr double kMaxWeight = 50.0;

using Index = std::ptrdiff_t;

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
  if (i + step < 0 || i + step >= count || !(at(i) > level)) return whole;
  return whole + (at(i) - level) / (at(i) - at(i + step));
}

std::vector<double> SmoothWithoutRinging(std::span<const LONG> samples, int halfWindow) {
  std::vector<double> smooth = Smooth(samples, halfWindow);
  LimitToWindow(samples, halfWindow, smooth);
  return smooth;
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

Candidate Measure(const std::vector<double>& signal, Index apex, double base) {
  const double prominence = signal[static_cast<std::size_t>(apex)] - base;
  const double level = base + 0.5 * prominence;
  return {apex, prominence, HalfWidth(signal, apex, -1, level), HalfWidth(signal, apex, 1, level)};
}

}  // namespace

std::vector<Candidate> FindCandidates(const std::vector<double>& signal, double minProminence) {
  const Extremes extremes = FindExtremes(signal);
  const std::vector<double> front = SideMinima(signal, extremes, true);
  const std::vector<double> tail = SideMinima(signal, extremes, false);
  std::vector<Candidate> found;
  for (std::size_t k = 0; k < extremes.maxima.size(); ++k) {
    const Candidate peak = Measure(signal, extremes.maxima[k], std::max(front[k], tail[k]));
    if (peak.prominence >= minProminence && peak.prominence > 0.0) found.push_back(peak);
  }
  return found;
}

std::vector<Candidate> CandidatesAt(const std::vector<double>& signal, std::span<const LONG> apexes,
                                    std::ptrdiff_t reach) {
  const auto begin = signal.begin();
  std::vector<Index> tops;
  for (std::size_t k = 0; k < apexes.size(); ++k) {
    Index first = std::max<Index>(apexes[k] - reach, 0);
    Index last = std::min<Index>(apexes[k] + reach, static_cast<Index>(signal.size()) - 1);
    if (k > 0) first = std::max<Index>(first, (Index{apexes[k - 1]} + apexes[k]) / 2 + 1);
    if (k + 1 < apexes.size()) {
      last = std::min<Index>(last, (Index{apexes[k]} + apexes[k + 1]) / 2);
    }
    tops.push_back(std::max_element(begin + first, begin + last + 1) - begin);
  }
  std::vector<Candidate> given;
  for (std::size_t k = 0; k < tops.size(); ++k) {
    const Index from = k > 0 ? tops[k - 1] : 0;
    const Index to = k + 1 < tops.size() ? tops[k + 1] : static_cast<Index>(signal.size()) - 1;
    const double front = *std::min_element(begin + from, begin + tops[k] + 1);
    const double tail = *std::min_element(begin + tops[k], begin + to + 1);
    given.push_back(Measure(signal, tops[k], std::max(front, tail)));
  }
  return given;
}

// Searches for clear peaks until their width no longer changes what the trace is smoothed by.
Smoothed SmoothByWidth(std::span<const LONG> samples) {
  const double white = NoiseAt(std::vector<double>(samples.begin(), samples.end()), 1);
  const double rounding = SmallestStep(samples) / std::sqrt(12.0);
  Smoothed smoothed;
  smoothed.halfWindow = 2;
  smoothed.width = 4;
  for (int search = 0;; ++search) {
    const int scale = std::max(smoothed.width / 2, 2);
    smoothed.signal = SmoothWithoutRinging(samples, smoothed.halfWindow);
    // What is left of white noise, or what there is on the scale of the peaks; at least that of
    // rounding to steps.
    smoothed.noise = std::max(
        {white * NoiseGain(smoothed.halfWindow), NoiseAt(smoothed.signal, scale), rounding});
    if (search == kMaxSearches) break;
    const int found = TypicalWidth(FindCandidates(smoothed.signal, kClearFactor * smoothed.noise));
    if (found == 0 || found == smoothed.width) break;
    smoothed.width = found;
    smoothed.halfWindow = std::min(static_cast<int>(0.5 * kWindowPerWidth * found), kMaxHalfWindow);
  }
  return smoothed;
}

NoiseByWidth::NoiseByWidth(const Smoothed& smoothed)
    : smallest_(std::max(smoothed.width, 4)), octaves_{smoothed.noise} {
  const double widest = static_cast<double>(smoothed.signal.size()) / 8.0;
  for (double width = 2.0 * smallest_; width < widest; width *= 2.0) {
    const double noise = NoiseAt(smoothed.signal, static_cast<int>(width / 2.0));
    octaves_.push_back(std::max(octaves_.back(), noise));
  }
}

double NoiseByWidth::At(double width) const {
  const double octave = std::floor(std::log2(std::max(width / smallest_, 1.0)));
  return octaves_[std::min(static_cast<std::size_t>(octave), octaves_.size() - 1)];
}

}  // namespace embedded
