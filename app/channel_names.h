// Where the names of a plot's channels stand.
#pragma once

#include <vector>

#include "app/plot.h"

namespace app {

// Where the names stand, auxiliary ones last. Those that the view leaves out are missing.
std::vector<RECT> NameBoxes(Plot& plot);

// Whether no name is crossed, or missing.
bool NamesHaveRoom(Plot& plot);

// Names beside the traces, or as a list at the left; where neither has room, as a list at another
// place, with the traces lower, without the names' descriptions, or behind the end of the time
// axis. Fits the plot.
void ChooseNames(Plot& plot);

// Around the view's own drawing: the names that stand at another place than the view's.
void HidePlacedNames(Plot& plot);
void WritePlacedNames(Plot& plot);

}  // namespace app
