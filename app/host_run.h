// Runs as read to runs of the embedded host.
#pragma once

#include <string>

#include "app/display_options.h"
#include "app/run_data.h"
#include "embedded/run.h"

namespace app {

// A name of at most 8 bytes, which is all that a record holds, and the rest. A longer name is cut
// behind its last blank or mark that fits; one without any is replaced by `number`, and is the
// rest.
struct ShortName {
  std::string name;
  std::string rest;
};
ShortName Shorten(const std::string& name, std::size_t number);

// Null where the records cannot hold the run; `error` then names file, channel and cause. Regular
// times become a sampling period, others a time table (see embedded/run.h for the tolerance).
// Channels without a name are called after their file.
embedded::RunRef HostRun(const RunData& run, std::string& error);

// Gives every channel its peaks: those of `run`, or detected ones, as `source` says. Marks of the
// records are sample indices: an apex moves to the top of its peak, as far as that lies within two
// samples of its time or a tenth of the peak's width: to the highest sample or, where the limits
// are known, to the nearest one of about that height. Peaks without limits take those of the
// detected peak around them, else only their apex is marked. A peak of a name or an amount gets a
// component of the host run, which keeps the name. Channels whose records cannot place peaks to
// within `pixelS` get none, and a note is added to `run`.
void SetPeaks(RunData& run, embedded::Run& host, PeakSource source, double pixelS);

// Components of the host run, in this order: one for each peak with a name or an amount, in the
// order of the peaks, but for those whose component has a retention window; the components with
// windows; then kSpareComponents without a name, for labels.
std::size_t NamedComponents(const RunData& run);
inline constexpr std::size_t kSpareComponents = 256;

}  // namespace app
