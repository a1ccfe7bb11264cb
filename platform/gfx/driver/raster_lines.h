// Lines of a pen on a canvas, for any 32-bit coordinates, at a cost bounded by the canvas.
//
// Cosmetic lines (pen width 0 or 1): from the first point one pixel per step along the longer axis
// (the x axis where both are equal), without the last point. The other coordinate is rounded to the
// nearest integer; exactly half-way it is rounded toward the smaller coordinate (left, up), so the
// pixels between the ends do not depend on the direction.
//
// Dashes, in pixels along the longer axis, on and off in turn: PS_DASH 12 5, PS_DOT 1 2,
// PS_DASHDOT 10 4 2 4, PS_DASHDOTDOT 10 4 2 4 2 4. The pattern goes on along the segments of one
// polyline or outline, whether they are visible or not. What is off stays as it was, or gets the
// pen's background colour where its background mode is opaque.
//
// Wide lines (width 2 and more): every pixel whose centre is at most width / 2 away from the line
// through the pixel centres, both ends included: a disc of that diameter swept along. With even
// widths the disc's centre lies half a pixel left of and above the point, so that axis-parallel
// lines are exactly `width` pixels thick. Always solid; widths above kMaxPenWidth are drawn as
// that.
#pragma once

#include <array>
#include <cstdint>

#include "platform/gfx/driver/canvas.h"

namespace gfx {

inline constexpr int kMaxPenWidth = 1 << 28;

// What a pen paints with during one call; holds the place in the dash pattern.
class Stroke {
 public:
  explicit Stroke(const Pen& pen);

  bool Invisible() const { return width_ == 0; }
  bool Wide() const { return width_ > 1; }
  bool Dashed() const { return period_ != 0; }
  int Width() const { return width_; }
  std::uint32_t Pixel() const { return pixel_; }
  // Paints one pixel, `distance` pixels after the present place in the dash pattern.
  void Paint(std::uint32_t& pixel, std::uint64_t distance) const {
    PaintInPeriod(pixel, Dashed() ? (phase_ + distance) % period_ : 0);
  }

  // One segment; cosmetic: without its last point. Moves on in the dash pattern.
  void Line(const Canvas& canvas, POINT from, POINT to);
  // All segments of `points`; `closed` adds the one from the last to the first point.
  void Polyline(const Canvas& canvas, const POINT* points, int count, bool closed);

 private:
  static constexpr int kDiscTable = 64;

  void Cosmetic(const Canvas& canvas, POINT from, POINT to);
  template <bool dashed>
  void Steps(const Canvas& canvas, std::ptrdiff_t place, std::ptrdiff_t majorStep,
             std::ptrdiff_t minorStep, std::int64_t error, std::int64_t minorLength,
             std::int64_t majorLength, std::int64_t count, std::uint64_t phase) const;
  void Capsule(const Canvas& canvas, POINT from, POINT to) const;
  std::int64_t DiscHalf(std::int64_t row) const;
  void PaintInPeriod(std::uint32_t& pixel, std::uint64_t place) const {
    if (!Dashed() || (pattern_ >> place & 1) != 0) {
      pixel = pixel_;
    } else if (fillsGaps_) {
      pixel = gapPixel_;
    }
  }

  int width_;  // 0: paints nothing
  std::uint32_t pixel_;
  bool fillsGaps_;
  std::uint32_t gapPixel_;
  std::uint64_t pattern_ = 0;  // bit i: on in pixel i of the period
  unsigned period_ = 0;        // 0: solid
  std::uint64_t phase_ = 0;    // place in the period
  // Doubled half extents of the disc by doubled distance from its centre, for small widths.
  std::array<std::uint8_t, kDiscTable + 1> disc_;
};

}  // namespace gfx
