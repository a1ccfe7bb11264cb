// Units in which the numbers of a signal axis are short.
#pragma once

#include <string>

#include "app/run_data.h"

namespace app {

struct ShortUnit {
  std::string unit;
  double factor;  // brings values of the given unit to this one
};

// The unit for values of up to `largest` either side of zero. From a thousandth to below a million
// that is the given one, else one of another decimal prefix ("mAU" for "AU"), or, for a unit that
// takes none, a power of ten in front of it ("10^6 EU"). Units too long for that stay,
// and values beyond any measure.
ShortUnit ShortenUnit(const std::string& unit, double largest);

// Brings the channels, the baselines of their peaks and the auxiliary channels to short units, with
// all that share a unit alike.
void ShortenUnits(RunData& run);

}  // namespace app
