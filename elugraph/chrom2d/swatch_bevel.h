// The look of a colour swatch's edge.
#pragma once

#include "platform/gfx/types.h"

// Two edges, one inside the other, along the item's sides: raised, or pressed where selected.
void DrawSwatchBevel(HDC hdc, const RECT& item, bool selected);
