// The areas of a plot's peaks.
#pragma once

#include "app/plot.h"

namespace app {

// Fills the areas that the options name, of every channel that is drawn, and nothing else: the view
// comes on top, so that no area hides a trace or a label. (The view fills areas of up to 1000
// points; one of a noisy peak has four in each column.) Needs the plot fitted.
void FillPeaks(Plot& plot);

// At start, apex and end of the selected peak, where the options ask for its alone: the view would
// fill that peak too.
void DrawArrows(Plot& plot);

}  // namespace app
