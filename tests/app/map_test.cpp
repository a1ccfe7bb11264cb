// Runs for maps, their colours and pictures, and integration paths as files.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "app/demo_spectra.h"
#include "app/map_colours.h"
#include "app/map_run.h"
#include "app/path_file.h"
#include "embedded/settings.h"

namespace app {
namespace {

Trace Wave(const std::string& name, std::vector<double> values) {
  Trace trace;
  trace.name = name;
  trace.values = std::move(values);
  trace.periodS = 2;
  return trace;
}

RunData FourWaves() {
  RunData run;
  run.channels = {Wave("220 nm", {0, 10, 0, 0}), Wave("200.5 nm", {0, 0.25, 0, 0}),
                  Wave("pressure", {1, 2, 3, 4}), Wave("210 nm", {-5, 0, 0, 1}),
                  Wave("190.25 nm", {1, 2, 3, 4})};
  return run;
}

// "name: values; …" as the host's records hold them.
std::string Records(const MapRun& map) {
  std::string text;
  for (int i = 0; i < map.run->channels.count; ++i) {
    const TChannel& channel = *map.run->channels.At(i);
    text += (i > 0 ? "; " : "") + std::string(channel.name) + ":";
    for (LONG s = 0; s < channel.sampleCount; ++s) {
      const double value = channel.samples[s] * static_cast<double>(channel.unitsPerCount);
      text += " " + std::to_string(std::lround(value * 1000));
    }
  }
  return text;
}

TEST(MapRun, HoldsWavelengthsInOrderOnOneScale) {
  RunData data = FourWaves();
  data.channels.push_back(Wave("210nm", {9, 9, 9, 9}));
  data.channels.push_back(Wave("230 nm", {9, 9, 9}));
  MapRun map;
  std::string error;
  ASSERT_TRUE(MakeMapRun(data, {}, map, error)) << error;
  EXPECT_EQ(Records(map),
            "190.25: 1000 2000 3000 4000; 200.5 nm: 0 250 0 0; 210 nm: -5000 0 0 1000; "
            "220 nm: 0 10000 0 0");
  EXPECT_EQ(map.wavesNm, (std::vector<double>{190.25, 200.5, 210, 220}));
  for (int i = 1; i < 4; ++i) {  // the map compares counts
    EXPECT_EQ(+map.run->channels.At(i)->unitsPerCount, +map.run->channels.At(0)->unitsPerCount);
    EXPECT_EQ(+map.run->channels.At(i)->referenceLevel, 0);
  }
  EXPECT_EQ(data.notes.size(), 3u);  // the pressure, other times, a second 210 nm
}

TEST(MapRun, IsCutToThePart) {
  RunData data = FourWaves();
  MapRun map;
  std::string error;
  ASSERT_TRUE(MakeMapRun(data, {2.0, 4.0, 195.0, std::nullopt}, map, error)) << error;
  EXPECT_EQ(Records(map), "200.5 nm: 250 0; 210 nm: 0 0; 220 nm: 10000 0");
  EXPECT_EQ(+map.run->timeOffsetMs, 2000);
  const std::pair<MapPart, const char*> refused[] = {
      {{3.0, 5.0, {}, {}}, "fewer than two times lie in the part asked for"},
      {{{}, {}, 201.0, 215.0},
       "a map needs 3 wavelengths or more; 1 of 4 lie in the part asked for"}};
  for (const auto& [part, cause] : refused) {
    EXPECT_FALSE(MakeMapRun(data, part, map, error));
    EXPECT_EQ(error, cause);
  }
}

TEST(MapRun, IrregularTimesAreInterpolated) {
  RunData data = FourWaves();
  data.channels.erase(data.channels.begin() + 2);
  for (Trace& trace : data.channels) trace.timesS = {0, 1, 2, 6};
  MapRun map;
  std::string error;
  ASSERT_TRUE(MakeMapRun(data, {}, map, error)) << error;
  EXPECT_EQ(Records(map).substr(0, Records(map).find(';')),
            "190.25: 1000 2000 3000 3250 3500 3750 4000");
}

// ---- colours ------------------------------------------------------------------------------------

class MapColours : public testing::Test {
 protected:
  MapColours() : before_(TheColorScale()), settings_(embedded::SettingsPath()) {
    path_ = std::filesystem::temp_directory_path() /
            ("elugraph-map-" + std::to_string(getpid()) + ".ini");
    setenv("ELUGRAPH_SETTINGS", path_.c_str(), 1);
  }
  ~MapColours() override {
    std::filesystem::remove(path_);
    std::filesystem::remove(path_.string() + ".lock");
    setenv("ELUGRAPH_SETTINGS", settings_.c_str(), 1);
    TheColorScale() = before_;
    embedded::KeepSettings(true);
  }

  std::filesystem::path path_;
  std::string error_;

 private:
  ColorScale before_;
  std::string settings_;
};

TEST_F(MapColours, OptionsGoBeforeSettingsBeforeTheDefault) {
  ColorScale& scale = TheColorScale();
  ASSERT_TRUE(SetMapColours({}, error_));
  EXPECT_EQ(scale.colorCount, 10);
  EXPECT_EQ(scale.colorTable[0], MapColorOf(BuiltinScale("tide")[0]));
  EXPECT_EQ(scale.formula, ScaleFormula::LOG);
  ASSERT_TRUE(SetMapColours({"#ff0000,#00FF00,#0000ff", "linear"}, error_));
  EXPECT_EQ(scale.colorCount, 3);
  EXPECT_EQ(scale.colorTable[1], (MapColor{0, 255, 0}));
  EXPECT_DOUBLE_EQ(scale.kLin, 2 * 0.999999999999);
  EXPECT_EQ(scale.formula, ScaleFormula::LINE);
  EXPECT_FALSE(std::filesystem::exists(path_));

  const ColorScale same = scale;
  SaveMapColours(same);
  EXPECT_FALSE(std::filesystem::exists(path_));
  scale.colorTable[1] = {1, 2, 3};
  SaveMapColours(same);
  LoadColorSettings();
  ASSERT_TRUE(SetMapColours({}, error_));
  EXPECT_EQ(scale.colorCount, 3);
  EXPECT_EQ(scale.colorTable[1], (MapColor{1, 2, 3}));
  EXPECT_EQ(scale.formula, ScaleFormula::LINE);
}

TEST_F(MapColours, TextsWithoutMeaningChangeNothing) {
  ASSERT_TRUE(SetMapColours({"#ff0000,#00ff00", "log"}, error_));
  for (const char* colours : {"pink", "#ff0000", "#ff0000,", "#ff0000,#00ff0g", "#f00,#0f0",
                              "#000000,#000000,#000000,#000000,#000000,#000000,#000000,#000000,"
                              "#000000,#000000,#000000"}) {
    EXPECT_FALSE(SetMapColours({colours, ""}, error_)) << colours;
  }
  EXPECT_FALSE(SetMapColours({"", "square"}, error_));
  EXPECT_EQ(error_, "--formula: 'square' is not one of linear, log");
  EXPECT_EQ(TheColorScale().colorCount, 2);
  EXPECT_EQ(TheColorScale().formula, ScaleFormula::LOG);
}

// ---- paths --------------------------------------------------------------------------------------

const std::vector<double> kWaves = {190.25, 200.1, 210, 220};

TEST(PathFile, ReadsBackWhatItWrote) {
  SIPathHolder path, back;
  ASSERT_TRUE(path.Resize(3));
  path.items[0] = {1, 3, 0.1 + 0.2};
  path.items[1] = {0, 2, 1e5 / 3};
  path.items[2] = {3, 3, kOpenEnd};
  const std::string text = PathText(path, kWaves);
  EXPECT_EQ(text,
            "end_s,low_nm,low_channel,high_nm,high_channel\n0.30000000000000004,200.1,2,220,4\n"
            "33333.333333333336,190.25,1,210,3\nopen,220,4,220,4\n");
  std::string error;
  ASSERT_TRUE(ParsePath("p.csv", text, kWaves, back, error)) << error;
  ASSERT_EQ(back.count, 3);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(+back.items[i].lowChannel, +path.items[i].lowChannel);
    EXPECT_EQ(+back.items[i].highChannel, +path.items[i].highChannel);
    EXPECT_EQ(+back.items[i].endTime, +path.items[i].endTime);
  }
}

TEST(PathFile, WavelengthsDecide) {
  SIPathHolder path;
  std::string error;
  ASSERT_TRUE(ParsePath("p.csv", "high_nm,end_s,low_nm,low_channel\r\n\r\n216,open,204,99\r\n",
                        kWaves, path, error))
      << error;
  EXPECT_EQ(path.items[0].lowChannel, 1);
  EXPECT_EQ(path.items[0].highChannel, 3);
}

TEST(PathFile, RefusesWithLineAndCause) {
  const std::string header = "end_s,low_nm,high_nm\n";
  const struct {
    std::string text;
    const char* error;
  } cases[] = {
      {"", "p.csv: holds no segments"},
      {"end,low_nm,high_nm\n", "p.csv:1: the header has no column 'end_s'"},
      {header + "10,200,210\n", "p.csv: the last segment does not end with 'open'"},
      {header + "open,200\n", "p.csv:2: expected 3 columns, found 2"},
      {header + "open,200,x\n", "p.csv:2: high_nm: 'x' is not a number"},
      {header + "5,200,210\n5,200,210\nopen,200,210\n",
       "p.csv:3: end_s: 5 is not behind 5, where the segment begins"},
      {header + "open,200,210\n7,200,210\n", "p.csv:3: a segment behind the open one"},
      {header + "open,210,200\n", "p.csv:2: low_nm is above high_nm"},
      {header + "open,200,250\n",
       "p.csv:2: high_nm: 250 nm is not within the run's 190.25 to 220 nm"},
  };
  for (const auto& c : cases) {
    SIPathHolder path;
    std::string error;
    EXPECT_FALSE(ParsePath("p.csv", c.text, kWaves, path, error));
    EXPECT_EQ(error, c.error);
    EXPECT_EQ(path.count, 0);
  }
}

}  // namespace
}  // namespace app
