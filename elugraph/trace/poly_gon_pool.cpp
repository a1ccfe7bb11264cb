#include "elugraph/trace/poly_gon_pool.h"

#include "elugraph/trace/band.h"

namespace {

LONG LimitAbove(const RECT& clip) { return WrapSub32(clip.top, 1); }
LONG LimitBelow(const RECT& clip) { return WrapAdd32(clip.bottom, 1); }

}  // namespace

PolyGonPool::~PolyGonPool() = default;

bool PolyGonPool::Draw() { return Polygon(hdc, points, count) != FALSE; }

void PolyGonPool::operator()(int x, int y) {
  if (points == nullptr || count >= capacity) return;
  if (count > 0 && points[count - 1].x == x && points[count - 1].y == y) return;
  points[count++] = {x, y};
  if (clipped) {
    GoOnOutside();
  } else if (const Band band{clip}; count > 1 && (band.Above(y) || band.Below(y))) {
    clipped = true;
    points[count - 1] =
        PointAtY(points[count - 2], {x, y}, band.Above(y) ? LimitAbove(*clip) : LimitBelow(*clip));
    AddPending({x, y});
  }
}

void PolyGonPool::AddPending(POINT outside) {
  if (count < capacity) points[count++] = outside;
}

void PolyGonPool::GoOnOutside() {
  const Band band{clip};
  POINT& pending = points[count - 2];
  const POINT from = pending;
  const POINT to = points[count - 1];
  if (band.SameSide(from.y, to.y)) {
    pending = to;
    --count;
  } else if (band.Across(from.y, to.y)) {
    pending = PointAtY(from, to, LimitAbove(*clip));
    points[count - 1] = PointAtY(from, to, LimitBelow(*clip));
    AddPending(to);
  } else {
    pending = PointAtY(from, to, band.Above(from.y) ? LimitAbove(*clip) : LimitBelow(*clip));
    clipped = false;
  }
}
