#include "app/formats/header_words.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

#include "app/formats/text.h"
#include "app/formats/wavelength.h"

namespace app {
namespace {

struct TimeWord {
  const char* word;
  TimeUnit unit;
};
constexpr std::array kTimeWords = {
    TimeWord{"ms", TimeUnit::kMillisecond},
    TimeWord{"msec", TimeUnit::kMillisecond},
    TimeWord{"millisecond", TimeUnit::kMillisecond},
    TimeWord{"milliseconds", TimeUnit::kMillisecond},
    TimeWord{"s", TimeUnit::kSecond},
    TimeWord{"sec", TimeUnit::kSecond},
    TimeWord{"secs", TimeUnit::kSecond},
    TimeWord{"second", TimeUnit::kSecond},
    TimeWord{"seconds", TimeUnit::kSecond},
    TimeWord{"sek", TimeUnit::kSecond},
    TimeWord{"min", TimeUnit::kMinute},
    TimeWord{"mins", TimeUnit::kMinute},
    TimeWord{"minute", TimeUnit::kMinute},
    TimeWord{"minutes", TimeUnit::kMinute},
    TimeWord{"minuten", TimeUnit::kMinute},
    TimeWord{"h", TimeUnit::kHour},
    TimeWord{"hr", TimeUnit::kHour},
    TimeWord{"hrs", TimeUnit::kHour},
    TimeWord{"hour", TimeUnit::kHour},
    TimeWord{"hours", TimeUnit::kHour},
};

// Lower case; "uX" stands for "µX" too.
constexpr std::array kSignalUnits = {
    "au",
    "mau",
    "uau",
    "nau",
    "v",
    "mv",
    "uv",
    "nv",
    "volts",
    "volt",
    "mvolts",
    "mvolt",
    "a",
    "ma",
    "ua",
    "na",
    "pa",
    "fa",
    "eu",
    "lu",
    "lsu",
    "rfu",
    "fu",
    "riu",
    "nriu",
    "uriu",
    "counts",
    "count",
    "cts",
    "cps",
    "kcps",
    "s/cm",
    "ms/cm",
    "us/cm",
    "us",
    "mpa",
    "kpa",
    "bar",
    "mbar",
    "psi",
    "kgf/cm2",
    "\xC2\xB0"
    "c",
    "degc",
    "c",
    "%",
    "%b",
    "%a",
    "%c",
    "%d",
    "ml/min",
    "ul/min",
    "ph",
};

constexpr std::array kTimeNames = {"time",          "rt",     "retention", "retention time",
                                   "ret. time",     "r.time", "t",         "ret.time",
                                   "retentiontime", "zeit",   "x"};
constexpr std::array kIndexNames = {"index", "idx",    "#",    "no",     "no.", "nr", "nr.",
                                    "point", "points", "scan", "sample", "n",   "row"};
constexpr std::array kStepNames = {"step", "delta", "dt", "interval"};

template <typename Words>
bool Contains(const Words& words, std::string_view word) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

// "µ" (both code points) as "u".
std::string PlainMicro(std::string_view word) {
  std::string plain(word);
  for (const std::string_view micro : {"\xC2\xB5", "\xCE\xBC"}) {
    for (auto at = plain.find(micro); at != std::string::npos; at = plain.find(micro)) {
      plain.replace(at, micro.size(), "u");
    }
  }
  return plain;
}

bool IsUnit(std::string_view word) {
  return TimeUnitOf(word) != TimeUnit::kUnknown || IsSignalUnit(word);
}

struct NameAndUnit {
  std::string_view name;
  std::string_view unit;
};

// The unit behind the name, in brackets or after a mark.
NameAndUnit SplitUnit(std::string_view cell) {
  for (const auto& [open, close] : {std::pair{'(', ')'}, std::pair{'[', ']'}}) {
    const std::size_t at = cell.rfind(open);
    if (at != std::string_view::npos && cell.back() == close) {
      return {Trim(cell.substr(0, at)), Trim(cell.substr(at + 1, cell.size() - at - 2))};
    }
  }
  const auto isSingle = [](std::string_view unit) { return unit.size() == 1; };
  // "A" alone, and "Detector A", name a channel and no unit.
  if (IsUnit(cell) && !(isSingle(cell) && IsSignalUnit(cell))) return {{}, cell};
  for (const char mark : {',', '_', '/', ' ', '-'}) {
    // From the left: "Flow/ml/min" has the unit "ml/min".
    for (std::size_t at = cell.find(mark, 1); at < cell.size(); at = cell.find(mark, at + 1)) {
      const std::string_view name = Trim(cell.substr(0, at));
      const std::string_view unit = Trim(cell.substr(at + 1));
      const bool plainWords = mark != ',' && mark != '/';
      if (plainWords && isSingle(unit) && !Contains(kTimeNames, Lower(name))) continue;
      if (IsUnit(unit)) return {name, unit};
    }
  }
  return {cell, {}};
}

ColumnRole RoleOf(const std::string& lowerName, TimeUnit timeUnit) {
  if (Contains(kStepNames, lowerName)) return ColumnRole::kStep;
  if (Contains(kIndexNames, lowerName)) return ColumnRole::kIndex;
  if (Contains(kTimeNames, lowerName) || timeUnit != TimeUnit::kUnknown) return ColumnRole::kTime;
  return ColumnRole::kValue;
}

}  // namespace

double SecondsIn(TimeUnit unit) {
  switch (unit) {
    case TimeUnit::kMillisecond:
      return 0.001;
    case TimeUnit::kSecond:
      return 1;
    case TimeUnit::kMinute:
      return 60;
    case TimeUnit::kHour:
      return 3600;
    case TimeUnit::kUnknown:
      break;
  }
  return 0;
}

const char* TimeUnitText(TimeUnit unit) {
  switch (unit) {
    case TimeUnit::kMillisecond:
      return "ms";
    case TimeUnit::kSecond:
      return "s";
    case TimeUnit::kMinute:
      return "min";
    case TimeUnit::kHour:
      return "h";
    case TimeUnit::kUnknown:
      break;
  }
  return "";
}

TimeUnit TimeUnitOf(std::string_view word) {
  word = Trim(word);
  if (word == "mS") return TimeUnit::kUnknown;  // millisiemens
  const std::string lower = Lower(word);
  const auto* found = std::find_if(kTimeWords.begin(), kTimeWords.end(),
                                   [&lower](const TimeWord& w) { return lower == w.word; });
  return found == kTimeWords.end() ? TimeUnit::kUnknown : found->unit;
}

TimeUnit AssumedTimeUnit(double first, double last) {
  const double largest = std::max(std::abs(first), std::abs(last));
  return largest > kMaxSeconds   ? TimeUnit::kMillisecond
         : largest > kMaxMinutes ? TimeUnit::kSecond
                                 : TimeUnit::kMinute;
}

std::string AssumedUnitNote(TimeUnit unit) {
  return std::string("the file does not state its time unit; ") + TimeUnitText(unit) +
         " is assumed";
}

bool IsSignalUnit(std::string_view word) {
  word = Trim(word);
  if (word == "UV") return false;  // light, not microvolts
  return Contains(kSignalUnits, Lower(PlainMicro(word)));
}

ColumnHeader ParseHeaderCell(std::string_view cell) {
  ColumnHeader header;
  cell = Trim(cell);
  if (cell.empty()) return header;
  if (const std::optional<double> wavelength = WavelengthOf(cell)) {
    header.name = WavelengthName(*wavelength);
    header.role = ColumnRole::kValue;
    return header;
  }
  const auto [name, unit] = SplitUnit(cell);
  header.name = name;
  header.timeUnit = TimeUnitOf(unit);
  if (header.timeUnit == TimeUnit::kUnknown) header.unit = unit;
  header.role = RoleOf(Lower(name), header.timeUnit);
  return header;
}

}  // namespace app
