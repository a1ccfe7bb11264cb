// What the words of a table header say about a column.
#pragma once

#include <string>
#include <string_view>

#include "app/run_data.h"

namespace app {

// "min", "Minutes", "sec", "s", "msec", "h" … in any case; kUnknown for other words.
TimeUnit TimeUnitOf(std::string_view word);

// The unit of times from `first` to `last` that nothing else tells: minutes; where they run beyond
// kMaxMinutes (either side of zero), seconds; beyond kMaxSeconds, milliseconds.
TimeUnit AssumedTimeUnit(double first, double last);
inline constexpr double kMaxMinutes = 240;
inline constexpr double kMaxSeconds = 100'000;
// The note for the user.
std::string AssumedUnitNote(TimeUnit unit);

// True for the name of a unit that detectors and sensors report in ("mAU", "µV", "EU", "MPa",
// "%B").
bool IsSignalUnit(std::string_view word);

enum class ColumnRole { kUnnamed, kTime, kIndex, kStep, kValue };

// A header cell taken apart: "Value (mAU)", "RT [min]", "intensity_mV", "Signal, V" and a unit
// alone. A cell that is a number, alone or with "nm", is a wavelength: "220.00000" and "220,0nm"
// become "220 nm".
struct ColumnHeader {
  std::string name;
  std::string unit;                        // of the values; empty for a time
  TimeUnit timeUnit = TimeUnit::kUnknown;  // of a time or a step
  ColumnRole role = ColumnRole::kUnnamed;
};
ColumnHeader ParseHeaderCell(std::string_view cell);

}  // namespace app
