// Names and amounts of the peaks of a host run.
#pragma once

#include <string>

#include "app/display_options.h"
#include "app/run_data.h"
#include "embedded/run.h"

namespace app {

// Gives the components of the host run the curves of their names, and adds a note to `run` on
// calibrations of other names. False, and the cause in `error`, where all of them have such.
bool Calibrate(RunData& run, embedded::Run& host, std::string& error);

// What to write at the current channel's peaks once they are identified and quantified: names with
// amounts where a calibration gave any, else names where there are any, else times.
PeakLabels BestLabels(const embedded::Run& host);

// False for a peak with a component that neither a calibration nor the file gives an amount.
bool IsAmountKnown(const RunData& run, const embedded::Run& host, const PeakRecord& peak);
// True, and a note in `run`, where a peak of the current channel has no known amount.
bool NoteUnknownAmounts(RunData& run, const embedded::Run& host);

// From now on the peaks keep their components, whatever the retention windows.
void EndIdentification(embedded::Run& host);

}  // namespace app
