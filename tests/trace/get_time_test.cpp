#include "elugraph/trace/get_time.h"
#include "tests/support/case_name.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr std::int64_t kOne = std::int64_t{1} << 32;

// `period` is given in seconds; the rest of the view does not matter.
GetTime Periodic(double period) { return GetTime(nullptr, 0.0, 10.0, 1000, period, 0.01); }

struct SnapCase {
  const char* name;
  int samples;  // 0: no channel
  double period, timePerPixel;
  double expectedMs;
};
class Snap : public testing::TestWithParam<SnapCase> {};
TEST_P(Snap, Period) {
  const SnapCase& c = GetParam();
  TChannel channel = {};
  channel.sampleCount = c.samples;
  const GetTime time(c.samples > 0 ? &channel : nullptr, 0, 1, 1, c.period, c.timePerPixel);
  EXPECT_NEAR(static_cast<double>(time.period.value), c.expectedMs * kOne, 1);
  EXPECT_EQ(time.channel, nullptr);  // it has no time table
}
const SnapCase kToleranceSnap[] = {{"Whole", 10000, 0.2, 0.01, 200},
                                   {"Down", 2, 0.03330078125, 0.001, 33},
                                   {"Up", 3, 0.03375, 0.001, 34},
                                   {"NoChannelKeeps", 0, 0.03330078125, 1.0, 33.30078125},
                                   {"TooLong", 5, 1e300, 0.001, 2147483647}};
INSTANTIATE_TEST_SUITE_P(Tolerance, Snap, testing::ValuesIn(kToleranceSnap), CaseName());

TEST(Columns, HalfWayGoesRight) {
  GetTime time = Periodic(0.2);  // 10 ms per column
  const std::pair<double, LONG> columns[] = {{0, 0}, {4.9, 0}, {5, 1}, {-15, -1}, {-20, -1}};
  for (const auto& [ms, column] : columns) {
    FixedPoint64 t = FixedPoint64::OfValue(static_cast<std::int64_t>(ms * kOne));
    EXPECT_EQ(static_cast<LONG>(time.Time2X(t)), column) << ms;
  }
}

struct FirstSampleCase {
  const char* name;
  double period;            // s
  std::vector<LONG> times;  // ms, empty: equidistant
  int start;
  double step;  // ms
  int index;
  double phase;
};
class FirstSample : public testing::TestWithParam<FirstSampleCase> {};
TEST_P(FirstSample, IndexAndPhase) {
  const FirstSampleCase& c = GetParam();
  TChannel channel = {};
  channel.times = c.times.data();
  channel.sampleCount = static_cast<LONG>(c.times.size());
  channel.timeBase = 7;
  GetTime time = c.times.empty() ? Periodic(c.period) : GetTime(&channel, 0, 1, 1, 1, 1e-9);
  FixedPoint64 phase;
  const auto step = static_cast<std::int64_t>(c.step * kOne);
  EXPECT_EQ(time.tfrom2Idx(c.start, FixedPoint64::OfValue(step), phase), c.index);
  EXPECT_EQ(phase.value, static_cast<std::int64_t>(c.phase * kOne));
}
const FirstSampleCase kBothFirstSample[] = {
    {"BetweenSamples", 0.2, {}, 1050, 100, 5, 50},
    {"JustBeforeZero", 0.2, {}, -50, 100, 0, -50},
    {"FarBeforeZero", 0.2, {}, -1050, 300, -5, -150},
    {"StepZero", 0.2, {}, 1050, 0, 5, 1050},
    {"Table", 0, {7, 107, 207, 307}, 150, 50.5, 2, 47.5},
    {"TableOnTheBoundary", 0, {7, 107, 207, 307}, 150, 50, 1, 0},
    {"TableBeforeIt", 0, {407, 507, 607}, 0, 150, 0, 50},
    {"TableOfOne", 0, {7}, 400, 100, 0, 0}};
INSTANTIATE_TEST_SUITE_P(Both, FirstSample, testing::ValuesIn(kBothFirstSample), CaseName());

}  // namespace
