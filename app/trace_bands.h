// The rows of a plot that its traces cover.
#pragma once

#include <vector>

#include "app/label_room.h"
#include "app/plot.h"

namespace app {

// Of every trace that is drawn, auxiliary ones last; in the scales in force.
std::vector<TraceBands> BandsOf(Plot& plot);

}  // namespace app
