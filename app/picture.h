// Runs to pictures.
#pragma once

#include <string>

#include "app/display_options.h"
#include "app/run_data.h"
#include "platform/gfx/surface.h"

namespace app {

// Draws the run through the chromatogram renderer. Notes on what is not shown are added to the run.
// Returns false, and the cause in `error`, where an option names what is not there, the view holds
// no sample, or a channel's values or times fit no record; `surface` may then hold anything.
bool DrawPicture(RunData& run, const DisplayOptions& options, gfx::Surface& surface,
                 std::string& error);

// Height of the text line of a picture of this height, both in pixels: readable in small pictures,
// in proportion in large ones.
double DefaultFontPx(int heightPx);

}  // namespace app
