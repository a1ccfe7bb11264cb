#include "elugraph/trace/get_time.h"
#include "tests/support/case_name.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

constexpr std::int64_t kOne = std::int64_t{1} << 32;
constexpr std::int64_t kMax64 = std::numeric_limits<std::int64_t>::max();

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
                                   {"TooManySamples", 1000000, 0.03330078125, 0.001, 33.30078125},
                                   {"Down", 2, 0.03330078125, 0.001, 33},
                                   {"Up", 3, 0.03375, 0.001, 34},
                                   {"OnTheLimitKeeps", 2, 0.0335, 0.001, 33.5},
                                   {"BothWithinPrefersDown", 1, 0.0335, 0.001, 33},
                                   {"NoChannelKeeps", 0, 0.03330078125, 1.0, 33.30078125},
                                   {"TooLong", 5, 1e300, 0.001, 2147483647}};
INSTANTIATE_TEST_SUITE_P(Tolerance, Snap, testing::ValuesIn(kToleranceSnap), CaseName());

struct ColumnCase {
  double ms, expected;
};
TEST(Columns, HalfWayGoesRight) {
  GetTime time = Periodic(0.2);  // 10 ms per column
  for (const ColumnCase& c : {ColumnCase{0, 0},
                              {4.9, 0},
                              {5, 1},
                              {9990, 999},
                              {-5, 0},
                              {-15, -1},
                              {-20, -1},
                              {2147483647, 214748365}}) {
    FixedPoint64 t = FixedPoint64::OfValue(static_cast<std::int64_t>(c.ms * kOne));
    EXPECT_EQ(static_cast<LONG>(time.Time2X(t)), c.expected) << c.ms;
  }
  GetTime narrow(nullptr, 0, 0, 4000000, 1, 1);  // an empty span counts as 1 ms
  FixedPoint64 t = FixedPoint64::OfWhole(1000);
  EXPECT_EQ(narrow.Time2X(t), 4000000000u);
  t = FixedPoint64::OfWhole(2000);
  EXPECT_EQ(narrow.Time2X(t), 0xFFFFFFFFu);
}

struct ExactTimeCase {
  LONG x;
  double timePerPixel;
  std::int64_t expected;
};
TEST(Columns, TimeOfPixelsSaturates) {
  for (const ExactTimeCase& c : {ExactTimeCase{3, 0.0005, 3 * kOne / 2},
                                 {-2, 0.0005, 1 - kOne},
                                 {1, 1e-20, 0},
                                 {1000, 1e9, kMax64},
                                 {-1000, 1e9, 0},
                                 {1, std::numeric_limits<double>::quiet_NaN(), 0}}) {
    FixedPoint64 t;
    GetTime(nullptr, 0, 1, 1, 1, c.timePerPixel).X2ExactTime(c.x, t);
    EXPECT_EQ(t.value, c.expected) << c.x << " × " << c.timePerPixel;
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
    {"OnASample", 0.2, {}, 1000, 100, 5, 0},
    {"BetweenSamples", 0.2, {}, 1050, 100, 5, 50},
    {"JustBeforeZero", 0.2, {}, -50, 100, 0, -50},
    {"FarBeforeZero", 0.2, {}, -1050, 300, -5, -150},
    {"StepZero", 0.2, {}, 1050, 0, 5, 1050},
    {"ColumnsCutTo32Bits", 0.2, {}, 1000, 1.0 / kOne, 5, 1000},
    {"PeriodZero", 0, {}, 1050, 100, 0, 50},
    {"Table", 0, {7, 107, 207, 307}, 150, 50.5, 2, 47.5},
    {"TableOnTheBoundary", 0, {7, 107, 207, 307}, 150, 50, 1, 0},
    {"TableAllBefore", 0, {7, 107, 207, 312}, 400, 100, 2, 5},
    {"TableBeforeIt", 0, {407, 507, 607}, 0, 150, 0, 50},
    {"TableOfOne", 0, {7}, 400, 100, 0, 0},
    {"LatestStart", 0, {7, 107}, 2147483647, 100, 0, 0}};
INSTANTIATE_TEST_SUITE_P(Both, FirstSample, testing::ValuesIn(kBothFirstSample), CaseName());

TEST(FirstSample, QuotientsThatDoNotFit) {
  GetTime time = Periodic(-1.0);
  FixedPoint64 phase;
  time.period.value = -1;
  EXPECT_EQ(time.tfrom2Idx(std::numeric_limits<int>::min(), FixedPoint64::OfValue(-1), phase), 0);
  time.period.value = 3;  // the index is cut to 32 bits
  EXPECT_EQ(time.tfrom2Idx(2, FixedPoint64::OfWhole(1), phase),
            static_cast<int>(2 * kOne / 3 - kOne));
}

TEST(SampleTimes, BothKinds) {
  const std::vector<LONG> times = {1007, 1107, 1257};
  TChannel channel = {};
  channel.times = times.data();
  channel.sampleCount = 3;
  channel.timeBase = 7;
  const GetTime table(&channel, 1.05, 1, 1, 1, 1);
  const GetTime equidistant(nullptr, 1.05, 1, 1, 0.0335, 1);
  FixedPoint64 t;
  table.IndexTime(1, t);
  EXPECT_EQ(t.value, 50 * kOne);
  EXPECT_EQ(table.TableTime(9), 200);
  EXPECT_EQ(table.TableTime(-1), -50);
  EXPECT_EQ(table.SampleTime(0), -0.05);
  equidistant.IndexTime(100, t);
  EXPECT_EQ(t.value, 2300 * kOne);
  EXPECT_NEAR(equidistant.SampleTime(100), 2.3, 1e-12);
  channel.sampleCount = 0;
  EXPECT_EQ(table.TableTime(0), 0);
}

}  // namespace
