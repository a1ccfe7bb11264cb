// The two stacks of channel names beside the traces of one pass.
#pragma once

#include "elugraph/chromview/chrom_render.h"

// Every name stands below its trace's start. Those of the channels below the host's split index are
// stacked downward, the others upward; one that would run into its predecessor is left out.
struct TChromRender::NameStacks {
  int lowestBottom;  // of the names written so far
  int highestTop;
};
