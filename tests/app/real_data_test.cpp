// Measured files in the folder that ELUGRAPH_DATA names. They are known by their contents.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>

#include "app/formats/read_run.h"
#include "app/formats/text.h"
#include "app/map_colours.h"
#include "app/map_picture.h"
#include "app/map_run.h"
#include "app/picture.h"
#include "embedded/diagnostics.h"
#include "platform/gfx/context.h"

namespace app {
namespace {

// A line of the table, which follows the folder's own description.
struct Expected {
  std::uint64_t hash;  // FNV-1a of the contents
  std::size_t channels, auxiliary, peaks;
  std::size_t samples;     // of the first channel
  double unitS;            // seconds per unit of the times
  double start, end;       // of the first channel
  double lowest, highest;  // of all channels
};

std::vector<Expected> KnownFiles() {
  std::vector<Expected> files;
  std::ifstream table(ELUGRAPH_SOURCE_DIR "/tests/golden/app/measured_files.txt");
  for (std::string line; std::getline(table, line);) {
    std::istringstream row(line);
    Expected file{};
    row >> std::hex >> file.hash >> std::dec >> file.channels >> file.auxiliary >> file.peaks >>
        file.samples >> file.unitS >> file.start >> file.end >> file.lowest >> file.highest;
    if (row) files.push_back(file);
  }
  return files;
}

std::uint64_t Fnv1a(std::string_view bytes) {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
  return hash;
}

// To the six digits given.
void ExpectNear(double value, double expected, const char* what) {
  EXPECT_NEAR(value, expected, std::max(std::abs(expected) * 1e-5, 1e-9)) << what;
}

void Check(const RunData& run, const Expected& expected) {
  ASSERT_EQ(run.channels.size(), expected.channels);
  EXPECT_EQ(run.auxiliary.size(), expected.auxiliary);
  EXPECT_EQ(run.peaks.size(), expected.peaks);
  EXPECT_EQ(run.channels[0].values.size(), expected.samples);
  double lowest = std::numeric_limits<double>::infinity();
  double highest = -lowest;
  for (const Trace& trace : run.channels) {
    const auto [low, high] = std::minmax_element(trace.values.begin(), trace.values.end());
    lowest = std::min(lowest, *low);
    highest = std::max(highest, *high);
  }
  ExpectNear(lowest, expected.lowest, "lowest value");
  ExpectNear(highest, expected.highest, "highest value");
  const Trace& first = run.channels[0];
  ExpectNear(first.TimeAt(0) / expected.unitS, expected.start, "start");
  ExpectNear(first.TimeAt(first.values.size() - 1) / expected.unitS, expected.end, "end");
}

// Colours of the picture's traces; axes and ground are not counted.
std::size_t ColouredPixels(const gfx::Surface& surface) {
  std::size_t count = 0;
  for (int y = 0; y < surface.Height(); ++y) {
    for (int x = 0; x < surface.Width(); ++x) {
      const COLORREF color = surface.Pixel(x, y);
      count += GetRValue(color) != GetGValue(color) || GetGValue(color) != GetBValue(color);
    }
  }
  return count;
}

// The folder of measured data.
class RealData : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = std::getenv("ELUGRAPH_DATA");
    if (folder_ == nullptr) GTEST_SKIP() << "ELUGRAPH_DATA names no folder of measured data";
  }

  const char* folder_ = nullptr;
};

TEST_F(RealData, FilesHoldWhatIsKnownAboutThemAndMakePictures) {
  const std::vector<Expected> files = KnownFiles();
  ASSERT_GT(files.size(), 60U);
  std::size_t known = 0;
  std::vector<std::string> faults;
  const embedded::LogSink previous =
      embedded::SetLogSink([&faults](std::string_view line) { faults.emplace_back(line); });
  const std::size_t objects = gfx::LiveObjects();
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_)) {
    if (!entry.is_regular_file()) continue;
    const std::string path = entry.path().string();
    SCOPED_TRACE(path);
    const std::uint64_t hash = Fnv1a(ReadBytes(path));
    const auto expected = std::find_if(files.begin(), files.end(),
                                       [hash](const Expected& file) { return file.hash == hash; });
    RunData run;
    std::string error;
    if (!ReadRun(path, {}, run, error)) {
      EXPECT_EQ(expected, files.end()) << error;
      EXPECT_TRUE(error.starts_with(path + ":") && error.find('\n') == std::string::npos) << error;
      continue;
    }
    if (expected != files.end()) {
      ++known;
      Check(run, *expected);
    }
    DisplayOptions options;
    options.widthPx = 600;
    options.heightPx = 300;
    gfx::Surface surface;
    EXPECT_TRUE(DrawPicture(run, options, surface, error)) << error;
    EXPECT_GT(ColouredPixels(surface), 300U);
  }
  embedded::SetLogSink(previous);
  EXPECT_EQ(faults, std::vector<std::string>());
  EXPECT_EQ(gfx::LiveObjects(), objects);
  EXPECT_EQ(known, files.size());
}

TEST_F(RealData, MatricesHaveTheirWavelengthsAndMakeMaps) {
  const struct {
    std::uint64_t hash;
    double lowest, step, highest;  // nm
  } matrices[] = {
      {0x2B13FE6857ED9F96, 200, 2, 318}, {0x63E185690DC83EC4, 250.4, 1.2, 500},
      {0xD00CBF3ADDE22DBE, 210, 1, 450}, {0x1B3470F1151FD989, 190, 2, 640},
      {0xD09A65FDDAF9D6F6, 200, 2, 400},
  };
  const ColorScale before = TheColorScale();
  std::size_t known = 0;
  std::string error;
  ASSERT_TRUE(SetMapColours({"#0000ff,#ff0000", "linear"}, error)) << error;
  for (const auto& entry : std::filesystem::directory_iterator(folder_ + std::string("/dad"))) {
    SCOPED_TRACE(entry.path().string());
    const std::uint64_t hash = Fnv1a(ReadBytes(entry.path().string()));
    RunData run;
    ASSERT_TRUE(ReadRun(entry.path().string(), {}, run, error)) << error;
    for (const auto& matrix : matrices) {
      if (matrix.hash != hash) continue;
      ++known;
      MapRun map;
      gfx::Surface picture;
      ASSERT_TRUE(MakeMapRun(run, {}, map, error)) << error;
      ASSERT_EQ(map.wavesNm.size(), run.channels.size());
      EXPECT_NEAR(map.wavesNm.back(), matrix.highest, 1e-9);
      for (std::size_t i = 0; i < map.wavesNm.size(); ++i) {
        EXPECT_NEAR(map.wavesNm[i], matrix.lowest + matrix.step * double(i), 1e-9);
      }
      ASSERT_TRUE(DrawMap(*map.run, 600, 300, picture, error)) << error;
      // The lowest value has the first colour, the highest one nearly the last.
      bool lowest = false, highest = false;
      for (int y = 0; y < picture.Height(); ++y) {
        for (int x = 0; x < picture.Width(); ++x) {
          lowest = lowest || picture.Pixel(x, y) == RGB(0, 0, 255);
          highest = highest || picture.Pixel(x, y) == RGB(254, 0, 0);
        }
      }
      EXPECT_TRUE(lowest && highest);
    }
  }
  EXPECT_EQ(known, std::size(matrices));
  TheColorScale() = before;
}

}  // namespace
}  // namespace app
