#include "elugraph/chrom2d/color_scale.h"

#include <strings.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

constexpr const char* kSection = "CHROM_2D_COLORS";
constexpr const char* kFormulaKey = "FORMULA";
// Keeps the highest value below the last entry.
constexpr double kBelowOne = 0.999999999999;

// The settings key of a table entry.
class ColorKey : public PrintBuffer<100> {
 public:
  explicit ColorKey(int entry) { sprintf(*this, "COLOR%.2d", entry); }
};

constinit ColorScale scale{
    {{0, 0, 0}, {255, 255, 255}}, 2, ScaleFormula::LINE, kDefaultLogBase, 0, 0, 0};
bool loaded = false;

double IntegerPower(double base, int exponent) {
  double result = 1.0;
  for (unsigned left = static_cast<unsigned>(std::abs(exponent)); left != 0; left >>= 1) {
    if ((left & 1) != 0) result *= base;
    base *= base;
  }
  return exponent < 0 ? 1.0 / result : result;
}

str ReadEntry(const char* key) {
  str value;
  GetIniFileEntry(value, kSection, key, nullptr, nullptr);
  return value;
}

bool WriteEntry(const char* key, const char* value) {
  return vsetinifile(kSection, key, value, nullptr);
}

// False where there was no such entry, or it cannot be removed. A section edited by hand may have
// it more than once.
bool RemoveEntry(const char* key) {
  constexpr int kMostCopies = 16;
  bool removed = false;
  for (int i = 0; i < kMostCopies && !ReadEntry(key).empty(); ++i) {
    removed = WriteEntry(key, nullptr);
    if (!removed) break;
  }
  return removed;
}

BYTE Between(BYTE a, BYTE b, int fraction) {
  return static_cast<BYTE>(a + (((b - a) * fraction) >> 8));
}

// Steps of 1/256 that d · s, 0 … 1, lies above the table's first entry; below the last entry's.
int StepOnTable(double d, double s, ScaleFormula formula) {
  const double place = formula == ScaleFormula::LOG
                           ? std::log((d * scale.sLog) * s + 1.0) * scale.kLog
                           : (d * scale.kLin) * s;
  // In this order, what is not a number becomes 0.
  return static_cast<int>(std::min(std::max(0.0, place), std::max(0.0, scale.kLin)) * 256);
}

void SetBlackToWhite() {
  scale.colorTable[0] = MapColorOf(RGB(0, 0, 0));
  scale.colorTable[1] = MapColorOf(RGB(255, 255, 255));
  scale.colorCount = 2;
  scale.formula = ScaleFormula::LINE;
  ResetScaleCoefficients();
}

MapColor ColorAtStep(int step) {
  const MapColor& a = scale.colorTable[step >> 8];
  const MapColor& b = scale.colorTable[(step >> 8) + 1];
  const int fraction = step & 255;
  return {Between(a.blue, b.blue, fraction), Between(a.green, b.green, fraction),
          Between(a.red, b.red, fraction)};
}

}  // namespace

ColorScale& TheColorScale() { return scale; }

void BuildColorTable() {
  for (MapColor& entry : scale.colorTable) entry = {0, 0, 0};
  scale.colorCount = 0;
}

void LoadColorSettings() {
  SetBlackToWhite();
  loaded = false;
  const str formula = ReadEntry(kFormulaKey);
  // Put in place as a whole: reading may fail half-way.
  MapColor table[ColorScale::kMaxColors] = {};
  int count = 0;
  for (; count < ColorScale::kMaxColors; ++count) {
    const str value = ReadEntry(ColorKey(count).text);
    if (value.empty()) break;
    table[count] = MapColorOf(static_cast<COLORREF>(std::atoi(value.c_str())));
  }
  if (count >= 2) {
    std::copy_n(table, ColorScale::kMaxColors, scale.colorTable);
    scale.colorCount = count;
  }
  scale.formula = strcasecmp(formula.c_str(), "LOG") == 0 ? ScaleFormula::LOG : ScaleFormula::LINE;
  ResetScaleCoefficients();
  loaded = true;
}

// Ends at the first entry that cannot be written: one line of diagnostics says it all.
void SaveColorSettings() {
  if (!loaded) return;
  const bool log = scale.formula == ScaleFormula::LOG;
  if (!WriteEntry(kFormulaKey, log ? "LOG" : "LINE")) return;
  for (int i = 0; i < scale.colorCount; ++i) {
    PrintBuffer<100> value;
    sprintf(value, "%u", static_cast<unsigned>(ColorRefOf(scale.colorTable[i])));
    if (!WriteEntry(ColorKey(i).text, value.text)) return;
  }
  for (int i = scale.colorCount; i < ColorScale::kMaxColors; ++i) {
    if (!RemoveEntry(ColorKey(i).text)) return;
  }
}

void UpdateScaleCoefficients() {
  const int last = scale.colorCount - 1;
  scale.kLin = last * kBelowOne;
  scale.kLog = kBelowOne / std::log(scale.logBase);
  scale.sLog = IntegerPower(scale.logBase, last) - 1.0;
}

void ResetScaleCoefficients() {
  scale.logBase = kDefaultLogBase;
  UpdateScaleCoefficients();
}

MapColor ColorOfValue(const ValueRange& range, LONG v) {
  const auto d = static_cast<double>(std::int64_t{v} - range.lo);
  return ColorAtStep(StepOnTable(d, range.s, scale.formula));
}

ColorRamp::ColorRamp(const ValueRange& range) : range_(range) {
  for (int step = 0; step < static_cast<int>(colors_.size()); ++step) {
    colors_[static_cast<std::size_t>(step)] = ColorAtStep(step);
  }
}

void ColorRamp::Color(const LONG* values, int count, MapColor* pixels) const {
  constexpr int kBlock = 256;
  int steps[kBlock];
  // Differences of 32-bit numbers are exact.
  const double lowest = range_.lo;
  for (int done = 0; done < count; done += kBlock) {
    const LONG* const block = values + done;
    const int size = std::min(kBlock, count - done);
    // Each formula has a loop of its own: the linear one is vectorised.
    if (scale.formula == ScaleFormula::LOG) {
      for (int i = 0; i < size; ++i) {
        steps[i] = StepOnTable(block[i] - lowest, range_.s, ScaleFormula::LOG);
      }
    } else {
      for (int i = 0; i < size; ++i) {
        steps[i] = StepOnTable(block[i] - lowest, range_.s, ScaleFormula::LINE);
      }
    }
    for (int i = 0; i < size; ++i) {
      pixels[done + i] = colors_[static_cast<std::size_t>(steps[i])];
    }
  }
}
