// Directions of text lines, in integers: the same on every machine.
#pragma once

#include <cstdint>

#include "platform/gfx/types.h"

namespace gfx {

struct Offset {
  std::int64_t x, y;
};

// Cosine and sine of an escapement; 2^30 is 1. Exact at multiples of 90 degrees, elsewhere within
// 2^-27 of the true values.
class Turn {
 public:
  // Tenths of a degree, counter-clockwise on a device with y down; any value.
  explicit Turn(LONG tenths);

  LONG Cosine() const { return cosine_; }
  LONG Sine() const { return sine_; }
  // Quarter turns counter-clockwise, 0 … 3; −1 for other angles.
  int Quarters() const;
  // Device offset of the position `along` the text line and `down` across it, each limited
  // to ±2^31. Rounded to the nearest, halves toward larger coordinates.
  Offset Apply(std::int64_t along, std::int64_t down) const;

 private:
  LONG cosine_;
  LONG sine_;
};

// Limited to the 32-bit range.
POINT MovePoint(POINT from, Offset by);

}  // namespace gfx
