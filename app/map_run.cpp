#include "app/map_run.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "app/formats/text.h"
#include "app/formats/wavelength.h"

namespace app {
namespace {

// Fits overshoot, and differences of heights must fit into 32 bits.
constexpr double kLargestCount = 1e8;
// Of values; what is smaller counts as 0.
constexpr double kLargestValue = 1e40;
constexpr double kSmallestValue = 1e-25;

struct Wave {
  double nm;
  const Trace* trace;
};

bool SameTimes(const Trace& a, const Trace& b) {
  return a.values.size() == b.values.size() && a.timesS == b.timesS &&
         (!a.timesS.empty() || (a.startS == b.startS && a.periodS == b.periodS));
}

void NoteCount(RunData& data, std::size_t count, const char* what) {
  if (count == 0) return;
  data.Note(std::to_string(count) + (count == 1 ? " channel" : " channels") + what);
}

// In ascending order of the wavelengths as records have them.
std::vector<Wave> Waves(RunData& data) {
  std::vector<Wave> waves;
  std::size_t unnamed = 0, otherTimes = 0;
  for (const Trace& trace : data.channels) {
    const std::optional<double> nm = WavelengthOf(trace.name);
    if (!nm) {
      ++unnamed;
    } else if (!waves.empty() && !SameTimes(trace, *waves.front().trace)) {
      ++otherTimes;
    } else {
      waves.push_back({std::atof(ShortWavelength(*nm).c_str()), &trace});
    }
  }
  std::stable_sort(waves.begin(), waves.end(),
                   [](const Wave& a, const Wave& b) { return a.nm < b.nm; });
  const auto end = std::unique(waves.begin(), waves.end(),
                               [](const Wave& a, const Wave& b) { return a.nm == b.nm; });
  const auto repeated = static_cast<std::size_t>(waves.end() - end);
  waves.erase(end, waves.end());
  NoteCount(data, unnamed, " without a wavelength left out of the map");
  NoteCount(data, otherTimes, " with other times left out of the map");
  NoteCount(data, repeated, " of a wavelength that stands there already left out of the map");
  return waves;
}

// Samples first … last − 1 lie within the part.
struct Samples {
  std::size_t first;
  std::size_t last;
};
Samples Within(const Trace& trace, const MapPart& part) {
  const double low = part.fromS.value_or(-std::numeric_limits<double>::infinity());
  const double high = part.toS.value_or(std::numeric_limits<double>::infinity());
  Samples samples{0, trace.values.size()};
  while (samples.first < samples.last && trace.TimeAt(samples.first) < low) ++samples.first;
  while (samples.first < samples.last && trace.TimeAt(samples.last - 1) > high) --samples.last;
  return samples;
}

embedded::ChannelData Channel(const Wave& wave, const Samples& samples) {
  const Trace& trace = *wave.trace;
  const auto part = [&samples](const std::vector<double>& values) {
    const auto at = [&values](std::size_t i) {
      return values.begin() + static_cast<std::ptrdiff_t>(i);
    };
    return std::vector<double>(at(samples.first), at(samples.last));
  };
  embedded::ChannelData channel;
  channel.name = ShortWavelength(wave.nm);
  channel.unit = trace.unit;
  channel.values = part(trace.values);
  if (!trace.timesS.empty()) channel.timesSec = part(trace.timesS);
  channel.startSec = trace.TimeAt(samples.first);
  channel.periodSec = trace.periodS;
  return channel;
}

// Regular times; false, and the cause, where there are none.
bool SetClock(embedded::ChannelData& channel, RunData& data, std::string& error) {
  if (channel.timesSec.empty()) return true;
  if (!embedded::FindRegular(channel.timesSec)) {
    error = embedded::MakeRegular(channel);
    if (!error.empty()) return false;
    data.Note("the times are irregular; the map interpolates between them");
  }
  return true;
}

// Values of all channels as counts of one size. False for values that no record can hold.
bool SetScale(std::vector<embedded::ChannelData>& channels) {
  double largest = 0;
  for (const embedded::ChannelData& channel : channels) {
    for (const double value : channel.values) largest = std::max(largest, std::abs(value));
  }
  if (!(largest <= kLargestValue)) return false;
  const auto unitsPerCount =
      largest > kSmallestValue ? static_cast<float>(largest / kLargestCount) : 1.0F;
  for (embedded::ChannelData& channel : channels) {
    channel.unitsPerCount = unitsPerCount;
    for (const double value : channel.values) {
      const double count = std::round(value / static_cast<double>(unitsPerCount));
      channel.counts.push_back(static_cast<LONG>(count));
    }
    channel.values.clear();
    channel.referenceLevel = 0.0;
  }
  return true;
}

}  // namespace

bool MakeMapRun(RunData& data, const MapPart& part, MapRun& map, std::string& error) {
  std::vector<Wave> waves = Waves(data);
  const std::size_t all = waves.size();
  std::erase_if(waves, [&part](const Wave& wave) {
    return wave.nm < part.lowNm.value_or(0) ||
           wave.nm > part.highNm.value_or(std::numeric_limits<double>::infinity());
  });
  if (waves.size() < kMinMapWaves) {
    error = "a map needs " + std::to_string(kMinMapWaves) + " wavelengths or more; ";
    error += all < kMinMapWaves
                 ? std::to_string(all) + " of " + std::to_string(data.channels.size()) +
                       " channels are named by one (axes that are not in the file can be stated "
                       "with --axis-wavelengths and --axis-times)"
                 : std::to_string(waves.size()) + " of " + std::to_string(all) +
                       " lie in the part asked for";
    return false;
  }
  const Samples samples = Within(*waves.front().trace, part);
  if (samples.last < samples.first + 2) {
    error = "fewer than two times lie in the part asked for";
    return false;
  }
  embedded::RunData run;
  map.wavesNm.clear();
  for (const Wave& wave : waves) {
    run.channels.push_back(Channel(wave, samples));
    map.wavesNm.push_back(wave.nm);
    if (!SetClock(run.channels.back(), data, error)) return false;
  }
  if (!SetScale(run.channels)) {
    error = "the values are too large";
    return false;
  }
  map.run = embedded::MakeRun(run, error);
  return map.run != nullptr;
}

}  // namespace app
