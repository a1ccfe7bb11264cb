// Tables of peaks beside a run.
#pragma once

#include <string>
#include <vector>

#include "app/run_data.h"

namespace app {

// Reads a table of peaks for the channels of `run`: separated by tabs, semicolons or commas, headed
// by the names of its columns. A column of retention times ("Time", "RT", "R.T.", "Apex", with a
// unit in brackets; minutes without one) is needed; "Start", "End", "Name", "Amount" (with a unit),
// "Area", "Height" and "Channel" (a number from 1, or the beginning of a name; the first channel
// without it) are used where they are there, all others are not. Rows may begin with a key and an
// equals sign; lines before the header are skipped. False, and "FILE:LINE: cause", for a file that
// cannot be read or holds no such table; `peaks` is then unchanged.
bool ReadPeakTable(const std::string& path, const RunData& run, std::vector<Peak>& peaks,
                   std::string& error);

}  // namespace app
