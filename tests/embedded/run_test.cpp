// Runs built from arrays: what their records then say.
#include "embedded/run.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "elugraph/host/engine.h"
#include "embedded/quantise.h"

namespace embedded {
namespace {

ChannelData Signal(std::vector<double> values, double startSec = 0.0, double periodSec = 0.5) {
  ChannelData data;
  data.name = "UV";
  data.values = std::move(values);
  data.startSec = startSec;
  data.periodSec = periodSec;
  return data;
}

RunRef Make(std::vector<ChannelData> channels, std::vector<ChannelData> aux = {}) {
  RunData data;
  data.channels = std::move(channels);
  data.auxChannels = std::move(aux);
  std::string fault;
  RunRef run = MakeRun(data, fault);
  EXPECT_EQ(fault, "");
  return run;
}

PeakRecord Peak(LONG start, LONG apex, LONG end) {
  PeakRecord peak{};
  peak.start = start;
  peak.apex = apex;
  peak.end = end;
  return peak;
}

TEST(Quantise, ScaleIsTheFinestThatFitsAndTheErrorHalfACount) {
  struct Case {
    std::vector<double> values;
    float scale;
  };
  for (const Case& c :
       {Case{{0.0, -3.0, 1073741823.0}, 1.0F}, Case{{1073741824.0}, 10.0F}, Case{{0.0}, 1.0F},
        Case{{0.5}, 1e-9F}, Case{{1.07374}, 1e-9F}, Case{{1.0737418238}, 1e-8F},
        Case{{-1.0738, 0.1}, 1e-8F}, Case{{4503.125, -21.2636}, 1e-5F}, Case{{1e-30}, 1e-37F},
        Case{{1e-300}, 1e-37F}, Case{{1e47, -1e47}, 1e38F}}) {
    Counts counts;
    ASSERT_EQ(Quantise(c.values, counts), "");
    EXPECT_EQ(counts.unitsPerCount, c.scale) << c.values[0];
    const double unit = static_cast<double>(counts.unitsPerCount);
    for (std::size_t i = 0; i < c.values.size(); ++i) {
      EXPECT_LE(std::abs(counts.counts[i]), kMaxCount);
      EXPECT_LE(std::fabs(counts.counts[i] * unit - c.values[i]), 0.5000001 * unit) << c.values[i];
    }
  }
}

// The time of every sample that the axes show, from the records alone.
double ShownTime(const chromatogram& run, const TChannel& channel, LONG index) {
  const double ms = channel.times != nullptr
                        ? channel.times[index] - channel.timeBase
                        : index * 1000.0 * static_cast<double>(channel.samplePeriod);
  return (ms + run.timeOffsetMs) / 1000.0;
}

struct TimingCase {
  const char* name;
  double starts[2];
  double periods[2];
  LONG offsetMs;
  bool tables[2];
};
const TimingCase kStartsTiming[] = {
    {"FromZero", {0, 0}, {0.5, 0.5}, 0, {false, false}},
    {"BelowZero", {-2.25, -2.25}, {0.4, 0.4}, -2250, {false, false}},
    {"SecondLater", {-2.25, 0.6}, {0.4, 0.4}, -2250, {false, true}},
    {"SecondEarlier", {65.0, 63.55}, {0.3333, 0.2}, 63550, {true, false}},
    {"WithinAMillisecond", {1.0, 1.0004}, {0.5, 0.5}, 1000, {false, false}}};

void ExpectShown(const TimingCase& c) {
  const std::vector<double> values(50, 1.0);
  for (const bool asTimes : {false, true}) {
    std::vector<ChannelData> channels;
    for (int i = 0; i < 2; ++i) {
      channels.push_back(Signal(values, c.starts[i], c.periods[i]));
      for (int k = 0; asTimes && k < 50; ++k) {
        channels.back().timesSec.push_back(c.starts[i] + k * c.periods[i]);
      }
    }
    const RunRef run = Make(channels);
    EXPECT_EQ(+run->timeOffsetMs, c.offsetMs);
    for (int i = 0; i < 2; ++i) {
      const TChannel& channel = *run->channels.At(i);
      EXPECT_EQ(channel.times != nullptr, c.tables[i]) << i;
      for (LONG k = 0; k < 50; ++k) {
        const double expected = c.starts[i] + k * c.periods[i];
        EXPECT_NEAR(ShownTime(*run, channel, k), expected, 0.00051) << i << ":" << k;
        EXPECT_NEAR(run->TimeAt(i, k), expected, 0.00051);
        EXPECT_EQ(run->IndexAt(i, expected), k);
        EXPECT_GE(ShownTime(*run, channel, k) - run->timeOffsetMs / 1000.0, -0.0005);
      }
    }
  }
}

TEST(Timing, EverySampleIsShownAtItsTime) {
  for (const TimingCase& c : kStartsTiming) {
    SCOPED_TRACE(c.name);
    ExpectShown(c);
  }
}

TEST(Timing, IrregularTimesGetATableAndJitterDoesNot) {
  ChannelData gap = Signal(std::vector<double>(5, 1.0));
  gap.timesSec = {0.0, 1.0, 2.0, 5.0, 6.0};
  ChannelData jitter = gap;
  jitter.timesSec = {0.0, 1.04, 2.0, 2.97, 4.0};
  const RunRef run = Make({jitter, gap}, {Signal({5, 6}, 12.0, 2.0)});
  EXPECT_EQ(+run->channels.At(0)->times, nullptr);
  ASSERT_NE(+run->channels.At(1)->times, nullptr);
  EXPECT_EQ(run->channels.At(1)->times[3], 5000);
  EXPECT_EQ(run->PeakPlacementErrorSec(0), 0.0);
  EXPECT_NEAR(run->PeakPlacementErrorSec(1), 1.0, 1e-9);  // 2.0 against 3.0 on a grid of 1.5 s
  // Auxiliary channels always have one; their scale counts from the signal's own zero.
  const TChannel& aux = *run->auxChannels.At(0);
  ASSERT_NE(+aux.times, nullptr);
  EXPECT_EQ(aux.times[1] - aux.timeBase, 14'000);
  EXPECT_EQ(+aux.zero, 0);
}

TEST(Timing, MakeRegularKeepsWhatLiesOnStraightLines) {
  ChannelData data;
  data.timesSec = {-1.0, 0.0, 1.0, 1.0, 2.5, 7.0, 8.0, 9.0};
  for (double time : data.timesSec) data.values.push_back(3.0 * time + 1.0);
  ASSERT_EQ(MakeRegular(data), "");
  EXPECT_EQ(data.values.size(), 11U);
  for (std::size_t i = 0; i < data.values.size(); ++i) {
    const double time = data.startSec + static_cast<double>(i) * data.periodSec;
    EXPECT_NEAR(data.values[i], 3.0 * time + 1.0, 1e-12);
  }
  EXPECT_EQ(Make({data})->PeakPlacementErrorSec(0), 0.0);
}

TEST(MakeRun, ReportsTheChannelAndTheCause) {
  ChannelData decreasing = Signal({1, 2});
  decreasing.timesSec = {1.0, 0.5};
  ChannelData few = Signal({1, 2});
  few.timesSec = {1.0};
  ChannelData scale = Signal({});
  scale.counts = {1};
  scale.unitsPerCount = 0.0F;
  for (const auto& [channel, cause] : std::vector<std::pair<ChannelData, const char*>>{
           {decreasing, "time 1 lies before"},
           {few, "2 samples, but 1 times"},
           {scale, "units per count"},
           {Signal({1, std::nan("")}), "sample 1 is not a number"},
           {Signal({1, 2}, 0.0, 0.0), "period"},
           {Signal({1, 2, 3}, 0.0, 1e6), "24 days"}}) {
    RunData data;
    data.channels = {Signal({1}), channel};
    std::string fault;
    EXPECT_EQ(MakeRun(data, fault), nullptr) << cause;
    EXPECT_EQ(fault.substr(0, 11), "channel 2: ") << fault;
    EXPECT_NE(fault.find(cause), std::string::npos) << fault;
  }
}

TEST(MakeRun, NamesFitTheRecord) {
  struct Case {
    const char *name, *description, *shownName, *shownDescription;
  };
  for (const Case& c : {Case{"UV 254", "", "UV 254", ""}, Case{"12345678", "d", "12345678", "d"},
                        Case{"DAD1 A, Sig=254", "", "DAD1 A,", "Sig=254"},
                        Case{"Conductivity", "", "Conduct.", "Conductivity"},
                        Case{"Messgr\xC3\xB6\xC3\x9F"
                             "e",
                             "", "Messgr.",
                             "Messgr\xC3\xB6\xC3\x9F"
                             "e"}}) {
    ChannelData data = Signal({1});
    data.name = c.name;
    data.description = c.description;
    data.unit = "\xC2\xB5mol/min/l";
    const RunRef run = Make({data});
    EXPECT_STREQ(run->channels.At(0)->name, c.shownName);
    EXPECT_STREQ(run->channels.At(0)->description, c.shownDescription);
    EXPECT_STREQ(run->channels.At(0)->unit, "\xC2\xB5mol/mi");
  }
}

TEST(MakeRun, LevelsAndCounts) {
  ChannelData data = Signal({-0.25, 1.5, 0.5});
  data.zero = 0.5;
  ChannelData flat = Signal({7, 7});
  const RunRef run = Make({data, flat, Signal({}, 0.0, 0.0)});
  const TChannel& first = *run->channels.At(0);
  const double unit = static_cast<double>(first.unitsPerCount);
  EXPECT_NEAR(first.zero * unit, 0.5, 1e-8);
  EXPECT_NEAR(first.rangeLow * unit, -0.25, 1e-8);
  EXPECT_NEAR(first.defaultFullScale * unit, 1.75, 1e-8);
  EXPECT_EQ(+run->channels.At(1)->zero, 7);
  EXPECT_EQ(+run->channels.At(1)->defaultFullScale, 1);
  EXPECT_EQ(+run->channels.At(2)->samples, nullptr);
  EXPECT_EQ(+run->sampleCount, 2);  // what every channel with samples has
  for (const auto& [each, text, value] : {std::tuple{TimeUnit::kSeconds, "s", 90.0},
                                          {TimeUnit::kMinutes, "min", 1.5},
                                          {TimeUnit::kHours, "h", 0.025}}) {
    run->SetTimeUnit(each);
    EXPECT_STREQ(run->window->xunitsTxt(), text);
    EXPECT_DOUBLE_EQ(run->units(90.0), value);
  }
  run->zero(1);
  EXPECT_EQ(+first.zero, first.samples[1]);
}

TEST(Lifetime, LivesWhileReferenced) {
  RunRef run = Make({Signal({1, 2})});
  chromatogram* record = run.get();
  const THoldWindow* view = record->window;
  const TChannel* channel = record->channels.At(0);
  EXPECT_EQ(chromatogram::pIs(record), record);
  EXPECT_EQ(Run::Of(view), run.get());
  EXPECT_EQ(Run::Of(channel), run.get());
  record->AddRef();
  run.reset();
  EXPECT_EQ(chromatogram::pIs(record), record);
  EXPECT_EQ(+record->channels.At(0)->sampleCount, 2);
  record->Release();
  EXPECT_EQ(chromatogram::pIs(record), nullptr);
}

TEST(Peaks, TablesAreCheckedSortedAndTimed) {
  const RunRef run = Make({Signal({0, 1, 2, 1, 0, 1, 0}, -1.0)});
  for (const PeakRecord& bad : {Peak(-1, 0, 1), Peak(2, 1, 3), Peak(0, 2, 1), Peak(0, 1, 7)}) {
    EXPECT_NE(run->SetPeaks(0, {bad}, false), "");
  }
  EXPECT_NE(run->SetPeaks(1, {}, false), "");
  EXPECT_EQ(+run->peakCount, 0);
  ASSERT_EQ(run->SetPeaks(0, {Peak(4, 5, 6), Peak(0, 2, 4)}, false), "");
  EXPECT_EQ(+run->peakCount, 2);
  EXPECT_EQ(run->rtime(1), 0.0);  // sample 2 of a run that starts at −1 s
  EXPECT_EQ(run->rtime(2), 1.5);
}

TEST(Peaks, BaselinesRunStraightUnderAClusterUnlessAValleyLiesLower) {
  struct Case {
    std::vector<LONG> counts;
    std::vector<PeakRecord> peaks;
    std::vector<LONG> baselines;  // start and end of each
  };
  const std::vector<PeakRecord> two{Peak(0, 1, 2), Peak(2, 3, 4)};
  for (const Case& c :
       {Case{{0, 9, 5, 9, 4}, two, {0, 2, 2, 4}},  // valley above: one line
        Case{{4, 9, 1, 9, 4}, two, {4, 1, 1, 4}},  // valley below: two lines
        Case{{0, 9, 5, 9, 4}, {Peak(0, 1, 1), Peak(2, 3, 4)}, {0, 9, 5, 4}},  // apart
        Case{{7, 9, 5, 9, 4}, {Peak(0, 0, 0)}, {7, 7}}}) {
    ChannelData data;
    data.counts = c.counts;
    data.periodSec = 1.0;
    const RunRef run = Make({data});
    ASSERT_EQ(run->SetPeaks(0, c.peaks, false), "");
    run->basecalc(0);
    std::vector<LONG> got;
    for (int i = 0; i < run->peakCount; ++i) {
      got.push_back(+run->peaks.At(i)->baselineStart);
      got.push_back(+run->peaks.At(i)->baselineEnd);
    }
    EXPECT_EQ(got, c.baselines);
  }
}

// A table of another channel must never be read with this channel's samples.
TEST(Peaks, EachChannelShowsATableThatFitsItsSamples) {
  const RunRef run =
      Make({Signal({0, 5, 0, 5, 0}), Signal({1, 2, 3, 2, 1}), Signal({0, 9, 0}, 0, 1.0)});
  ASSERT_EQ(run->SetPeaks(0, {Peak(0, 1, 2), Peak(2, 3, 4)}, false), "");
  run->basecalc(1);  // the same grid: the current channel's peaks over its own samples
  EXPECT_EQ(+run->peakCount, 2);
  EXPECT_EQ(+run->peaks.At(0)->baselineStart, run->channels.At(1)->samples[0]);
  run->basecalc(2);
  EXPECT_EQ(+run->peakCount, 0);
  EXPECT_EQ(+run->sampleInterval, 1.0F);
  ASSERT_EQ(run->SetPeaks(2, {Peak(0, 1, 2)}, true), "");
  run->basecalc(2);
  EXPECT_EQ(+run->peakCount, 1);
  EXPECT_EQ(run->rtime(1), 1.0);
  run->recalctime();  // back to the current channel
  EXPECT_EQ(+run->peakCount, 2);
  EXPECT_EQ(+run->sampleInterval, 0.5F);
  run->curchan() = 2;
  run->recalctime();
  EXPECT_EQ(+run->peakCount, 1);
}

TEST(Acquisition, GrowsAndMeasuresThePeriod) {
  RunData data;
  data.channels = {Signal({}, 0.0, 0.5), Signal({3}), Signal({}, 0.0, 0.0)};
  data.auxChannels = {Signal({}, 0.0, 1.0)};
  data.channels[0].counts = {1};
  data.channels[1].timesSec = {0.25};
  data.acquiring = true;
  std::string fault;
  const RunRef run = MakeRun(data, fault);
  ASSERT_NE(run, nullptr) << fault;
  const std::vector<LONG> more{2, 9, 4};
  EXPECT_EQ(run->AppendSamples(0, more, std::vector<double>{1.8}), "");
  EXPECT_NE(run->AppendSamples(1, more, std::vector<double>{1.8}), "");
  EXPECT_NE(run->AppendSamples(1, more, std::vector<double>{1, 2, 1.5}), "");
  EXPECT_EQ(+run->channels.At(1)->sampleCount, 1);
  EXPECT_EQ(run->AppendSamples(1, more, std::vector<double>{1, 2, 3.25}), "");
  TChannel& first = *run->channels.At(0);
  EXPECT_EQ(+first.sampleCount, 4);
  EXPECT_EQ(first.GetCyctimeRT(), 0.5F);
  first.UpdateCyctimeRT();
  EXPECT_NEAR(static_cast<double>(first.GetCyctimeRT()), 1.8 / 3, 1e-6);
  EXPECT_EQ(+run->state, 5);
  ASSERT_EQ(run->AppendAuxSamples(0, more, std::vector<double>{5, 6, 8}), "");
  EXPECT_EQ(run->auxChannels.At(0)->times[2], 8000);
  run->FinishAcquisition();
  EXPECT_EQ(+run->state, 0);
  EXPECT_NE(run->AppendSamples(0, more), "");
}

}  // namespace
}  // namespace embedded
