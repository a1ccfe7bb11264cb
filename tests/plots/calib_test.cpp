#include <algorithm>
#include <cmath>
#include <limits>

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
  const auto line = [](double x) { return 50 * x + 20; };
  const auto flat = [](double) { return 7.0; };
  struct {
    const char* name;
    std::vector<ScriptedPoint> points;
    std::function<double(double)> curve;
    bool fromZero;
    int originMode;
    plots::CalibRanges wanted;
  } const cases[] = {
      {"origin joins", two, line, true, 0, {0, 11, 0, 625, 0, 0}},
      {"even origin mode", two, line, true, 6, {0, 11, 0, 625, 0, 0}},
      {"curve's own origin", two, line, true, 1, {0, 11, 0, 620, 0, 0}},
      {"axes alone reach zero", two, line, true, 3, {0, 10.8, 0, 600, 1.2, 0}},
      {"zero suppressed", two, line, false, 0, {1.2, 10.8, 0, 600, 1.2, 0}},
      {"below zero", {{-4, -8}, {4, 8}}, line, true, 0, {-4, 4.8, -8, 12, -4, -8}},
      {"excluded", {{2, 100}, {99, 1, true}, {10, 500}}, line, true, 3, {0, 10.8, 0, 600, 1.2, 0}},
      {"all excluded", {{2, 100, true}}, line, true, 0, {0, 0.99, 0, 1.125, 0, 0}},
      {"no points", {}, line, false, 0, {-0.09, 0.99, -0.225, 1.125, -0.09, -0.225}},
      {"not a number", {{2, 100}, {nan, nan}, {10, 500}}, line, true, 3, {0, 10.8, 0, 600, 1.2, 0}},
      {"one point, curve gives y",
       {{5, 9}},
       line,
       false,
       0,
       {-0.5, 5.5, -42.5, 332.5, -0.5, -42.5}},
      {"one point, flat", {{5, 9}}, flat, true, 3, {0, 5.5, 0, 8.75, 0, 0}},
      {"one negative point",
       {{-5, -9}},
       [](double) { return -7.0; },
       false,
       0,
       {-5.5, 0.5, -8.75, 1.75, -5.5, -8.75}},
      {"the origin alone", {{0, 0}}, [](double) { return 0.0; }, true, 0, {0, 1.1, 0, 1.25, 0, 0}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    SetPoints(c.points);
    TheHost().curve = c.curve;
    const plots::CalibRanges got =
        plots::ChooseCalibRanges({run.calibration, &shown}, {c.fromZero, c.originMode, false, 0});
    EXPECT_DOUBLE_EQ(got.xLow, c.wanted.xLow);
    EXPECT_DOUBLE_EQ(got.xHigh, c.wanted.xHigh);
    EXPECT_DOUBLE_EQ(got.yLow, c.wanted.yLow);
    EXPECT_DOUBLE_EQ(got.yHigh, c.wanted.yHigh);
    EXPECT_NEAR(got.curveStart, c.wanted.curveStart, 1e-12);
    EXPECT_NEAR(got.yLowMargin, c.wanted.yLowMargin, 1e-12);
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
  CalibPool& pool = run.calibration;
  pool.originMode = 1;
  pool.swapAxes = 1;
  pool.quantityType = 0xFE;
  shown.originMode = 3;
  shown.suppressZeroY = 1;
  const plots::CalibSource source{pool, &shown};
  plots::CalibSettings settings = SettingsOf(source);
  EXPECT_TRUE(settings.fromZero && settings.swapped);
  EXPECT_EQ(settings.originMode, 1);
  EXPECT_EQ(settings.quantityType, 2);
  shown.flags = component::kOwnDisplay | component::kOwnQuantityType | 3;
  settings = SettingsOf(source);
  EXPECT_FALSE(settings.fromZero || settings.swapped);
  EXPECT_EQ(settings.originMode, 3);
  EXPECT_EQ(settings.quantityType, 3);
  shown.suppressZeroY = 0;
  EXPECT_TRUE(SettingsOf(source).fromZero);
  shown.suppressZeroX = 1;
  EXPECT_FALSE(SettingsOf(source).fromZero);
}

// View 31 × 31: plot from (11, 6) to (21, 26), 1.1 x units and 31.25 y units per pixel.
TEST_F(Calib, WholePicture) {
  UseDigits(2, 4);
  ShowBand();
  SetPoints({{2, 100}, {5, 5, true}, {10, 500}});
  Render({100, 50, 131, 81});
  EXPECT_EQ(Journal(),
            "text 100,51 \"Response\" font=4x2@900 color=#000000 align=2 bk=1 clip=none\n"
            "text 131,74 \"Amount\" font=4x2@0 color=#000000 align=10 bk=1 clip=none\n"
            "line 111,76 122,76 pen=0/0/#000000 clip=none\n"
            "line 111,74 111,79 pen=0/0/#000000 clip=none\n"
            "text 111,78 \"0\" font=4x2@0 color=#000000 align=6 bk=1 clip=none\n"
            "line 120,74 120,79 pen=0/0/#000000 clip=none\n"
            "text 120,78 \"10\" font=4x2@0 color=#000000 align=6 bk=1 clip=none\n"
            "line 111,76 111,55 pen=0/0/#000000 clip=none\n"
            "line 109,76 113,76 pen=0/0/#000000 clip=none\n"
            "text 109,76 \"0\" font=4x2@0 color=#000000 align=26 bk=1 clip=none\n"
            "line 109,60 113,60 pen=0/0/#000000 clip=none\n"
            "text 109,60 \"5\" font=4x2@0 color=#000000 align=26 bk=1 clip=none\n"
            "text 115,50 \"2\" font=3x1@0 color=#000000 align=2 bk=1 clip=none\n"
            "text 114,52 \"10\" font=4x2@0 color=#000000 align=2 bk=1 clip=none\n"
            "text 110,51 \".\" font=4x2@0 color=#000000 align=2 bk=1 clip=none\n"
            "ellipse 111,71 114,74 pen=0/0/#000000 brush=#FFFFFF clip=none\n"
            "text 112,71 \"1\" font=4x2@0 color=#000000 align=14 bk=1 clip=none\n"
            "ellipse 119,59 122,62 pen=0/0/#000000 brush=#FFFFFF clip=none\n"
            "text 120,59 \"3\" font=4x2@0 color=#000000 align=14 bk=1 clip=none\n"
            "polyline 10 111,76 112,74 113,72 114,70 115,68 116,67 117,65 118,63 119,61 120,60 "
            "pen=0/0/#000000 clip=111,56,121,76\n"
            "polyline 10 111,76 112,74 113,73 114,72 115,70 116,70 117,69 118,67 119,66 120,66 "
            "pen=2/1/#000000 clip=111,56,121,76\n"
            "polyline 10 111,76 112,74 113,71 114,68 115,66 116,64 117,61 118,59 119,56 120,54 "
            "pen=2/1/#000000 clip=111,56,121,76\n");
}

TEST_F(Calib, SwapExchangesTheTitles) {
  Render({0, 0, 300, 200});
  EXPECT_NE(Journal().find("\"Response\" font=2x1@900"), std::string::npos) << Journal();
  Clear();
  run.calibration.swapAxes = 1;
  Render({0, 0, 300, 200});
  EXPECT_NE(Journal().find("\"Response\" font=2x1@0"), std::string::npos);
}

TEST_F(Calib, ReferenceComponentIsACross) {
  run.calibration.mode = 1;
  run.calibration.flags = CalibPool::kShowReference;
  run.calibration.referenceComponent = 0;
  Render({10, 20, 310, 220});
  EXPECT_EQ(Drawn(), "line 10,20 310,220\nline 310,20 10,220\n");
  for (int change = 0; change < 3; ++change) {
    run.calibration.mode = change == 0 ? 2 : 1;
    run.calibration.flags = change == 1 ? 0 : CalibPool::kShowReference;
    run.calibration.referenceComponent = change == 2 ? 1 : 0;
    Clear();
    Render({10, 20, 310, 220});
    EXPECT_NE(Drawn("polyline"), "");
  }
}

TEST_F(Calib, BandNeedsFlagStatisticsAndAvailability) {
  for (int missing = 0; missing < 4; ++missing) {
    ShowBand();
    if (missing == 1) run.calibration.flags = 0;
    if (missing == 2) shown.statistics = nullptr;
    statistics.available = missing == 3 ? 0 : 1;
    Clear();
    Render({0, 0, 300, 200});
    const std::string lines = Drawn("polyline");
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), missing == 0 ? 3 : 1);
  }
}

TEST_F(Calib, AFontThatCannotBeDescribedStillDraws) {
  UseDigits(7, 14);
  LOGFONTA logical{};
  const HFONT gone = CreateFontIndirectA(&logical);
  DeleteObject(gone);
  Render({0, 0, 300, 200}, hdc(), gone);
  EXPECT_NE(Drawn("polyline"), "");
  EXPECT_NE(Drawn("ellipse"), "");
  EXPECT_EQ(Journal().find("@900"), std::string::npos);
}

TEST_F(Calib, NothingToDrawIsNoTrouble) {
  Render({0, 0, 300, 200}, nullptr, font());
  Render({0, 0, 300, 200}, hdc(), nullptr);
  run.calibration.components.count = 0;
  Render({0, 0, 300, 200});
  TCalibRender none(nullptr);
  none.SetFont(font());
  RECT rect{0, 0, 300, 200};
  none.Render(hdc(), rect);
  run.calibration.components.count = 1;
  run.currentComponent = 77;  // the first one stands in
  SetPoints({{INFINITY, 1}, {1, 1e308}});
  Render({0, 0, 300, 200});
  EXPECT_EQ(Journal(), "");
}

TEST_F(Calib, ViewsOfAnySize) {
  const LONG most = std::numeric_limits<LONG>::max();
  TheHost().curve = [](double x) { return x > 5 ? 1e300 : NAN; };
  ShowBand();
  const HDC null = gfx::CreateNullContext();
  for (const RECT& rect : {RECT{0, 0, 9, 9}, RECT{0, 0, 10, 5}, RECT{0, 0, 1, 1}, RECT{5, 5, 0, 0},
                           RECT{0, 0, 0, 0}, RECT{-most, -most, most, most}}) {
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
  EXPECT_LE(count(1900), narrow + 3);  // the device may map each of the three lines in new memory
  EXPECT_GE(narrow, 3u);
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
    EXPECT_EQ(SaveDC(hdc()), 1) << "call " << call;
    RestoreDC(hdc(), -1);
  }
}

}  // namespace
