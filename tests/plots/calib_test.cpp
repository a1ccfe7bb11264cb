#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <memory>

#include "elugraph/plots/calib_ranges.h"
#include "elugraph/plots/calib_render.h"
#include "tests/plots/counted_allocations.h"
#include "tests/plots/plot_fixture.h"
#include "tests/plots/scripted_host.h"

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
  void Render(RECT rect) { Render(rect, hdc(), font()); }
  void Render(RECT rect, HDC target, HFONT with) {
    TCalibRender render(&run);
    render.SetFont(with);
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
      {"even origin mode", two, 50, 20, true, 6, "0 11 0 625 0 0"},
      {"curve's own origin", two, 50, 20, true, 1, "0 11 0 620 0 0"},
      {"axes alone reach zero", two, 50, 20, true, 3, "0 10.8 0 600 1.2 0"},
      {"zero suppressed", two, 50, 20, false, 0, "1.2 10.8 0 600 1.2 0"},
      {"below zero", {{-4, -8}, {4, 8}}, 50, 20, true, 0, "-4 4.8 -8 12 -4 -8"},
      {"one excluded", {{2, 100}, {99, 1, true}, {10, 500}}, 50, 20, true, 3, "0 10.8 0 600 1.2 0"},
      {"all excluded", {{2, 100, true}}, 50, 20, true, 0, "0 0.99 0 1.125 0 0"},
      {"no points", {}, 50, 20, false, 0, "-0.09 0.99 -0.225 1.125 -0.09 -0.225"},
      {"no number", {{2, 100}, {nan, nan}, {10, 500}}, 50, 20, true, 3, "0 10.8 0 600 1.2 0"},
      {"y of the curve", {{5, 9}}, 50, 20, false, 0, "-0.5 5.5 -42.5 332.5 -0.5 -42.5"},
      {"one point, flat", {{5, 9}}, 0, 7, true, 3, "0 5.5 0 8.75 0 0"},
      {"one negative point", {{-5, -9}}, 0, -7, false, 0, "-5.5 0.5 -8.75 1.75 -5.5 -8.75"},
      {"the origin alone", {{0, 0}}, 0, 0, true, 0, "0 1.1 0 1.25 0 0"},
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

TEST_F(Calib, FactorExponents) {
  const std::pair<double, int> cases[] = {{60000, 4}, {499, 0},  {500, 2},      {50, 0},
                                          {2.5, 0},   {0.5, -1}, {0.25, -1},    {0.04, -2},
                                          {0, 0},     {-5, 0},   {INFINITY, 0}, {NAN, 0}};
  for (const auto& [span, exponent] : cases)
    EXPECT_EQ(plots::FactorExponent(span), exponent) << span;
}

TEST_F(Calib, SettingsComeFromPoolOrComponent) {
  run.calibration.originMode = 1;
  run.calibration.swapAxes = 1;
  run.calibration.quantityType = 0xFE;
  shown.originMode = 3;
  shown.suppressZeroY = 1;
  const plots::CalibSource source{run.calibration, &shown};
  plots::CalibSettings settings = SettingsOf(source);
  EXPECT_TRUE(settings.fromZero && settings.swapped && settings.originMode == 1);
  EXPECT_EQ(settings.quantityType, 2);
  shown.flags = component::kOwnDisplay | component::kOwnQuantityType | 3;
  settings = SettingsOf(source);
  EXPECT_TRUE(!settings.fromZero && !settings.swapped && settings.originMode == 3);
  EXPECT_EQ(settings.quantityType, 3);
}

// View 31 × 31: plot from (11, 6) to (21, 26), 1.1 x units and 31.25 y units per pixel.
TEST_F(Calib, GoldenPicture) {
  UseDigits(2, 4);
  ShowBand();
  SetPoints({{2, 100}, {5, 5, true}, {10, 500}});
  Render({100, 50, 131, 81});
  ExpectGolden("calibration.txt");
  run.calibration.swapAxes = 1;
  Render({100, 50, 131, 81});
  EXPECT_EQ(Drawn("text 131,"), "\ntext 131,74 \"Response\"");
}

TEST_F(Calib, ReferenceComponentIsACross) {
  for (int change = 0; change < 4; ++change) {
    run.calibration.mode = change == 1 ? 2 : 1;
    run.calibration.flags = change == 2 ? 0 : CalibPool::kShowReference;
    run.calibration.referenceComponent = change == 3 ? 1 : 0;
    Render({10, 20, 310, 220});
    const std::string drawn = Drawn();
    EXPECT_EQ(drawn == "\nline 10,20 310,220\nline 310,20 10,220", change == 0) << drawn;
  }
}

TEST_F(Calib, BandNeedsFlagStatisticsAndAvailability) {
  for (int missing = 0; missing < 4; ++missing) {
    ShowBand();
    if (missing == 1) run.calibration.flags = 0;
    if (missing == 2) shown.statistics = nullptr;
    statistics.available = missing == 3 ? 0 : 1;
    Render({0, 0, 300, 200});
    EXPECT_EQ(LinesOf(Drawn("polyline")).size(), missing == 0 ? 3u : 1u);
  }
}

TEST_F(Calib, AFontThatCannotBeDescribedStillDraws) {
  const HFONT gone = CreateFontIndirectA(std::make_unique<LOGFONTA>().get());
  DeleteObject(gone);
  Render({0, 0, 300, 200}, hdc(), gone);
  const std::string drawn = Journal();
  EXPECT_TRUE(drawn.find("polyline") != drawn.npos && drawn.find("ellipse") != drawn.npos);
  EXPECT_EQ(drawn.find("@900"), drawn.npos);
}

TEST_F(Calib, NothingToDrawAndViewsOfAnySize) {
  Render({0, 0, 300, 200}, nullptr, font());
  Render({0, 0, 300, 200}, hdc(), nullptr);
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
  for (const RECT& rect : {RECT{0, 0, 9, 9}, RECT{0, 0, 10, 5}, RECT{5, 5, 0, 0}, RECT{0, 0, 0, 0},
                           RECT{-most, -most, most, most}}) {
    Render(rect, null, font());
  }
  DeleteDC(null);
}

TEST_F(Calib, AllocationsDoNotGrowWithTheWidth) {
  ShowBand();
  const HDC null = gfx::CreateNullContext();
  const auto count = [&](LONG width) {
    const std::size_t before = Allocations();
    Render({0, 0, width, 200}, null, font());
    return Allocations() - before;
  };
  const std::size_t narrow = count(100);
  EXPECT_GE(narrow, 3u);
  EXPECT_LE(count(1900), narrow + 3);  // the device may map each of the three lines in new memory
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
