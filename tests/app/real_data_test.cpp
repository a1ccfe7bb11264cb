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

namespace app {
namespace {

// What the folder's own description says of a file, to six digits.
struct Expected {
  std::uint64_t hash;  // FNV-1a of the contents
  std::size_t channels;
  std::size_t samples;     // of each channel
  double unitS;            // seconds per unit of the times
  double start, end;       // of the first channel
  double lowest, highest;  // of all channels
};
constexpr Expected kFiles[] = {
    {0x6C0A28EC740C81D7, 1, 12014, 1, 0.124848, 1499.93, 278.01, 470.17},
    {0x99EBC4D9B88AD6BF, 1, 3001, 1, 0.015, 300.015, 25.762, 26.139},
    {0x886D57A2BB716B7A, 1, 26401, 60, 0, 44, -2.98345, 323.039},
    {0xAEDAE8B9D054B3C2, 1, 26401, 60, 0, 44, -2.77475, 1647.59},
    {0xEDC614B2BC78C6AF, 1, 601, 60, 12, 17, 412, 1909},
    {0x165073E2F9545544, 1, 601, 60, 12, 17, 685, 3755},
    {0xCCE30D8A247275A6, 1, 601, 60, 12, 17, 697, 8429},
    {0xA58E848534CE0673, 1, 601, 60, 12, 17, 699, 16551},
    {0x7BEBFADB0F08D3C6, 1, 601, 60, 12, 17, 691, 4977},
    {0xA43A3482D46E2E6B, 1, 601, 60, 12, 17, 700, 11245},
    {0x0E11B590FBCC5694, 1, 765, 60, 0, 2.54667, 11.0376, 24.6099},
    {0xA756B4B6D25CED0C, 1, 1944, 60, 0.002, 12.9553, -7.00378, 804.055},
    {0x13E95AF33B4CAC2B, 1, 24001, 60, 0, 10, -27.1918, 1804.79},
    {0x84E0825DAA146D36, 1, 7801, 60, 0, 65, -0.301133, 23.3907},
    {0xAB45EFAC24BD2149, 1, 7801, 60, 0, 65, -0.301133, 23.3907},
    {0xE11C393E419127DB, 1, 7801, 60, 0, 65, -0.293187, 23.6549},
    {0xBA99701EF7CF1F27, 1, 6601, 60, 0, 55, -10.8287, 117.316},
    {0xBE456C7763485860, 8, 5000, 1, 1, 5000, -0.822199, 764.83},
    {0xDA86514F98677227, 1, 10197, 60, 0.000828117, 8.49749, 14.025, 81617.7},
    {0xD32D5DF28F0B6403, 1, 2012, 60, 1.09283, 12.7071, 0, 2.82716e+07},
    {0x5B75FC390438A796, 1, 18001, 60, 0.00045, 30.0005, 29.5385, 46.5523},
    {0xFAE0279601040204, 1, 18002, 60, 0.0005, 30.0022, 27.8249, 332.402},
    {0x413B9B0D93BEEA1C, 1, 4801, 60, 0, 40, -544, 75508},
    {0x6B768FE85F9B7F15, 1, 1351, 60, -0.0375, 8.9625, -21.2636, 820.383},
    {0xED6CC3801CB15A58, 1, 9000, 60, 0.00270833, 60, -0.123002, 3182.33},
    {0x2B13FE6857ED9F96, 60, 1301, 60, 9.99933, 18.666, -7.37763, 1146.73},
    {0x63E185690DC83EC4, 209, 97, 60, 10.2, 15, 0.847355, 74.1153},
    {0xD00CBF3ADDE22DBE, 241, 2494, 60, 0, 3.9875, -40.2, 539.5},
    {0xD8495FF34ACE7B93, 1, 750, 60, 0.00104167, 5, -151.43, 28.2903},
    {0xAB149C3AE3D8F1D9, 1, 750, 60, 0.00104167, 5, -0.196293, 32.7995},
    {0x1B3470F1151FD989, 226, 750, 60, 0.00105, 4.99437, -118.784, 1095.55},
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
  double lowest = std::numeric_limits<double>::infinity();
  double highest = -lowest;
  for (const Trace& trace : run.channels) {
    EXPECT_EQ(trace.values.size(), expected.samples);
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

}  // namespace
}  // namespace app
