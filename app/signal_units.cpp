#include "app/signal_units.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "app/formats/text.h"

namespace app {
namespace {

constexpr double kLargest = 1e6;  // below
constexpr double kSmallest = 1e-3;
constexpr int kMaxExponent = 24;
constexpr std::size_t kUnitRoom = 8;  // bytes of a record

struct Prefix {
  std::string_view text;
  int exponent;
};
constexpr std::array<Prefix, 9> kPrefixes{{
    {"p", -12},
    {"n", -9},
    {"µ", -6},
    {"u", -6},
    {"m", -3},
    {"", 0},
    {"k", 3},
    {"M", 6},
    {"G", 9},
}};

// Units that are told in parts and in multiples, and those that come in multiples only.
constexpr std::array<std::string_view, 8> kMeasures{"V", "A", "AU", "S", "S/cm", "Pa", "W", "Hz"};
constexpr std::array<std::string_view, 2> kCounts{"counts", "cps"};

template <typename List>
bool Holds(const List& list, std::string_view text) {
  return std::find(list.begin(), list.end(), text) != list.end();
}

// The unit times a power of ten, by its prefix.
std::optional<std::string> WithPrefix(std::string_view unit, int exponent) {
  for (const Prefix& own : kPrefixes) {
    if (!unit.starts_with(own.text)) continue;
    const std::string_view base = unit.substr(own.text.size());
    const int wanted = own.exponent + exponent;
    if (!Holds(kMeasures, base) && !(Holds(kCounts, base) && wanted >= 0)) continue;
    for (const Prefix& other : kPrefixes) {
      if (other.exponent == wanted) return std::string(other.text) + std::string(base);
    }
  }
  return std::nullopt;
}

void Shorten(std::vector<Trace>& traces) {
  // Units are the same without regard to case, as in the records.
  std::map<std::string, double> largest;
  for (const Trace& trace : traces) {
    double& most = largest[Lower(trace.unit)];
    for (const double value : trace.values) most = std::max(most, std::abs(value));
  }
  for (Trace& trace : traces) {
    ShortUnit shown = ShortenUnit(trace.unit, largest[Lower(trace.unit)]);
    if (shown.factor == 1) continue;
    for (double& value : trace.values) value *= shown.factor;
    trace.unit = std::move(shown.unit);
    trace.perFileUnit = shown.factor;
  }
}

}  // namespace

ShortUnit ShortenUnit(const std::string& unit, double largest) {
  if (!(largest > 0) || (largest >= kSmallest && largest < kLargest)) return {unit, 1};
  const int exponent = 3 * static_cast<int>(std::floor(std::log10(largest) / 3));
  std::string shown;
  if (const auto prefixed = WithPrefix(unit, exponent)) {
    shown = *prefixed;
  } else {
    shown = "10^" + std::to_string(exponent) + (unit.empty() ? "" : " ") + unit;
  }
  if (shown.size() > kUnitRoom || std::abs(exponent) > kMaxExponent) return {unit, 1};
  return {shown, std::pow(10.0, -exponent)};
}

void ShortenUnits(RunData& run) {
  Shorten(run.channels);
  Shorten(run.auxiliary);
  for (Peak& peak : run.peaks) {
    const double factor = run.channels[peak.channel].perFileUnit;
    if (peak.baselineStart) *peak.baselineStart *= factor;
    if (peak.baselineEnd) *peak.baselineEnd *= factor;
  }
}

}  // namespace app
