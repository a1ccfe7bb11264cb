// Contexts of windows while there are none: only the display has a context.
#include "platform/gfx/gdi.h"

BOOL IsWindow(HWND) { return FALSE; }

HDC GetDC(HWND window) {
  return window == nullptr ? CreateDCA("DISPLAY", nullptr, nullptr, nullptr) : nullptr;
}

int ReleaseDC(HWND window, HDC hdc) { return window == nullptr ? DeleteDC(hdc) : 0; }
