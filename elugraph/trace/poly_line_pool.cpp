#include "elugraph/trace/poly_line_pool.h"

#include <algorithm>
#include <cstdlib>

#include "elugraph/trace/band.h"

namespace {

constexpr LONG kMaxRunPoints = 1000;
// A run is kept open by its last point, so two points must always fit.
constexpr LONG kMinRoom = 2;

LONG RunPoints(int requested) {
  return requested < 0 ? 1 : std::min<LONG>(requested, kMaxRunPoints);
}

POINT* NewPoints(LONG room) {
  return static_cast<POINT*>(std::calloc(static_cast<std::size_t>(room), sizeof(POINT)));
}

}  // namespace

PolyLinePool::PolyLinePool(int requested, const RECT* clipBand, HDC target)
    : points(NewPoints(std::max(RunPoints(requested), kMinRoom))),
      count(0),
      capacity(RunPoints(requested)),
      clipped(false),
      clip(clipBand),
      hdc(target) {}

PolyLinePool::~PolyLinePool() { std::free(points); }

void PolyLinePool::Reset() {
  count = 0;
  clipped = false;
}

bool PolyLinePool::Draw() { return Polyline(hdc, points, count) != FALSE; }

void PolyLinePool::operator()(int x, int y) {
  if (points == nullptr) return;
  if (count > 0 && points[count - 1].x == x && points[count - 1].y == y) return;
  points[count++] = {x, y};
  if (clipped) {
    GoOnOutside();
  } else if (const Band band{clip}; band.Above(y) || band.Below(y)) {
    clipped = true;
    if (count == 1) return;
    EndRunAt(band.Above(y) ? clip->top : clip->bottom);
  }
  if (count >= capacity) StartRunWith(points[count - 1]);
}

void PolyLinePool::EndRunAt(LONG limit) {
  const POINT outside = points[count - 1];
  points[count - 1] = PointAtY(points[count - 2], outside, limit);
  StartRunWith(outside);
}

void PolyLinePool::GoOnOutside() {
  const Band band{clip};
  const POINT from = points[0];
  const POINT to = points[1];
  if (band.SameSide(from.y, to.y)) {
    points[0] = to;
    count = 1;
  } else if (band.Across(from.y, to.y)) {
    points[0] = PointAtY(from, to, clip->top);
    points[1] = PointAtY(from, to, clip->bottom);
    StartRunWith(to);
  } else {
    points[0] = PointAtY(from, to, band.Above(from.y) ? clip->top : clip->bottom);
    clipped = false;
  }
}

void PolyLinePool::StartRunWith(POINT first) {
  Draw();
  points[0] = first;
  count = 1;
}
