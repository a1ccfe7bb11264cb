// From a run to its picture: selection, names, peaks, room for labels, and every display option.
#include "app/picture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "app/demo_run.h"
#include "app/host_run.h"
#include "app/label_room.h"
#include "app/render_options.h"
#include "app/sample_grid.h"
#include "app/selection.h"

namespace app {
namespace {

TEST(Shorten, LongNamesAreCutAtAMark) {
  const char* const cases[][3] = {
      {"220 nm", "220 nm", ""},
      {"DAD1 A, Sig=254", "DAD1 A", "Sig=254"},
      {"Conductivity", "3", "Conductivity"},
      {"_underscored", "3", "_underscored"},
  };
  for (const auto& [name, shortName, rest] : cases) {
    EXPECT_EQ(Shorten(name, 3).name, shortName);
    EXPECT_EQ(Shorten(name, 3).rest, rest);
  }
}

std::vector<Trace> Named(std::initializer_list<const char*> names) {
  std::vector<Trace> traces;
  for (const char* name : names) traces.emplace_back().name = name;
  return traces;
}

TEST(Selection, NumbersRangesAndBeginningsOfNames) {
  const std::vector<Trace> traces = Named({"UV 220", "UV 254", "RI", "Cond", "77 K"});
  const struct {
    std::vector<std::string> wanted;
    std::vector<std::size_t> indices;  // empty: refused
  } cases[] = {
      {{"1"}, {0}},         {{"2-3", "1"}, {0, 1, 2}},
      {{"uv"}, {0, 1}},     {{"77"}, {4}},
      {{"cond", "4"}, {3}}, {{"0"}, {}},
      {{"3-2"}, {}},        {{"1-9"}, {}},
      {{""}, {}},           {{"1", "x"}, {}},
  };
  for (const auto& c : cases) {
    std::vector<std::size_t> indices;
    std::string error;
    EXPECT_EQ(FindTraces(traces, c.wanted, indices, error), !c.indices.empty()) << c.wanted[0];
    EXPECT_EQ(indices, c.indices);
    EXPECT_EQ(error.empty(), !c.indices.empty());
  }
}

TEST(Selection, OfManyChannelsOnlySome) {
  std::vector<Trace> spectral;
  for (int nm = 200; nm <= 300; ++nm) spectral.emplace_back().name = std::to_string(nm) + " nm";
  EXPECT_EQ(ChooseChannels(spectral), (std::vector<std::size_t>{0, 20, 40, 60, 80, 100}));
  spectral[50].name = "TIC";
  EXPECT_EQ(ChooseChannels(spectral).size(), kMaxShownChannels);
  EXPECT_EQ(ChooseChannels(Named({"a", "b"})), (std::vector<std::size_t>{0, 1}));
}

TEST(LabelRoom, LargerLabelsFirstAndLinesOnlyInTheSecondRound) {
  const RECT area{0, 0, 100, 100};
  const TraceBands none(100, Band{0, -1});
  TraceBands line = none;
  for (int x = 40; x < 60; ++x) line[static_cast<std::size_t>(x)] = {50, 51};
  TraceBands flank = none;
  flank[45] = {20, 90};
  const RECT inTheWay{40, 40, 50, 60};
  const struct {
    const char* name;
    std::vector<LabelBox> labels;
    std::vector<TraceBands> traces;
    std::vector<bool> chosen;
  } cases[] = {
      {"Apart", {{{0, 0, 10, 10}, 1}, {{10, 0, 20, 10}, 1}}, {none}, {true, true}},
      {"LargerWins", {{{0, 0, 10, 10}, 1}, {{9, 0, 20, 10}, 2}}, {none}, {false, true}},
      {"FirstOfEquals", {{{0, 0, 10, 10}, 1}, {{9, 9, 20, 20}, 1}}, {none}, {true, false}},
      {"OutsideTheArea", {{{-1, 0, 10, 10}, 1}, {{95, 95, 101, 99}, 1}}, {none}, {false, false}},
      {"Line", {{inTheWay, 1}}, {line}, {true}},
      {"LineLastServed", {{inTheWay, 2}, {{45, 30, 55, 45}, 1}}, {line}, {false, true}},
      {"Flank", {{inTheWay, 1}}, {none, flank}, {false}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(LabelsWithRoom(c.labels, c.traces, area, 2, {}, 10), c.chosen) << c.name;
  }
  EXPECT_EQ(LabelsWithRoom({{{0, 0, 9, 9}, 1}}, {}, area, 2, {{5, 5, 6, 6}}, 1),
            std::vector<bool>{false});
}

TEST(HostRun, PeaksOfTheFileBecomeRecords) {
  RunData run = DemoRun();
  Peak peak;
  peak.channel = 1;
  peak.name = "first";
  peak.apexS = 584.26;  // a little off the apex
  peak.startS = 560;
  peak.endS = 610;
  peak.baselineStart = 1.0;
  peak.baselineEnd = 2.0;
  peak.amount = 5;
  run.peaks = {peak};
  run.peaks[0].channel = 1;
  std::string error;
  const embedded::RunRef host = HostRun(run, error);
  ASSERT_NE(host, nullptr) << error;
  host->SetCurrentChannel(1);
  SetPeaks(run, *host, PeakSource::kFile, 1);
  ASSERT_EQ(int{host->peakCount}, 1);
  const PeakRecord record = *host->peaks.At(0);
  const TChannel& channel = *host->channels.At(1);
  EXPECT_EQ(record.start, 5600);
  EXPECT_EQ(record.end, 6100);
  EXPECT_EQ(record.apex, 5843);
  EXPECT_NEAR(record.baselineEnd * static_cast<double>(channel.unitsPerCount), 2, 1e-6);
  EXPECT_EQ(record.amount, 5);
  EXPECT_STREQ(host->calibration.components.At(record.component - 1)->name, "first");

  // Without limits: those of the detected peak around it.
  run.peaks[0].startS = run.peaks[0].endS = std::nullopt;
  SetPeaks(run, *host, PeakSource::kFile, 1);
  EXPECT_LT(host->peaks.At(0)->start, 5780);
  EXPECT_GT(host->peaks.At(0)->end, 5890);

  SetPeaks(run, *host, PeakSource::kDetect, 1);
  EXPECT_GE(int{host->peakCount}, 9);
}

// A file's time is kept on the top of its peak, and only there.
TEST(HostRun, ApexesStandOnTheirPeaks) {
  const struct {
    double statedS;
    LONG apex;
  } cases[] = {{42, 45}, {46, 46}, {53, 53}, {58, 55}};
  for (const auto& c : cases) {
    RunData run;
    Trace& trace = run.channels.emplace_back();
    trace.periodS = 1;
    for (int i = 0; i < 100; ++i) trace.values.push_back(i >= 45 && i <= 55 ? 998 - i % 3 : 0);
    for (const int flank : {43, 44, 56, 57, 58}) {
      trace.values[static_cast<std::size_t>(flank)] = 600;
    }
    Peak& peak = run.peaks.emplace_back();
    peak.apexS = c.statedS;
    peak.startS = 20;
    peak.endS = 80;
    std::string error;
    const embedded::RunRef host = HostRun(run, error);
    ASSERT_NE(host, nullptr) << error;
    SetPeaks(run, *host, PeakSource::kFile, 1);
    EXPECT_EQ(LONG{host->peaks.At(0)->apex}, c.apex) << c.statedS;
  }
}

TEST(HostRun, PeaksThatWouldStandElsewhereAreLeftOut) {
  RunData run = DemoRun();
  for (int i = 1; i < 3; ++i) run.channels[static_cast<std::size_t>(i)].startS = 30;
  std::string error;
  const embedded::RunRef host = HostRun(run, error);
  SetPeaks(run, *host, PeakSource::kDetect, 1);
  host->SetCurrentChannel(0);
  EXPECT_GT(int{host->peakCount}, 0);
  host->SetCurrentChannel(1);
  EXPECT_EQ(int{host->peakCount}, 0);
  ASSERT_EQ(run.notes.size(), 1U);
  EXPECT_NE(run.notes[0].find("2 of 3"), std::string::npos) << run.notes[0];
}

TEST(SampleGrid, LateAndIrregularChannelsKeepTheirSamplesAndGetPeaks) {
  RunData run = DemoRun();
  run.channels[1].startS = 30.04;
  Trace& gap = run.channels[2];
  for (std::size_t i = 0; i < gap.values.size(); ++i) {
    gap.timesS.push_back(static_cast<double>(i) * gap.periodS + (i % 3 == 0 ? 0.04 : 0) +
                         (i > 4000 ? 20 : 0));
  }
  const RunData before = run;
  constexpr double kToleranceS = 0.5;
  PlaceSamples(run, kToleranceS);
  EXPECT_EQ(run.channels[0].values, before.channels[0].values);
  EXPECT_TRUE(run.channels[0].timesS.empty());
  for (const std::size_t c : {1U, 2U}) {
    const Trace& placed = run.channels[c];
    const Trace& own = before.channels[c];
    std::size_t kept = 0;
    for (std::size_t i = 0; i < placed.values.size(); ++i) {
      if (kept < own.values.size() && placed.timesS[i] == own.TimeAt(kept) &&
          placed.values[i] == own.values[kept]) {
        ++kept;
      }
      if (i < placed.grid.first) continue;
      ASSERT_NEAR(placed.timesS[i], static_cast<double>(i) * placed.periodS, kToleranceS) << c;
    }
    EXPECT_EQ(kept, own.values.size()) << c;
  }

  std::string error;
  const embedded::RunRef host = HostRun(run, error);
  ASSERT_NE(host, nullptr) << error;
  SetPeaks(run, *host, PeakSource::kDetect, kToleranceS);
  EXPECT_EQ(run.notes, before.notes);
  const RunData demo = DemoRun();
  const embedded::RunRef plain = HostRun(demo, error);
  ASSERT_TRUE(plain->DetectPeaks(1));
  plain->SetCurrentChannel(1);
  host->SetCurrentChannel(1);
  ASSERT_EQ(int{host->peakCount}, int{plain->peakCount});
  for (int k = 1; k <= host->peakCount; ++k) {
    EXPECT_NEAR(host->rtime(k), plain->rtime(k) + 30.04, 0.3) << k;
  }
}

std::uint64_t HashOf(const DisplayOptions& options, RunData run = DemoRun()) {
  gfx::Surface surface;
  std::string error;
  EXPECT_TRUE(DrawPicture(run, options, surface, error)) << error;
  return surface.Hash();
}

DisplayOptions Small() {
  DisplayOptions options;
  options.widthPx = 500;
  options.heightPx = 300;
  return options;
}

struct Gaussian {
  double apexS;
  double height;
};

Trace Gaussians(const char* name, std::initializer_list<Gaussian> peaks) {
  Trace trace;
  trace.name = name;
  trace.periodS = 1;
  for (int i = 0; i < 600; ++i) {
    double value = 0;
    for (const Gaussian& peak : peaks) {
      value += peak.height * std::exp(-std::pow((i - peak.apexS) / 8, 2));
    }
    trace.values.push_back(value);
  }
  return trace;
}

// Peaks whose labels another trace crosses: their channel comes to stand above it.
TEST(Picture, ChannelsAreArrangedForTheLabels) {
  const Trace labelled = Gaussians("RI", {{100, 1000}, {300, 600}, {500, 600}});
  const Trace crossing = Gaussians("UV", {{290, 480}, {310, 480}, {490, 480}, {510, 480}});
  RunData run;
  run.channels = {labelled, crossing};
  const std::uint64_t arranged = HashOf(Small(), run);
  std::swap(run.channels[0], run.channels[1]);
  EXPECT_EQ(HashOf(Small(), run), arranged);
  DisplayOptions all = Small();
  all.allLabels = true;  // no reason to
  EXPECT_NE(HashOf(all, run), arranged);
}

// The view, asked for the arrows of one peak, filled that peak up to its thousandth point only.
TEST(Picture, ArrowsOfOnePeakChangeNothingButThePlacesOfArrows) {
  RunData run;
  run.channels.emplace_back().periodS = 1;
  for (int i = 0; i < 60'000; ++i) {
    const double noise = i * 7919 % 31;
    run.channels[0].values.push_back(1000 * std::exp(-std::pow((i - 30'000) / 9000.0, 2)) + noise);
  }
  Peak& peak = run.peaks.emplace_back();
  peak.apexS = 30'000;
  peak.startS = 5'000;
  peak.endS = 55'000;
  DisplayOptions options;
  options.widthPx = 900;
  options.heightPx = 400;
  options.selectedPeak = 1;
  std::string error;
  gfx::Surface plain;
  gfx::Surface marked;
  ASSERT_TRUE(DrawPicture(run, options, plain, error)) << error;
  options.markers = Markers::kSelected;
  ASSERT_TRUE(DrawPicture(run, options, marked, error)) << error;
  int changed = 0;
  for (int y = 0; y < 400; ++y) {
    for (int x = 0; x < 900; ++x) changed += plain.Pixel(x, y) != marked.Pixel(x, y) ? 1 : 0;
  }
  EXPECT_GT(changed, 60);
  EXPECT_LT(changed, 3 * 24 * 24);
}

TEST(Picture, LabelsFollowThePeaksOfTheFile) {
  RunData run = DemoRun();
  Peak peak;
  peak.apexS = 378;
  peak.startS = 360;
  peak.endS = 400;
  run.peaks = {peak};
  DisplayOptions options = Small();
  const std::uint64_t time = HashOf(options, run);
  run.peaks[0].name = "Caffeine";
  run.peaks[0].amount = 1.25;
  const std::uint64_t name = HashOf(options, run);
  EXPECT_NE(name, time);
  options.labels = PeakLabels::kNameAndAmount;
  EXPECT_NE(HashOf(options, run), name);
  options.labels = PeakLabels::kTime;
  EXPECT_EQ(HashOf(options, run), time);
}

}  // namespace
}  // namespace app
