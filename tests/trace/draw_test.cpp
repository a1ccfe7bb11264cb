#include <gmock/gmock.h>

#include <limits>

#include "elugraph/trace/each_point.h"
#include "elugraph/trace/get_time.h"
#include "elugraph/trace/poly_gon_fill_pool.h"
#include "elugraph/trace/yval.h"
#include "tests/support/case_name.h"
#include "tests/trace/trace_journal.h"

namespace {

using Effects = std::vector<std::string>;

// A channel whose counts are their own y.
TChannel Channel(const std::vector<LONG>& samples, const std::vector<LONG>& times = {}) {
  TChannel channel = {};
  channel.samples = samples.data();
  channel.sampleCount = static_cast<LONG>(samples.size());
  channel.unitsPerCount = -1;
  channel.times = times.data();
  return channel;
}

struct DrawCase {
  const char* name;
  double periodMs;
  std::vector<LONG> times;
  int start;  // also the view's, ms; 3 ms per pixel, left edge at 10
  int step, firstIndex, xEnd;
  bool exact;
  Effects drawn;
  int x, lastIndex, held;
};
void PrintTo(const DrawCase& c, std::ostream* to) { *to << c.name; }

class Draw : public testing::TestWithParam<DrawCase> {};
TEST_P(Draw, SevenSamples) {
  const DrawCase& c = GetParam();
  const std::vector<LONG> samples = {5, 9, 2, 7, 7, 7, 1};
  TChannel channel = Channel(samples, c.times);
  TraceJournal journal;
  PolyLinePool pool(100, nullptr, journal.hdc());
  pool(0, 0);
  YVAL yval(&channel, 0, 1, false, 0, 0);
  GetTime time(c.times.empty() ? nullptr : &channel, c.start / 1e3, 0.3, 100, c.periodMs / 1e3,
               0.003);
  EachPoint each(pool, yval, time, -1, 10, c.xEnd, nullptr, nullptr);
  EXPECT_EQ(each.Draw(c.start, c.step, samples.data(), 7, c.exact, c.firstIndex, nullptr), c.x);
  EXPECT_EQ(journal.Take(), c.drawn);
  EXPECT_EQ(each.lastIndex, c.lastIndex);
  EXPECT_EQ(pool.count, c.held);
}
// clang-format off
INSTANTIATE_TEST_SUITE_P(View, Draw, testing::Values(
    DrawCase{"Whole", 1, {}, 0, 1, 0, 99, true, {"polyline 7 0,0 10,5 10,9 10,5 10,2 11,7 12,1"}, 12, 6, 0},
    DrawCase{"Fraction", 1.5, {}, 0, 1, 0, 99, true, {"polyline 7 0,0 10,5 10,9 11,2 11,7 12,7 13,1"}, 13, 6, 0},
    DrawCase{"Table", 1, {0, 1, 2, 7, 8, 9, 20}, 0, 1, 0, 99, true, {"polyline 4 0,0 11,2 13,7 17,1"}, 17, 6, 0},
    DrawCase{"MeanWhole", 1, {}, 0, 1, 0, 99, false, {"polyline 3 0,0 10,5 11,5"}, 11, 6, 0},
    DrawCase{"MeanFraction", 2.5, {}, 0, 1, 0, 99, false, {"polyline 6 0,0 10,7 11,2 12,7 13,7 14,4"}, 14, 6, 0},
    DrawCase{"MeanTable", 1, {0, 1, 2, 7, 8, 9, 20}, 3, 1, 0, 99, false, {"polyline 4 0,0 10,2 13,7 17,1"}, 17, 6, 0},
    DrawCase{"LaterStart", 1, {}, 4, 1, 0, 99, true, {"polyline 3 0,0 10,7 11,1"}, 11, 6, 0},
    DrawCase{"BeforeTheFirstSample", 1, {}, -10, 1, 0, 99, true, {"polyline 7 0,0 13,5 13,9 13,5 13,2 14,7 15,1"}, 15, 6, 0},
    DrawCase{"WideColumns", 1, {}, 0, 2, 0, 99, true, {"polyline 6 0,0 10,5 10,9 10,2 10,7 12,1"}, 12, 6, 0},
    DrawCase{"OnePointBeyond", 4, {}, 0, 1, 0, 11, true, {"polyline 4 0,0 10,5 11,9 12,2"}, 12, 2, 0},
    DrawCase{"FromAPeak", 1, {}, 0, 1, 4, 99, true, {"polyline 3 0,0 11,7 12,1"}, 12, 6, 0},
    DrawCase{"FromAPeakByTheTable", 1, {0, 1, 2, 7, 8, 9, 20}, 0, 1, 4, 99, true, {"polyline 3 0,0 12,7 16,1"}, 16, 6, 0},
    DrawCase{"PeakBehindTheData", 1, {}, 0, 1, 7, 99, true, {}, 10, -1, 1},
    DrawCase{"PeakBehindTheLimit", 1, {}, 0, 1, 6, 11, true, {}, 12, -1, 1},
    DrawCase{"StartBehindTheData", 1, {}, 90, 1, 0, 99, true, {}, 10, -1, 0}),
    CaseName());
// clang-format on
TEST(Skip, PhaseOfTheTarget) {
  PolyGonFillPool pool(2, nullptr, nullptr);
  YVAL yval(nullptr, 0, 1, false, 0, 0);
  GetTime time(nullptr, 0, 1, 1, 1, 1);
  EachPoint each(pool, yval, time, 0, 0, 50, nullptr, nullptr);
  std::int64_t phase = 10;
  EXPECT_TRUE(each.SkipTillCycle(2, 7, 8, 50, phase, 30, FixedPoint64::OfValue(25)));
  EXPECT_EQ(phase, 15);  // 10 + 5 × 25 = 4 × 30 + 15
  EXPECT_EQ(each.x, 4);
  phase = 0;  // a target in the column of its own still moves to the next one
  EXPECT_TRUE(each.SkipTillCycle(2, 3, 8, 50, phase, 30, FixedPoint64::OfValue(25)));
  EXPECT_EQ(phase, -5);
  EXPECT_EQ(each.x, 5);
  phase = 15;
  EXPECT_TRUE(each.SkipTillCycle(7, 7, 8, 50, phase, 30, FixedPoint64::OfValue(25)));
  EXPECT_EQ(phase, -15);
  EXPECT_FALSE(each.SkipTillCycle(7, 8, 8, 50, phase, 30, FixedPoint64::OfValue(25)));
}

struct EdgeCase {
  std::vector<POINT> points;
  LONG xEnd, y;
};
TEST(Edge, LiesOnTheLimit) {
  constexpr LONG kFar = 2000000000;
  // clang-format off
  for (const EdgeCase& c : {
           EdgeCase{{}, 5, 0}, {{{8, 3}}, 5, 3}, {{{1, 3}, {4, 9}}, 5, 9}, {{{1, 3}, {5, 9}}, 5, 9},
           {{{0, 0}, {3, -10}}, 1, -3}, {{{7, 3}, {7, -8}}, 5, -2}, {{{7, 3}, {7, -8}}, 7, -8},
           {{{-kFar, -kFar}, {kFar, kFar}}, 1000000, 1000000},
           {{{-kFar, kFar}, {kFar, -kFar}}, 1999999999, -1999999999},
           {{{10, 0}, {11, kFar}}, -kFar, -2147483647 - 1}}) {
    // clang-format on
    TraceJournal journal;
    PolyLinePool pool(100, nullptr, journal.hdc());
    for (const POINT p : c.points) pool(p.x, p.y);
    YVAL yval(nullptr, 0, 1, false, 0, 0);
    GetTime time(nullptr, 0, 1, 1, 1, 1);
    POINT edge = {-1, -1};
    EachPoint(pool, yval, time, 0, 0, c.xEnd, nullptr, nullptr)
        .Draw(0, 1, nullptr, 0, true, 0, &edge);
    EXPECT_EQ(edge.x, c.xEnd);
    EXPECT_EQ(edge.y, c.y);
    EXPECT_EQ(journal.Take().size(), c.points.size() > 1);
    EXPECT_EQ(pool.count, 0);
  }
}

// The pool that the callbacks get, as a place to write to.
struct CalledPool : PolyLinePool {
  CalledPool() : PolyLinePool(100, nullptr, nullptr) {}
  std::vector<LONG> called = {};
  std::string Held() const {
    std::string held;
    for (int i = 0; i < count; ++i) held += std::to_string(points[i].y) + ' ';
    return held;
  }
};

TEST(Emission, GoesToThePoolWithoutAPointCallback) {
  const EachPoint::PointCallback onPoint = [](int x, LONG value, void* to, void*) {
    static_cast<CalledPool*>(static_cast<PolyLinePool*>(to))->called = {x, value};
  };
  const EachPoint::ColumnCallback onColumn = [](int x, LONG first, LONG min, LONG max, LONG last,
                                                void* to, void*) {
    static_cast<CalledPool*>(static_cast<PolyLinePool*>(to))->called = {x, first, min, max, last};
  };
  TChannel channel = Channel({});
  YVAL drift(&channel, 0, 1, true, 0.75, 10);  // y = count − 0.75 − 10 × index
  GetTime time(nullptr, 0, 1, 1, 1, 1);
  struct Case {
    EachPoint::PointCallback point;
    EachPoint::ColumnCallback column;
    YVAL* yval;
    std::string held;
    std::vector<LONG> called;
  };
  for (const Case& c : {Case{nullptr, onColumn, &drift, "-25 -20 -28 -27 ", {}},
                        {nullptr, nullptr, nullptr, "5 10 2 3 ", {}},
                        {onPoint, nullptr, &drift, "", {7, 10}},
                        {onPoint, onColumn, &drift, "", {7, 5, 2, 10, 3}}}) {
    CalledPool pool;
    EachPoint each(pool, drift, time, 0, 7, 50, c.point, c.column);
    each.yval = c.yval;
    each.XStep(3, 5, 2, 10, 3);
    EXPECT_EQ(pool.Held(), c.held);
    EXPECT_EQ(pool.called, c.called);
    EXPECT_EQ(each.lastIndex, 3);
  }
}

TEST(Conversion, DriftAndLimits) {
  const std::vector<LONG> samples = {100, 2000000000, -2000000000, -2147483647};
  TChannel channel = Channel(samples);
  channel.unitsPerCount = 0.5f;
  channel.zero = 20;
  const YVAL drift(&channel, 300, 0.25, true, 10, 3);
  EXPECT_EQ(drift.ToY(100, 2), 300 - (80 - 10 - 6) * 2.0);
  EXPECT_EQ(drift.Pixel(1), -16385);
  EXPECT_EQ(drift.Pixel(2), 16382);
  EXPECT_EQ(YVAL(&channel, 0, 0.5, false, 10, 3).Value(3), -2147483629.0);  // the difference wraps
  channel.samples = nullptr;
  EXPECT_EQ(YVAL(&channel, 300, 0.25, true, 10, 3).Value(3), 0.0);
}

TEST(Draw, AbsurdViewsStayWithinTheData) {  // sanitizers and the time limit judge
  const std::vector<LONG> samples = {1, 2, 3};
  const std::vector<LONG> times = {-2147483647, 5, 2147483647};
  const double values[] = {
      0, 1, -1e-9, 1e-12, 1e300, -1e300, std::numeric_limits<double>::quiet_NaN()};
  for (const bool table : {false, true}) {
    TChannel channel = Channel(samples, table ? times : std::vector<LONG>{});
    if (table) channel.times = times.data();
    for (const double viewStart : values) {
      for (const double period : values) {
        for (const double perPixel : values) {
          for (const int start : {-2147483647 - 1, -1000, 0, 1, 2147483647}) {
            for (const int step : {-1, 0, 1, 2147483647}) {
              PolyLinePool pool(4, nullptr, nullptr);
              YVAL yval(&channel, 0, perPixel, true, viewStart, period);
              GetTime time(&channel, viewStart, perPixel, 100, period, perPixel);
              EachPoint each(pool, yval, time, -1, 0, 100, nullptr, nullptr);
              each.Draw(start, step, samples.data(), 3, start % 2 == 0, start == 1 ? 2 : 0,
                        nullptr);
              EXPECT_LT(each.lastIndex, 3);
            }
          }
        }
      }
    }
  }
}

}  // namespace
