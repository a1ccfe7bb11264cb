// Device positions against times, wavelengths and channels.
#include <limits>

#include "tests/chrom2d/map_fixture.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

class Positions : public Maps {
 protected:
  // 400 columns of 10 s, 201 rows of 100 nm.
  static void Place(MapWindow& map) {
    map.mapRect = {50, 20, 450, 221};
    map.timeTo = 10;
    map.waveFrom = 200;
    map.waveTo = 300;
  }
};

TEST_F(Positions, ColumnsOfTimes) {
  MapWindow map(nullptr);
  Place(map);
  struct {
    double time;
    int x;
  } const cases[] = {{0, 50},        {10, 449},          {5, 250},       {-1, 10},  {820, 32767},
                     {-1e9, -32768}, {kInfinity, 32767}, {9e307, 32767}, {kNaN, 50}};
  for (const auto& c : cases) EXPECT_EQ(map.Time2X(c.time), c.x) << c.time;
}

TEST_F(Positions, RowsOfWavelengths) {
  MapWindow map(nullptr);
  Place(map);
  struct {
    double wavelength;
    int y;
  } const cases[] = {{200, 220},   {300, 20},     {250, 120},          {200.25, 219},  // up
                     {199.7, 221}, {1e9, -32768}, {-kInfinity, 32767}, {kNaN, 221}};
  for (const auto& c : cases) EXPECT_EQ(map.ChanV2Y(c.wavelength), c.y) << c.wavelength;
}

TEST_F(Positions, InvertOnEveryColumnAndRow) {
  MapWindow map(nullptr);
  Place(map);
  map.timeFrom = -3;
  EXPECT_DOUBLE_EQ(map.X2Time(449), 10);
  EXPECT_DOUBLE_EQ(map.Y2ChanV(20), 300);
  for (int x = 40; x < 460; ++x) ASSERT_EQ(map.Time2X(map.X2Time(x)), x);
  for (int y = 10; y < 230; ++y) ASSERT_EQ(map.ChanV2Y(map.Y2ChanV(y)), y);
  map.mapRect = {50, 20, 51, 21};  // one pixel
  EXPECT_EQ(map.X2Time(50) + map.Y2ChanV(20), 0);
  EXPECT_EQ(map.GetMapChannel(214.0), 0);  // no spectral channels
}

// Channels in the table are ordered by wavelength, in the run they are not.
TEST_F(Positions, NearestChannel) {
  embedded::RunData data;
  for (const char* name : {"254", "UV", "210", "280", "230"}) {
    data.channels.emplace_back().name = name;
    data.channels.back().periodSec = 1;
    data.channels.back().counts = {1, 2, 3};
  }
  std::string fault;
  run = embedded::MakeRun(data, fault);
  MapWindow map(run.get());
  EXPECT_EQ(map.waveFrom, 210);
  EXPECT_EQ(map.waveTo, 280);
  struct {
    double wavelength;
    int channel;
  } const cases[] = {{100, 2}, {211, 2}, {241.9, 4}, {242, 0}, {500, 3}, {kNaN, 3}};
  for (const auto& c : cases) EXPECT_EQ(map.GetMapChannel(c.wavelength), c.channel);
}

}  // namespace
