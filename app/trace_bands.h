// The rows of a plot that its traces cover.
#pragma once

#include <vector>

#include "app/label_room.h"
#include "app/plot.h"

namespace app {

// Of every trace that is drawn, with the areas of filled peaks (those of the current channel where
// `ownAreas` says so); auxiliary ones last. In the scales in force.
std::vector<TraceBands> BandsOf(Plot& plot, bool ownAreas);

}  // namespace app
