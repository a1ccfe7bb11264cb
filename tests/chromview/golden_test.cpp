// Whole passes against reviewed lists of drawing calls (tests/golden/chromview/*.txt), and small
// pictures in the built-in font (*.ppm). scripts/goldens renews both.
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>

#include "platform/gfx/surface.h"
#include "platform/gfx/text_engine.h"
#include "tests/chromview/chrom_view.h"

namespace {

using View = THoldWindow;

bool Renewing() { return std::getenv("ELUGRAPH_RENEW_GOLDENS") != nullptr; }
std::string GoldenPath(const std::string& file) {
  return std::string(ELUGRAPH_SOURCE_DIR "/tests/golden/chromview/") + file;
}
std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

class Stage : public ChromView {
 public:
  // Rises to 100 at sample 20, falls to 0 at 40, again to 80; peaks meet at 40; 4 pixels a sample.
  TestChannel& AddHumps(const char* name) {
    std::vector<LONG> samples(100, 0);
    for (int i = 0; i <= 80; ++i) samples[i] = 100 - 5 * std::abs(i % 40 - 20);
    samples[40] = 0;
    return AddChannel(name, samples);
  }
  void AddTwoPeaks() {
    AddPeak(10, 20, 40, 10);
    AddPeak(40, 60, 70, 10);
  }
  void AddTwoAuxiliary() {
    AddAuxiliary("press", {0, 100, 200}, {0, 10'000, 30'000}).visible = 2;
    std::strcpy(AddAuxiliary("temp", {10, 50, 105}, {0, 10'000, 20'000}).unit, "bar");
    AddAuxiliary("near", {10, 50, 100}, {0, 10'000, 20'000}).penStyle = PS_DOT;
    view.auxThickness[2] = 20;
    view.auxMin = -40;
    view.auxMax = 220;
  }
  // One peak of each height, none with a width, all labelled.
  void AddLabelledPeaks() {
    std::vector<LONG> samples(100, 0);
    const LONG heights[] = {100, 267, 268, 255, 900, -9, -30, 5};
    for (int i = 0; i < 8; ++i) {
      samples[6 + 12 * i] = heights[i];
      AddPeak(6 + 12 * i, 6 + 12 * i, 6 + 12 * i, 10);
    }
    AddChannel("a", samples);
    AddComponent("benzene");
    peak(6).component = 1;
    peak(6).amount = 1.25F;
    peak(5).component = 9;  // outside the list: the first one
  }
};

struct Scene {
  const char* name;
  int flags;
  int passFlags;
  void (*set)(Stage&);
};

const Scene kScenes[] = {
    {"plain", View::kExact, 0,
     [](Stage& g) {
       g.AddHumps("a").description = "absorbance";
       g.AddHumps("b").penStyle = PS_DASH;
       g.AddHumps("c").description = "c";
       g.view.thickness[1] = g.view.thickness[8] = 25;
       Host().unitsPerSecond = 1.0 / 60;
       g.chrom.timeOffsetMs = 500;
     }},
    {"legends", View::kGrid | View::kNameList, TChromRender::kPassAxisLine,
     [](Stage& g) {
       g.AddHumps("a");
       g.AddTwoAuxiliary();
       g.view.fullScale = 99.96;
       g.render.auxPosition = 0;
     }},
    {"strips", View::kSignalStrip | View::kGrid | View::kRelativeAxis, TChromRender::kPassFrame,
     [](Stage& g) {
       g.AddHumps("a").zero = 30;
       g.channel(0).referenceLevel = -20;
       g.AddTwoAuxiliary();
       g.view.zeroFraction = 0.1;
       g.render.auxPosition = 1;
       g.view.t0 = -2.5;
     }},
    {"baselines", View::kBaselines | View::kPeakTicks | View::kSubtractDrift, 0,
     [](Stage& g) {
       g.AddHumps("a").counts[99] = 100;  // 1 count of drift per sample
       g.chrom.state = 0;
       g.AddTwoPeaks();
       g.AddPeak(90, 92, 300, 5);  // ends behind the samples
       g.AddPeak(400, 410, 420);   // lies behind them
       g.AddPeak(20, 22, 24);      // out of order: not reached
     }},
    {"selected", View::kBaselines | View::kExact, 0,
     [](Stage& g) {
       g.view.colours.entries[3] = kBack;  // baselines in the trace's colour
       g.AddHumps("a");
       g.AddTwoPeaks();
       g.AddPeak(75, 76, 75);  // no width
       g.render.selectedPeak = 1;
       g.render.selectedPeakEnd = 3;
       g.render.markMode = 1;
     }},
    {"marked", 1, 0,
     [](Stage& g) {
       g.AddHumps("a").visible = 0;
       g.AddHumps("b");
       g.AddTwoPeaks();
       g.render.markMode = 2;
     }},
    {"labels_by_number", 1, 0, [](Stage& g) { g.AddLabelledPeaks(); }},
    {"labels_by_time_kept_inside", 2 | View::kLabelAll, 0, [](Stage& g) { g.AddLabelledPeaks(); }},
    {"labels_by_amount_kept_inside", 4 | View::kLabelAll, 0,
     [](Stage& g) { g.AddLabelledPeaks(); }},
    {"apex_lines", 1, 0,
     [](Stage& g) {
       g.view.t1 = 300;  // 3 samples per column
       g.AddHumps("a");
       g.AddTwoPeaks();
       g.AddPeak(70, 75, 80);
       g.channel(0).apexLimit = 62;
     }},
    {"nine_channels", 0, 0,
     [](Stage& g) {
       for (const char* name : {"a", "b", "c", "d", "e", "f", "g", "h", "i"}) g.AddHumps(name);
       g.channel(2).visible = 0;
       g.channel(4).samples = nullptr;
       Host().splitIndex = 6;
     }},
    {"names_without_room", 0, 0,
     [](Stage& g) {
       g.view.channelStep = 1e-300;
       for (const LONG count : {100, 98, 80, 79, 60, 284, -16097, -16098}) {
         g.AddChannel(std::to_string(count).c_str(), {count, count});
       }
       Host().splitIndex = 3;
     }},
    {"units", 0, 0,
     [](Stage& g) {
       const struct {
         const char* unit;
         LONG range;
         float units;
       } channels[] = {
           {"mV", 200, 1}, {"mv", 400, 1}, {"nA", 400, 1}, {"nA", 400, 5}, {"nA", 0, 1}};
       g.view.channelStep = 1e-300;
       for (const auto& c : channels) {
         TestChannel& added = g.AddHumps("");
         std::strcpy(added.unit, c.unit);
         added.rangeHigh = c.range;
         added.unitsPerCount = c.units;
       }
     }},
    {"developer", View::kPerPixel | View::kBaselines, 0,
     [](Stage& g) {
       g.AddHumps("a");
       g.AddTwoPeaks();
       Host().developer = true;
     }},
    {"incremental", View::kBaselines | View::kNameList | 3, TChromRender::kPassIncremental,
     [](Stage& g) {
       g.AddHumps("a").lastDrawnIndex = 31;
       g.channel(0).lastDrawnX = 120;
       g.AddTwoPeaks();
     }},
    {"no_raw_data", 0, TChromRender::kPassFrame,
     [](Stage& g) {
       g.AddHumps("a");
       Host().rawData = false;
     }},
    {"fitted", 2, TChromRender::kPassFit,
     [](Stage& g) {
       g.AddHumps("a");
       g.AddTwoPeaks();
       g.view.t1 = 3;
       g.render.auxPosition = 0;
     }},
};

class Golden : public Stage, public testing::WithParamInterface<Scene> {};

TEST_P(Golden, Journal) {
  view.flags = static_cast<WORD>(GetParam().flags);
  GetParam().set(*this);
  const std::size_t objects = gfx::LiveObjects();
  const HGDIOBJ pen = GetCurrentObject(hdc, OBJ_PEN);
  SetTextColor(hdc, 0x123456);
  SetTextAlign(hdc, TA_BASELINE);
  std::string got;
  for (const std::string& line : Draw(GetParam().passFlags, {0, 0, 400, 300}, true)) {
    got += line + '\n';
  }
  for (const std::string& call : other_host::Calls()) got += "host: " + call + '\n';
  EXPECT_EQ(gfx::LiveObjects(), objects);
  EXPECT_EQ(GetCurrentObject(hdc, OBJ_PEN), pen);
  EXPECT_EQ(GetTextColor(hdc), 0x123456U);
  EXPECT_EQ(GetTextAlign(hdc), TA_BASELINE);
  EXPECT_EQ(SaveDC(hdc), 1);
  const std::string path = GoldenPath(std::string(GetParam().name) + ".txt");
  if (Renewing()) std::ofstream(path) << got;
  EXPECT_EQ(got, ReadFile(path)) << "see " << path;
}

INSTANTIATE_TEST_SUITE_P(Scenes, Golden, testing::ValuesIn(kScenes),
                         [](const auto& scene) { return scene.param.name; });

// Up to one pixel in a hundred may differ, by any amount.
TEST_F(Stage, Picture) {
  AddHumps("UV");
  AddTwoPeaks();
  render.selectedPeak = 2;
  view.flags = View::kBaselines | View::kExact | View::kPeakTicks | 1;
  gfx::Surface surface(96, 72);
  const HDC raster = gfx::CreateRasterContext(surface, gfx::BuiltinText());
  render.SetSize(96, 72);
  render.setFontSize(raster);
  render.auxPosition = 0;
  render.xysetfull(raster);
  RECT rect{0, 0, 96, 72};
  render.showchrom(raster, true, rect, 0);
  DeleteDC(raster);
  std::string got = "P6\n96 72\n255\n";
  for (int i = 0; i < 96 * 72; ++i) {
    const COLORREF pixel = surface.Pixel(i % 96, i / 96);
    for (const BYTE part : {GetRValue(pixel), GetGValue(pixel), GetBValue(pixel)}) got += part;
  }
  const std::string path = GoldenPath("small.ppm");
  if (Renewing()) std::ofstream(path, std::ios::binary) << got;
  const std::string wanted = ReadFile(path);
  ASSERT_EQ(got.size(), wanted.size());
  int different = 0;
  for (std::size_t i = got.size() % 3; i < got.size(); i += 3) {
    different += got.compare(i, 3, wanted, i, 3) != 0;
  }
  if (different > 0) std::ofstream("chromview_got.ppm", std::ios::binary) << got;
  EXPECT_LE(different, 96 * 72 / 100) << "got chromview_got.ppm, wanted " << path;
}

}  // namespace
