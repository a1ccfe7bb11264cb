// Text reports of "[Section]" headings, as chromatography data systems export them.
#pragma once

#include <string>
#include <string_view>

#include "app/run_data.h"

namespace app {

// True where the first line that is not blank is a heading.
bool IsSectionReport(std::string_view text);

// Reads `text` (UTF-8); `name` is what messages call the file. Cells are separated by tabs, commas
// or semicolons, whichever the first lines use.
//
// Sections, by the words in their heading: "Chromatogram(detector)" is a channel, "Status
// Trace(sensor)" an auxiliary channel, "Peak Table(detector)" the peaks of the channel of that
// detector; all others are metadata. A trace section has lines "Intensity Units", "Intensity
// Multiplier" (the values are multiplied by it), "# of Points" (must be right), and a table headed
// "R.Time" in minutes or the unit it names. Areas of peaks are in counts × seconds.
RunData ReadSectionReport(const std::string& name, std::string_view text,
                          const ReadOptions& options);

}  // namespace app
