// Peak detection on traces whose peaks are known.
#include "embedded/peak_detection.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "elugraph/host/engine.h"
#include "embedded/run.h"
#include "embedded/smoothing.h"
#include "tests/support/case_name.h"

namespace embedded {
namespace {

constexpr double kPi = 3.14159265358979323846;

struct Gauss {
  double centre, sigma, height;  // samples, samples, counts
};

std::vector<LONG> Trace(int count, const std::vector<Gauss>& peaks, double noise = 0.0,
                        double slope = 0.0, unsigned seed = 1) {
  std::mt19937 random(seed);
  std::normal_distribution<double> normal;
  std::vector<LONG> trace;
  for (int i = 0; i < count; ++i) {
    double y = 1000.0 + slope * i + noise * normal(random);
    for (const Gauss& g : peaks) {
      const double z = (i - g.centre) / g.sigma;
      y += g.height * std::exp(-0.5 * z * z);
    }
    trace.push_back(static_cast<LONG>(std::lround(y)));
  }
  return trace;
}

RunRef RunOf(const std::vector<LONG>& counts) {
  RunData data;
  data.channels.resize(1);
  data.channels[0].counts = counts;
  data.channels[0].periodSec = 1.0;
  std::string fault;
  RunRef run = MakeRun(data, fault);
  EXPECT_TRUE(run->DetectPeaks(0));
  return run;
}

struct KnownCase {
  const char* name;
  std::vector<Gauss> peaks;
  double noise, slope;
  double areaTolerance;  // relative
};
class KnownPeaks : public testing::TestWithParam<KnownCase> {};

TEST_P(KnownPeaks, FoundWithTheirApexAreaAndHeight) {
  const KnownCase& c = GetParam();
  const RunRef run = RunOf(Trace(4000, c.peaks, c.noise, c.slope));
  ASSERT_EQ(+run->peakCount, c.peaks.size());
  for (std::size_t k = 0; k < c.peaks.size(); ++k) {
    const Gauss& g = c.peaks[k];
    const int number = static_cast<int>(k) + 1;
    const PeakRecord& peak = *run->peaks.At(number - 1);
    EXPECT_NEAR(run->rtime(number), g.centre, 0.6 * g.sigma) << number;
    EXPECT_LE(peak.start, g.centre - 1.5 * g.sigma);
    EXPECT_GE(peak.end, g.centre + 1.5 * g.sigma);
    const double area = g.height * g.sigma * std::sqrt(2.0 * kPi);
    EXPECT_NEAR(run->PeakArea(number), area, c.areaTolerance * area) << number;
    EXPECT_NEAR(run->PeakHeight(number), g.height, 0.02 * g.height + 4.0 * c.noise) << number;
    // Fused peaks share a drop line on one baseline.
    const PeakRecord* next = run->peaks.At(number);
    if (next == nullptr || g.centre + 5.0 * g.sigma < c.peaks[k + 1].centre) continue;
    EXPECT_EQ(+peak.end, +next->start);
    EXPECT_EQ(+peak.baselineEnd, +next->baselineStart);
    EXPECT_NEAR(peak.baselineEnd, 1000, 20);
  }
}

const KnownCase kTracesKnownPeaks[] = {
    {"Single", {{2000, 20, 50000}}, 0, 0, 0.005},
    {"Narrow", {{2000, 1.5, 50000}}, 0, 0, 0.01},
    {"FallingDrift", {{800, 20, 50000}, {3000, 25, 2000}}, 0, -3, 0.02},
    {"Noise", {{800, 20, 50000}, {3000, 25, 2000}}, 50, 0.1, 0.05},
    {"OneToTenThousand", {{1000, 15, 1e8}, {3000, 15, 1e4}}, 3, 0, 0.01},
    {"DifferentWidths", {{500, 5, 8000}, {1500, 20, 8000}, {3000, 80, 8000}}, 10, 0, 0.03},
    {"Fused", {{1950, 20, 50000}, {2020, 20, 40000}}, 0, 0, 0.02}};
INSTANTIATE_TEST_SUITE_P(Traces, KnownPeaks, testing::ValuesIn(kTracesKnownPeaks), CaseName());

// A drop line would give the small peak the large one's tail.
TEST(PeakDetection, ASmallPeakOnATailIsSkimmed) {
  std::vector<LONG> trace = Trace(4000, {{1250, 12, 2500}});
  for (int i = 1000; i < 4000; ++i) {  // a peak with an exponential tail
    trace[static_cast<std::size_t>(i)] += static_cast<LONG>(
        50000 * (1.0 - std::exp(-(i - 1000) / 8.0)) * std::exp(-(i - 1000) / 100.0));
  }
  const RunRef run = RunOf(trace);
  ASSERT_EQ(+run->peakCount, 2);
  const PeakRecord& parent = *run->peaks.At(0);
  const PeakRecord& rider = *run->peaks.At(1);
  EXPECT_GT(+parent.end, +rider.end - 1);
  EXPECT_LT(+parent.start, +rider.start);
  EXPECT_GT(+rider.baselineStart, 3000);  // on the tail, not on the run's baseline
  const double area = 2500 * 12 * std::sqrt(2.0 * kPi);
  EXPECT_NEAR(run->PeakArea(2), area, 0.3 * area);  // a straight tangent under a curved tail
}

// A report's apexes, off by a few samples, lead to the same limits as the search.
TEST(PeakDetection, KnownApexesAreLimitedAsFoundOnes) {
  const std::vector<LONG> trace =
      Trace(4000, {{800, 20, 50000}, {870, 20, 40000}, {3000, 25, 2000}}, 20.0, 0.5);
  const std::vector<PeakRecord> found = DetectPeaks(trace);
  const std::vector<PeakRecord> given = LimitPeaks(trace, {3004, 868, -5, 803, 803, 4000});
  ASSERT_EQ(found.size(), 3U);
  ASSERT_EQ(given.size(), 3U);
  for (std::size_t k = 0; k < 3; ++k) {
    EXPECT_EQ(+given[k].apex, +found[k].apex);
    EXPECT_NEAR(given[k].start, found[k].start, 10);
    EXPECT_NEAR(given[k].end, found[k].end, 10);
  }
}

TEST(PeakDetection, NoiseAndDriftAloneHaveNone) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    const int count = 500 << seed % 6;
    EXPECT_TRUE(DetectPeaks(Trace(count, {}, 40.0, seed % 3, seed)).empty()) << seed;
  }
}

// Traces whose peaks take three samples lost them as spikes.
TEST(PeakDetection, SpikesAndNarrowPeaks) {
  const struct {
    std::vector<LONG> top;
    std::size_t found;
  } cases[] = {
      {{1 << 30}, 0},
      {{90'000, 100'000}, 0},
      {{5'000, 100'000, 4'000}, 0},
      {{54'000, 100'000, 44'000}, 1},
  };
  for (const auto& c : cases) {
    std::vector<LONG> trace = Trace(2000, {}, 20.0, 0, 3);
    for (std::size_t i = 0; i < c.top.size(); ++i) trace[1000 + i] += c.top[i];
    // What sets the window of smoothing: none.
    for (std::size_t at = 100; at < 900; at += 100) {
      for (std::size_t i = 0; i < 3; ++i) trace[at + i] += i == 1 ? 100'000 : 50'000;
    }
    std::vector<PeakRecord> peaks = DetectPeaks(trace);
    std::erase_if(peaks, [](const PeakRecord& peak) { return peak.apex < 950; });
    EXPECT_EQ(peaks.size(), c.found) << c.top[0];
  }
}

// What the drawing relies on, whatever the data: sorted limits inside the trace.
TEST(PeakDetection, LimitsAreInOrderOnRandomWalks) {
  std::mt19937 random(5);
  for (int round = 0; round < 60; ++round) {
    std::vector<LONG> trace(20 + random() % 3000);
    double y = 0.0;
    for (LONG& sample : trace) {
      y = 0.97 * y + static_cast<double>(random() % 2001) - 1000.0;
      sample = static_cast<LONG>(y * (round % 5 == 0 ? 60000.0 : 1.0));
    }
    EXPECT_EQ(RunOf(trace)->SetPeaks(0, DetectPeaks(trace), true), "") << round;
  }
}

// The apex of a cut-off peak is the middle of its top.
TEST(PeakDetection, SaturatedTop) {
  std::vector<LONG> trace = Trace(2000, {{1000, 30, 100000}});
  for (LONG& y : trace) y = std::min<LONG>(y, 60000);
  const std::vector<PeakRecord> peaks = DetectPeaks(trace);
  ASSERT_EQ(peaks.size(), 1U);
  EXPECT_NEAR(peaks[0].apex, 1000, 3);
}

TEST(Smoothing, StatesItsNoise) {
  const std::vector<LONG> noise = Trace(20000, {}, 1000.0);
  for (int halfWindow : {0, 2, 10, 40}) {
    const std::vector<double> smooth = Smooth(noise, halfWindow);
    const double expected = 1000.0 * NoiseGain(halfWindow);
    EXPECT_NEAR(NoiseAt(smooth, 2 * halfWindow + 1), expected, 0.06 * expected) << halfWindow;
  }
}

}  // namespace
}  // namespace embedded
