// Chromatograms as data cubes in JSON documents (Allotrope Simple Model).
#pragma once

#include <string>
#include <string_view>

#include "app/run_data.h"

namespace app {

// True where the text begins with a JSON object or an array of objects.
bool IsJson(std::string_view text);

// Reads every member "chromatogram data cube" (or any member whose name ends in "data cube" with
// one dimension in a time unit), wherever it stands; `name` is what messages call the file. The
// first dimension holds the times, every measure is a channel. Peaks: members "peak list" of the
// same measurement, with "retention time", "peak start", "peak end", "peak area", "peak height" and
// a name; they belong to the measurement's first channel.
RunData ReadDataCubes(const std::string& name, std::string_view text, const ReadOptions& options);

}  // namespace app
