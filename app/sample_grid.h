// Samples where marks of peaks can stand.
#pragma once

#include "app/run_data.h"

namespace app {

// Marks of the records are sample indices, and the view places them at index × interval from the
// run's first sample. Where samples of a trace stand further than `toleranceS` from there (it
// begins later than the run, or its times are irregular), samples are added: between two of its own
// on the straight line that joins them, and in front of the first one with its time and value, so
// that nothing else is drawn. The trace then has times and a period, and its grid tells where its
// own sampling went. One that would get too many samples stays as it is.
void PlaceSamples(RunData& run, double toleranceS);

}  // namespace app
