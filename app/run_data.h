// What a file of measured data holds, in plain values, before it becomes a host record.
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/quantification.h"

namespace app {

// Which samples of a trace are one of its sampling intervals apart: first + i × step.
struct SampleGrid {
  std::size_t first = 0;
  std::size_t step = 1;
};

// One measured signal. Texts are UTF-8.
struct Trace {
  std::string name;            // may be empty
  std::string unit;            // of the values; may be empty
  double perFileUnit = 1;      // the values are this times those of the file
  std::string description;     // anything longer the file says about the signal
  std::string source;          // the file it comes from; empty where it was generated
  std::vector<double> values;  // finite

  // Seconds from the injection; may start below zero. One time per sample, never decreasing; or
  // none, and sample i lies at startS + i × periodS.
  std::vector<double> timesS;
  double startS = 0;
  double periodS = 0;
  SampleGrid grid;  // both times and a period: see sample_grid.h

  double TimeAt(std::size_t index) const {
    return timesS.empty() ? startS + static_cast<double>(index) * periodS : timesS[index];
  }
};

// One peak of a channel. Times in seconds on the channel's clock, startS ≤ apexS ≤ endS.
struct Peak {
  std::size_t channel = 0;  // index into the run's channels
  std::string name;         // may be empty
  double apexS = 0;
  std::optional<double> startS;  // where the file does not tell it, the trace does
  std::optional<double> endS;
  // Baseline under start and end, in the channel's unit; both or none, and only with both limits.
  std::optional<double> baselineStart;
  std::optional<double> baselineEnd;
  std::optional<double> area;  // as the file gives it
  std::optional<double> height;
  std::optional<double> amount;
  std::string amountUnit;
};

struct RunData {
  std::vector<Trace> channels;   // at least one after a successful read
  std::vector<Trace> auxiliary;  // pressure, temperature, gradient …
  std::vector<Peak> peaks;       // by channel, then by time
  std::vector<std::pair<std::string, std::string>> metadata;  // as the file names them, in order
  Quantification quantification;
  std::vector<std::string> notes;  // what the reader assumed or left out, one sentence each

  // Adds a note that is not there yet.
  void Note(const std::string& note) {
    if (std::find(notes.begin(), notes.end(), note) == notes.end()) notes.push_back(note);
  }
};

enum class TimeUnit { kUnknown, kMillisecond, kSecond, kMinute, kHour };

// Seconds in one unit; 0 for kUnknown.
double SecondsIn(TimeUnit unit);
// "ms", "s", "min", "h"; empty for kUnknown.
const char* TimeUnitText(TimeUnit unit);
// Times beyond this, either side of zero, are errors: records keep milliseconds in 32 bits.
inline constexpr double kMaxTimeS = 1'000'000;

// Evenly spaced values from `from` to `to`; without a step as many as the file has room for.
struct StatedAxis {
  double from;
  double to;  // not `from`
  std::optional<double> step;
};

// Where a matrix of times and wavelengths has its times.
enum class TimesIn {
  kUnknown,  // as the file suggests
  kRows,     // each row of values is one time
  kColumns,  // each row of values is one wavelength
};

struct ReadOptions {
  // Unit of the times in place of the one that the file states or suggests.
  TimeUnit timeUnit = TimeUnit::kUnknown;
  // For matrices as text. An axis that is stated here does not stand in the file.
  std::optional<StatedAxis> wavelengthsNm = std::nullopt;
  std::optional<StatedAxis> timesS = std::nullopt;
  TimesIn timesIn = TimesIn::kUnknown;

  // True where the file is said to be a matrix.
  bool SayMatrix() const { return wavelengthsNm || timesS || timesIn != TimesIn::kUnknown; }
};

}  // namespace app
