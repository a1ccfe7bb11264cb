// Tables with a column of times (or volumes) for each signal.
#pragma once

#include <string>
#include <string_view>

#include "app/run_data.h"

namespace app {

// True where one of the first lines holds the units of such a table: tab separated pairs of cells,
// at least two, of which the first is the same unit of time or of volume in every pair.
bool IsSignalPairs(std::string_view text);

// Reads `text` (UTF-8); `name` is what messages call the file. The line above the units names the
// signals (what stands before a ':' names the run). Each signal has its own length: blank cells end
// it. Pairs that have a word in place of a unit, or begin with a text, are events; they are not
// read, which a note says. Signals
// of a detector's unit (mAU, RFU, …) are channels; all others are auxiliary (but the first signal
// is a channel where there is no detector). Volumes in ml are read as if the flow were 1 ml/min.
RunData ReadSignalPairs(const std::string& name, std::string_view text, const ReadOptions& options);

}  // namespace app
