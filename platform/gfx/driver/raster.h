// The driver that paints pixels.
//
// Everything is computed in integers with stated rounding (see raster_lines.h, raster_shapes.h,
// raster_images.h), so a drawing gives the same bytes on every machine; text too, with BuiltinText.
// Colours replace what is there; only glyph coverage is blended.
#pragma once

#include <memory>

#include "platform/gfx/driver.h"

namespace gfx {

// `surface` and `text` must outlive the driver. Clips are cut to the surface.
//
// Rectangle and Ellipse: a cosmetic outline is the outermost row and column of pixels inside the
// box; a wide one is centred on it, with PS_INSIDEFRAME moved inside the box (pens wider than the
// box go beyond). The brush fills the whole box, also with PS_NULL; empty boxes paint nothing. A
// wide outline of an ellipse is the ring between the ellipses half a width outside and inside.
// Blit from a context without pixels paints nothing.
std::unique_ptr<Driver> MakeRasterDriver(Surface& surface, TextEngine& text);

}  // namespace gfx
