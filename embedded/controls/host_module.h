// The module of the embedded host: its dialog templates.
#pragma once

#include "platform/ui/user.h"

namespace embedded {

// Map colours: 662 add, 663 delete, 664 change, 665 and 666 the scale, 670 … 679 the colours.
inline constexpr unsigned kColorScaleDialog = 14114;
// Integration path: OK and Cancel at the bottom right.
inline constexpr unsigned kPathEditorDialog = 14150;
// A map alone: a strip along the top with the button 652, which opens the map colours.
inline constexpr unsigned kMapDialog = 14100;
// The palette of ChooseColorA.
inline constexpr unsigned kPaletteDialog = 14200;

// Made, with all templates, at the first call.
HMODULE HostModule();

}  // namespace embedded
