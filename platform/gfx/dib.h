// Images in the program's memory.
#pragma once

#include <cstddef>

#include "platform/gfx/driver.h"

namespace gfx {

// A device-independent bitmap's form, from a header that was found good. Scan line 0 is the first
// stored row: the bottom one of a bottom-up image, the top one of a top-down image.
struct DibForm {
  int width;   // pixels, at least 1
  int height;  // rows, at least 1
  bool bottomUp;
  int bytesPerPixel;      // 3 or 4
  std::ptrdiff_t stride;  // bytes, a multiple of 4; all rows together fit into a ptrdiff_t

  // False for a null or malformed header: a size other than 40, planes other than 1, pixels other
  // than uncompressed 24 or 32 bits, extents that are zero or too large, a negative width.
  // Reads the header's bytes only, wherever they lie.
  bool Parse(const BITMAPINFO* info);

  // `columns` × `rows` pixels as they appear, from column `left`, whose lowest scan line is `scan`
  // (counted from the start of `bits`). All of it must exist.
  ImageView View(const void* bits, int left, int scan, int columns, int rows) const;
};

}  // namespace gfx
