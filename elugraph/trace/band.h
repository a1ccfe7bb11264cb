// The horizontal band that pools cut paths at.
#pragma once

#include "elugraph/trace/arithmetic.h"
#include "platform/gfx/types.h"

// Both edges belong to the band. A null rectangle is a band without edges.
struct Band {
  const RECT* clip;

  bool Above(LONG y) const { return clip != nullptr && y < clip->top; }
  bool Below(LONG y) const { return clip != nullptr && y > clip->bottom; }
  bool SameSide(LONG a, LONG b) const { return (Above(a) && Above(b)) || (Below(a) && Below(b)); }
  bool Across(LONG a, LONG b) const { return (Above(a) && Below(b)) || (Below(a) && Above(b)); }
};

// x at which the line through a and b meets y = limit; half-way between both for a level line.
// 32-bit arithmetic that wraps, the divisions toward zero.
constexpr LONG XAtY(POINT a, POINT b, LONG limit) {
  if (a.y == b.y) return WrapAdd32(a.x, b.x) / 2;
  const LONG product = WrapMul32(WrapSub32(b.x, a.x), WrapSub32(limit, a.y));
  return WrapAdd32(a.x, TruncDiv(product, WrapSub32(b.y, a.y)));
}

constexpr POINT PointAtY(POINT a, POINT b, LONG limit) { return {XAtY(a, b, limit), limit}; }
