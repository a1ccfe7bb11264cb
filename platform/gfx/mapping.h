// Logical units to device pixels and back.
#pragma once

#include <cstdint>

#include "platform/gfx/gdi.h"

namespace gfx {

// `value` limited to the range of LONG.
LONG Saturate(std::int64_t value);
// value × numerator / denominator, halves away from zero; |value| ≤ 2^33, the others 1 … 2^17.
std::int64_t ScaleRounded(std::int64_t value, std::int64_t numerator, std::int64_t denominator);
// The box with its edges in ascending order.
RECT Ordered(const RECT& box);
// Canonically empty (all zero) where nothing is common.
RECT Intersection(const RECT& a, const RECT& b);
bool IsEmpty(const RECT& box);

// A context's map mode. MM_TEXT: device = origin + logical. MM_TWIPS: an offset of 1440 logical
// units is `dpi` pixels, y up; the scaled offset is rounded to the nearest pixel, halves away from
// zero, before the origin is added. Results beyond 32 bits are limited.
struct Mapping {
  int mode = MM_TEXT;
  POINT origin{0, 0};
  int dpi = 96;

  bool Identity() const { return mode == MM_TEXT && origin.x == 0 && origin.y == 0; }
  POINT ToDevice(POINT logical) const;
  POINT ToLogical(POINT device) const;
  // Both corners mapped, edges ordered.
  RECT ToDevice(const RECT& logical) const;
  // Lengths: sign kept, no origin, no flip.
  LONG LengthToDevice(LONG logical) const;
  LONG LengthToLogical(LONG device) const;
};

}  // namespace gfx
