// Images on a canvas, for any 32-bit coordinates.
#pragma once

#include "platform/gfx/driver/canvas.h"

namespace gfx {

// Column c of `to` (counted from its left) shows column floor((2c + 1) × w / (2W)) of `from`, where
// w and W are the widths of `from` and `to`; rows likewise: the source pixel that the middle of the
// target pixel lies in. An image as large as `to` is copied. Nothing is drawn where `from` is
// empty or not inside the image.
void StretchImage(const Canvas& canvas, const RECT& to, const ImageView& image, const RECT& from);

// The pixels `from` + (column, row) of `source` go to `to`; parts outside of `source` leave the
// target alone. `source` may be the canvas' own surface: it is read as it was before the call.
void CopyPixels(const Canvas& canvas, const RECT& to, const Surface& source, POINT from);

}  // namespace gfx
