// Times, current channel and scales of a plot.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "app/plot.h"

namespace app {

// The visible time range. False, and the cause in `error`, where no sample lies in it.
bool SetTimes(Plot& plot, std::string& error);

// The channel that axis and labels belong to. Without a wish that is the first one, of the unit of
// the first channel, that has at least half the widest range; if possible, one that can show its
// peaks. False, and the cause in `error`, where the wish names none.
bool SetCurrent(Plot& plot, std::string& error);

// The channels that could be the current one in place of it: those of its unit and of at least half
// the widest range that can show their peaks. None where it was wished for.
std::vector<std::size_t> OtherCurrents(const Plot& plot);

// Stacks the channels, and scales such that every channel fits on its zero line, the labels above
// their peaks, and the traces below plot.signalHeadroomPx and plot.auxHeadroom. Needs times,
// current channel and peaks.
void Fit(Plot& plot);

}  // namespace app
