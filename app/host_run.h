// Runs as read to runs of the embedded host.
#pragma once

#include <string>

#include "app/run_data.h"
#include "embedded/run.h"

namespace app {

// Null where the records cannot hold the run; `error` then names file, channel and cause. Regular
// times become a sampling period, others a time table (see embedded/run.h for the tolerance).
embedded::RunRef HostRun(const RunData& run, std::string& error);

}  // namespace app
