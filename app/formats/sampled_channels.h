// Text files that state a sampling rate and then hold the samples of one channel after another.
#pragma once

#include <string>
#include <string_view>

#include "app/run_data.h"

namespace app {

// True where lines "Sampling Rate:" and "Total Data Points:" stand before the first number.
bool IsSampledChannels(std::string_view text);

// Reads `text` (UTF-8, tab separated); `name` is what messages call the file. The header has one
// cell per channel: "Sampling Rate:" (samples per second; its last cell names Hz), "Total Data
// Points:", "Y Axis Title:" (the unit), "X Axis Multiplier:" and "Y Axis Multiplier:" (times and
// values are multiplied). Then one value per line, exactly as many as stated. Sample 0 of each
// channel is taken at time 0.
RunData ReadSampledChannels(const std::string& name, std::string_view text);

}  // namespace app
