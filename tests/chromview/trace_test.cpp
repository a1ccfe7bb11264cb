// Which part of a channel is drawn, by which path, and what the incremental marks say afterwards.
#include <limits>
#include <map>
#include <numeric>
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

// What the passes of one picture drew per column of the view: touched by lines, and the samples
// that points lie on. Sample i has the value i and one pixel per count: y tells the sample.
struct Columns {
  std::set<LONG> touched;
  std::map<LONG, std::set<LONG>> samples;

  // `goesOn`: an incremental pass, which takes up the line at a sample already drawn.
  void Add(const Strings& lines, LONG yOfSample0, bool goesOn) {
    for (const std::string& line : ChromView::With(lines, "polyline")) {
      const std::vector<POINT> points = ChromView::TracePoints({line});
      for (std::size_t i = 0; i < points.size(); ++i) {
        const POINT p = points[i];
        if (i > 0) {
          for (LONG x = points[i - 1].x; x <= std::min<LONG>(p.x, 399); ++x) touched.insert(x);
        }
        if ((i > 0 || !goesOn) && p.x < 400) samples[p.x].insert(yOfSample0 - p.y);
      }
    }
  }
};

// A run that grows while it is shown leaves no gap and touches only columns that drawing it at once
// would touch. What holds for y depends on the path:
// - the same points where a column has a whole number of samples, or a sample several columns;
// - otherwise each pass goes on from a truncated sample number and the trace falls behind, less
//   than a sample each time, and is never ahead;
// - envelope: at least the same range. Columns at which a pass went on get single samples, too, of
//   the neighbouring columns.
TEST_F(ChromView, AcquisitionInAThousandPieces) {
  const int total = 5000;
  std::vector<LONG> rising(total);
  std::iota(rising.begin(), rising.end(), 0);
  TestChannel& tested = AddChannel("a", rising);
  view.flags = THoldWindow::kPerPixel;
  enum Path { kSame, kLagging, kEnvelope };
  const struct {
    double samplesPerColumn;
    Path path;
  } cases[] = {{0.0625, kSame}, {0.5, kSame},     {1, kSame},       {2, kSame},
               {2.5, kLagging}, {12.5, kLagging}, {2.5, kEnvelope}, {12.5, kEnvelope}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.samplesPerColumn);
    tested.lastDrawnIndex = 0;
    tested.Times(RegularTimes(c.path == kEnvelope ? total : 0, 250));
    view.t1 = 100 * c.samplesPerColumn;
    Columns grown, whole;
    int passes = 0;
    const RECT tall{0, -2 * total, 400, 300};
    for (int piece = 1; piece <= 1000; ++piece) {
      tested.sampleCount = piece * total / 1000;
      // Nothing can go on from marks that still stand at the first sample.
      const bool goesOn = tested.lastDrawnIndex > 0;
      const Strings lines = Draw(goesOn ? TChromRender::kPassIncremental : 0, tall);
      grown.Add(lines, view.plotBottom, goesOn);
      passes += goesOn ? 1 : 0;
    }
    whole.Add(Draw(0, tall), view.plotBottom, false);
    ASSERT_GT(passes, 900);
    const LONG last = *grown.touched.rbegin();
    EXPECT_EQ(static_cast<LONG>(grown.touched.size()), last - *grown.touched.begin() + 1) << "gap";
    EXPECT_TRUE(std::includes(whole.touched.begin(), whole.touched.end(), grown.touched.begin(),
                              grown.touched.end()));
    EXPECT_GE(last, *whole.touched.rbegin() - 1);
    LONG lag = 0;
    for (const auto& [x, drawn] : grown.samples) {
      ASSERT_TRUE(whole.samples.contains(x)) << x;
      const std::set<LONG>& wanted = whole.samples[x];
      switch (c.path) {
        case kSame:
          ASSERT_EQ(drawn, wanted) << x;
          break;
        case kLagging:
          ASSERT_GE(*wanted.begin() - *drawn.rbegin(), 0) << "ahead at " << x;
          ASSERT_LE(*wanted.begin() - *drawn.begin(), lag + 1)
              << "more than a sample lost at " << x;
          lag = *wanted.begin() - *drawn.begin();
          break;
        case kEnvelope:
          ASSERT_LE(*drawn.begin(), *wanted.begin()) << x;
          ASSERT_GE(*drawn.rbegin(), *wanted.rbegin()) << x;
          ASSERT_GE(*drawn.begin(), *wanted.begin() - c.samplesPerColumn - 1) << x;
          ASSERT_LE(*drawn.rbegin(), *wanted.rbegin() + c.samplesPerColumn + 1) << x;
      }
    }
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
