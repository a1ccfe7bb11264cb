// Maps as pictures, without a screen.
#pragma once

#include <string>

#include "elugraph/host/records.h"
#include "platform/gfx/surface.h"

namespace app {

// What a map window of that size, in pixels, shows, in the colours of the library's scale. False,
// and the cause in `error`, where the window has no room for a map or cannot be made.
bool DrawMap(chromatogram& run, int widthPx, int heightPx, gfx::Surface& surface,
             std::string& error);

}  // namespace app
