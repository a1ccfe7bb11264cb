// The two stacks of channel names beside the traces of one pass.
#pragma once

#include "elugraph/chromview/chrom_render.h"

// Names below their trace's start are stacked downward, names above it upward; one that would run
// into its predecessor is left out.
struct TChromRender::NameStacks {
  int lowestBottom;  // of the names written so far
  int highestTop;
};
