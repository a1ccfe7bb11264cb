// ANDI/AIA chromatography data: netCDF files after ASTM E1947 and E1948.
#pragma once

#include <string>
#include <string_view>

#include "app/run_data.h"

namespace app {

// True for the mark of a classic netCDF file (versions 1 and 2).
bool IsNetCdf(std::string_view bytes);

// Reads the single channel, its peaks and the texts of a file; `name` is what messages call it.
// Times: "raw_data_retention" where the sampling flag tells of irregular times and the variable is
// there, else delay time and sampling interval. Their unit is "retention_unit" where that names
// minutes, else seconds (which the standard demands). Peaks without limits keep none; a baseline is
// taken where its times and values are given, and continued straight to the peak's limits. Values
// beyond 1e30 (the fill value among them) count as missing.
RunData ReadAndiFile(const std::string& name, std::string_view bytes, const ReadOptions& options);

}  // namespace app
