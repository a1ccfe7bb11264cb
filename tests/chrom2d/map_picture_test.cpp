// The coloured picture and where it is copied.
#include <cfenv>
#include <cstdlib>

#include "platform/gfx/context.h"
#include "tests/chrom2d/map_fixture.h"

namespace {

// ColorOfValue as the window calls it.
MapColor ColorAt(LONG value, LONG lowest, LONG highest) {
  const int mode = std::fegetround();
  std::fesetround(FE_TOWARDZERO);
  const volatile double span = static_cast<double>(std::int64_t{highest} - lowest);
  const volatile double s = span > 0 ? 1.0 / span : 1.0;
  const MapColor color = ColorOfValue({lowest, s}, value);
  std::fesetround(mode);
  return color;
}

class Pictures : public Maps {
 protected:
  // What a raster context shows of the window's drawing.
  static gfx::Surface Drawn(MapWindow& map, int width, int height) {
    gfx::Surface surface(width, height);
    const HDC hdc = gfx::CreateRasterContext(surface, gfx::BuiltinText());
    map.draw(hdc, {0, 0, width, height});
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

struct FormulaCase {
  const char* name;
  ScaleFormula formula;
};

class PictureColors : public Pictures, public testing::WithParamInterface<FormulaCase> {};

// Fits reproduce a cubic over wavelength, and means of equal bins a line over time, so each pixel's
// value is known but for a count or two.
TEST_P(PictureColors, FollowAPolynomialFromTheLowestWavelengthAtTheBottom) {
  const auto value = [](double wavelength, double timeSec) {
    const double w = wavelength - 240;
    return 1e6 + 3e4 * w + 300 * w * w - 20 * w * w * w + 5000 * timeSec;
  };
  run = MakeSpectralRun({.samples = 120, .periodSec = 1, .signal = value});
  SetScale({RGB(0, 0, 0), RGB(0, 0, 255), RGB(0, 255, 0), RGB(255, 255, 0), RGB(255, 255, 255)},
           GetParam().formula);
  MapWindow map(run.get());
  map.axes = false;
  const gfx::Surface shown = Drawn(map, 400, 200);
  const RECT rect = map.mapRect;
  const int width = rect.right - rect.left, height = rect.bottom - rect.top;
  ASSERT_GT(width, 240);  // a bin per sample
  const auto valueAt = [&](int x, int y) {
    const double wavelength = 200 + 100.0 * (height - 1 - y) / height;
    return value(wavelength, 119.0 * x / (width - 1));
  };
  double lowest = 1e99, highest = -1e99;
  for (int y = 0; y < height; ++y) {
    lowest = std::min(lowest, valueAt(0, y));
    highest = std::max(highest, valueAt(width - 1, y));
  }
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const MapColor wanted = ColorAt(static_cast<LONG>(valueAt(x, y)), static_cast<LONG>(lowest),
                                      static_cast<LONG>(highest));
      const COLORREF got = shown.Pixel(rect.left + x, rect.top + y);
      // The next step of the scale at most.
      ASSERT_LE(std::abs(GetRValue(got) - wanted.red), 1) << x << ", " << y;
      ASSERT_LE(std::abs(GetGValue(got) - wanted.green), 1) << x << ", " << y;
      ASSERT_LE(std::abs(GetBValue(got) - wanted.blue), 1) << x << ", " << y;
    }
  }
}

// Exactly what ColorOfValue gives for the grid, also for ranges beyond 32 bits.
TEST_P(PictureColors, AreThoseOfTheGrid) {
  SetScale({RGB(1, 2, 3), RGB(200, 100, 0), RGB(0, 255, 7)}, GetParam().formula);
  for (const double height : {1.0, 40.0, 5000.0, 4.2e9}) {
    run = MakeSpectralRun({.signal = [&](double wavelength, double timeSec) {
      return -height / 2 + height * GaussianPeaks(wavelength, timeSec) / 121'000;
    }});
    MapWindow map(run.get());
    map.axes = false;
    const gfx::Surface shown = Drawn(map, 300, 150);
    LONG lowest = 0, highest = 0;
    ASSERT_TRUE(map.heightMap.GetValueRange(&lowest, &highest));
    const RECT rect = map.mapRect;
    for (LONG y = rect.top; y < rect.bottom; ++y) {
      const LONG* heights = map.heightMap.Row(rect.bottom - 1 - y);
      for (LONG x = rect.left; x < rect.right; ++x) {
        ASSERT_EQ(shown.Pixel(x, y), ColorRefOf(ColorAt(heights[x - rect.left], lowest, highest)))
            << x << ", " << y << " of " << height;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, PictureColors,
                         testing::Values(FormulaCase{"Linear", ScaleFormula::LINE},
                                         FormulaCase{"Logarithmic", ScaleFormula::LOG}),
                         probe::CaseName());

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
  SetTextAlign(hdc, TA_RIGHT);
  SetBkMode(hdc, OPAQUE);
  SetTextColor(hdc, RGB(1, 2, 3));
  const HGDIOBJ pen = GetCurrentObject(hdc, OBJ_PEN), font = GetCurrentObject(hdc, OBJ_FONT);
  for (const int mode : {FE_UPWARD, FE_TONEAREST}) {
    std::fesetround(mode);
    map.Rebuild();
    map.draw(hdc, {0, 0, 300, 150});
    EXPECT_EQ(std::fegetround(), mode);
    EXPECT_NE(map.picture, nullptr);
  }
  EXPECT_EQ(GetTextAlign(hdc), static_cast<UINT>(TA_RIGHT));
  EXPECT_EQ(SetBkMode(hdc, OPAQUE), OPAQUE);
  EXPECT_EQ(GetTextColor(hdc), RGB(1, 2, 3));
  EXPECT_EQ(GetCurrentObject(hdc, OBJ_PEN), pen);
  EXPECT_EQ(GetCurrentObject(hdc, OBJ_FONT), font);
  EXPECT_EQ(SaveDC(hdc), 1);  // no state left behind
  DeleteDC(hdc);
}

struct UnusableCase {
  const char* name;
  Spectra spectra;
  bool ranges;
  double timeTo;
  bool picture;
};

class UnusableRuns : public Pictures, public testing::WithParamInterface<UnusableCase> {};

TEST_P(UnusableRuns, ShowTheFirstColorOrWhatThereIs) {
  const UnusableCase& c = GetParam();
  if (c.spectra.channels > 0) run = MakeSpectralRun(c.spectra);
  MapWindow map(run.get());
  EXPECT_EQ(map.waveTo > map.waveFrom, c.ranges);
  EXPECT_EQ(map.timeTo, c.timeTo);
  const gfx::Surface shown = Drawn(map, 300, 150);
  EXPECT_EQ(map.picture != nullptr, c.picture);
  const COLORREF middle = shown.Pixel(150, 70);
  EXPECT_EQ(middle == RGB(0, 0, 64), !c.picture) << std::hex << middle;
  // Nothing but the map has its colours.
  EXPECT_EQ(shown.Pixel(map.mapRect.right, 2), RGB(0xC0, 0xC0, 0xC0));
  SetScale({});
  map.Rebuild();
  if (!c.picture) {
    EXPECT_EQ(Drawn(map, 300, 150).Pixel(150, 70), RGB(255, 255, 255));
  }
}

constexpr double kFlat = 77;
const Signal kPlane = [](double wavelength, double) { return wavelength; };

INSTANTIATE_TEST_SUITE_P(
    All, UnusableRuns,
    testing::Values(
        UnusableCase{"None", {.channels = 0}, false, 0, false},
        UnusableCase{"OneChannel", {.channels = 1}, false, 0, false},
        UnusableCase{"TwoChannels", {.channels = 2}, false, 0, false},
        UnusableCase{
            "ThreeChannels", {.channels = 3, .samples = 9, .signal = kPlane}, true, 4, true},
        UnusableCase{"NoSamples", {.samples = 0}, true, 0.5, false},
        UnusableCase{"OneSample", {.samples = 1, .signal = kPlane}, true, 0.5, true},
        UnusableCase{"TwoSamples", {.samples = 2, .signal = kPlane}, true, 0.5, true},
        UnusableCase{"OneWavelength", {.step = 0}, false, 199.5, false}),
    probe::CaseName());

// A run without differences: scale 1, everything the first colour, but a picture.
TEST_F(Pictures, OfEqualValuesHaveTheFirstColor) {
  run = MakeSpectralRun({.signal = [](double, double) { return kFlat; }});
  SetScale({RGB(10, 20, 30), RGB(255, 255, 255)});
  MapWindow map(run.get());
  const gfx::Surface shown = Drawn(map, 300, 150);
  EXPECT_NE(map.picture, nullptr);
  const RECT rect = map.mapRect;
  for (const POINT p : {POINT{rect.left, rect.top}, POINT{rect.right - 1, rect.bottom - 1}}) {
    EXPECT_EQ(shown.Pixel(p.x, p.y), RGB(10, 20, 30));
  }
}

TEST_F(Pictures, InRectanglesTooSmallAreBackgroundOnly) {
  run = MakeSpectralRun({});
  for (const SIZE extent : {SIZE{0, 0}, SIZE{1, 1}, SIZE{40, 400}, SIZE{400, 30}}) {
    MapWindow map(run.get());
    const std::string journal = Journal(map, {0, 0, extent.cx, extent.cy});
    EXPECT_EQ(map.picture, nullptr);
    EXPECT_EQ(Count(journal, "\n"), 1) << journal;
  }
  // The smallest maps: one column, one row.
  MapWindow map(run.get());
  Journal(map, {0, 0, 500, 500});
  const int across = 500 - (map.mapRect.right - map.mapRect.left);
  const int down = 500 - (map.mapRect.bottom - map.mapRect.top);
  map.Rebuild();
  Journal(map, {0, 0, across + 1, down + 1});
  ASSERT_NE(map.picture, nullptr);
  EXPECT_EQ(map.picture->Width() + map.picture->Height(), 2);
}

TEST_F(Pictures, TimesAtTheAxisCountFromTheInjectionInTheDisplayUnit) {
  run = MakeSpectralRun({.samples = 1201, .periodSec = 0.5, .startSec = 120});
  MapWindow map(run.get());
  const std::string minutes = Journal(map, {0, 0, 600, 300});
  EXPECT_EQ(map.timeTo, 600);
  EXPECT_EQ(Count(minutes, "\"11\""), 1) << minutes;  // 2 to 12 minutes
  EXPECT_EQ(Count(minutes, "\"1\""), 0);
  EXPECT_EQ(Count(minutes, "\"min\""), 1);
  run->SetTimeUnit(embedded::TimeUnit::kSeconds);
  EXPECT_EQ(Count(Journal(map, {0, 0, 600, 300}), "\"700\""), 1);
}

}  // namespace
