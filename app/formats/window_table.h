// Tables of retention windows.
#pragma once

#include <string>
#include <vector>

#include "embedded/calibration.h"

namespace app {

// Reads components with their retention times and windows: columns name (or component, compound,
// substance), time (or RT, R.T., retention time) and window (or tolerance), the distance from the
// time that is allowed either way. Times are in minutes where their header has no other unit; a
// window without one is in that of the times. Throws FileError: "FILE:LINE: cause".
std::vector<embedded::ComponentData> ReadWindows(const std::string& path);

}  // namespace app
