// The palette of the colour chooser and the controls that show it.
#pragma once

#include "platform/ui/user.h"

namespace embedded {

// Columns are hues, rows go from tints over the pure colour to shades; the first row is grey.
inline constexpr int kPaletteColumns = 10;
inline constexpr int kPaletteRows = 8;

// Black for what lies outside.
COLORREF PaletteColor(int row, int column);
// row × kPaletteColumns + column of the exact colour; −1 where the palette does not have it.
int PaletteIndex(COLORREF color);

inline constexpr int kGridId = 700;
inline constexpr int kPatchId = 701;
inline constexpr int kPatchLabelId = 702;

// The grid of colours. GWLP_USERDATA is the selected index, −1 for none. Mouse and arrow keys
// select; the parent then gets WM_COMMAND with BN_CLICKED.
const char* RegisteredGridClass();
// A box that shows the colour in GWLP_USERDATA.
const char* RegisteredPatchClass();

}  // namespace embedded
