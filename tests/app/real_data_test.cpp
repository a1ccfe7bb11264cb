// Measured files in the folder that ELUGRAPH_DATA names. They are known by their contents.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <limits>

#include "app/formats/read_run.h"
#include "app/formats/text.h"
#include "app/formats/wavelength.h"
#include "app/picture.h"
#include "embedded/diagnostics.h"
#include "platform/gfx/context.h"

namespace app {
namespace {

// What the folder's own description says of a file, to six digits.
struct Expected {
  std::uint64_t hash;  // FNV-1a of the contents
  std::size_t channels, auxiliary, peaks;
  std::size_t samples;     // of the first channel
  double unitS;            // seconds per unit of the times
  double start, end;       // of the first channel
  double lowest, highest;  // of all channels
};
constexpr Expected kFiles[] = {
    {0x6C0A28EC740C81D7, 1, 0, 0, 12014, 1, 0.124848, 1499.93, 278.01, 470.17},
    {0x99EBC4D9B88AD6BF, 1, 0, 0, 3001, 1, 0.015, 300.015, 25.762, 26.139},
    {0x886D57A2BB716B7A, 1, 0, 0, 26401, 60, 0, 44, -2.98345, 323.039},
    {0xAEDAE8B9D054B3C2, 1, 0, 0, 26401, 60, 0, 44, -2.77475, 1647.59},
    {0xEDC614B2BC78C6AF, 1, 0, 0, 601, 60, 12, 17, 412, 1909},
    {0x165073E2F9545544, 1, 0, 0, 601, 60, 12, 17, 685, 3755},
    {0xCCE30D8A247275A6, 1, 0, 0, 601, 60, 12, 17, 697, 8429},
    {0xA58E848534CE0673, 1, 0, 0, 601, 60, 12, 17, 699, 16551},
    {0x7BEBFADB0F08D3C6, 1, 0, 0, 601, 60, 12, 17, 691, 4977},
    {0xA43A3482D46E2E6B, 1, 0, 0, 601, 60, 12, 17, 700, 11245},
    {0x0E11B590FBCC5694, 1, 0, 0, 765, 60, 0, 2.54667, 11.0376, 24.6099},
    {0xA756B4B6D25CED0C, 1, 0, 0, 1944, 60, 0.002, 12.9553, -7.00378, 804.055},
    {0x13E95AF33B4CAC2B, 1, 0, 0, 24001, 60, 0, 10, -27.1918, 1804.79},
    {0x84E0825DAA146D36, 1, 0, 0, 7801, 60, 0, 65, -0.301133, 23.3907},
    {0xAB45EFAC24BD2149, 1, 0, 0, 7801, 60, 0, 65, -0.301133, 23.3907},
    {0xE11C393E419127DB, 1, 0, 0, 7801, 60, 0, 65, -0.293187, 23.6549},
    {0xBA99701EF7CF1F27, 1, 0, 0, 6601, 60, 0, 55, -10.8287, 117.316},
    {0xBE456C7763485860, 8, 0, 0, 5000, 1, 1, 5000, -0.822199, 764.83},
    {0xDA86514F98677227, 1, 0, 0, 10197, 60, 0.000828117, 8.49749, 14.025, 81617.7},
    {0xD32D5DF28F0B6403, 1, 0, 0, 2012, 60, 1.09283, 12.7071, 0, 2.82716e+07},
    {0x5B75FC390438A796, 1, 0, 0, 18001, 60, 0.00045, 30.0005, 29.5385, 46.5523},
    {0xFAE0279601040204, 1, 0, 0, 18002, 60, 0.0005, 30.0022, 27.8249, 332.402},
    {0x413B9B0D93BEEA1C, 1, 0, 0, 4801, 60, 0, 40, -544, 75508},
    {0x6B768FE85F9B7F15, 1, 0, 0, 1351, 60, -0.0375, 8.9625, -21.2636, 820.383},
    {0xED6CC3801CB15A58, 1, 0, 0, 9000, 60, 0.00270833, 60, -0.123002, 3182.33},
    {0x2B13FE6857ED9F96, 60, 0, 0, 1301, 60, 9.99933, 18.666, -7.37763, 1146.73},
    {0x63E185690DC83EC4, 209, 0, 0, 97, 60, 10.2, 15, 0.847355, 74.1153},
    {0xD00CBF3ADDE22DBE, 241, 0, 0, 2494, 60, 0, 3.9875, -40.2, 539.5},
    {0xD8495FF34ACE7B93, 1, 0, 0, 750, 60, 0.00104167, 5, -151.43, 28.2903},
    {0xAB149C3AE3D8F1D9, 1, 0, 0, 750, 60, 0.00104167, 5, -0.196293, 32.7995},
    {0x1B3470F1151FD989, 226, 0, 0, 750, 60, 0.00105, 4.99437, -118.784, 1095.55},
    {0xD57AEDCD0834A18A, 1, 0, 14, 8999, 1, 0, 4499, -0.000354332, 0.0155255},
    {0x1B894F0BD41C527E, 1, 0, 7, 300, 1, 0, 299, 10394, 434841},
    {0x2B2684AB3746C0D2, 1, 0, 7, 4501, 1, 0, 900, -1e-05, 1},
    {0x542211BF5AC1EAFF, 1, 0, 15, 1997, 1, 0, 1277.44, -0.003716, 0.625735},
    {0x440A268B4F3B4F3E, 1, 0, 7, 2405, 1, 0, 480.8, -0.597888, 5.63302},
    {0xED1579C5EBA09046, 1, 0, 7, 2405, 1, 0, 480.8, -0.5979, 5.633},
    {0xE730E4957DEC9831, 1, 0, 0, 4000, 1, 0, 399.9, 0, 1.06667e+08},
    {0x2DD2988EBD8B8DB2, 1, 0, 19, 1145, 1, 1.04, 1099.28, -0.173092, 130.879},
    {0x14BA0DD62CAFB3E7, 1, 0, 4, 152, 1, 0, 302, 46799, 998533},
    {0x682F661BED8D141F, 1, 0, 0, 6401, 1, 0, 1279.8, 3755, 32964},
    {0x2E2F1DECB7D9B3F1, 1, 0, 13, 1080, 1, 0, 539.5, -42.8, 16287.6},
    {0xE3B73A8493CD2869, 1, 0, 13, 1080, 1, 0, 539.5, -42.8, 16287.6},
    {0x9B04D51DC1521359, 1, 0, 28, 25204, 1, 0, 2520.3, -0.002695, 1.21909},
    {0xB72FB38C297199BD, 1, 0, 0, 93003, 1, -0.013, 1860.03, 48870, 1.81026e+07},
    {0x0370A31E45F85794, 1, 0, 8, 1302, 1, 0, 479.587, -0.00814055, 0.192841},
    {0x889D024DF3F35AF6, 1, 0, 16, 1302, 1, 0, 479.587, -0.00814055, 0.192841},
    {0x039F9A77B9501E17, 1, 0, 5, 1200, 1, 0, 599.5, 0.00468, 0.70487},
    {0x7F6D232E21BF9624, 1, 0, 4, 600, 1, 0, 599, -8.8e-05, 0.237711},
    {0x2AEE75B477C96AC5, 1, 0, 8, 4651, 1, 0.012, 1860.01, -0.0758842, 119.024},
    {0x308D0EC685B55F6A, 1, 0, 43, 1645, 1, 3.381, 1800.92, 11099, 649746},
    {0x816F092C47EF10AC, 1, 4, 0, 2598, 60, 0, 12.985, -0.306, 35.253},
    {0x674FEE4667F98377, 1, 5, 0, 669, 60, 0.226, 249.613, -1.08, 600.848},
    {0x07279601C32BA495, 1, 4, 0, 1651, 60, 0, 528, -9.915, 200.688},
    {0x43375F357419428C, 2, 2, 0, 27197, 60, -0.007014, 22.6095, -0.010823, 131.923},
    {0xB0FE38C8716F6531, 3, 0, 0, 3599, 60, 0.01, 29.99, -630.891, 14422.7},
    {0x3F82A235E1015538, 3, 0, 0, 3599, 60, 0.01, 29.99, -316.066, 1496.77},
    {0x73C72758AD39BC1C, 3, 0, 0, 3599, 60, 0.01, 29.99, -584.79, 2178.18},
    {0xCE3B260C6468608F, 3, 0, 0, 3599, 60, 0.01, 29.99, -542.223, 4688.05},
    {0xFCED08190BAFA688, 3, 0, 0, 3599, 60, 0.01, 29.99, -226.228, 1018.32},
    {0x5A7A962F383E978A, 2, 0, 0, 6001, 1, 0, 3000, -0.656, 45.257},
    {0x55BFAE8BBF0969A0, 3, 4, 58, 2401, 60, 0, 20, -5.252, 1410.76},
    {0x88FEF748FD0EC981, 1, 0, 83, 66255, 60, 0.00033, 44.1697, -396, 347432},
    {0x29CCB01D7B39B7D9, 1, 3, 14, 1801, 60, 0, 15, -234.391, 772.729},
    {0x4BB2C29B46C57653, 1, 0, 11, 10500, 1, 0, 839.92, 3402590.0, 107374000.0},
    {0xD09A65FDDAF9D6F6, 101, 0, 0, 2941, 60, 0, 9.8, -15614, 4783180.0},
    {0x842EC31CC50E08DD, 1, 0, 0, 10530, 60, 4.0058, 34.2505, 0, 9931180.0},
    {0xAE62F416406AD839, 1, 0, 0, 101, 60, 8.8, 9.23, 1.32965, 403.104},
    {0x4DF3B4DF254C5F38, 1, 0, 0, 3301, 1, 0, 11, -1.07255, 155.296},
    {0x619D12CC03752927, 2, 0, 0, 212, 60, 0.0105167, 3.49452, -0.0748634, 409735},
    {0x73EB2DF18B178F6F, 106, 0, 0, 161, 1, 2113.2, 2659.5, 0, 909913},
};

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

TEST(RealData, FilesHoldWhatIsKnownAboutThem) {
  const char* folder = std::getenv("ELUGRAPH_DATA");
  if (folder == nullptr) GTEST_SKIP() << "ELUGRAPH_DATA names no folder of measured data";
  std::size_t known = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    const std::string path = entry.path().string();
    SCOPED_TRACE(path);
    const std::uint64_t hash = Fnv1a(ReadBytes(path));
    const auto* expected = std::find_if(std::begin(kFiles), std::end(kFiles),
                                        [hash](const Expected& file) { return file.hash == hash; });
    RunData run;
    std::string error;
    const bool read = ReadRun(path, {}, run, error);
    if (expected != std::end(kFiles)) {
      ++known;
      ASSERT_TRUE(read) << error;
      Check(run, *expected);
    } else if (!read) {
      EXPECT_TRUE(error.starts_with(path + ":") && error.find('\n') == std::string::npos) << error;
    }
  }
  EXPECT_EQ(known, std::size(kFiles));
}

TEST(RealData, MatricesHaveTheirWavelengths) {
  const char* folder = std::getenv("ELUGRAPH_DATA");
  if (folder == nullptr) GTEST_SKIP() << "ELUGRAPH_DATA names no folder of measured data";
  const struct {
    std::uint64_t hash;
    double lowest, step, highest;  // nm
  } matrices[] = {
      {0x2B13FE6857ED9F96, 200, 2, 318}, {0x63E185690DC83EC4, 250.4, 1.2, 500},
      {0xD00CBF3ADDE22DBE, 210, 1, 450}, {0x1B3470F1151FD989, 190, 2, 640},
      {0xD09A65FDDAF9D6F6, 200, 2, 400},
  };
  std::size_t known = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder + std::string("/dad"))) {
    SCOPED_TRACE(entry.path().string());
    const std::uint64_t hash = Fnv1a(ReadBytes(entry.path().string()));
    RunData run;
    std::string error;
    ASSERT_TRUE(ReadRun(entry.path().string(), {}, run, error)) << error;
    for (const auto& matrix : matrices) {
      if (matrix.hash != hash) continue;
      ++known;
      EXPECT_NEAR(matrix.lowest + matrix.step * double(run.channels.size() - 1), matrix.highest,
                  1e-9);
      for (std::size_t i = 0; i < run.channels.size(); ++i) {
        EXPECT_NEAR(WavelengthOf(run.channels[i].name).value_or(0),
                    matrix.lowest + matrix.step * double(i), 1e-9);
      }
    }
  }
  EXPECT_EQ(known, std::size(matrices));
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

TEST(RealData, EveryRunMakesAPicture) {
  const char* folder = std::getenv("ELUGRAPH_DATA");
  if (folder == nullptr) GTEST_SKIP() << "ELUGRAPH_DATA names no folder of measured data";
  std::vector<std::string> faults;
  const embedded::LogSink previous =
      embedded::SetLogSink([&faults](std::string_view line) { faults.emplace_back(line); });
  const std::size_t objects = gfx::LiveObjects();
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    RunData run;
    std::string error;
    if (!entry.is_regular_file() || !ReadRun(entry.path().string(), {}, run, error)) continue;
    SCOPED_TRACE(entry.path().string());
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
}

}  // namespace
}  // namespace app
