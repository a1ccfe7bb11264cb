// Shapes and texts that controls are made of.
#pragma once

#include <string_view>

#include "platform/ui/user.h"

namespace ui {

// A box with round corners: `border` pixels of edge, the face inside, edges smoothed against
// `around`, which also fills the corners. A radius of half the height makes a disc.
struct BoxLook {
  COLORREF around;
  COLORREF edge;
  COLORREF face;
  int radius = 0;
  int border = 1;
};
void DrawBox(HDC hdc, const RECT& box, const BoxLook& look);

// One line in the middle of the box's height; `align` is TA_LEFT, TA_CENTER or TA_RIGHT. The
// context's text colour and font are used, its background is left alone.
void DrawLine(HDC hdc, const RECT& box, std::string_view text, UINT align);

// The share of `b`, in 1/256, mixed into `a`.
COLORREF Mix(COLORREF a, COLORREF b, int share);

// The context's font is another one while this lives. A null font changes nothing.
class FontScope {
 public:
  FontScope(HDC hdc, HFONT font)
      : hdc_(hdc), before_(font != nullptr ? SelectObject(hdc, font) : nullptr) {}
  FontScope(const FontScope&) = delete;
  FontScope& operator=(const FontScope&) = delete;
  ~FontScope() {
    if (before_ != nullptr) SelectObject(hdc_, before_);
  }

 private:
  HDC hdc_;
  HGDIOBJ before_;
};

}  // namespace ui
