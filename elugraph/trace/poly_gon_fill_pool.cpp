#include "elugraph/trace/poly_gon_fill_pool.h"

bool PolyGonFillPool::Fill() {
  const bool filled = Polygon(hdc, points, count) != FALSE;
  PolyLinePool::Reset();
  return filled;
}
