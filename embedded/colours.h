// Colour schemes and line thicknesses for the display settings of a run.
#pragma once

#include <optional>
#include <string_view>

#include "elugraph/host/records.h"

namespace embedded {

enum class Palette {
  kClassic,          // the saturated colours that chromatography reports are used to
  kColourBlindSafe,  // told apart by people with any of the common colour deficiencies
};
enum class Ground { kLight, kDark };

// The scheme of a palette on a ground. Trace colours that would fade into the ground stand last.
//
// kColourBlindSafe: M. Okabe, K. Ito, "Color Universal Design (CUD): How to make figures and
// presentations that are friendly to colorblind people", 2002/2008; all eight colours, black
// being replaced by white on the dark ground.
ORVWCOLORS ColourScheme(Palette palette, Ground ground);

// "classic", "classic-dark", "safe", "safe-dark"; nothing for any other text.
std::optional<ORVWCOLORS> ColourSchemeNamed(std::string_view name);

// `scheme` with its trace colours from slot `first` (0 … 7) on, around the end, each half-way to
// the ground: for traces that stand back behind those of the first slots.
ORVWCOLORS Muted(const ORVWCOLORS& scheme, int first);

// All channels (slots 0 … 7) `trace`, the axis lines (slot 8) `axis`, in percent of the height of
// the main font.
ThicknessPool Thicknesses(BYTE trace, BYTE axis);

}  // namespace embedded
