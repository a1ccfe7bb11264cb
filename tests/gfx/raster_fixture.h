// A small surface with a raster driver on it, and what tests ask of pictures.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <ostream>

#include "platform/gfx/driver/raster.h"
#include "platform/gfx/surface.h"
#include "platform/gfx/text_engine.h"
#include "tests/gfx/scene/random_shapes.h"

inline constexpr COLORREF kWhite = RGB(255, 255, 255);
inline constexpr COLORREF kInk = RGB(200, 30, 10);
inline constexpr COLORREF kPaint = RGB(20, 90, 160);
inline constexpr gfx::Brush kHollow{true, 0};
inline constexpr gfx::Brush kSolid{false, kPaint};
inline constexpr gfx::Pen kNoPen{PS_NULL, 1, 0};

constexpr gfx::Pen InkPen(int width = 1, int style = PS_SOLID) { return {style, width, kInk}; }

struct Picture {
  explicit Picture(int width = 64, int height = 48) : surface(width, height) {
    driver = gfx::MakeRasterDriver(surface, gfx::BuiltinText());
  }
  gfx::Surface surface;
  std::unique_ptr<gfx::Driver> driver;
};

// Says where two pictures differ first.
inline testing::AssertionResult SamePixels(const gfx::Surface& got, const gfx::Surface& wanted) {
  if (got.Width() != wanted.Width() || got.Height() != wanted.Height()) {
    return testing::AssertionFailure() << "different extents";
  }
  for (int y = 0; y < got.Height(); ++y) {
    for (int x = 0; x < got.Width(); ++x) {
      if (got.Row(y)[x] == wanted.Row(y)[x]) continue;
      return testing::AssertionFailure() << "at " << x << ',' << y << ": got " << std::hex
                                         << got.Row(y)[x] << ", wanted " << wanted.Row(y)[x];
    }
  }
  return testing::AssertionSuccess();
}

// A picture of `color` wherever `painted` says so.
template <class Painted>
gfx::Surface Expected(const Picture& like, Painted painted, COLORREF color = kInk) {
  gfx::Surface surface(like.surface.Width(), like.surface.Height());
  for (int y = 0; y < surface.Height(); ++y) {
    for (int x = 0; x < surface.Width(); ++x) {
      if (painted(x, y)) surface.Row(y)[x] = gfx::PixelOf(color);
    }
  }
  return surface;
}

// The smallest box around all pixels of `color`; empty where there are none.
inline RECT BoxOf(const gfx::Surface& surface, COLORREF color) {
  RECT box{surface.Width(), surface.Height(), 0, 0};
  for (LONG y = 0; y < surface.Height(); ++y) {
    for (LONG x = 0; x < surface.Width(); ++x) {
      if (surface.Pixel(x, y) != color) continue;
      box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
             std::max(box.bottom, y + 1)};
    }
  }
  return box;
}

inline void PrintTo(const RECT& box, std::ostream* out) {
  *out << box.left << ',' << box.top << ' ' << box.right << ',' << box.bottom;
}
inline bool operator==(const RECT& a, const RECT& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
