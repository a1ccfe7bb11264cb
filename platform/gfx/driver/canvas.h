// The part of a surface that one drawing call may touch, and the solid spans everything is made of.
#pragma once

#include <algorithm>
#include <cstdint>

#include "platform/gfx/driver.h"
#include "platform/gfx/surface.h"

namespace gfx {

// Pixels [left, right) × [top, bottom), inside the surface; empty where left ≥ right or
// top ≥ bottom. Borrows the surface for one call.
class Canvas {
 public:
  Canvas(Surface& surface, Clip clip)
      : surface_(surface), right_(surface.Width()), bottom_(surface.Height()) {
    if (!clip) return;
    left_ = std::max<LONG>(clip->left, 0);
    top_ = std::max<LONG>(clip->top, 0);
    right_ = std::min<LONG>(clip->right, right_);
    bottom_ = std::min<LONG>(clip->bottom, bottom_);
  }

  bool Empty() const { return left_ >= right_ || top_ >= bottom_; }
  std::int64_t Left() const { return left_; }
  std::int64_t Top() const { return top_; }
  std::int64_t Right() const { return right_; }
  std::int64_t Bottom() const { return bottom_; }
  // `y` inside.
  std::uint32_t* Row(std::int64_t y) const { return surface_.Row(static_cast<int>(y)); }
  std::ptrdiff_t Stride() const { return surface_.Width(); }
  // A row that is inside?
  bool HasRow(std::int64_t y) const { return y >= top_ && y < bottom_; }

  // Pixels first … end − 1 of row `y`, which is inside; the span is cut to the canvas.
  void Span(std::int64_t y, std::int64_t first, std::int64_t end, std::uint32_t pixel) const {
    first = std::max<std::int64_t>(first, left_);
    end = std::min<std::int64_t>(end, right_);
    std::uint32_t* const row = Row(y);
    for (std::int64_t x = first; x < end; ++x) row[x] = pixel;
  }
  // A rectangle of any coordinates, right and bottom excluded.
  void Box(std::int64_t left, std::int64_t top, std::int64_t right, std::int64_t bottom,
           std::uint32_t pixel) const {
    const std::int64_t end = std::min<std::int64_t>(bottom, bottom_);
    for (std::int64_t y = std::max<std::int64_t>(top, top_); y < end; ++y) {
      Span(y, left, right, pixel);
    }
  }

 private:
  Surface& surface_;
  LONG left_ = 0;
  LONG top_ = 0;
  LONG right_;
  LONG bottom_;
};

}  // namespace gfx
