// Which part of a channel is drawn, by which path, and what the incremental marks say afterwards.
#include <limits>
#include <set>

#include "tests/chromview/chrom_view.h"

namespace {

std::vector<LONG> Ramp(int count) {
  std::vector<LONG> samples(count);
  for (int i = 0; i < count; ++i) samples[i] = i % 100;
  return samples;
}

std::vector<LONG> RegularTimes(int count, int stepMs, int startMs = 0) {
  std::vector<LONG> times(count);
  for (int i = 0; i < count; ++i) times[i] = startMs + i * stepMs;
  return times;
}

TEST_F(ChromView, PathsAndMarks) {
  const int perPixel = THoldWindow::kPerPixel;
  const int exact = THoldWindow::kExact;
  // Ten samples of 0 … 9 counts; the trace begins at (0, 284).
  const struct {
    const char* name;
    int flags;
    double to;  // seconds over 400 pixels
    bool table;
    LONG right;  // of the painted rectangle
    std::string points;
    LONG markIndex, markX;
  } cases[] = {
      {"one per sample", perPixel, 25, false, 400,
       "0,284 4,283 8,282 12,281 16,280 20,279 24,278 28,277 32,276 36,275 ", 10, 36},
      // The first sample right of the end is drawn, too, and all counts as done.
      {"stops behind the edge", perPixel, 25, false, 5, "0,284 4,283 8,282 ", 10, 8},
      // 2.5 samples per pixel: samples 0, 2, 5, 7.
      {"one per pixel", perPixel, 250, false, 400, "0,284 1,282 2,279 3,277 ", 8, 3},
      // 0 | 1-3 | 4-5 | 6-8 | 9 is not at a new column.
      {"envelope", perPixel, 250, true, 400,
       "0,284 1,282 1,283 1,281 1,282 2,279 2,280 2,279 3,277 3,278 3,276 3,277 ", 8, 3},
      // The reducers leave the index alone; exact wins over per pixel.
      {"exact", exact | perPixel, 250, false, 400,
       "0,284 0,283 0,284 0,282 1,281 1,280 2,279 2,278 2,279 2,277 3,276 3,275 ", 7, 0},
      {"averaged", 0, 250, false, 400, "0,283 1,280 2,278 3,276 ", 7, 0},
  };
  TestChannel& tested = AddChannel("a", Ramp(10));
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    tested.Times(RegularTimes(c.table ? 10 : 0, 250));
    tested.lastDrawnIndex = 7;
    tested.lastDrawnX = -5;
    view.flags = static_cast<WORD>(c.flags);
    view.t1 = c.to;
    std::string points;
    for (const POINT& p : TracePoints(Draw(0, {0, 0, c.right, 300}))) {
      points += std::to_string(p.x) + "," + std::to_string(p.y) + " ";
    }
    EXPECT_EQ(points, c.points);
    EXPECT_EQ(+tested.lastDrawnIndex, c.markIndex);
    EXPECT_EQ(+tested.lastDrawnX, c.markX);
  }
}

TEST_F(ChromView, RepaintedPartsLieOnTheWholeTrace) {
  TestChannel& tested = AddChannel("a", Ramp(2000));
  view.t1 = 350;  // 1250 ms per column between the strips
  for (int i = 0; i < 6; ++i) {
    tested.Times(RegularTimes(i % 2 == 0 ? 0 : 2000, 250));
    const int paths[] = {0, THoldWindow::kExact, THoldWindow::kPerPixel};
    view.flags = static_cast<WORD>(paths[i / 2] | THoldWindow::kSignalStrip);
    std::set<std::pair<LONG, LONG>> whole;
    for (const POINT& p : TracePoints(Draw())) whole.emplace(p.x, p.y);
    for (const LONG left : {1, 137, 200, 330}) {
      const std::vector<POINT> part = TracePoints(Draw(0, {left, 0, 400, 300}));
      ASSERT_FALSE(part.empty());
      int elsewhere = 0;  // the first column may begin within its samples
      for (const POINT& p : part) elsewhere += p.x > left + 1 && !whole.contains({p.x, p.y});
      EXPECT_EQ(elsewhere, 0) << "case " << i << " from " << left;
    }
  }
}

TEST_F(ChromView, RangeOfTheView) {
  const struct {
    const char* name;
    double t0;
    std::vector<LONG> times;
    int flags;
    LONG markIndex, markX;
    float period;
    int firstX;  // of the trace; −1000: none
  } cases[] = {
      {"starts before the data", -2.5, {}, 0, 0, 0, 0.25F, 40},
      {"starts in the data", 5, {}, 0, 0, 0, 0.25F, -4},
      {"starts behind the data", 30, {}, 0, 0, 0, 0.25F, -1000},
      {"goes on at the marks", 0, {}, 2, 31, 120, 0.25F, 116},
      {"marks left of the view", 5, {}, 2, 31, -1, 0.25F, -4},
      {"marks left of a view before the data", -5, {}, 2, 31, -1, 0.25F, -1000},
      {"nothing drawn before", 0, {}, 2, 0, 0, 0.25F, -1000},
      {"table before the view", 5, RegularTimes(100, 50), 0, 0, 0, 0.25F, -1},
      {"table starts in the view", 0, RegularTimes(100, 250, 2000), 0, 0, 0, 0.25F, 32},
      {"no period of its own", 5, {}, 0, 0, 0, 0, -4},
      {"updated period", 5, {}, 0, 0, 0, -2, 72},  // sample 19 of 0.25 s at its new place
  };
  TestChannel& tested = AddChannel("a", Ramp(100));
  Host().onCall = [&](const std::string& call) {
    if (call == "UpdateCyctimeRT") tested.samplePeriod = 0.5F;
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    tested.Times(c.times);
    tested.samplePeriod = c.period;
    tested.lastDrawnIndex = c.markIndex;
    tested.lastDrawnX = c.markX;
    chrom.state = c.period < 0 ? 5 : 1;
    view.flags = THoldWindow::kPerPixel;
    view.t0 = c.t0;
    view.t1 = c.t0 + 25;
    const std::vector<POINT> points = TracePoints(Draw(c.flags));
    EXPECT_EQ(points.empty() ? -1000 : points.front().x, c.firstX);
  }
}

// A run that grows while it is shown leaves no gap and touches only columns that drawing it at once
// would touch.
TEST_F(ChromView, AcquisitionInAThousandPieces) {
  const int total = 5000;
  TestChannel& tested = AddChannel("a", Ramp(total));
  const auto columns = [](const Strings& lines, std::set<int>& touched) {
    for (const std::string& line : With(lines, "polyline")) {
      const std::vector<POINT> points = TracePoints({line});
      for (std::size_t i = 1; i < points.size(); ++i) {
        // What lies right of the view is clipped.
        for (LONG x = points[i - 1].x; x <= std::min<LONG>(points[i].x, 399); ++x) {
          touched.insert(x);
        }
      }
    }
  };
  // From 16 columns per sample to 12.5 samples per column, with and without a time table.
  for (const auto& [span, table] :
       {std::pair{6.25, false}, {50, false}, {250, false}, {1250, false}, {1250, true}}) {
    SCOPED_TRACE(span);
    tested.lastDrawnIndex = 0;
    tested.Times(RegularTimes(table ? total : 0, 250));
    view.flags = THoldWindow::kPerPixel;
    view.t1 = span;
    std::set<int> grown;
    for (int piece = 1; piece <= 1000; ++piece) {
      tested.sampleCount = piece * total / 1000;
      // Nothing can go on from marks that still stand at the first sample.
      const bool goesOn = tested.lastDrawnIndex > 0;
      columns(Draw(goesOn ? TChromRender::kPassIncremental : 0), grown);
    }
    std::set<int> whole;
    columns(Draw(), whole);
    ASSERT_FALSE(grown.empty());
    EXPECT_EQ(static_cast<int>(grown.size()), *grown.rbegin() - *grown.begin() + 1) << "a gap";
    EXPECT_TRUE(std::includes(whole.begin(), whole.end(), grown.begin(), grown.end()));
    EXPECT_GE(*grown.rbegin(), *whole.rbegin() - 1);
  }
}

TEST_F(ChromView, AbsurdSettingsEndThePassSafely) {
  constexpr double kInf = std::numeric_limits<double>::infinity();
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  constexpr LONG kMax = std::numeric_limits<LONG>::max();
  constexpr LONG kMin = std::numeric_limits<LONG>::min();
  TestChannel& tested = AddChannel("a", Ramp(100));
  AddAuxiliary("t", {1, 5, 3}, {0, kMax, kMin});
  AddPeak(-50, 500, kMax);
  AddPeak(kMin, kMin, 3);
  AddPeak(30, 20, 10, kMax);
  const WORD flags[] = {0x4BC1, 0xFFFF, 0x6E02};
  int passes = 0;
  for (const double time : {0.0, -1e300, 1e300, 1e-300, kInf, kNaN, -4e6}) {
    for (const double scale : {0.0, -1.0, 1e-300, 1e300, kInf, kNaN}) {
      for (const LONG size : {0, 1, -50, 70'000, kMax, kMin}) {
        tested.Times(RegularTimes(passes % 2 == 0 ? 0 : 100, 250));
        tested.samplePeriod = static_cast<float>(scale);
        tested.lastDrawnX = tested.lastDrawnIndex = size;
        view.t0 = time;
        view.t1 = passes % 3 == 0 ? time : scale;
        view.fullScale = view.unitsPerPixel = view.timePerPixel = view.auxMax = scale;
        view.zeroFraction = view.channelStep = scale;
        view.x0 = view.plotWidth = view.plotHeight = view.plotBottom = size;
        view.flags = flags[passes % 3];
        render.SetSize(size, size);
        render.markMode = passes % 3;
        render.auxPosition = passes % 2;
        render.selectedPeak = 1;
        RECT rect{size, kMin, size, kMax};
        other_host::Calls().clear();
        render.showchrom(hdc, true, rect, passes % 32);
        EXPECT_TRUE(With(other_host::Calls(), "catched").empty()) << time << ' ' << scale;
        journal.clear();
        ++passes;
      }
    }
  }
}

}  // namespace
