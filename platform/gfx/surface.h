// A picture in memory.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/gfx/types.h"

namespace gfx {

// width × height pixels of 32 bits, 0x00RRGGBB each (so the bytes are blue, green, red, 0 on a
// little-endian machine), row after row from the top. Extents below 0 count as 0; a surface of more
// than kMaxPixels pixels is made empty (0 × 0).
class Surface {
 public:
  static constexpr std::int64_t kMaxPixels = std::int64_t{1} << 30;

  Surface() = default;
  Surface(int width, int height, COLORREF fill = 0x00FFFFFF);

  int Width() const { return width_; }
  int Height() const { return height_; }
  std::uint32_t* Row(int y) { return pixels_.data() + static_cast<std::size_t>(y) * width_; }
  const std::uint32_t* Row(int y) const {
    return pixels_.data() + static_cast<std::size_t>(y) * width_;
  }
  // Bounds are checked; outside gives 0.
  COLORREF Pixel(int x, int y) const;
  // FNV-1a, 64 bits, over the blue, green and red bytes of every pixel, top row first.
  std::uint64_t Hash() const;

 private:
  int width_ = 0;
  int height_ = 0;
  std::vector<std::uint32_t> pixels_;
};

// The pixel value of a colour, and back.
constexpr std::uint32_t PixelOf(COLORREF color) {
  return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}
constexpr COLORREF ColorOf(std::uint32_t pixel) { return PixelOf(pixel); }

}  // namespace gfx
