// Text of a peak's label.
#pragma once

#include <cstring>

#include "elugraph/host/kernel.h"
#include "elugraph/host/records.h"

// The label of peak `number` (from 1), by the label mode of the chromatogram's display settings:
// retention time in display units, component name, or name and amount, written vertically; or the
// number, horizontally: for every other mode, for a peak without a component in the two name modes,
// and without display settings. A null chromatogram gives the empty text.
class PeakLabel {
 public:
  PeakLabel(chromatogram* chrom, int number);

  const char* Text() const { return text_.text; }
  int Length() const { return static_cast<int>(std::strlen(text_.text)); }
  bool Vertical() const { return vertical_; }
  // Room along y: the width of a vertical label, the height of a horizontal one.
  LONG Height(SIZE extent) const { return vertical_ ? extent.cx : extent.cy; }

 private:
  PrintBuffer<100> text_;
  bool vertical_ = false;
};
