// Which labels find room on a picture.
#pragma once

#include <cstddef>
#include <vector>

#include "platform/gfx/types.h"

namespace app {

struct LabelBox {
  RECT box;       // right and bottom excluded; pixels
  double weight;  // the larger one wins
};

// Rows that a trace and the area under it cover in one column, both included; top > bottom: none.
struct Band {
  LONG top;
  LONG bottom;
};
// The rows of a trace by column, from column 0 on.
using TraceBands = std::vector<Band>;

bool Overlap(const RECT& a, const RECT& b);

// True where a band runs through the box.
bool IsCrossed(const RECT& box, const std::vector<TraceBands>& traces);

// A choice of the labels such that no two chosen boxes overlap, none is crossed by a band, and all
// lie within `area`. Columns outside the bands count as free. Larger weights are served first,
// equal ones in the order given. In a second round those that found no room, of at least kMinorPart
// of the largest weight, may be crossed by bands of up to `thinPx` rows: a line through a text
// beats an important peak without one. `taken` holds other boxes to stay clear of. One flag per
// label; at most `maxCount` are set.
std::vector<bool> LabelsWithRoom(const std::vector<LabelBox>& labels,
                                 std::vector<TraceBands> traces, const RECT& area, int thinPx,
                                 std::vector<RECT> taken, std::size_t maxCount);
inline constexpr double kMinorPart = 0.05;

}  // namespace app
