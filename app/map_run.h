// Runs for time × wavelength maps: spectral channels on one clock and one scale.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/run_data.h"
#include "embedded/run.h"

namespace app {

// Part of a run; what is not given reaches to its end.
struct MapPart {
  std::optional<double> fromS, toS;  // the file's own times
  std::optional<double> lowNm, highNm;
};

struct MapRun {
  embedded::RunRef run;         // channels in ascending wavelength
  std::vector<double> wavesNm;  // by channel, as its record tells it
};

// A map compares counts of different channels and places sample i at i × interval: all channels get
// the same scale, and irregular times are interpolated. Channels that are not named by a
// wavelength, or do not share the times of the first one that is, are left out; of several with one
// wavelength the first one stays. A note in `data` says so. False, and the cause in `error`, where
// fewer than kMinMapWaves channels or two times are left.
bool MakeMapRun(RunData& data, const MapPart& part, MapRun& map, std::string& error);
inline constexpr std::size_t kMinMapWaves = 3;

}  // namespace app
