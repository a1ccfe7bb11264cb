// Building runs from arrays, and adding to them while they are acquired.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "embedded/quantise.h"
#include "embedded/run_parts.h"

namespace embedded {
namespace {

constexpr double kMaxMs = std::numeric_limits<LONG>::max();

// The longest start of `text` of at most `room` bytes that ends between two UTF-8 characters.
std::string_view Cut(std::string_view text, std::size_t room) {
  if (text.size() <= room) return text;
  std::size_t length = room;
  while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;
  return text.substr(0, length);
}

template <std::size_t kSize>
void CopyText(char (&field)[kSize], std::string_view text) {
  const std::string_view fitting = Cut(text, kSize - 1);
  std::memset(field, 0, kSize);
  std::memcpy(field, fitting.data(), fitting.size());
}

struct Names {
  std::string name;
  std::string description;
};

Names FitNames(const ChannelData& data) {
  constexpr std::size_t kRoom = sizeof(TChannel::name) - 1;
  if (data.name.size() <= kRoom) return {data.name, data.description};
  const std::size_t blank = std::string_view(data.name).substr(0, kRoom + 1).rfind(' ');
  Names names;
  if (blank != std::string::npos && blank > 0) {
    names = {data.name.substr(0, blank), data.name.substr(blank + 1)};
  } else {
    names = {std::string(Cut(data.name, kRoom - 1)) + ".", data.name};
  }
  if (!data.description.empty()) names.description = data.description;
  return names;
}

LONG ToCount(double value, float unitsPerCount) {
  const double count = std::round(value / static_cast<double>(unitsPerCount));
  return static_cast<LONG>(std::clamp<double>(count, -kMaxCount, kMaxCount));
}

struct Timing {
  double startMs;
  double periodMs;  // of the regular grid, or on average
  bool regular;
};

std::string FindTiming(const ChannelData& data, std::size_t samples, Timing& timing) {
  if (data.timesSec.empty()) {
    if (!(data.periodSec > 0.0) || !std::isfinite(data.periodSec) ||
        !std::isfinite(data.startSec)) {
      return "no sampling period above 0";
    }
    timing = {data.startSec * kMsPerSec, data.periodSec * kMsPerSec, true};
  } else {
    const std::vector<double>& times = data.timesSec;
    if (times.size() != samples) {
      return std::to_string(samples) + " samples, but " + std::to_string(times.size()) + " times";
    }
    for (std::size_t i = 0; i < times.size(); ++i) {
      if (!std::isfinite(times[i])) return "time " + std::to_string(i) + " is not a number";
      if (i > 0 && times[i] < times[i - 1]) {
        return "time " + std::to_string(i) + " lies before the one in front of it";
      }
    }
    const std::optional<Regular> regular = FindRegular(times);
    const double steps = static_cast<double>(std::max<std::size_t>(times.size() - 1, 1));
    const double mean = (times.back() - times.front()) / steps;
    if (data.markPeriodSec > 0.0) {
      timing = {times.front() * kMsPerSec, data.markPeriodSec * kMsPerSec, false};
    } else {
      timing = {times.front() * kMsPerSec, (regular ? regular->periodSec : mean) * kMsPerSec,
                regular.has_value()};
    }
  }
  const double endMs = timing.startMs + timing.periodMs * static_cast<double>(samples);
  if (std::fabs(timing.startMs) >= kMaxMs || endMs >= kMaxMs || endMs - timing.startMs >= kMaxMs) {
    return "times beyond 24 days";
  }
  return {};
}

std::string SampleCountFault(const ChannelData& data) {
  const std::size_t samples = data.counts.empty() ? data.values.size() : data.counts.size();
  if (!data.counts.empty() && !data.values.empty()) return "both counts and values";
  if (samples > static_cast<std::size_t>(std::numeric_limits<LONG>::max())) {
    return "too many samples";
  }
  if (!(data.unitsPerCount > 0.0F) || !std::isfinite(data.unitsPerCount)) {
    return "units per count must be above 0";
  }
  return {};
}

}  // namespace

RunRef MakeRun(const RunData& data, std::string& fault) {
  fault.clear();
  RunRef run(new Run);
  // Offset: the earliest start of a detector channel that has samples, or will have some.
  double startMs = std::numeric_limits<double>::infinity();
  for (const ChannelData& channel : data.channels) {
    const double start = channel.timesSec.empty() ? channel.startSec : channel.timesSec.front();
    if (data.acquiring || !channel.counts.empty() || !channel.values.empty()) {
      startMs = std::min(startMs, start * kMsPerSec);
    }
  }
  if (!(std::fabs(startMs) < kMaxMs)) startMs = 0.0;  // AddChannel reports bad times
  run->timeOffsetMs = RoundToMs(startMs);
  for (std::size_t i = 0; i < data.channels.size() && fault.empty(); ++i) {
    fault = run->AddChannel(data.channels[i], false);
    if (!fault.empty()) fault = "channel " + std::to_string(i + 1) + ": " + fault;
  }
  for (std::size_t i = 0; i < data.auxChannels.size() && fault.empty(); ++i) {
    fault = run->AddChannel(data.auxChannels[i], true);
    if (!fault.empty()) fault = "auxiliary channel " + std::to_string(i + 1) + ": " + fault;
  }
  if (fault.empty() && run->channels_.size() > 0x7FFF) fault = "more than 32767 channels";
  if (!fault.empty()) return nullptr;
  for (const ComponentData& entry : data.components) {
    auto made = std::make_unique<CalibratedComponent>();
    std::memset(static_cast<void*>(static_cast<component*>(made.get())), 0, sizeof(component));
    CopyText(made->name, entry.name);
    made->data = entry;
    made->statisticsStore = std::make_unique<ComponentStatistics>(run->calibration, *made);
    made->statistics = made->statisticsStore.get();
    run->componentItems_.push_back(made.get());
    run->components_.push_back(std::move(made));
  }
  run->calibration.components = {run->componentItems_.data(), 0,
                                 static_cast<LONG>(run->componentItems_.size())};
  run->timeUnit_ = data.timeUnit;
  run->state = data.acquiring ? kAcquiring : 0;
  run->scalingStartMin =
      static_cast<float>((data.scalingStartSec - run->timeOffsetMs / kMsPerSec) / 60.0);
  if (data.scalingStartSec <= run->timeOffsetMs / kMsPerSec) run->scalingStartMin = 0.0F;
  if (!run->SetCurrentChannel(data.currentChannel)) run->Publish();
  return run;
}

std::string Run::AddChannel(const ChannelData& data, bool auxiliary) {
  auto channel = std::make_unique<Channel>();
  std::memset(static_cast<void*>(static_cast<TChannel*>(channel.get())), 0, sizeof(TChannel));
  if (std::string fault = SampleCountFault(data); !fault.empty()) return fault;
  Counts counts{data.counts, data.unitsPerCount};
  if (!data.values.empty()) {
    if (std::string fault = Quantise(data.values, counts); !fault.empty()) return fault;
  }
  const std::size_t samples = counts.counts.size();
  Timing timing{0.0, 0.0, true};
  if (samples > 0 || !data.timesSec.empty() || data.periodSec != 0.0) {
    if (std::string fault = FindTiming(data, samples, timing); !fault.empty()) return fault;
  }

  const Names names = FitNames(data);
  CopyText(channel->name, names.name);
  CopyText(channel->unit, data.unit);
  channel->descriptionStore = names.description;
  channel->sampleStore = std::move(counts.counts);
  channel->unitsPerCount = counts.unitsPerCount;
  channel->samplePeriod = static_cast<float>(timing.periodMs / kMsPerSec);
  channel->penStyle = data.penStyle;
  channel->visible = data.visible;
  // Half a millisecond, and what doubles lose on the way.
  const bool atStart = std::fabs(timing.startMs - timeOffsetMs) <= kTableRoundingMs + 1e-6;
  channel->hasTable =
      auxiliary || (samples == 0 ? data.periodSec == 0.0 : !timing.regular || !atStart);
  if (channel->hasTable) {
    channel->timeBase = timeOffsetMs;
    channel->timeStore.resize(samples);
    for (std::size_t i = 0; i < samples; ++i) {
      channel->timeStore[i] = RoundToMs(
          data.timesSec.empty() ? timing.startMs + timing.periodMs * static_cast<double>(i)
                                : data.timesSec[i] * kMsPerSec);
    }
  }

  const std::vector<LONG>& store = channel->sampleStore;
  const LONG smallest = store.empty() ? 0 : *std::min_element(store.begin(), store.end());
  const float scale = channel->unitsPerCount;
  channel->zero = data.zero ? ToCount(*data.zero, scale) : auxiliary ? 0 : smallest;
  channel->referenceLevel = data.referenceLevel ? ToCount(*data.referenceLevel, scale) : 0;
  channel->rangeGiven = data.rangeLow && data.rangeHigh;
  if (channel->rangeGiven) {
    channel->rangeLow = ToCount(*data.rangeLow, scale);
    channel->rangeHigh = ToCount(*data.rangeHigh, scale);
  }
  channel->Publish();
  Enter(static_cast<TChannel*>(channel.get()), this);
  (auxiliary ? auxItems_ : channelItems_).push_back(channel.get());
  (auxiliary ? auxChannels_ : channels_).push_back(std::move(channel));
  return {};
}

std::string Run::AppendSamples(int channel, std::span<const LONG> counts,
                               std::span<const double> timesSec) {
  return Append(At(channel), counts, timesSec);
}

std::string Run::AppendAuxSamples(int channel, std::span<const LONG> counts,
                                  std::span<const double> timesSec) {
  const bool exists = channel >= 0 && channel < static_cast<int>(auxChannels_.size());
  return Append(exists ? auxChannels_[static_cast<std::size_t>(channel)].get() : nullptr, counts,
                timesSec);
}

std::string Run::Append(Channel* to, std::span<const LONG> counts,
                        std::span<const double> timesSec) {
  if (to == nullptr) return "no such channel";
  if (state != kAcquiring) return "the run is not being acquired";
  const std::size_t total = to->sampleStore.size() + counts.size();
  if (total > static_cast<std::size_t>(std::numeric_limits<LONG>::max())) return "too many samples";
  const bool table = to->hasTable;
  if (table ? timesSec.size() != counts.size() : timesSec.size() > 1) {
    return std::to_string(counts.size()) + " samples, but " + std::to_string(timesSec.size()) +
           " times";
  }
  double last = table && !to->timeStore.empty() ? to->timeStore.back() : timeOffsetMs;
  for (const double time : timesSec) {
    const double ms = time * kMsPerSec;
    if (!(ms + kTableRoundingMs >= last) || !(ms < kMaxMs)) return "times that do not advance";
    last = ms;
  }
  to->sampleStore.insert(to->sampleStore.end(), counts.begin(), counts.end());
  if (table) {
    for (const double time : timesSec) to->timeStore.push_back(RoundToMs(time * kMsPerSec));
  } else if (!timesSec.empty()) {
    to->measuredEndSec = timesSec[0] - timeOffsetMs / kMsPerSec;
  }
  to->Publish();
  Publish();
  return {};
}

void Run::FinishAcquisition() {
  for (const auto& channel : channels_) channel->UpdateCyctimeRT();
  state = 0;
  Publish();
}

}  // namespace embedded
