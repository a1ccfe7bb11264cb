// The colour scale of all map windows of the process.
//
// One thread uses it: the one that runs the map windows and their colour dialogs.
#pragma once

#include <array>

#include "elugraph/host/kernel.h"
#include "platform/gfx/types.h"

// A pixel of the map's picture, in the byte order of a 24-bit device-independent bitmap.
struct MapColor {
  BYTE blue;
  BYTE green;
  BYTE red;

  bool operator==(const MapColor&) const = default;
};
static_assert(sizeof(MapColor) == 3);

constexpr COLORREF ColorRefOf(MapColor color) { return RGB(color.red, color.green, color.blue); }
constexpr MapColor MapColorOf(COLORREF color) {
  return {GetBValue(color), GetGValue(color), GetRValue(color)};
}

enum class ScaleFormula {
  LINE,  // linear
  LOG,   // logarithmic, to logBase
};

// 2 to 10 colours, spread evenly over the range of the values; between neighbours the colour is
// interpolated.
struct ColorScale {
  static constexpr int kMaxColors = 10;

  MapColor colorTable[kMaxColors];  // from colorCount on not in use
  int colorCount;
  ScaleFormula formula;
  double logBase;
  // Derived from colorCount and logBase by UpdateScaleCoefficients.
  double kLin;  // (colorCount − 1) · 0.999999999999
  double kLog;  // 0.999999999999 / ln logBase
  double sLog;  // logBase^(colorCount − 1) − 1
};

inline constexpr double kDefaultLogBase = 1.5;

// The scale: black to white, linear, before BuildColorTable and LoadColorSettings have run, and
// where the host failed meanwhile.
ColorScale& TheColorScale();

// All entries black, none in use: LoadColorSettings is to follow.
void BuildColorTable();
// Reads the section "CHROM_2D_COLORS" of the host's settings: "FORMULA" ("LOG" in any case; all
// else is linear), COLOR00 to COLOR09 (decimal COLORREF numbers) up to the first one that is absent
// or empty. Fewer than two colours: black to white. What is not a number counts as atoi reads it.
// A failure raised by the host leaves black to white and is passed on.
void LoadColorSettings();
// Writes the scale to the section, unless it could not be loaded from there. The entries that an
// earlier, longer list has left behind it are removed, however often the section has them, so that
// the next load ends where this list does.
void SaveColorSettings();
// To be called whenever colorCount or logBase has changed.
void UpdateScaleCoefficients();
// Sets logBase to its default first.
void ResetScaleCoefficients();

// The range of a map's values: lo is the lowest one, s is 1 / (highest − lowest).
struct ValueRange {
  LONG lo;
  double s;
};
// The colour of value v, lo ≤ v ≤ highest: entry a of the table where v is at its place, else
// a + ((b − a) · f >> 8) per channel with the fraction f of 1/256 towards the next entry b. The
// caller has set rounding toward zero. A value outside the range gets the colour of the scale's end
// on its side.
MapColor ColorOfValue(const ValueRange& range, LONG v);

// The colours of many values of one range: each exactly as ColorOfValue gives it, under the same
// condition. Takes the scale as it is at construction.
class ColorRamp {
 public:
  explicit ColorRamp(const ValueRange& range);
  // Colours `count` values.
  void Color(const LONG* values, int count, MapColor* pixels) const;

 private:
  ValueRange range_;
  // Of every step of 1/256 between two entries of the table.
  std::array<MapColor, (ColorScale::kMaxColors - 1) * 256> colors_;
};
