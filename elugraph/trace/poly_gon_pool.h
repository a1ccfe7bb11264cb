// Collects one closed outline.
#pragma once

#include "elugraph/trace/poly_line_pool.h"

#pragma pack(push, 1)

// The outline stays whole: nothing is drawn before Draw, and points beyond the capacity (at most
// 1000) are ignored. It is cut one pixel outside the band, at clip->top − 1 and clip->bottom + 1,
// so that the outline's own edges there stay invisible. While the path is outside, the last point
// held is the pending one, which follows the path; a first point is kept as it comes.
class ELUGRAPH_API PolyGonPool : public PolyLinePool {
 public:
  using PolyLinePool::PolyLinePool;
  ~PolyGonPool() override;

  void operator()(int x, int y) override;
  bool Draw() override;

 private:
  // Adds a point outside the band, to follow the path until it comes back, if there is room.
  ELUGRAPH_INTERNAL void AddPending(POINT outside);
  ELUGRAPH_INTERNAL void GoOnOutside();
};

#pragma pack(pop)

static_assert(sizeof(PolyGonPool) == sizeof(PolyLinePool));
