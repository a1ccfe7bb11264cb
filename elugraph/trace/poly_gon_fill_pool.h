// One filled area, painted once when its outline is complete.
#pragma once

#include "elugraph/trace/poly_gon_pool.h"

#pragma pack(push, 1)

// Reset and Draw do nothing, so that the reducer that fills the pool leaves the outline in place
// for its caller to close and Fill.
class PolyGonFillPool : public PolyGonPool {
 public:
  using PolyGonPool::PolyGonPool;

  void Reset() override {}
  bool Draw() override { return true; }

  // Fills with the brush and outlines with the pen selected in the context, then empties the pool.
  // False with fewer than two points, or where the device refuses.
  bool Fill();
};

#pragma pack(pop)
