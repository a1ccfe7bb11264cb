// Diode-array exports whose time and wavelength axes stand in a header.
#pragma once

#include <string>
#include <string_view>

#include "app/run_data.h"

namespace app {

// True where a line "TIME_INTERVAL" and a line "WL_INTERVAL" stand among the first ones.
bool IsMatrixReport(std::string_view text);

// Reads `text` (UTF-8, tab separated, decimal point or comma); `name` is what messages call the
// file. START_TIME and TIME_INTERVAL (numbers with a unit of time), START_WL and WL_INTERVAL (nm)
// make the axes; behind the line INTENSITY stands a row of values per time, TIME_NPOINTS rows of
// WL_NPOINTS values. Every wavelength is a channel, named by it.
RunData ReadMatrixReport(const std::string& name, std::string_view text,
                         const ReadOptions& options);

}  // namespace app
