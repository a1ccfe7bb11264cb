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
#include "tests/support/case_name.h"

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
       g.AddHumps("a").visible = 0;        // marking shows the current channel nevertheless
       g.AddTwoPeaks();
       g.AddPeak(75, 76, 75);  // no width
       g.render.selectedPeak = 1;
       g.render.selectedPeakEnd = 3;
       g.render.markMode = 1;
     }},
    // Fills begin in the column that the period says, traces where the table does.
    {"table_filled", View::kBaselines | 1, 0,
     [](Stage& g) {
       TestChannel& uneven = g.AddHumps("a");
       for (LONG i = 0; i < 100; ++i) uneven.table.push_back(250 * i + 90 * (i % 3));
       uneven.times = uneven.table.data();
       uneven.timeBase = 100;
       g.AddTwoPeaks();
       g.view.t0 = 1.5;
       g.render.selectedPeak = 2;
     }},
    {"table_per_pixel", View::kPerPixel | View::kBaselines | 2, 0,
     [](Stage& g) {
       TestChannel& bursts = g.AddHumps("a");
       for (LONG i = 0; i < 100; ++i) bursts.table.push_back(2'500 * (i / 10) + 100 * (i % 10));
       bursts.times = bursts.table.data();
       bursts.description = "in bursts";
       g.AddTwoPeaks();
       g.view.t0 = 3;
       g.render.selectedPeak = 1;
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
       g.view.t0 = 2.5;
     }},
    // The period grows while the marks lie left of the view.
    {"goes_on_from_the_left", View::kPerPixel, TChromRender::kPassIncremental,
     [](Stage& g) {
       TestChannel& grown = g.AddHumps("a");
       grown.lastDrawnIndex = 31;
       grown.lastDrawnX = -1;
       g.view.t0 = 5;
       g.chrom.state = 5;
       Host().onCall = [&grown](const std::string& call) {
         if (call == "UpdateCyctimeRT") grown.samplePeriod = 0.5F;
       };
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

INSTANTIATE_TEST_SUITE_P(Scenes, Golden, testing::ValuesIn(kScenes), CaseName());

struct PictureScene {
  const char* name;
  int width, height;
  int flags;
  int passFlags;
  void (*set)(Stage&);
};

const PictureScene kPictures[] = {
    {"small", 96, 72, View::kBaselines | View::kExact | View::kPeakTicks | 1,
     TChromRender::kPassFit,
     [](Stage& g) {
       g.AddHumps("UV");
       g.AddTwoPeaks();
       g.render.selectedPeak = 2;
     }},
    // Wider than the others: the strips alone take 120 pixels.
    {"two_strips", 200, 96, View::kSignalStrip | View::kGrid | View::kExact, 0,
     [](Stage& g) {
       g.AddHumps("UV");
       g.AddTwoAuxiliary();
       g.view.auxThickness[0] = 20;
       g.render.auxPosition = 1;
     }},
    {"labels_inside", 96, 96, View::kLabelAll | 2, 0,
     [](Stage& g) {
       TestChannel& channel = g.AddHumps("UV");
       channel.counts[85] = -90;
       channel.counts[90] = 20;
       g.AddPeak(10, 20, 40);
       g.AddPeak(80, 85, 90);
       g.AddPeak(90, 90, 90);
       g.view.fullScale = 50;
       g.view.zeroFraction = 0.5;
     }},
    {"nine_stacked", 96, 120, View::kExact, 0,
     [](Stage& g) {
       for (const char* name : {"a", "b", "c", "d", "e", "f", "g", "h", "i"}) g.AddHumps(name);
       for (int i = 0; i < 8; ++i) {
         const auto part = [i](int bit) { return static_cast<BYTE>((i >> bit & 1) * 200); };
         g.view.colours.entries[4 + i] = RGB(part(0), part(1), part(2));
       }
       g.channel(3).visible = 0;
       Host().splitIndex = 5;
       g.view.fullScale = 600;
       g.view.channelStep = 0.1;
     }},
};

class GoldenPicture : public Stage, public testing::WithParamInterface<PictureScene> {};

// Up to eight pixels may differ, by any amount: one end of a line each.
TEST_P(GoldenPicture, Pixels) {
  const PictureScene& scene = GetParam();
  gfx::Surface surface(scene.width, scene.height);
  const HDC raster = gfx::CreateRasterContext(surface, gfx::BuiltinText());
  render.SetSize(scene.width, scene.height);
  render.setFontSize(raster);
  view.flags = static_cast<WORD>(scene.flags);
  view.fullScale = 110;
  render.auxPosition = 0;
  scene.set(*this);
  render.scalewindow();
  RECT rect{0, 0, scene.width, scene.height};
  render.showchrom(raster, true, rect, scene.passFlags);
  DeleteDC(raster);
  std::ostringstream got;
  got << "P6\n" << scene.width << ' ' << scene.height << "\n255\n";
  for (int i = 0; i < scene.width * scene.height; ++i) {
    const COLORREF pixel = surface.Pixel(i % scene.width, i / scene.width);
    for (const BYTE part : {GetRValue(pixel), GetGValue(pixel), GetBValue(pixel)}) {
      got << static_cast<char>(part);
    }
  }
  const std::string file = std::string(scene.name) + ".ppm";
  if (Renewing()) std::ofstream(GoldenPath(file), std::ios::binary) << got.str();
  const std::string wanted = ReadFile(GoldenPath(file));
  ASSERT_EQ(got.str().size(), wanted.size());
  int different = 0;
  for (std::size_t i = wanted.size() % 3; i < wanted.size(); i += 3) {
    different += got.str().compare(i, 3, wanted, i, 3) != 0;
  }
  if (different > 0) std::ofstream("got_" + file, std::ios::binary) << got.str();
  EXPECT_LE(different, 8) << "got got_" << file << ", wanted " << GoldenPath(file);
}

INSTANTIATE_TEST_SUITE_P(Scenes, GoldenPicture, testing::ValuesIn(kPictures), CaseName());

}  // namespace
