#include "app/formats/andi_file.h"

#include <cmath>
#include <optional>

#include "app/formats/header_words.h"
#include "app/formats/line_cells.h"
#include "app/formats/netcdf_classic.h"
#include "app/formats/text.h"

namespace app {
namespace {

constexpr double kMissingValue = 1e30;

class AndiReader {
 public:
  AndiReader(const std::string& name, std::string_view bytes, const ReadOptions& options)
      : options_(options), file_(name, bytes) {}

  RunData Read() {
    for (const auto& [name, text] : file_.Attributes()) {
      if (!text.empty()) run_.metadata.emplace_back(name, text);
    }
    unitS_ = TimeUnitS();
    ReadTrace();
    ReadPeaks();
    return std::move(run_);
  }

 private:
  double TimeUnitS() const;
  void ReadTrace();
  void ReadTimes(Trace& trace);
  double Scalar(const char* variable, double fallback) const;
  bool IsIrregular() const;
  void ReadPeaks();
  void SetBaseline(Peak& peak, std::size_t index) const;

  // The number of one peak in a list; nothing where it is missing.
  static std::optional<double> At(const std::vector<double>& values, std::size_t index) {
    if (index >= values.size() || !(std::abs(values[index]) < kMissingValue)) return std::nullopt;
    return values[index];
  }

  const ReadOptions& options_;
  NetCdfClassic file_;
  double unitS_ = 1;
  RunData run_;
  std::vector<double> baselineStartTimes_;
  std::vector<double> baselineStartValues_;
  std::vector<double> baselineEndTimes_;
  std::vector<double> baselineEndValues_;
};

double AndiReader::TimeUnitS() const {
  if (options_.timeUnit != TimeUnit::kUnknown) return SecondsIn(options_.timeUnit);
  return Lower(file_.Attribute("retention_unit")).find("min") != std::string::npos ? 60 : 1;
}

double AndiReader::Scalar(const char* variable, double fallback) const {
  return At(file_.Numbers(variable), 0).value_or(fallback);
}

// Two revisions of the standard name the flag differently; some writers use the second one with the
// meaning of the first. Only the list of times makes a trace irregular.
bool AndiReader::IsIrregular() const {
  const char* const kValues = "ordinate_values";
  return Lower(file_.Attribute("uniform_sampling_flag", kValues)).starts_with('n') ||
         Lower(file_.Attribute("non_uniform_sampling_flag", kValues)).starts_with('y');
}

void AndiReader::ReadTimes(Trace& trace) {
  std::vector<double> times = file_.Numbers("raw_data_retention");
  const double interval = Scalar("actual_sampling_interval", 0) * unitS_;
  if (!times.empty() && (IsIrregular() || !(interval > 0))) {
    if (times.size() != trace.values.size()) {
      file_.Fail(std::to_string(trace.values.size()) + " values, but " +
                 std::to_string(times.size()) + " times");
    }
    for (double& time : times) time *= unitS_;
    // Also refuses what is not a number.
    for (std::size_t i = 0; i < times.size(); ++i) {
      if (!(std::abs(times[i]) <= kMaxTimeS) || (i > 0 && times[i] < times[i - 1])) {
        file_.Fail("time " + std::to_string(i + 1) + " lies before the one in front of it, or " +
                   "beyond " + NumberText(kMaxTimeS) + " s");
      }
    }
    if (times.front() == times.back()) file_.Fail("all times are the same");
    trace.timesS = std::move(times);
    return;
  }
  trace.startS = Scalar("actual_delay_time", 0) * unitS_;
  trace.periodS = interval;
  if (!(trace.periodS > 0)) file_.Fail("states no sampling interval above 0");
  if (!(std::abs(trace.startS) <= kMaxTimeS) ||
      !(trace.periodS * static_cast<double>(trace.values.size()) <= kMaxTimeS)) {
    file_.Fail("holds times beyond " + NumberText(kMaxTimeS) + " s");
  }
}

void AndiReader::ReadTrace() {
  Trace trace;
  trace.values = file_.Numbers("ordinate_values");
  if (trace.values.size() < 2) file_.Fail("holds no chromatogram ('ordinate_values')");
  for (std::size_t i = 0; i < trace.values.size(); ++i) {
    if (!(std::abs(trace.values[i]) < kMissingValue)) {
      file_.Fail("value " + std::to_string(i + 1) + " is missing");
    }
  }
  trace.name = file_.Attribute("detector_name");
  trace.unit = PlainUnit(file_.Attribute("detector_unit"));
  ReadTimes(trace);
  run_.channels.push_back(std::move(trace));
}

// The straight baseline through its two given points, at the limits of the peak.
void AndiReader::SetBaseline(Peak& peak, std::size_t index) const {
  const auto from = At(baselineStartTimes_, index);
  const auto fromValue = At(baselineStartValues_, index);
  const auto to = At(baselineEndTimes_, index);
  const auto toValue = At(baselineEndValues_, index);
  if (!from || !fromValue || !to || !toValue || !(*from < *to)) return;
  // Without limits of its own the peak has those of its baseline.
  if (!peak.startS && *from * unitS_ <= peak.apexS) peak.startS = *from * unitS_;
  if (!peak.endS && *to * unitS_ >= peak.apexS) peak.endS = *to * unitS_;
  if (!peak.startS || !peak.endS) return;
  const double slope = (*toValue - *fromValue) / (*to - *from);
  peak.baselineStart = *fromValue + (*peak.startS / unitS_ - *from) * slope;
  peak.baselineEnd = *fromValue + (*peak.endS / unitS_ - *from) * slope;
}

void AndiReader::ReadPeaks() {
  const std::vector<double> apexes = file_.Numbers("peak_retention_time");
  const std::vector<double> starts = file_.Numbers("peak_start_time");
  const std::vector<double> ends = file_.Numbers("peak_end_time");
  const std::vector<double> areas = file_.Numbers("peak_area");
  const std::vector<double> heights = file_.Numbers("peak_height");
  const std::vector<double> amounts = file_.Numbers("peak_amount");
  const std::vector<std::string> names = file_.Texts("peak_name");
  baselineStartTimes_ = file_.Numbers("baseline_start_time");
  baselineStartValues_ = file_.Numbers("baseline_start_value");
  baselineEndTimes_ = file_.Numbers("baseline_stop_time");
  baselineEndValues_ = file_.Numbers("baseline_stop_value");
  for (std::size_t i = 0; i < apexes.size(); ++i) {
    const auto apex = At(apexes, i);
    if (!apex) continue;
    Peak peak;
    peak.apexS = *apex * unitS_;
    // Limits on the wrong side of the apex are those of unused rows.
    if (const auto start = At(starts, i); start && *start < *apex) peak.startS = *start * unitS_;
    if (const auto end = At(ends, i); end && *end > *apex) peak.endS = *end * unitS_;
    if (i < names.size()) peak.name = names[i];
    peak.area = At(areas, i);
    peak.height = At(heights, i);
    if (const auto amount = At(amounts, i); amount && *amount != 0) peak.amount = amount;
    peak.amountUnit = file_.Attribute("peak_amount_unit");
    SetBaseline(peak, i);
    run_.peaks.push_back(std::move(peak));
  }
}

}  // namespace

bool IsNetCdf(std::string_view bytes) { return NetCdfClassic::Is(bytes); }

RunData ReadAndiFile(const std::string& name, std::string_view bytes, const ReadOptions& options) {
  return AndiReader(name, bytes, options).Read();
}

}  // namespace app
