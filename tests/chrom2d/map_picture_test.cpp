// The coloured picture and where it is copied.
#include <cfenv>

#include "platform/gfx/context.h"
#include "tests/chrom2d/map_fixture.h"

namespace {

class Pictures : public Maps {
 protected:
  // What a raster context shows of the map alone: ticks of the axes reach into it.
  static gfx::Surface Drawn(MapWindow& map, int width, int height) {
    gfx::Surface surface(width, height);
    const HDC hdc = gfx::CreateRasterContext(surface, gfx::BuiltinText());
    EXPECT_TRUE(map.ViewsCalc(hdc, {0, 0, width, height}));
    map.graphs(hdc, {0, 0, width, height});
    DeleteDC(hdc);
    return surface;
  }
  static std::string Journal(MapWindow& map, const RECT& rect) {
    std::string journal;
    const HDC hdc = gfx::CreateJournalContext(journal);
    map.draw(hdc, rect);
    DeleteDC(hdc);
    return journal;
  }
  static int Count(const std::string& text, const std::string& word) {
    int count = 0;
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
      ++count;
    }
    return count;
  }
};

// Exactly what ColorOfValue gives for the grid, also for ranges beyond 32 bits.
TEST_F(Pictures, HaveTheColorsOfTheGridWithTheLowestWavelengthAtTheBottom) {
  const Colors colors = {RGB(1, 2, 3), RGB(200, 100, 0), RGB(0, 255, 7)};
  for (const ScaleFormula formula : {ScaleFormula::LINE, ScaleFormula::LOG}) {
    SetScale(colors, formula);
    for (const double height : {1.0, 40.0, 5000.0, 4.2e9}) {
      run = MakeSpectralRun({.signal = [&](double wavelength, double timeSec) {
        return -height / 2 + height * GaussianPeak(wavelength, timeSec) / 101'000;
      }});
      MapWindow map(run.get());
      const gfx::Surface shown = Drawn(map, 300, 150);
      LONG lowest = 0, highest = 0;
      ASSERT_TRUE(map.heightMap.GetValueRange(&lowest, &highest));
      const double s = 1.0 / (static_cast<double>(highest) - lowest);
      const RECT rect = map.mapRect;
      for (LONG y = rect.top; y < rect.bottom; ++y) {
        const LONG* heights = map.heightMap.Row(rect.bottom - 1 - y);
        for (LONG x = rect.left; x < rect.right; ++x) {
          ASSERT_EQ(shown.Pixel(x, y), ColorOf(lowest, s, heights[x - rect.left]))
              << x << ", " << y << " of " << height;
        }
      }
      if (height < 5000) continue;
      EXPECT_GT(GetGValue(shown.Pixel(map.Time2X(40), map.ChanV2Y(230))), 230);
      EXPECT_LT(GetGValue(shown.Pixel(map.Time2X(40), map.ChanV2Y(290))), 150);
    }
  }
}

TEST_F(Pictures, AreCopiedWhileTheExtentStaysAndStretchedWhenItChanges) {
  run = MakeSpectralRun({});
  MapWindow map(run.get());
  const std::string first = Journal(map, {0, 0, 300, 150});
  EXPECT_EQ(Count(first, "\ndib "), 1) << first;
  EXPECT_EQ(Journal(map, {0, 0, 300, 150}), first);
  // Elsewhere: the same picture.
  const Bitmap* picture = map.picture.get();
  const std::string moved = Journal(map, {1000, 50, 1300, 200});
  const std::string at = std::to_string(map.mapRect.left) + "," + std::to_string(map.mapRect.top);
  EXPECT_EQ(Count(moved, "\ndib " + at + " "), 1) << moved;
  const std::string wide = Journal(map, {0, 0, 301, 150});
  EXPECT_EQ(Count(wide, "\nstretch "), 1) << wide;
  EXPECT_EQ(Count(wide, "\ndib "), 0);
  EXPECT_EQ(map.picture.get(), picture);
  map.Rebuild();
  EXPECT_EQ(Count(Journal(map, {0, 0, 301, 150}), "\ndib "), 1);
  EXPECT_EQ(map.builds, 2);
}

TEST_F(Pictures, LeaveContextAndRoundingAsTheyWere) {
  run = MakeSpectralRun({});
  MapWindow map(run.get());
  std::string journal;
  const HDC hdc = gfx::CreateJournalContext(journal);
  const HGDIOBJ font = GetCurrentObject(hdc, OBJ_FONT);
  for (const int mode : {FE_UPWARD, FE_TONEAREST}) {
    std::fesetround(mode);
    map.Rebuild();
    map.draw(hdc, {0, 0, 300, 150});
    EXPECT_EQ(std::fegetround(), mode);
    EXPECT_NE(map.picture, nullptr);
  }
  EXPECT_EQ(GetCurrentObject(hdc, OBJ_FONT), font);
  DeleteDC(hdc);
}

TEST_F(Pictures, OfUnusableRunsHaveTheFirstColor) {
  const Signal plane = [](double wavelength, double) { return wavelength; };
  struct {
    Spectra spectra;
    double timeTo;
    bool picture;
  } const cases[] = {
      {{.channels = 2}, 0, false},
      {{.channels = 3, .samples = 9, .signal = plane}, 4, true},
      {{.samples = 0}, 0.5, false},
      {{.samples = 1, .signal = plane}, 0.5, true},
      {{.signal = [](double, double) { return 0; }}, 199.5, true},
      {{.step = 0}, 199.5, false},
  };
  for (const auto& c : cases) {
    run = MakeSpectralRun(c.spectra);
    MapWindow map(run.get());
    EXPECT_EQ(map.timeTo, c.timeTo);
    const gfx::Surface shown = Drawn(map, 300, 150);
    EXPECT_EQ(map.picture != nullptr, c.picture);
    EXPECT_EQ(shown.Pixel(map.mapRect.left, map.mapRect.bottom - 1), RGB(0, 0, 64));
  }
  MapWindow without(nullptr);
  EXPECT_EQ(Drawn(without, 300, 150).Pixel(150, 70), RGB(0, 0, 64));
}

TEST_F(Pictures, TimesAtTheAxisCountFromTheInjectionInTheDisplayUnit) {
  run = MakeSpectralRun({.samples = 1201, .periodSec = 0.5, .startSec = 120});
  MapWindow map(run.get());
  const std::string minutes = Journal(map, {0, 0, 600, 300});
  EXPECT_EQ(map.timeTo, 600);
  EXPECT_EQ(Count(minutes, "\"11\""), 1) << minutes;  // 2 to 12 minutes
  EXPECT_EQ(Count(minutes, "\"min\""), 1);
  run->SetTimeUnit(embedded::TimeUnit::kSeconds);
  EXPECT_EQ(Count(Journal(map, {0, 0, 600, 300}), "\"700\""), 1);
}

}  // namespace
