#include "elugraph/heightmap/height_map.h"

#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <cstdio>
#include <functional>
#include <stdexcept>

// The host's matrix division, watched: Gauss-Jordan, rows with the largest pivot first.
namespace {
int modeSeen = -1;
bool divisionFails = false;
}  // namespace

int TDoubleMatrix::operator/=(TDoubleMatrix& divisor) {
  modeSeen = std::fegetround();
  if (divisionFails) throw std::domain_error("singular");
  for (int c = 0; c < rowCount; ++c) {
    int pivot = c;
    for (int r = c; r < rowCount; ++r) {
      if (std::fabs(divisor[r][c]) > std::fabs(divisor[pivot][c])) pivot = r;
    }
    for (int k = 0; k < rowCount; ++k) {
      std::swap(divisor[c][k], divisor[pivot][k]);
      std::swap((*this)[c][k], (*this)[pivot][k]);
    }
    for (int r = 0; r < rowCount; ++r) {
      const double factor = r == c ? 1 - 1 / divisor[c][c] : divisor[r][c] / divisor[c][c];
      for (int k = 0; k < rowCount; ++k) {
        divisor[r][k] -= factor * divisor[c][k];
        (*this)[r][k] -= factor * (*this)[c][k];
      }
    }
  }
  return 1;
}

namespace {

using Signal = std::function<double(double wavelength, int sample)>;

// A run of spectral channels.
class Map : public testing::Test {
 protected:
  Map() { divisionFails = false; }
  void SetUpRun(const std::vector<std::string>& names, int samples, const Signal& signal) {
    const std::size_t count = names.size();
    channels_.assign(count, TChannel{});
    data_.assign(count, {});
    items_.clear();
    for (std::size_t i = 0; i < count; ++i) {
      std::snprintf(channels_[i].name, sizeof channels_[i].name, "%s", names[i].c_str());
      for (int s = 0; s < samples; ++s) {
        data_[i].push_back(static_cast<LONG>(std::floor(signal(std::atof(names[i].c_str()), s))));
      }
      channels_[i].samples = data_[i].data();
      channels_[i].sampleCount = samples;
      items_.push_back(&channels_[i]);
    }
    run.sampleCount = samples;
    run.channelCount = static_cast<WORD>(count);
    run.channels = {items_.data(), 0, static_cast<LONG>(count)};
  }
  TChannel& Channel(int index) { return channels_.at(static_cast<std::size_t>(index)); }

  chromatogram run{};

 private:
  std::vector<TChannel> channels_;
  std::vector<std::vector<LONG>> data_;
  std::vector<TChannel*> items_;
};

const std::vector<std::string> kUneven{"210", "212", "219", "220", "226", "238", "241", "250"};

// A fit reproduces polynomials of its own degree between the channels, in windows fitted anew and
// in those only shifted.
TEST_F(Map, ReproducesPolynomialsWithinOneCount) {
  struct {
    double c0, c1, c2, c3;  // counts per (nm − 230)^m
    int order;
  } const cases[] = {{1e6, -3e4, 1500, 80, 2},
                     {-2e6, 1e4, -900, -33, 2},
                     {5e5, 0, 777, 0, 2},
                     {5e5, 100, 777, 0, 1},
                     {-1e5, 5e4, 0, 0, 0}};
  constexpr int kRows = 160;
  for (const auto& c : cases) {
    const auto value = [&](double wavelength) {
      const double x = wavelength - 230;
      return c.c0 + x * (c.c1 + x * (c.c2 + x * c.c3));
    };
    SetUpRun(kUneven, 3, [&](double wavelength, int) { return value(wavelength); });
    HeightMap map(&run);
    ASSERT_TRUE(map.DoMap(3, kRows, c.order));
    LONG lowest = 0, highest = 0;
    ASSERT_TRUE(map.GetValueRange(&lowest, &highest));
    for (int row = 0; row < kRows; ++row) {
      const LONG* heights = map.Row(row);
      ASSERT_NEAR(heights[0], value(210 + 40.0 * row / kRows), 1) << row << " of " << c.c0;
      ASSERT_EQ(heights[2], heights[0]);
      ASSERT_TRUE(heights[0] >= lowest && heights[0] <= highest);
    }
  }
}

TEST_F(Map, InterpolatesBetweenMeansOfBins) {
  SetUpRun({"200", "201", "202"}, 1000, [](double, int sample) { return 100.0 * sample; });
  for (int i = 0; i < 3; ++i) Channel(i).referenceLevel = 50;
  HeightMap map(&run);
  ASSERT_TRUE(map.DoMap(300, 4, 2));  // 4 samples a bin, 250 bins
  for (int column = 0; column < 300; ++column) {
    const double bin = column * 249.0 / 299;
    ASSERT_NEAR(map.Row(2)[column], 100 * (4 * bin + 1.5) - 50, 1.01) << column;
  }
  ASSERT_TRUE(map.DoMap(5000, 4, 2));  // a sample a bin
  EXPECT_NEAR(map.Row(0)[4999], 99850, 1.01);
  EXPECT_NEAR(map.Row(0)[2500], 100 * 999.0 * 2500 / 4999 - 50, 1.01);
  ASSERT_TRUE(map.DoMap(3, 4, 2));  // 334 samples a bin, the last 332 are left over
  EXPECT_NEAR(map.Row(3)[2], 100 * (334 + 166.5) - 50, 1.01);
}

TEST_F(Map, ListsSpectralChannelsAndRefusesWhatCannotBeFitted) {
  const std::vector<std::string> four{"254", "280.5nm", "-3", "1e3"};
  constexpr LONG kMost = 2147483647;
  struct {
    std::vector<std::string> names;
    int samples;
    LONG columns, rows, order;
    int waves;
    bool mapped;
  } const cases[] = {{{"254", "280", "UV"}, 9, 5, 5, 2, 2, false},
                     {{"254", "0", "280", "0.0", "300"}, 9, 5, 5, 2, 3, true},
                     {four, 9, 5, 5, 2, 4, true},
                     {four, 9, 5, 5, -kMost - 1, 4, false},
                     {four, 9, 5, 5, 3, 4, false},
                     {four, 9, 0, 5, 2, 4, false},
                     {four, 9, 5, -1, 2, 4, false},
                     {four, 0, 5, 5, 2, 4, true},
                     {four, 9, kMost, kMost, 2, 4, false},
                     {{"254"}, 9, 5, 5, 2, 1, false},
                     {{"254", "254.0", "254", "254"}, 9, 5, 5, 2, 4, false},
                     {{"inf", "nan", "1e99", "2"}, 9, 5, 5, 2, 2, false},
                     {{}, 9, 5, 5, 2, 0, false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << &c - cases);
    SetUpRun(c.names, c.samples, [](double wavelength, int) { return wavelength; });
    HeightMap map(&run);
    EXPECT_EQ(map.WaveCount(), c.waves);
    for (WORD i = 1; i < c.waves; ++i) {
      EXPECT_LE(map.Wave(i - 1)->wavelength, map.Wave(i)->wavelength);
    }
    EXPECT_EQ(map.DoMap(c.columns, c.rows, c.order), c.mapped);
    EXPECT_EQ(map.GetValueRange(nullptr, nullptr), c.mapped);
    EXPECT_EQ(map.Row(0) != nullptr, c.mapped);
    EXPECT_EQ(map.Row(c.rows), nullptr);
    if (c.mapped) {
      EXPECT_EQ(map.Row(4)[4] == 0, c.samples == 0);
    }
  }
  HeightMap none(nullptr);
  EXPECT_FALSE(none.DoMap(5, 5, 2) || none.GetWaves(nullptr, nullptr));
}

// Computing truncates; every way out puts the caller's rounding back.
TEST_F(Map, RoundingIsRestoredAlsoWhenTheHostFails) {
  SetUpRun(kUneven, 9, [](double wavelength, int) { return wavelength; });
  for (int mode : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
    std::fesetround(mode);
    HeightMap map(&run);
    divisionFails = false;
    EXPECT_TRUE(map.DoMap(5, 5, 2));
    EXPECT_EQ(modeSeen, FE_TOWARDZERO);
    EXPECT_EQ(std::fegetround(), mode);
    divisionFails = true;
    EXPECT_FALSE(map.DoMap(6, 5, 2));
    EXPECT_EQ(std::fegetround(), mode);
    EXPECT_EQ(map.Row(0), nullptr);
  }
  std::fesetround(FE_TONEAREST);
}

TEST(WaveWindows, StartAtTheRowAndWidenToTheNearerSide) {
  std::vector<WaveEntry> waves;
  for (double wavelength : {200, 203, 206, 207, 209, 220, 230, 240}) {
    waves.push_back({wavelength, static_cast<LONG>(waves.size())});
  }
  struct {
    double centre, half;  // of the row
    int terms;
    WaveWindow window;
  } const cases[] = {
      {200, 1, 2, {0, 2}},    // at the lower end
      {240, 1, 3, {4, 7}},    // at the upper end
      {206, 0.5, 3, {1, 4}},  // 203 is nearer than 220
      {206, 3.5, 2, {1, 5}},  // a row wider than the terms need
  };
  for (const auto& c : cases) {
    WaveFit fit(waves, c.terms);
    const WaveWindow got = fit.WindowAt(c.centre - c.half, c.centre, c.centre + c.half);
    EXPECT_TRUE(got == c.window) << c.centre << ": " << got.first << " to " << got.last;
  }
}

}  // namespace
