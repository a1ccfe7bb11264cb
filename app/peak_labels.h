// The labels of a plot's peaks.
#pragma once

#include "app/label_room.h"
#include "app/plot.h"

namespace app {

// The label mode that the options ask for. Needs peaks.
void SetLabels(Plot& plot);

// Where the view writes the label of a peak of the current channel, from 1, above its apex.
LabelBox BoxOf(Plot& plot, int number);

// How much of the current channel's peaks in view, by their heights, has room for a label that
// nothing crosses; 1 where none is wanted. Needs the names chosen.
double LabelledPart(Plot& plot);

// Takes away the labels of the current channel's peaks that would be unreadable, those of smaller
// peaks first, and the amounts that are not known. What remains of a label without room is its
// tick; peaks too flat to be seen go without it, except in front of a label or an option that is a
// number. Fits the plot again.
void DropCrowdedLabels(Plot& plot);

}  // namespace app
