#include "elugraph/chromview/markers.h"

#include <array>

#include "elugraph/chromview/chrom_render.h"
#include "elugraph/trace/arithmetic.h"

namespace {

// Outline of an arrow whose tip is the origin and whose shaft lies on the positive side of
// `along`; `across` runs from its negative to its positive side. L is the arrow's length scale.
struct ArrowVertex {
  LONG along;
  LONG across;
};

std::array<ArrowVertex, 7> ArrowOutline(LONG length) {
  const LONG half = length >> 1;
  const LONG third = length / 3;
  const LONG twoThirds = 2 * length / 3;
  const LONG shaft = 4 * length / 5;
  return {{{0, 0},
           {half, -twoThirds},
           {half, -third},
           {shaft, -third},
           {shaft, third},
           {half, third},
           {half, twoThirds}}};
}

}  // namespace

void TChromRender::DrawArrowMarker(HDC hdc, int x, int y, int kind, SIZE size) {
  const LONG s = TruncToInt32(size.cy * 0.75);
  const std::array<ArrowVertex, 7> outline = ArrowOutline(s + (s >> 1));
  std::array<POINT, 7> points;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const auto [along, across] = outline[i];
    switch (kind) {
      case 4:
        points[i] = {x + along, y + across};
        break;
      case 5:
        points[i] = {x - along, y + across};
        break;
      case 6:
        points[i] = {x + across, y - along};
        break;
      default:
        points[i] = {x, y};
        break;
    }
  }
  Polygon(hdc, points.data(), static_cast<int>(points.size()));
}

void DrawTickMarker(HDC hdc, int x, int y, int kind, int /*width*/, int height) {
  const LONG s = height / 3;
  const LONG length = s + (s >> 1);
  const bool known = kind >= 0 && kind <= 3;
  const LONG base = !known ? y : kind == 0 || kind == 3 ? y + length : y - length;
  const LONG halfBase = kind == 0 || kind == 1 ? s : 0;
  const std::array<POINT, 3> points = {{{x, y}, {x - halfBase, base}, {x + halfBase, base}}};
  Polygon(hdc, points.data(), static_cast<int>(points.size()));
}
