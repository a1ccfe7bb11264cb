// Where the names of a plot's channels stand.
#pragma once

#include <vector>

#include "app/plot.h"

namespace app {

// Where the view writes the names, auxiliary ones last. Those that it leaves out are missing.
std::vector<RECT> NameBoxes(Plot& plot);

// Whether no name is crossed, or missing.
bool NamesHaveRoom(Plot& plot);

// Names beside the traces, or as a list; where neither has room, with the traces lower, with a time
// axis that begins earlier, or without the names' descriptions. Fits the plot.
void ChooseNames(Plot& plot);

}  // namespace app
