// Runs to pictures.
#pragma once

#include <optional>
#include <string>

#include "app/run_data.h"
#include "platform/gfx/surface.h"

namespace app {

struct PictureOptions {
  int widthPx = 1600;
  int heightPx = 900;
  std::optional<double> fromS;  // default: where the earliest trace begins
  std::optional<double> toS;    // default: where the latest one ends
  bool average = false;         // one mean per column instead of first, largest, smallest, last
};

// Smallest and largest extent of a picture, pixels.
inline constexpr int kMinExtentPx = 64;
inline constexpr int kMaxExtentPx = 16'384;

// Draws the traces of all channels into one plot. Channels of the same unit share their scale,
// which fits what the view shows of them. Returns false, and the cause in `error`, where the view
// is empty (`toS` not behind `fromS`) or a channel's values have no 32-bit scale.
bool DrawPicture(const RunData& run, const PictureOptions& options, gfx::Surface& surface,
                 std::string& error);

}  // namespace app
