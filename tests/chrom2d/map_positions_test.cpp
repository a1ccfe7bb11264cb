// Device positions against times, wavelengths and channels.
#include <cfloat>
#include <climits>
#include <limits>
#include <memory>

#include "tests/chrom2d/map_fixture.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr LONG kMin = INT32_MIN, kMax = INT32_MAX;

class Positions : public Maps {
 protected:
  // 400 columns of 10 s, 201 rows of 100 nm.
  Positions() {
    map.mapRect = {50, 20, 450, 221};
    map.timeTo = 10;
    map.waveFrom = 200;
    map.waveTo = 300;
  }
  void TearDown() override {
    made_.reset();
    Maps::TearDown();
  }

 private:
  std::unique_ptr<MapWindow> made_ = std::make_unique<MapWindow>(nullptr);

 protected:
  MapWindow& map = *made_;
};

TEST_F(Positions, ColumnsOfTimes) {
  struct {
    double time;
    int x;
  } const cases[] = {{0, 50},
                     {10, 449},
                     {5, 250},
                     {-1, 10},
                     {DBL_MAX, 32767},
                     {kInfinity, 32767},
                     {9e307, 32767},
                     {8e307, 32767},
                     {820.1, 32767},
                     {820, 32767},
                     {-1e9, -32768},
                     {-DBL_MAX, -32768},
                     {-kInfinity, -32768},
                     {kNaN, 50}};
  for (const auto& c : cases) EXPECT_EQ(map.Time2X(c.time), c.x) << c.time;
}

TEST_F(Positions, RowsOfWavelengths) {
  struct {
    double wavelength;
    int y;
  } const cases[] = {
      {200, 220},          {300, 20},           {250, 120},    {200.25, 219},  // half-way: up
      {199.9, 220},        {199.7, 221},        {1e9, -32768}, {-1e9, 32767},
      {kInfinity, -32768}, {-kInfinity, 32767}, {kNaN, 221}};
  for (const auto& c : cases) EXPECT_EQ(map.ChanV2Y(c.wavelength), c.y) << c.wavelength;
}

TEST_F(Positions, InvertOnEveryColumnAndRow) {
  map.timeFrom = -3;
  EXPECT_DOUBLE_EQ(map.X2Time(449), 10);
  EXPECT_DOUBLE_EQ(map.Y2ChanV(20), 300);
  for (int x = 40; x < 460; ++x) ASSERT_EQ(map.Time2X(map.X2Time(x)), x);
  for (int y = 10; y < 230; ++y) ASSERT_EQ(map.ChanV2Y(map.Y2ChanV(y)), y);
}

TEST_F(Positions, WithoutASpanOrAMap) {
  map.timeTo = map.timeFrom + 0.9e-27;
  map.waveTo = map.waveFrom;
  for (const double value : {-5.0, 0.0, 200.0, kNaN}) {
    EXPECT_EQ(map.Time2X(value), 50);
    EXPECT_EQ(map.ChanV2Y(value), 221);
  }
  map.timeTo = 10;
  map.waveTo = 300;
  map.mapRect = {50, 20, 51, 21};  // one pixel
  EXPECT_EQ(map.Time2X(10), 50);
  EXPECT_EQ(map.ChanV2Y(300), 20);
  EXPECT_EQ(map.X2Time(50) + map.Y2ChanV(20), 0);
  map.mapRect = {50, 20, 40, 10};  // no layout that fits
  EXPECT_EQ(map.X2Time(45) + map.Y2ChanV(15), 0);
}

TEST_F(Positions, StayInRangeForAnyRectangleAndRange) {
  const double ranges[] = {-DBL_MAX, -1, 0, 1e-300, 10, DBL_MAX, kInfinity, kNaN};
  for (const RECT& rect : {RECT{kMin, kMin, kMax, kMax}, RECT{kMax, kMax, kMin, kMin},
                           RECT{0, 0, 0, 0}, RECT{kMax - 1, kMax - 1, kMax, kMax}}) {
    map.mapRect = rect;
    for (const double from : ranges) {
      for (const double to : ranges) {
        map.timeFrom = map.waveFrom = from;
        map.timeTo = map.waveTo = to;
        for (const double value : ranges) {
          // The rectangle's own sides are not limited.
          const int x = map.Time2X(value), y = map.ChanV2Y(value);
          EXPECT_TRUE(x == rect.left || (x >= -32768 && x <= 32767)) << x;
          EXPECT_TRUE(y == rect.bottom || (y >= -32768 && y <= 32767)) << y;
        }
      }
    }
  }
}

TEST_F(Positions, NearestChannel) {
  run = MakeSpectralRun({.channels = 3, .lowest = 200, .step = 10, .samples = 2});
  MapWindow spectral(run.get());
  struct {
    double wavelength;
    int channel;
  } const cases[] = {{100, 0}, {200, 0}, {204.9, 0},     {205, 1},        {214, 1},
                     {215, 2}, {500, 2}, {kInfinity, 2}, {-kInfinity, 0}, {kNaN, 2}};
  for (const auto& c : cases) EXPECT_EQ(spectral.GetMapChannel(c.wavelength), c.channel);
  spectral.mapRect = {0, 0, 10, 5};  // rows of 5 nm
  const int rows[] = {2, 2, 1, 1, 0};
  for (int y = 0; y < 5; ++y) EXPECT_EQ(spectral.GetMapChannel(y), rows[y]) << y;
  EXPECT_EQ(map.GetMapChannel(214.0), 0);  // no spectral channels
}

// Channels in the table are ordered by wavelength, in the run they are not.
TEST_F(Positions, ChannelsAreTheRunsOwn) {
  embedded::RunData data;
  for (const char* name : {"254", "UV", "210", "280", "230"}) {
    data.channels.emplace_back().name = name;
    data.channels.back().periodSec = 1;
    data.channels.back().counts = {1, 2, 3};
  }
  std::string fault;
  run = embedded::MakeRun(data, fault);
  MapWindow spectral(run.get());
  EXPECT_EQ(spectral.GetMapChannel(211.0), 2);
  EXPECT_EQ(spectral.GetMapChannel(242.0), 0);
  EXPECT_EQ(spectral.GetMapChannel(241.0), 4);
  EXPECT_EQ(spectral.waveFrom, 210);
  EXPECT_EQ(spectral.waveTo, 280);
}

}  // namespace
