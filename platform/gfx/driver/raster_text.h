// Text on a canvas.
#pragma once

#include "platform/gfx/driver/canvas.h"
#include "platform/gfx/driver/raster_shapes.h"
#include "platform/gfx/text_engine.h"

namespace gfx {

// The cell (extent × height, turned with the line) in the background colour where the run is
// opaque, then the glyphs, underline and strike-out. A pixel of coverage c becomes
// (old × (255 − c) + colour × c + 127) / 255 in each channel.
void DrawTextRun(const Canvas& canvas, TextEngine& text, const TextRun& run, PolygonFill& polygon);

}  // namespace gfx
