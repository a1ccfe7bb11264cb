// Layout, fonts and the automatic fitting of both axes.
#include <cmath>
#include <limits>

#include "platform/ui/headless.h"
#include "tests/chromview/chrom_view.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

TEST_F(ChromView, Layout) {
  render.charHeight = 15;
  render.charWidth = 7;
  render.SetSize(800, 400);
  view.fullScale = 700;
  view.zeroFraction = 0.1;
  for (const char* name : {"a", "b", "c"}) AddChannel(name, {1});
  render.scalewindow();
  EXPECT_EQ(+view.plotBottom, 380);
  EXPECT_EQ(+view.plotHeight, 350);
  EXPECT_EQ(+view.unitsPerPixel, 2.0);
  EXPECT_EQ(+view.timePerPixel, 25.0 / 800);
  EXPECT_DOUBLE_EQ(view.channelStep * 350, 15) << "one text line";
  for (const auto& [channel, y] : {std::pair{2, 345}, {1, 330}, {0, 315}, {4, 315}}) {
    EXPECT_EQ(render.getoffset(channel), y);
  }
  view.flags = THoldWindow::kSignalStrip;
  render.scalewindow();
  EXPECT_EQ(+view.x0, 70);
  EXPECT_EQ(+render.rightReserve, 70);
  EXPECT_EQ(render.xpost(0.0), 70);
  EXPECT_EQ(render.xpost(25.0), 730);

  view.t1 = view.t0;
  view.fullScale = 0;
  render.scalewindow();
  EXPECT_EQ(+view.timePerPixel, 1.0);
  EXPECT_EQ(+view.unitsPerPixel, 1.0);
  EXPECT_EQ(render.xpost(0.5), 71) << "half a pixel goes up";
  EXPECT_EQ(render.xpost(-1.5), 69);
  view.timePerPixel = 0;
  EXPECT_EQ(render.xpost(3.0), 73);
  EXPECT_EQ(render.xpost(1e300), std::numeric_limits<LONG>::max());
  EXPECT_EQ(render.xpost(kNaN), 0);
}

TEST_F(ChromView, FontsOfAWindowAndOfAPrintout) {
  ui::Headless desk;  // measures with the built-in font: 6 × 12 pixels, magnified
  WNDCLASSA plain{};
  plain.lpfnWndProc = DefWindowProcA;
  plain.lpszClassName = "plain";
  RegisterClassA(&plain);
  const HWND window = CreateWindowExA(0, "plain", "", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                      nullptr, nullptr, nullptr);
  LOGFONTA logical{};
  logical.lfHeight = 24;
  const HFONT big = CreateFontIndirectA(&logical);
  logical.lfHeight = -240;
  const HFONT huge = CreateFontIndirectA(&logical);
  const std::size_t objects = gfx::LiveObjects();
  const auto measure = [&](HFONT main, HFONT label) {
    render.SetFonts(main, label);
    render.setFontSizeW(window);
    return std::vector<LONG>{render.charWidth, render.charHeight, render.labelCharWidth,
                             render.labelCharHeight};
  };
  EXPECT_EQ(measure(big, font), (std::vector<LONG>{12, 24, 6, 12}));
  EXPECT_EQ(measure(font, nullptr), (std::vector<LONG>{6, 12, 6, 12})) << "no font: as before";
  DestroyWindow(window);
  // Without a window by the fonts' own heights, which label fonts take for their width.
  EXPECT_EQ(measure(huge, font), (std::vector<LONG>{120, 240, 12, 24}));
  EXPECT_EQ(measure(font, nullptr)[2], 12) << "what cannot be measured keeps its value";
  EXPECT_EQ(gfx::LiveObjects(), objects);
  DeleteObject(big);
  DeleteObject(huge);
}

// 0 but for a hump of 200 at sample 50 and one of 400 at sample 5.
std::vector<LONG> TwoHumps(LONG base = 0) {
  std::vector<LONG> samples(100, base);
  samples[50] += 200;
  samples[5] += 400;
  return samples;
}

TEST_F(ChromView, FullScaleFitsSamplesAndLabels) {
  const struct {
    const char* name;
    WORD flags;
    double from, to;
    float startMin;
    BYTE state;
    LONG base;
    double fullScale;  // one zero line at 284: a label of n pixels leaves 260 − n
    const char* zeroCall;
  } cases[] = {{"plain", 0, 0, 25, 0, 0, 0, 400, "zero 0"},
               {"above an offset", 0, 0, 25, 0, 0, 70, 400, "zero 0"},
               {"visible range", 0, 5, 22, 0, 0, 0, 200, "zero 20"},
               {"scaling start", 0, 0, 22, 0.125F, 0, 0, 200, "zero 30"},
               {"start past the run", 0, 0, 22, 1.0F, 6, 0, 400, "zero 0"},
               {"start in the last samples", 0, 0, 10, 0.125F, 0, 0, 400, "zero 0"},
               {"flat", 0, 15, 22, 0, 0, 0, 50, "zero 60"},
               {"before the samples", 0, -9, -5, 0, 0, 0, 50, "zero 0"},
               {"behind the samples", 0, 50, 60, 0, 0, 0, 50, "zero 99"},
               {"horizontal label", 1, 5, 22, 0, 0, 0, 200.0 * 260 / 248, "zero 20"},
               {"vertical label", 3, 5, 22, 0, 0, 0, 200.0 * 260 / 218, "zero 20"},
               {"label outside the view", 3, 15, 22, 0, 0, 0, 50, "zero 60"}};
  TestChannel& fitted = AddChannel("a", {});
  AddPeak(40, 50, 60);
  AddComponent("benzene");
  AddPeak(70, 200, 300);  // outside the samples
  render.auxPosition = 0;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    fitted.Samples(TwoHumps(c.base));
    view.flags = c.flags;
    view.t0 = c.from;
    view.t1 = c.to;
    chrom.scalingStartMin = c.startMin;
    chrom.state = c.state;
    render.scalewindow();
    other_host::Calls().clear();
    render.ysetfull(hdc);
    EXPECT_NEAR(+view.fullScale, c.fullScale, 1e-9);
    EXPECT_EQ(other_host::Calls(), Strings{c.zeroCall});
  }
}

TEST_F(ChromView, FitShrinksAStackThatLeavesNoRoom) {
  for (int i = 0; i < 20; ++i) AddChannel("a", TwoHumps());
  Host().currentChannel = 19;
  render.auxPosition = 0;
  render.xysetfull(hdc);
  // 19 steps of a text line would take 228 of 260 pixels; a third is theirs.
  EXPECT_GT(render.getoffset(0), 2 * 260 / 3 + 24);
  EXPECT_GT(view.channelStep * 1.1 * 19 * 260, 260.0 / 3 - 1);
  EXPECT_NEAR(+view.fullScale, 400.0 * 260 / (render.getoffset(0) - 24), 1e-9);
  for (const double step : {kNaN, kInf}) {
    view.channelStep = step;
    render.SetSize(10, 20);  // no plot at all
    render.ysetfull(hdc);
  }
}

TEST_F(ChromView, AuxiliaryRangeAndScale) {
  const struct {
    std::vector<LONG> samples;
    signed char visible;
    bool strip;
    double min, max;
  } ranges[] = {{{2, 5}, 1, true, 2, 5},   {{2, 5}, 1, false, 0, 5},   {{5, 5}, 1, true, 0, 5},
                {{0, 0}, 1, true, 0, 1},   {{-2, -2}, 1, true, -2, 0}, {{-2, -2}, 1, false, -2, 0},
                {{7, 9}, 2, true, 0, 100}, {{-9, -2}, 1, true, -9, -2}};
  TestChannel& auxiliary = AddAuxiliary("t", {1, 1}, {0, 100});
  render.auxPosition = 1;
  for (const auto& c : ranges) {
    auxiliary.Samples(c.samples);
    auxiliary.visible = c.visible;
    view.flags = c.strip ? THoldWindow::kSignalStrip : 0;
    render.scalewindow();
    render.ysetfull(hdc);
    EXPECT_EQ(+view.auxMin, c.min) << c.samples[0];
    EXPECT_EQ(+view.auxMax, c.max) << c.samples[0];
  }
  const struct {
    double min, max;
    LONG height;
    double scale;
    int zero;
  } scales[] = {{0, 10, 200, 0.05, 0}, {-2, 3, 100, 0.05, -40}, {3, -2, 100, 0.05, -40},
                {4, 4, 100, 1.0, 0},   {0, 10, 0, 1.0, 0},      {kNaN, 1, 100, 1, 0}};
  for (const auto& c : scales) {
    view.auxMin = c.min;
    view.auxMax = c.max;
    view.plotHeight = c.height;
    EXPECT_EQ(render.dAuxScale(), c.scale);
    EXPECT_EQ(render.AuxZero(), c.zero);
  }
}

TEST_F(ChromView, CountsItsReference) {
  other_host::Calls().clear();
  {
    TChromRender first(&chrom);
    const TChromRender copy(first);
    TChromRender empty(nullptr);
    empty = copy;
  }
  EXPECT_EQ(other_host::Calls(),
            (Strings{"AddRef", "AddRef", "AddRef", "Release", "Release", "Release"}));
}

}  // namespace
