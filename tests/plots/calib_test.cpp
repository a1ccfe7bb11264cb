#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>

#include "elugraph/plots/calib_ranges.h"
#include "elugraph/plots/calib_render.h"
#include "tests/plots/plot_fixture.h"

namespace {

struct ScriptedPoint {
  double x;
  double y;
  bool excluded = false;
};

// A host whose calibration answers what the test says, counts its references, and fails on demand.
struct ScriptedHost {
  std::vector<ScriptedPoint> points;
  std::function<double(double)> curve = [](double) { return 0.0; };
  int references = 0;
  int calls = 0;        // of calibration operations
  int failingCall = 0;  // this call raises a failure; 0: none

  void Call() {
    if (++calls == failingCall) throw calls;
  }
};

ScriptedHost& TheHost() {
  static ScriptedHost host;
  return host;
}

}  // namespace

void chromatogram::AddRef() const { ++TheHost().references; }
void chromatogram::Release() const { --TheHost().references; }

bool CalibPool::PointIsExcluded(component*, int point) {
  TheHost().Call();
  return TheHost().points.at(point).excluded;
}
double CalibPool::PointToX(component*, int point) {
  TheHost().Call();
  return TheHost().points.at(point).x;
}
double CalibPool::PointToY(component*, int point) {
  TheHost().Call();
  return TheHost().points.at(point).y;
}
double CalibPool::XtoYtab(component*, double x) {
  TheHost().Call();
  return TheHost().curve(x);
}
double CalibPool::XtoStatWeight(component*, double x) {
  TheHost().Call();
  return x;
}

namespace {

class Statistics final : public CurveStatistics {
 public:
  void Host1() override {}
  void Host2() override {}
  void Host3() override {}
  short Available() override { return TheHost().Call(), available; }
  void Host5() override {}
  void Host6() override {}
  void Host7() override {}
  void BandHalfWidth(double level, double x, double weight, double& halfWidth) override {
    TheHost().Call();
    halfWidth = 20 * level * (x + weight);
  }
  short available = 1;
};

// One component; points (2, 100) and (10, 500) on the line y = 50 x.
class Calib : public PlotTest {
 protected:
  Calib() {
    TheHost() = ScriptedHost{};
    TheHost().curve = [](double x) { return 50 * x; };
    SetPoints({{2, 100}, {10, 500}});
    run.calibration.components = {&item, 0, 1};
    run.calibration.bandLevel = 0.5F;
    UseDigits(1, 2);
  }
  ~Calib() override { EXPECT_EQ(TheHost().references, 0); }

  void SetPoints(std::vector<ScriptedPoint> points) {
    TheHost().points = std::move(points);
    const std::size_t count = TheHost().points.size();
    records.resize(count);
    recordItems.clear();
    for (std::size_t i = 0; i < count; ++i) {
      records[i].number = static_cast<WORD>(i + 1);
      recordItems.push_back(&records[i]);
    }
    run.calibration.points = {recordItems.data(), 0, static_cast<LONG>(count)};
  }
  void ShowBand() {
    run.calibration.flags = CalibPool::kShowBand;
    shown.statistics = &statistics;
  }
  void Render(RECT rect) { Render(rect, hdc()); }
  void Render(RECT rect, HDC target) {
    TCalibRender render(&run);
    render.SetFont(font());
    render.Render(target, rect);
  }

  chromatogram run{};
  component shown{};
  component* item = &shown;
  std::vector<CalibPointRecord> records;
  std::vector<CalibPointRecord*> recordItems;
  Statistics statistics;
};

TEST_F(Calib, RangesByMode) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const std::vector<ScriptedPoint> two{{2, 100}, {10, 500}};
  struct {
    const char* name;
    std::vector<ScriptedPoint> points;
    double slope, constant;  // of the curve
    bool fromZero;
    int originMode;
    const char* wanted;  // x low, high, y low, high, curve's start, low y margin
  } const cases[] = {
      {"origin joins", two, 50, 20, true, 0, "0 11 0 625 0 0"},
      {"curve's own origin", two, 50, 20, true, 1, "0 11 0 620 0 0"},
      {"axes alone reach zero", two, 50, 20, true, 3, "0 10.8 0 600 1.2 0"},
      {"below zero", {{-4, -8}, {4, 8}}, 50, 20, true, 0, "-4 4.8 -8 12 -4 -8"},
      {"all excluded", {{2, 100, true}}, 50, 20, true, 0, "0 0.99 0 1.125 0 0"},
      {"no number", {{2, 100}, {nan, nan}, {10, 500}}, 50, 20, true, 3, "0 10.8 0 600 1.2 0"},
  };
  for (const auto& c : cases) {
    SetPoints(c.points);
    TheHost().curve = [&](double x) { return c.slope * x + c.constant; };
    const plots::CalibRanges got =
        plots::ChooseCalibRanges({run.calibration, &shown}, {c.fromZero, c.originMode, false, 0});
    char text[128];
    std::snprintf(text, sizeof text, "%g %g %g %g %g %g", got.xLow + 0.0, got.xHigh, got.yLow,
                  got.yHigh, got.curveStart, got.yLowMargin);
    EXPECT_STREQ(text, c.wanted) << c.name;
  }
}

// View 31 × 31: plot from (11, 6) to (21, 26), 1.1 x units and 31.25 y units per pixel.
TEST_F(Calib, GoldenPicture) {
  UseDigits(2, 4);
  ShowBand();
  SetPoints({{2, 100}, {5, 5, true}, {10, 500}});
  Render({100, 50, 131, 81});
  ExpectGolden("calibration.txt");
  shown.flags = component::kOwnDisplay;  // the pool's settings do not count
  shown.swapAxes = 1;
  Render({100, 50, 131, 81});
  EXPECT_EQ(Drawn("text 131,"), "\ntext 131,74 \"Response\"");
}

TEST_F(Calib, ReferenceComponentIsACross) {
  run.calibration.mode = 1;
  run.calibration.flags = CalibPool::kShowReference;
  Render({10, 20, 310, 220});
  EXPECT_EQ(Drawn(), "\nline 10,20 310,220\nline 310,20 10,220");
}

TEST_F(Calib, NothingToDrawAndViewsOfAnySize) {
  Render({0, 0, 300, 200}, nullptr);
  run.calibration.components.count = 0;
  Render({0, 0, 300, 200});
  run.calibration.components.count = 1;
  run.currentComponent = 77;  // the first one stands in
  SetPoints({{INFINITY, 1}, {1, 1e308}});
  Render({0, 0, 300, 200});
  EXPECT_EQ(Journal(), "");

  SetPoints({{2, 100}, {10, 500}});
  TheHost().curve = [](double x) { return x > 5 ? 1e300 : NAN; };
  ShowBand();
  const LONG most = std::numeric_limits<LONG>::max();
  const HDC null = gfx::CreateNullContext();
  for (const RECT& rect : {RECT{0, 0, 9, 9}, RECT{5, 5, 0, 0}, RECT{-most, -most, most, most}}) {
    Render(rect, null);
  }
  DeleteDC(null);
}

TEST_F(Calib, AFailingHostEndsTheDrawingQuietly) {
  ShowBand();
  Render({0, 0, 30, 30});
  const int calls = TheHost().calls;
  const std::size_t objects = gfx::LiveObjects();
  ASSERT_GT(calls, 20);
  for (int call = 1; call <= calls; ++call) {
    TheHost().calls = 0;
    TheHost().failingCall = call;
    Render({10, 10, 40, 40});
    EXPECT_EQ(gfx::LiveObjects(), objects) << "call " << call;
  }
}

}  // namespace
