// What a file of measured data holds, in plain values, before it becomes a host record.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace app {

// One measured signal. Texts are UTF-8.
struct Trace {
  std::string name;            // may be empty
  std::string unit;            // of the values; may be empty
  std::string description;     // anything longer the file says about the signal
  std::vector<double> values;  // finite

  // Seconds from the injection; may start below zero. One time per sample, never decreasing; or
  // none, and sample i lies at startS + i × periodS.
  std::vector<double> timesS;
  double startS = 0;
  double periodS = 0;

  double TimeAt(std::size_t index) const {
    return timesS.empty() ? startS + static_cast<double>(index) * periodS : timesS[index];
  }
};

struct RunData {
  std::vector<Trace> channels;  // at least one after a successful read
  std::vector<std::pair<std::string, std::string>> metadata;  // as the file names them, in order
  std::vector<std::string> notes;  // what the reader assumed, one sentence each
};

enum class TimeUnit { kUnknown, kMillisecond, kSecond, kMinute, kHour };

// Seconds in one unit; 0 for kUnknown.
double SecondsIn(TimeUnit unit);
// "ms", "s", "min", "h"; empty for kUnknown.
const char* TimeUnitText(TimeUnit unit);

struct ReadOptions {
  // Unit of the times where the file does not tell it.
  TimeUnit timeUnit = TimeUnit::kUnknown;
};

}  // namespace app
