// Units and scales of a picture, before it is drawn.
#include "app/plot.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <string>

#include "app/channel_names.h"
#include "app/demo_run.h"
#include "app/fit.h"
#include "app/host_run.h"
#include "app/peak_fill.h"
#include "app/signal_units.h"

namespace app {
namespace {

// A run in a picture of which nothing is drawn.
struct Planned {
  Planned(RunData& run, int width) : surface(width, 300) {
    options.widthPx = width;
    options.heightPx = 300;
    host = HostRun(run, error);
    plot.emplace(run, options, *host, surface);
    EXPECT_TRUE(SetTimes(*plot, error) && SetCurrent(*plot, error)) << error;
  }
  DisplayOptions options;
  std::string error;
  embedded::RunRef host;
  gfx::Surface surface;
  std::optional<Plot> plot;
};

TEST(SignalUnits, LongNumbersGetAnotherUnit) {
  const struct {
    const char* unit;
    double largest;
    const char* shown;
    double factor;
  } cases[] = {
      {"mAU", 999'999, "mAU", 1}, {"mAU", 1e6, "kAU", 1e-6},      {"µV", 1.8e7, "V", 1e-6},
      {"AU", 0.0009, "µAU", 1e6}, {"counts", 1e-5, "counts", 1},  // "10^-6 counts" fits no record
      {"", 1e-5, "10^-6", 1e6},   {"EU", 5e9, "10^9 EU", 1e-9},   {"GPa", 2e6, "10^6 GPa", 1e-6},
      {"V", 0, "V", 1},           {"kgf/cm2", 2e6, "kgf/cm2", 1}, {"", 1e60, "", 1},
  };
  for (const auto& c : cases) {
    const ShortUnit shown = ShortenUnit(c.unit, c.largest);
    EXPECT_EQ(shown.unit, c.shown) << c.unit << " " << c.largest;
    EXPECT_NEAR(shown.factor / c.factor, 1, 1e-12) << c.unit << " " << c.largest;
  }
}

TEST(SignalUnits, ChannelsOfOneUnitChangeTogetherAndWithTheirPeaks) {
  RunData run = DemoRun();
  run.channels[0].unit = run.channels[1].unit = "counts";
  run.channels[2].unit = "V";
  run.channels[0].values[7] = 2e6;
  run.channels[1].values[7] = 30;
  run.channels[2].values[7] = 30;
  run.peaks.resize(1);
  run.peaks[0].baselineStart = run.peaks[0].baselineEnd = 500;
  ShortenUnits(run);
  EXPECT_EQ(run.channels[1].unit, "Mcounts");
  EXPECT_DOUBLE_EQ(run.channels[1].values[7], 30e-6);
  EXPECT_DOUBLE_EQ(run.channels[1].perFileUnit, 1e-6);
  EXPECT_EQ(run.channels[2].unit, "V");
  EXPECT_EQ(run.channels[2].values[7], 30);
  EXPECT_DOUBLE_EQ(*run.peaks[0].baselineStart, 500e-6);
}

// A dip of the last sample ran through the time axis, and a first sample out of the picture: their
// times, rounded for the records, lay outside the view.
TEST(Fit, FirstAndLastSampleAreInThePicture) {
  RunData run;
  Trace& trace = run.channels.emplace_back();
  for (int i = 0; i < 500; ++i) {
    trace.timesS.push_back(0.0006 + i * 0.4000013);
    trace.values.push_back(i == 0 ? 900 : i == 499 ? -150 : i % 7);
  }
  Planned planned(run, 500);
  Plot& plot = *planned.plot;
  Fit(plot);
  EXPECT_GE(plot.Rows(0).Pixel(0), plot.render.margin());
  EXPECT_LE(plot.Rows(0).Pixel(499), plot.view.plotBottom);
  EXPECT_LT(plot.view.x0 + 499 * 0.4000013 / plot.view.timePerPixel,
            plot.render.width - plot.render.rightReserve);
}

// Names that find no room get it: a line above the traces, or time behind them.
TEST(ChannelNames, AreNeverCrossed) {
  const struct {
    const char* name;
    double startS;
    std::size_t channels;
  } cases[] = {{"OneFromZero", 0, 1}, {"ManyThatBeginLate", 600, 9}, {"ManyFromZero", 0, 9}};
  for (const auto& c : cases) {
    RunData run;
    for (std::size_t channel = 0; channel < c.channels; ++channel) {
      Trace& trace = run.channels.emplace_back();
      trace.name = "wavelength " + std::to_string(channel);
      trace.startS = c.startS;
      trace.periodS = 1;
      // From peak to peak, over the rows of a list too.
      for (int i = 0; i < 600; ++i) trace.values.push_back(100 * std::pow(std::cos(i / 6.0), 2));
    }
    Planned planned(run, 600);
    Plot& plot = *planned.plot;
    ChooseNames(plot);
    EXPECT_TRUE(NamesHaveRoom(plot)) << c.name;
    EXPECT_EQ(plot.view.t0, 0) << c.name;
  }
}

// Of a noisy peak of more than 250 columns only the first part was filled.
TEST(FillPeaks, AreasOfAnyLength) {
  RunData run;
  Trace& trace = run.channels.emplace_back();
  trace.periodS = 0.1;
  for (int i = 0; i < 20'000; ++i) {
    const double peak = 1000 * std::exp(-std::pow((i - 10'000) / 4000.0, 2));
    trace.values.push_back(peak + (i * 7919 % 31) - 15);
  }
  Peak& wide = run.peaks.emplace_back();
  wide.apexS = 1000;
  wide.startS = 200;
  wide.endS = 1800;
  Planned planned(run, 900);
  Plot& plot = *planned.plot;
  SetPeaks(run, *planned.host, PeakSource::kFile, 1);
  Fit(plot);
  FillPeaks(plot);
  const auto isFilled = [&](double seconds, double value) {
    const TChannel& channel = plot.Channel(0);
    const int row = static_cast<int>(
        plot.Rows(0).ToY(static_cast<LONG>(value / static_cast<double>(channel.unitsPerCount)), 0));
    const int column = static_cast<int>(plot.view.x0 + seconds / plot.view.timePerPixel);
    return planned.surface.Pixel(column, row) != 0x00FFFFFF;
  };
  for (int seconds = 400; seconds <= 1600; seconds += 50) {
    EXPECT_TRUE(isFilled(seconds, 50)) << seconds;
    EXPECT_FALSE(isFilled(seconds, 1040)) << seconds;
  }
  EXPECT_FALSE(isFilled(100, 50));
  EXPECT_FALSE(isFilled(1900, 50));
}

}  // namespace
}  // namespace app
