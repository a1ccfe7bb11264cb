// Filled areas on a canvas, for any 32-bit coordinates, at a cost bounded by the canvas.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/gfx/driver/canvas.h"
#include "platform/gfx/driver/raster_lines.h"

namespace gfx {

// Even-odd polygon fill. Corners are pixel centres; a pixel is painted when its centre lies inside.
// A centre exactly on an edge counts as inside where the inside is to the right of it, and on a
// level edge where the inside is below it, so areas that share an edge meet without gap or overlap
// and the rectangle of corners (0, 0) and (w, h) has w × h pixels. The object keeps its memory for
// the next polygon.
class PolygonFill {
 public:
  void Fill(const Canvas& canvas, const POINT* corners, int count, std::uint32_t pixel);

 private:
  // An edge at the row it is next asked for: its crossing is at `column` or, where `remainder` is
  // not 0, between the columns before and `column`.
  struct Edge {
    std::int64_t firstRow;
    std::int64_t endRow;
    std::int64_t column;
    std::int64_t remainder;  // −divisor < remainder ≤ 0: the crossing is column + remainder/divisor
    std::int64_t divisor;
    std::int64_t stepColumn;
    std::int64_t stepRemainder;
  };
  void AddEdge(const Canvas& canvas, POINT a, POINT b);

  std::vector<Edge> edges_;
  std::vector<Edge> active_;
  std::vector<LONG> crossings_;
};

// Right and bottom excluded; wider than a RECT so that pens can stick out at the 32-bit limits.
struct Bounds {
  std::int64_t left, top, right, bottom;
};

// Pixels whose centre lies in the ellipse that touches the four sides of `box`, and the middle
// column(s) and row(s) of the box, which very flat ellipses would miss. Symmetric in both axes.
void FillEllipse(const Canvas& canvas, const Bounds& box, std::uint32_t pixel);
// The pixels of that area which have a neighbour above, below, left or right outside of it. Dashes
// count |columns| + rows from the top and bottom ends of the middle, alike in all four quadrants.
void OutlineEllipse(const Canvas& canvas, const Bounds& box, const Stroke& stroke);
// The area of `outer` without that of `inner`, which may be empty.
void FillRing(const Canvas& canvas, const Bounds& outer, const Bounds& inner, std::uint32_t pixel);

}  // namespace gfx
