#include "platform/gfx/surface.h"

#include <algorithm>

namespace gfx {

Surface::Surface(int width, int height, COLORREF fill)
    : width_(std::max(width, 0)), height_(std::max(height, 0)) {
  if (std::int64_t{width_} * height_ > kMaxPixels) width_ = height_ = 0;
  pixels_.assign(static_cast<std::size_t>(width_) * height_, PixelOf(fill));
}

COLORREF Surface::Pixel(int x, int y) const {
  if (x < 0 || y < 0 || x >= width_ || y >= height_) return 0;
  return ColorOf(Row(y)[x]);
}

std::uint64_t Surface::Hash() const {
  std::uint64_t hash = 0xCBF29CE484222325u;
  for (std::uint32_t pixel : pixels_) {
    for (int shift = 0; shift < 24; shift += 8) {
      hash = (hash ^ (pixel >> shift & 0xFF)) * 0x100000001B3u;
    }
  }
  return hash;
}

}  // namespace gfx
