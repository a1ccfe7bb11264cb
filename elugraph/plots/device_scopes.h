// Scoped changes of a device context's state.
#pragma once

#include "elugraph/trace/arithmetic.h"
#include "platform/gfx/gdi.h"

namespace plots {

// Saves the whole state and restores it at the end.
class StateScope {
 public:
  explicit StateScope(HDC hdc) : hdc_(hdc) { SaveDC(hdc); }
  StateScope(const StateScope&) = delete;
  StateScope& operator=(const StateScope&) = delete;
  ~StateScope() { RestoreDC(hdc_, -1); }

 private:
  HDC hdc_;
};

// Clips to a rectangle of logical units; at the end there is no clip.
class ClipScope {
 public:
  ClipScope(HDC hdc, const RECT& rect) : hdc_(hdc) {
    POINT corners[2] = {{rect.left, rect.top}, {rect.right, rect.bottom}};
    LPtoDP(hdc, corners, 2);
    region_ = CreateRectRgn(corners[0].x, corners[0].y, corners[1].x, corners[1].y);
    SelectClipRgn(hdc, region_);
  }
  ClipScope(const ClipScope&) = delete;
  ClipScope& operator=(const ClipScope&) = delete;
  ~ClipScope() {
    SelectClipRgn(hdc_, nullptr);
    DeleteObject(region_);
  }

 private:
  HDC hdc_;
  HRGN region_;
};

}  // namespace plots
