#include "embedded/run.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <mutex>
#include <unordered_map>

#include "embedded/colours.h"
#include "embedded/quantise.h"
#include "embedded/run_parts.h"

namespace embedded {
namespace {

// The live records. Records are looked up by address, so that foreign ones need no mark inside.
class Registry {
 public:
  void Add(const void* record, Run* run) {
    const std::lock_guard lock(mutex_);
    runs_[record] = run;
  }
  void Remove(const void* record) {
    const std::lock_guard lock(mutex_);
    runs_.erase(record);
  }
  Run* Find(const void* record) {
    const std::lock_guard lock(mutex_);
    const auto found = runs_.find(record);
    return found != runs_.end() ? found->second : nullptr;
  }

 private:
  std::mutex mutex_;
  std::unordered_map<const void*, Run*> runs_;
};

Registry& Live() {
  static Registry* registry = new Registry;  // runs may outlive static objects
  return *registry;
}

}  // namespace

void Enter(const void* record, Run* run) { Live().Add(record, run); }

void ReleaseRun::operator()(const Run* run) const { run->Release(); }

// Every byte of the record that the library or another reader may look at starts as 0.
Run::Run() {
  std::memset(static_cast<void*>(static_cast<chromatogram*>(this)), 0, sizeof(chromatogram));
  Enter(static_cast<chromatogram*>(this), this);
  Enter(&view_, this);
  Enter(&calibration, this);
  calibration.bandLevel = 0.95F;
  view_.colours = ColourScheme(Palette::kClassic, Ground::kLight);
  view_.auxColours = view_.colours;
  window = &view_;
  useBackColor = 1;
}

Run::~Run() {
  Live().Remove(static_cast<chromatogram*>(this));
  Live().Remove(&view_);
  Live().Remove(&calibration);
  for (const TChannel* channel : channelItems_) Live().Remove(channel);
  for (const TChannel* channel : auxItems_) Live().Remove(channel);
}

Run* Run::Of(const void* record) { return record != nullptr ? Live().Find(record) : nullptr; }

void Run::Channel::Publish() {
  samples = sampleStore.empty() ? nullptr : sampleStore.data();
  times = timeStore.empty() ? nullptr : timeStore.data();
  description = descriptionStore.c_str();
  sampleCount = static_cast<LONG>(sampleStore.size());
  apexLimit = sampleCount;
  for (; !rangeGiven && rangedSamples < sampleStore.size(); ++rangedSamples) {
    const LONG sample = sampleStore[rangedSamples];
    if (rangedSamples == 0 || sample < rangeLow) rangeLow = sample;
    if (rangedSamples == 0 || sample > rangeHigh) rangeHigh = sample;
  }
  defaultFullScale = std::max<LONG>(
      static_cast<LONG>(std::min<std::int64_t>(std::int64_t{rangeHigh} - rangeLow, kMaxCount)), 1);
}

double Run::Channel::TimeMs(LONG index) const {
  if (sampleStore.empty()) return 0.0;
  const LONG last = static_cast<LONG>(sampleStore.size()) - 1;
  const LONG inside = std::clamp<LONG>(index, 0, last);
  if (hasTable) {
    return static_cast<double>(timeStore[static_cast<std::size_t>(inside)]) - timeBase;
  }
  return inside * static_cast<double>(samplePeriod) * kMsPerSec;
}

bool Run::Channel::SameGridAs(const Channel& other) const {
  return sampleStore.size() == other.sampleStore.size() && samplePeriod == other.samplePeriod &&
         timeStore == other.timeStore;
}

// Brings the run's own fields up to date with its channels.
void Run::Publish() {
  channels = {channelItems_.data(), 0, static_cast<LONG>(channelItems_.size())};
  auxChannels = {auxItems_.data(), 0, static_cast<LONG>(auxItems_.size())};
  channelCount = static_cast<WORD>(channelItems_.size());
  // Readers take this many samples of any channel that has some: the shortest decides.
  LONG shortest = std::numeric_limits<LONG>::max();
  double endMs = 0.0;
  for (const auto& channel : channels_) {
    if (channel->sampleStore.empty()) continue;
    // A copy: standard functions take references, which packed fields cannot give.
    const LONG samples = channel->sampleCount;
    shortest = std::min(shortest, samples);
    endMs = std::max(endMs, channel->TimeMs(samples - 1));
  }
  sampleCount = shortest == std::numeric_limits<LONG>::max() ? 0 : shortest;
  runDurationMs = static_cast<ULONG>(RoundToMs(endMs));
  ShowPeaks(currentChannel_);
}

Run::Channel* Run::At(int channel) const {
  return channel >= 0 && channel < static_cast<int>(channels_.size())
             ? channels_[static_cast<std::size_t>(channel)].get()
             : nullptr;
}

bool Run::SetCurrentChannel(int channel) {
  if (At(channel) == nullptr) return false;
  currentChannel_ = static_cast<short>(channel);
  Publish();
  return true;
}

LONG Run::IndexAt(int channel, double seconds) const {
  const Channel* from = At(channel);
  if (from == nullptr || from->sampleStore.empty() || std::isnan(seconds)) return 0;
  const double ms = seconds * kMsPerSec - timeOffsetMs;
  const LONG last = from->sampleCount - 1;
  if (!from->hasTable) {
    const double period = static_cast<double>(from->samplePeriod) * kMsPerSec;
    return static_cast<LONG>(std::clamp<double>(std::round(ms / period), 0.0, last));
  }
  const auto begin = from->timeStore.begin();
  const auto after = std::upper_bound(begin, from->timeStore.end(), ms + from->timeBase);
  const LONG index = static_cast<LONG>(after - begin);
  if (index == 0) return 0;
  if (index > last) return last;
  return from->TimeMs(index) - ms < ms - from->TimeMs(index - 1) ? index : index - 1;
}

double Run::TimeAt(int channel, LONG index) const {
  const Channel* from = At(channel);
  return (timeOffsetMs + (from != nullptr ? from->TimeMs(index) : 0.0)) / kMsPerSec;
}

double Run::PeakPlacementErrorSec(int channel) const {
  const Channel* from = At(channel);
  if (from == nullptr || !from->hasTable) return 0.0;
  double largest = 0.0;
  LONG first = 0;
  while (first + 1 < from->sampleCount && from->TimeMs(first + 1) == from->TimeMs(0)) ++first;
  for (LONG i = first; i < from->sampleCount; ++i) {
    const double gridMs = i * static_cast<double>(from->samplePeriod) * kMsPerSec;
    largest = std::max(largest, std::fabs(from->TimeMs(i) - gridMs));
  }
  return largest / kMsPerSec;
}

bool Run::SetCalibration(int index, std::vector<Standard> standards, CalibrationCurve curve) {
  if (index < 0 || index >= static_cast<int>(components_.size())) return false;
  if (standards.size() > 0xFFFF) return false;
  CalibratedComponent& target = *components_[static_cast<std::size_t>(index)];
  target.standards = std::move(standards);
  target.curve = std::move(curve);
  std::size_t points = 0;
  for (const auto& each : components_) points = std::max(points, each->standards.size());
  pointStore_.resize(points);
  pointItems_.resize(points);
  for (std::size_t i = 0; i < points; ++i) {
    pointStore_[i].number = static_cast<WORD>(i + 1);
    pointItems_[i] = &pointStore_[i];
  }
  calibration.points = {pointItems_.data(), 0, static_cast<LONG>(points)};
  return true;
}

CalibratedComponent* Run::ComponentOf(const component* record) const {
  const auto found = std::find_if(components_.begin(), components_.end(), [&](const auto& each) {
    return static_cast<component*>(each.get()) == record;
  });
  return found != components_.end() ? found->get() : nullptr;
}

double Run::SecondsPerUnit() const {
  switch (timeUnit_) {
    case TimeUnit::kSeconds:
      return 1.0;
    case TimeUnit::kHours:
      return 3600.0;
    case TimeUnit::kMinutes:
      break;
  }
  return 60.0;
}

const char* Run::UnitText() const {
  switch (timeUnit_) {
    case TimeUnit::kSeconds:
      return "s";
    case TimeUnit::kHours:
      return "h";
    case TimeUnit::kMinutes:
      break;
  }
  return "min";
}

}  // namespace embedded
