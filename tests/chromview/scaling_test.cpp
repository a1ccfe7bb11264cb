// Layout, fonts and the automatic fitting of both axes.
#include "platform/ui/headless.h"
#include "tests/chromview/chrom_view.h"

namespace {

TEST_F(ChromView, FontsOfAWindowAndOfAPrintout) {
  ui::Headless desk;  // measures with the built-in font: 6 × 12 pixels, magnified
  WNDCLASSA plain{};
  plain.lpfnWndProc = DefWindowProcA;
  plain.lpszClassName = "plain";
  RegisterClassA(&plain);
  const HWND window = CreateWindowExA(0, "plain", "", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                      nullptr, nullptr, nullptr);
  const std::size_t objects = gfx::LiveObjects();
  const auto measure = [&] {
    render.setFontSizeW(window);
    return std::vector<LONG>{render.charWidth, render.charHeight, render.labelCharWidth,
                             render.labelCharHeight};
  };
  EXPECT_EQ(measure(), (std::vector<LONG>{6, 12, 6, 12}));
  DestroyWindow(window);
  // Without a window by the fonts' own heights, which label fonts take for their width.
  render.SetFonts(labelFont, font);
  EXPECT_EQ(measure(), (std::vector<LONG>{6, 12, 12, 24}));
  EXPECT_EQ(gfx::LiveObjects(), objects);
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
               {"visible range", 0, 5, 22, 0, 0, 0, 200, "zero 20"},
               {"scaling start", 0, 0, 22, 0.125F, 0, 0, 200, "zero 30"},
               {"flat", 0, 15, 22, 0, 0, 0, 50, "zero 60"},
               {"horizontal label", 1, 5, 22, 0, 0, 0, 200.0 * 260 / 248, "zero 20"},
               {"vertical label", 3, 5, 22, 0, 0, 0, 200.0 * 260 / 218, "zero 20"}};
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
  EXPECT_NEAR(+view.fullScale, 400.0 * 260 / (render.getoffset(0) - 24), 1e-9);
}

TEST_F(ChromView, AuxiliaryRangeAndScale) {
  const struct {
    std::vector<LONG> samples;
    signed char visible;
    bool strip;
    double min, max;
  } ranges[] = {{{2, 5}, 1, true, 2, 5}, {{2, 5}, 1, false, 0, 5},   {{5, 5}, 1, true, 0, 5},
                {{0, 0}, 1, true, 0, 1}, {{-2, -2}, 1, true, -2, 0}, {{7, 9}, 2, true, 0, 100}};
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
}

}  // namespace
