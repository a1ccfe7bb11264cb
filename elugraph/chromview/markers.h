// Small filled marks at peaks.
#pragma once

#include "platform/gfx/gdi.h"

// A mark at (x, y) in the current pen and brush, about half of `height` (a text height) long.
// `kind` 0: triangle with its apex at the point and its base below; 1: base above; 2: upright
// stroke upward from the point; 3: downward. Any other kind collapses into the point. `width` is
// not used.
void DrawTickMarker(HDC hdc, int x, int y, int kind, int width, int height);
