#include "app/host_run.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <optional>
#include <span>
#include <string_view>

#include "app/formats/wavelength.h"
#include "embedded/peak_detection.h"

namespace app {
namespace {

constexpr std::size_t kNameRoom = sizeof(TChannel::name) - 1;
constexpr LONG kApexSlack = 2;     // samples
constexpr LONG kApexPart = 10;     // of a peak's width: one
constexpr double kTopPart = 0.99;  // of a peak's height: what is its top

// True for a peak that has a component whatever the retention windows say.
bool HasComponent(const RunData& run, const Peak& peak) {
  if (peak.name.empty()) return peak.amount.has_value() && run.quantification.windows.empty();
  return !run.quantification.HasWindow(peak.name);
}

embedded::ChannelData HostChannel(const Trace& trace, std::size_t number) {
  embedded::ChannelData channel;
  std::string name = trace.name;
  if (name.empty()) name = std::filesystem::path(trace.source).stem().string();
  const std::optional<double> wavelength = WavelengthOf(name);
  const ShortName parts = wavelength && name.size() > kNameRoom
                              ? ShortName{ShortWavelength(*wavelength), {}}
                              : Shorten(name, number);
  channel.name = parts.name;
  channel.description = parts.rest;
  if (!trace.description.empty()) {
    channel.description += (parts.rest.empty() ? "" : ", ") + trace.description;
  }
  channel.unit = trace.unit;
  channel.values = trace.values;
  channel.timesSec = trace.timesS;
  channel.startSec = trace.startS;
  channel.periodSec = channel.markPeriodSec = trace.periodS;
  return channel;
}

// Empty where a run of this channel alone can be made.
std::string Fault(const embedded::ChannelData& channel) {
  std::string fault;
  embedded::RunData alone;
  alone.channels.push_back(channel);
  embedded::MakeRun(alone, fault);
  return fault;
}

// Which of the traces, in one list, no run can be made of: "FILE: KIND N: cause". Channels count
// within their own file.
std::string FaultOf(const std::vector<Trace>& traces,
                    const std::vector<embedded::ChannelData>& channels, const char* kind) {
  for (std::size_t i = 0, first = 0; i < traces.size(); ++i) {
    if (traces[i].source != traces[first].source) first = i;
    std::string fault = Fault(channels[i]);
    if (fault.empty()) continue;
    fault.replace(0, fault.find(':'), kind + std::to_string(i - first + 1));
    return traces[i].source.empty() ? fault : traces[i].source + ": " + fault;
  }
  return {};
}

// Of the samples up to `reach` away from a time the nearest one that is about as high above `foot`
// as the highest.
LONG ApexIndex(std::span<const LONG> samples, LONG near, LONG reach, LONG foot) {
  const auto at = [&samples](LONG index) { return samples[static_cast<std::size_t>(index)]; };
  const LONG first = std::max<LONG>(near - reach, 0);
  const LONG last = std::min<LONG>(near + reach, static_cast<LONG>(samples.size()) - 1);
  const auto begin = samples.begin();
  const LONG highest = static_cast<LONG>(std::max_element(begin + first, begin + last + 1) - begin);
  const double top = foot + kTopPart * (static_cast<double>(at(highest)) - foot);
  LONG apex = highest;
  for (LONG i = first; i <= last; ++i) {
    if (at(i) >= top && std::abs(i - near) < std::abs(apex - near)) apex = i;
  }
  return apex;
}

// Apexes of the smoothed trace: up to the maximum of the trace itself.
void Climb(std::span<const LONG> samples, std::vector<PeakRecord>& peaks) {
  const auto at = [&samples](LONG index) { return samples[static_cast<std::size_t>(index)]; };
  for (PeakRecord& peak : peaks) {
    for (const LONG step : {-1, 1}) {
      const LONG last = step < 0 ? peak.start : peak.end;
      while (peak.apex != last && at(peak.apex + step) > at(peak.apex)) peak.apex += step;
    }
  }
}

// Detects on the trace's own sampling.
std::vector<PeakRecord> Detect(std::span<const LONG> samples, const SampleGrid& grid) {
  std::vector<LONG> own;
  for (std::size_t i = grid.first; i < samples.size(); i += grid.step) own.push_back(samples[i]);
  std::vector<PeakRecord> found = embedded::DetectPeaks(own);
  const auto place = [&grid](LONG index) {
    return static_cast<LONG>(grid.first + static_cast<std::size_t>(index) * grid.step);
  };
  for (PeakRecord& peak : found) {
    peak.start = place(peak.start);
    peak.apex = place(peak.apex);
    peak.end = place(peak.end);
  }
  Climb(samples, found);
  return found;
}

LONG ToCounts(const TChannel& channel, double value) {
  const double count = std::round(value / static_cast<double>(channel.unitsPerCount));
  constexpr double kLimit = 1 << 30;
  return static_cast<LONG>(std::clamp(count, -kLimit, kLimit));
}

// The peaks of one channel as records.
class PeakTable {
 public:
  PeakTable(embedded::Run& host, int channel, const SampleGrid& grid)
      : host_(host),
        grid_(grid),
        channel_(channel),
        record_(*host.channels.At(channel)),
        samples_(record_.samples, static_cast<std::size_t>(record_.sampleCount)) {}

  void Add(const Peak& peak, std::size_t component) {
    PeakRecord record{};
    LONG reach = kApexSlack * static_cast<LONG>(grid_.step);
    LONG foot = std::numeric_limits<LONG>::max();  // nothing but the highest sample
    if (peak.startS && peak.endS) {
      record.start = host_.IndexAt(channel_, *peak.startS);
      record.end = host_.IndexAt(channel_, *peak.endS);
      reach = std::max(reach, (record.end - record.start) / kApexPart);
      foot = std::max(record_.samples[record.start], record_.samples[record.end]);
    }
    record.apex = ApexIndex(samples_, host_.IndexAt(channel_, peak.apexS), reach, foot);
    if (peak.startS && peak.endS) {
      record.start = std::min(record.start, record.apex);
      record.end = std::max(record.end, record.apex);
    } else {
      record.start = record.end = record.apex;
      TakeDetectedLimits(record);
    }
    record.component = static_cast<WORD>(component);
    record.amount = static_cast<float>(peak.amount.value_or(0));
    if (peak.baselineStart && peak.baselineEnd && peak.startS && peak.endS) {
      record.baselineStart = ToCounts(record_, *peak.baselineStart);
      record.baselineEnd = ToCounts(record_, *peak.baselineEnd);
    } else {
      allBaselines_ = false;
    }
    table_.push_back(record);
  }
  void AddDetected() { table_ = Detect(samples_, grid_); }

  void Set() {
    if (table_.size() > 65'535) table_.resize(65'535);
    // Marks that are in order cannot be refused.
    static_cast<void>(host_.SetPeaks(channel_, std::move(table_), allBaselines_));
  }

 private:
  void TakeDetectedLimits(PeakRecord& record) {
    if (detected_.empty()) detected_ = Detect(samples_, grid_);
    for (const PeakRecord& found : detected_) {
      if (found.start > record.apex || found.end < record.apex) continue;
      record.start = found.start;
      record.end = found.end;
    }
  }

  embedded::Run& host_;
  const SampleGrid& grid_;
  int channel_;
  const TChannel& record_;
  std::span<const LONG> samples_;
  std::vector<PeakRecord> table_;
  std::vector<PeakRecord> detected_;
  bool allBaselines_ = true;
};

}  // namespace

ShortName Shorten(const std::string& name, std::size_t number) {
  if (name.size() <= kNameRoom) return {name, {}};
  constexpr std::string_view kMarks = " _,:;";
  const std::size_t mark = name.find_last_of(" _,:;(/", kNameRoom);
  if (mark == name.npos || mark == 0) return {std::to_string(number), name};
  const std::size_t end = name.find_last_not_of(kMarks, mark - 1);
  const std::size_t rest = name.find_first_not_of(kMarks, mark);
  if (end == name.npos || rest == name.npos) return {std::to_string(number), name};
  return {name.substr(0, end + 1), name.substr(rest)};
}

std::size_t NamedComponents(const RunData& run) {
  const auto named = std::count_if(run.peaks.begin(), run.peaks.end(),
                                   [&run](const Peak& peak) { return HasComponent(run, peak); });
  return static_cast<std::size_t>(named) + run.quantification.windows.size();
}

embedded::RunRef HostRun(const RunData& run, std::string& error) {
  embedded::RunData host;
  for (const Trace& trace : run.channels) {
    host.channels.push_back(HostChannel(trace, host.channels.size() + 1));
  }
  for (const Trace& trace : run.auxiliary) {
    host.auxChannels.push_back(HostChannel(trace, host.auxChannels.size() + 1));
  }
  for (const Peak& peak : run.peaks) {
    if (HasComponent(run, peak)) host.components.push_back({peak.name, peak.apexS, 0.0});
  }
  const auto& windows = run.quantification.windows;
  host.components.insert(host.components.end(), windows.begin(), windows.end());
  host.components.resize(host.components.size() + kSpareComponents);
  embedded::RunRef made = embedded::MakeRun(host, error);
  if (made != nullptr) return made;
  std::string fault = FaultOf(run.channels, host.channels, "channel ");
  if (fault.empty()) fault = FaultOf(run.auxiliary, host.auxChannels, "auxiliary channel ");
  if (!fault.empty()) error = fault;
  return made;
}

void SetPeaks(RunData& run, embedded::Run& host, PeakSource source, double pixelS) {
  if (source == PeakSource::kNone) return;
  int unplaced = 0;
  for (std::size_t i = 0; i < run.channels.size(); ++i) {
    const int channel = static_cast<int>(i);
    if (host.PeakPlacementErrorSec(channel) > pixelS) {
      ++unplaced;
      continue;
    }
    PeakTable table(host, channel, run.channels[i].grid);
    std::size_t component = 0;
    bool any = false;
    for (const Peak& peak : run.peaks) {
      const bool named = HasComponent(run, peak);
      if (named) ++component;
      if (peak.channel != i || source == PeakSource::kDetect) continue;
      table.Add(peak, named ? component : 0);
      any = true;
    }
    if (!any && source != PeakSource::kFile) table.AddDetected();
    table.Set();
  }
  if (unplaced > 0) {
    run.Note("channels whose samples lie too irregularly for marks are drawn without peaks (" +
             std::to_string(unplaced) + " of " + std::to_string(run.channels.size()) + ")");
  }
}

}  // namespace app
