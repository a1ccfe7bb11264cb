// The shared library bound to another host than the embedded one.
#include "tests/otherhost/other_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <stdexcept>

#include "elugraph/chrom2d/chrom2d_base.h"
#include "elugraph/trace/each_point.h"
#include "elugraph/trace/get_time.h"
#include "elugraph/trace/poly_line_pool.h"
#include "elugraph/trace/yval.h"
#include "platform/gfx/context.h"

namespace {

// What the library called before this program had static objects.
const std::vector<std::string> callsOfTheLoad = other_host::Calls();

// Ten columns of 1 s over a saw of two samples per second.
struct Trace {
  Trace() {
    for (LONG i = 0; i < 20; ++i) samples.push_back(i % 4 * 10);
    channel.samples = samples.data();
    channel.sampleCount = static_cast<LONG>(samples.size());
    channel.samplePeriod = 0.5F;
    channel.unitsPerCount = 1.0F;
  }
  std::vector<LONG> samples;
  TChannel channel{};
};

TEST(OtherHost, DrawsATraceThroughTheSharedLibrary) {
  Trace trace;
  std::string journal;
  const HDC hdc = gfx::CreateJournalContext(journal);
  {
    PolyLinePool pool(1000, nullptr, hdc);
    YVAL yval(&trace.channel, 100, 1.0, false, 0.0, 0.0);
    GetTime time(&trace.channel, 0.0, 10.0, 10, 0.5, 1.0);
    EachPoint each(pool, yval, time, 0, 5, 100, nullptr, nullptr);
    each.Draw(0, 1, trace.samples.data(), 20, true, 0, nullptr);
  }
  DeleteDC(hdc);
  std::string points;
  for (int x = 5; x < 15; ++x) {
    const int low = x % 2 == 1 ? 100 : 80;
    for (const int y : {low, low - 10}) points += " " + std::to_string(x) + "," + std::to_string(y);
  }
  EXPECT_NE(journal.find(points), std::string::npos) << journal;
}

// The host's own services answer the library's calls.
TEST(OtherHost, ImpossibleStatesReachThisHost) {
  other_host::Calls().clear();
  GetTime time(nullptr, 0.0, 10.0, 10, 0.5, 1.0);
  FixedPoint64 step, phase;
  step.value = 0;
  time.tfrom2Idx(1000, step, phase);
  EXPECT_EQ(other_host::Calls(), std::vector<std::string>{"int3call"});
}

TEST(OtherHost, TheLoadReadsTheScaleAndThenLooksForTheTemplates) {
  const std::vector<std::string> expected = {"read CHROM_2D_COLORS/FORMULA",
                                             "read CHROM_2D_COLORS/COLOR00", "not found 14114",
                                             "not found 14150"};
  EXPECT_EQ(callsOfTheLoad, expected);
}

// Behind everything that the program itself does at its end.
TEST(OtherHost, TheUnloadWritesTheScaleLast) {
  EXPECT_EXIT(
      {
        other_host::Answer().onCall = [](const std::string& what) {
          std::fprintf(stderr, "%s;", what.c_str());
        };
        std::atexit([] { std::fputs("program;", stderr); });
        std::exit(0);
      },
      testing::ExitedWithCode(0),
      testing::Eq("program;write CHROM_2D_COLORS/FORMULA=LINE;write CHROM_2D_COLORS/COLOR00=0;"
                  "write CHROM_2D_COLORS/COLOR01=16777215;read CHROM_2D_COLORS/COLOR02;"));
}

TEST(OtherHost, AFailureOfTheUnloadEndsThere) {
  EXPECT_EXIT(
      {
        other_host::Answer().onCall = [](const std::string& what) {
          std::fprintf(stderr, "%s;", what.c_str());
          if (what.starts_with("write")) throw std::runtime_error(what);
        };
        std::exit(0);
      },
      testing::ExitedWithCode(0),
      testing::Eq("write CHROM_2D_COLORS/FORMULA=LINE;exceptout SaveColorSettings catched;"));
}

// A run of three wavelengths, made by hand.
struct SpectralRun : chromatogram {
  SpectralRun() : chromatogram{} {
    const char* const names[] = {"200", "210", "220"};
    for (int i = 0; i < 3; ++i) {
      std::strcpy(list[i].name, names[i]);
      list[i].samples = samples;
      list[i].sampleCount = 4;
      items[i] = &list[i];
    }
    channels = {items, 0, 3};
    channelCount = 3;
    sampleCount = 4;
    sampleInterval = 1.0F;
    window = &display;
  }
  const LONG samples[4] = {0, 50, 100, 0};
  TChannel list[3]{};
  TChannel* items[3]{};
  THoldWindow display{};
};

// What the host cannot give costs the picture or the axes, not more.
TEST(OtherHost, MapsShowWhatTheyCan) {
  struct {
    other_host::Answers answers;
    bool picture, axes;
  } const cases[] = {
      {{}, true, true}, {{.bitmaps = false}, false, true}, {{.unitsFail = true}, true, false}};
  for (const auto& c : cases) {
    const std::size_t objects = gfx::LiveObjects();
    std::string journal;
    const HDC hdc = gfx::CreateJournalContext(journal);
    SpectralRun run;
    other_host::Calls().clear();
    {
      TChrom2DBase map(nullptr, ResIdCheck(1U, nullptr, RT_DIALOG), &run, nullptr);
      other_host::Answer() = c.answers;
      EXPECT_NO_THROW(map.draw(hdc, {0, 0, 300, 200}));
      other_host::Answer() = {};
    }
    for (const char* once : {"AddRef", "Release"}) {
      EXPECT_EQ(std::ranges::count(other_host::Calls(), once), 1) << once;
    }
    EXPECT_EQ(journal.find("dib") != std::string::npos, c.picture) << journal;
    EXPECT_EQ(journal.find("\"210\"") != std::string::npos, c.axes) << journal;
    DeleteDC(hdc);
    EXPECT_EQ(gfx::LiveObjects(), objects);
  }
}

}  // namespace
