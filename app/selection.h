// Which channels of a run are shown.
#pragma once

#include <string>
#include <vector>

#include "app/run_data.h"

namespace app {

// Indices of the traces that `wanted` names, in the order of the traces: each text is a number from
// 1, a range "2-5", or, where it is no such number, the beginning of a name (ASCII letters compared
// without case). False, and
// the cause in `error`, where one of them names none.
bool FindTraces(const std::vector<Trace>& traces, const std::vector<std::string>& wanted,
                std::vector<std::size_t>& indices, std::string& error);

// Without wishes: all of up to kMaxShownChannels, of more spectral ones (named by wavelengths)
// kShownWavelengths evenly spread over them, of other ones the first kMaxShownChannels.
std::vector<std::size_t> ChooseChannels(const std::vector<Trace>& traces);
inline constexpr std::size_t kMaxShownChannels = 16;
inline constexpr std::size_t kShownWavelengths = 6;

// The run with these channels and auxiliary channels only, and with the peaks of the channels.
RunData Selected(RunData run, const std::vector<std::size_t>& channels,
                 const std::vector<std::size_t>& auxiliary);

}  // namespace app
