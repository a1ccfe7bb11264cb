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
#include "platform/gfx/context.h"

namespace {

// What the library called before this program had static objects.
const std::vector<std::string> callsOfTheLoad = other_host::Calls();

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
